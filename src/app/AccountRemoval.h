#pragma once

#include "app/BlogConnection.h"

/// Puts things right after an account was deleted from the store. Its folder and its password stay.
class AccountRemoval {
public:
    AccountRemoval(const BlogParts &parts, CurrentBlog &currentBlog, BlogConnection &connection);

    void didRemoveAccount();

private:
    void moveToFirstAccount();
    void beWithoutBlog();

    BlogParts m_parts;
    CurrentBlog &m_currentBlog;
    BlogConnection &m_connection;
};
