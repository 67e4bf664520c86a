#pragma once

#include "app/BlogParts.h"

/// Which blog is current, and the change from one to another: by the selector, or by another part of the program.
class CurrentBlog {
public:
    explicit CurrentBlog(const BlogParts &parts);

    /// Makes the account current in memory: its address and alias. Nothing else follows.
    void take(const AccountPtr &account);
    void selectorDidChange(int selectorIndex);
    void selectAccount(const AccountPtr &account);
    /// Records the account in the store as the selected one. Which one is selected now is another matter.
    void setSelectedAccount(const AccountPtr &account);
    void didChangeBlogAliasForAccount(const AccountPtr &account);

    void replaceService(const ServicePtr &service);
    /// Fetches the categories and tags of the current blog.
    void syncTerms();
    /// Points the current service at the current account.
    void pointServiceAtCurrentAccount();
    /// The current service has no password, or shall not log in by itself.
    bool needsLogin() const;
    void askForLogin();
    /// An edit of a post that the blog knows is not carried to another blog; a new post stays in the editor.
    void leavePostOfEarlierBlog();

private:
    void emptyAndReload();

    BlogParts m_parts;
};
