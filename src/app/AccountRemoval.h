#pragma once

#include "app/BlogConnection.h"

/// Puts things right after an account was deleted from the store. Its folder and its password stay.
class AccountRemoval {
public:
    AccountRemoval(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store, SelectorItems &selector,
        LocalPosts &posts, CurrentBlog &currentBlog, BlogConnection &connection);

    void didRemoveAccount();

private:
    void moveToFirstAccount();
    void beWithoutBlog();

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    AccountStore &m_store;
    SelectorItems &m_selector;
    LocalPosts &m_posts;
    CurrentBlog &m_currentBlog;
    BlogConnection &m_connection;
};
