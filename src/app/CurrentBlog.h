#pragma once

#include "app/BlogLogins.h"
#include "app/LocalPosts.h"
#include "app/SelectorItems.h"
#include "app/SyncRounds.h"

/// Which blog is current. Choosing another one only chooses: its posts come from the disk, and its service is there.
class CurrentBlog : public QObject {
    Q_OBJECT
public:
    CurrentBlog(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store, BlogServices &services,
        SelectorItems &selector, LocalPosts &posts, BlogLogins &logins, SyncRounds &rounds);

    const QList<AccountPtr> &accounts() const { return m_state.accounts; }
    AccountPtr selectedAccount() const { return m_state.selectedAccount; }
    QString blogName() const { return m_state.blogName; }
    /// The selected account's service; null without one.
    ZLWordpressService *wordpressService() const { return m_services.serviceOf(m_state.selectedAccount).get(); }
    bool isReachable() const;
    QList<AccountPtr> accountsCanReceivePostCopy() const;

    void readAccounts(); ///< from the store
    /// Before the launch: has the posts of the blog that will be current read while the windows are made. A store that
    /// cannot be opened is the launch's to tell.
    void readPostsAhead();
    /// At launch: the account that was selected last, or the first.
    void takeRecordedAccount();
    /// Makes the account current in memory: its alias. Nothing else follows.
    void take(const AccountPtr &account);
    void selectorDidChange(int selectorIndex); ///< item 0 is the empty item
    void selectAccount(const AccountPtr &account);
    /// Records the account in the store as the selected one. Which one is selected now is another matter.
    void setSelectedAccount(const AccountPtr &account);
    void didChangeBlogAliasForAccount(const AccountPtr &account);

    /// Goes to a blog that the program has not shown before, and fetches it.
    void showNewBlog(const AccountPtr &account);
    /// The account has gone from the store: what was its goes, and the first account that is left is current.
    void didRemoveAccount(AccountPtr account); // a copy, for the list that may hold the given one is read anew

Q_SIGNALS:
    void wantsBlog(); ///< none is left

private:
    AccountPtr recordedAccount() const;
    void leavePostOfEarlierBlog();
    void beWithoutBlog();

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    AccountStore &m_store;
    BlogServices &m_services;
    SelectorItems &m_selector;
    LocalPosts &m_posts;
    BlogLogins &m_logins;
    SyncRounds &m_rounds;
};
