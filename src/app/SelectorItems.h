#pragma once

#include "app/FaviconLookup.h"

/// Keeps the selector in step with the accounts: their names, their icons, and the blog that is shown.
class SelectorItems : public QObject {
    Q_OBJECT
public:
    SelectorItems(AppEnvironment &environment, CurrentBlogState &state, FaviconLookup &favicons);

    void showBlogSelector();
    void removeBlogSelector();
    void refreshSelectorItemsWithAccounts();
    /// Marks the account's item; the first account is item 1.
    void selectItemOfAccount(const AccountPtr &account);
    void selectItem(int index);
    /// Shows the current blog's name and icon.
    void showCurrentBlog();

private:
    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    FaviconLookup &m_favicons;
};
