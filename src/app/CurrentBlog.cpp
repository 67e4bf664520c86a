#include "app/CurrentBlog.h"

CurrentBlog::CurrentBlog(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store,
    BlogServices &services, SelectorItems &selector, LocalPosts &posts, BlogLogins &logins, SyncRounds &rounds)
    : m_environment(environment)
    , m_state(state)
    , m_store(store)
    , m_services(services)
    , m_selector(selector)
    , m_posts(posts)
    , m_logins(logins)
    , m_rounds(rounds)
{
}

bool CurrentBlog::isReachable() const
{
    const AccountPtr account = m_state.selectedAccount;
    return m_environment.platform.reachability.isReachable(account ? QUrl(account->url) : QUrl());
}

QList<AccountPtr> CurrentBlog::accountsCanReceivePostCopy() const
{
    QList<AccountPtr> others = m_state.accounts;
    others.removeAll(m_state.selectedAccount);
    return others;
}

void CurrentBlog::readAccounts()
{
    m_state.accounts = m_store.accounts();
}

AccountPtr CurrentBlog::recordedAccount() const
{
    const ZLManagedObjectContext *context = m_store.openContext();
    const QList<SelectedAccountPtr> selected = context ? context->selectedAccounts() : QList<SelectedAccountPtr>();
    return selected.isEmpty() ? AccountPtr() : selected.first()->account;
}

void CurrentBlog::readPostsAhead()
{
    if (m_store.open())
        return;
    if (const AccountPtr account = recordedAccount())
        m_posts.readAhead(account->alias());
}

void CurrentBlog::takeRecordedAccount()
{
    const AccountPtr recorded = recordedAccount();
    take(recorded ? recorded : m_state.accounts.first());
    if (!recorded)
        setSelectedAccount(m_state.selectedAccount);
}

void CurrentBlog::take(const AccountPtr &account)
{
    m_state.selectedAccount = account;
    m_state.blogName = account->alias();
}

void CurrentBlog::selectorDidChange(int selectorIndex)
{
    selectAccount(m_state.accounts.value(selectorIndex - 1));
}

void CurrentBlog::selectAccount(const AccountPtr &account)
{
    if (!account || account == m_state.selectedAccount)
        return;
    leavePostOfEarlierBlog();
    take(account);
    m_selector.selectItemOfAccount(account);
    m_selector.showCurrentBlog();
    m_posts.loadLocalPosts();
    setSelectedAccount(account);
    m_logins.askIfNeeded(account);
}

void CurrentBlog::setSelectedAccount(const AccountPtr &account)
{
    ZLManagedObjectContext *context = m_store.managedObjectContext();
    if (!context)
        return;
    const QList<SelectedAccountPtr> all = context->selectedAccounts();
    const SelectedAccountPtr selected = all.isEmpty() ? context->insertSelectedAccount() : all.first();
    selected->account = account;
    selected->date = m_environment.platform.clock.now();
    for (const SelectedAccountPtr &other : all.mid(1))
        context->deleteSelectedAccount(other);
    m_store.saveOrLog();
}

void CurrentBlog::didChangeBlogAliasForAccount(const AccountPtr &account)
{
    m_services.serviceOf(account)->blogName = account->alias();
    if (account == m_state.selectedAccount) {
        m_state.blogName = account->alias();
        m_selector.showCurrentBlog();
    }
    m_selector.refreshSelectorItemsWithAccounts();
}

/// What is on the screen stays with its blog, a new post as well.
void CurrentBlog::leavePostOfEarlierBlog()
{
    ComposeScreen &compose = *m_environment.windows.compose;
    compose.newPost();
}

void CurrentBlog::showNewBlog(const AccountPtr &account)
{
    ZLNotifications &notifications = m_environment.notifications;
    Q_EMIT notifications.changingBlog();
    leavePostOfEarlierBlog();
    take(account);
    m_selector.showBlogSelector();
    m_selector.refreshSelectorItemsWithAccounts();
    m_selector.selectItemOfAccount(account);
    m_selector.showCurrentBlog();
    m_posts.loadLocalPosts(); // only the current blog has rows
    setSelectedAccount(account);
    m_rounds.syncAccount(account);
    Q_EMIT notifications.didChangeBlog();
    if (m_posts.posts().isEmpty() && m_services.serviceOf(account)->isSyncing())
        m_environment.windows.postList->showLoadingView();
}

void CurrentBlog::didRemoveAccount(AccountPtr account)
{
    m_state.accounts = m_store.accounts();
    m_environment.telemetry.incrementUserProperty(u"BlogsConnected"_qs, -1);
    m_services.forget(account);
    m_logins.forget(account);
    m_environment.windows.selector->setItems({});
    if (m_state.accounts.isEmpty())
        beWithoutBlog();
    else
        showNewBlog(m_state.accounts.first()); // whichever was current before
}

void CurrentBlog::beWithoutBlog()
{
    m_selector.removeBlogSelector();
    m_state.selectedAccount.reset();
    m_state.blogName = QString();
    m_posts.clear();
    m_environment.windows.postList->deselectRow();
    m_environment.windows.compose->newPost();
    m_environment.windows.selector->setTitle(QString(), QString());
    Q_EMIT m_environment.notifications.didUpdatePosts();
    Q_EMIT wantsBlog();
}
