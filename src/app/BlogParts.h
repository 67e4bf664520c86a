#pragma once

#include "app/LocalPosts.h"
#include "app/LoginSheet.h"
#include "app/SelectorItems.h"

/// What a change of the current blog touches.
struct BlogParts {
    AppEnvironment &environment;
    CurrentBlogState &state;
    AccountStore &store;
    ServiceFactory &services;
    SelectorItems &selector;
    LocalPosts &posts;
    LoginSheet &login;
};
