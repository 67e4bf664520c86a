#include "app/AccountRemoval.h"

AccountRemoval::AccountRemoval(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store,
    SelectorItems &selector, LocalPosts &posts, CurrentBlog &currentBlog, BlogConnection &connection)
    : m_environment(environment)
    , m_state(state)
    , m_store(store)
    , m_selector(selector)
    , m_posts(posts)
    , m_currentBlog(currentBlog)
    , m_connection(connection)
{
}

void AccountRemoval::didRemoveAccount()
{
    m_state.accounts = m_store.accounts();
    m_environment.windows.selector->setItems({});
    if (m_environment.telemetry.isEnabled())
        m_environment.telemetry.incrementUserProperty(u"BlogsConnected"_qs, -1);
    if (m_state.accounts.isEmpty())
        beWithoutBlog();
    else
        moveToFirstAccount();
}

/// To the first account, whichever was current before.
void AccountRemoval::moveToFirstAccount()
{
    const AccountPtr first = m_state.accounts.first();
    m_currentBlog.take(first);
    m_currentBlog.setSelectedAccount(first);
    m_selector.showCurrentBlog();
    m_currentBlog.pointServiceAtCurrentAccount();
    if (m_state.wordpressService)
        m_state.wordpressService->account = first;
    m_posts.loadLocalPosts();
    if (m_environment.platform.reachability.isReachable(QUrl(m_state.blogURL)))
        m_connection.getBlogData();
    else
        m_environment.windows.prompts->alert(u"Internet appears to be offline."_qs);
    m_selector.refreshSelectorItemsWithAccounts();
}

void AccountRemoval::beWithoutBlog()
{
    m_selector.removeBlogSelector();
    m_state.selectedAccount.reset();
    m_state.blogName = QString();
    m_connection.newAccount();
    m_posts.clear();
    m_environment.windows.postList->deselectRow();
    m_environment.windows.compose->newPost();
    m_environment.windows.compose->setIsNewPostNotInList(true);
    m_environment.windows.selector->setTitle(QString(), QString());
    Q_EMIT m_environment.notifications.didUpdatePosts();
}
