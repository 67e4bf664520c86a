#pragma once

#include "app/AccountRemoval.h"
#include "app/PublicationOutcomes.h"
#include "app/RequestFailures.h"
#include "app/SaveFailures.h"
#include "app/SyncRounds.h"

/// All that stands behind the face of the controller, made in the order in which each needs the others.
struct Collaborators {
    Collaborators(const ZLPlatform &platform, ZLWordpressServiceDelegate &delegate)
        : environment(platform)
        , store(environment)
        , services(environment, store, delegate)
        , favicons(environment)
        , selector(environment, state, favicons)
        , posts(environment, state)
        , login(environment, state, services)
        , currentBlog(parts())
        , connection(parts(), currentBlog, favicons)
        , failures(environment, login, connection)
        , removal(parts(), currentBlog, connection)
        , rounds(environment, state, services, posts)
        , outcomes(environment, state, posts)
        , saveFailures(environment)
    {
    }

    BlogParts parts() { return {environment, state, store, services, selector, posts, login}; }

    AppEnvironment environment;
    AccountStore store;
    ServiceFactory services;
    CurrentBlogState state; ///< after the factory: its service goes first
    FaviconLookup favicons;
    SelectorItems selector;
    LocalPosts posts;
    LoginSheet login;
    CurrentBlog currentBlog;
    BlogConnection connection;
    RequestFailures failures;
    AccountRemoval removal;
    SyncRounds rounds;
    PublicationOutcomes outcomes;
    SaveFailures saveFailures;
};
