#include "app/AccountRemoval.h"

AccountRemoval::AccountRemoval(const BlogParts &parts, CurrentBlog &currentBlog, BlogConnection &connection)
    : m_parts(parts)
    , m_currentBlog(currentBlog)
    , m_connection(connection)
{
}

void AccountRemoval::didRemoveAccount()
{
    m_parts.state.accounts = m_parts.store.accounts();
    m_parts.environment.windows.selector->setItems({});
    if (m_parts.environment.telemetry.isEnabled())
        m_parts.environment.telemetry.incrementUserProperty(u"BlogsConnected"_qs, -1);
    if (m_parts.state.accounts.isEmpty())
        beWithoutBlog();
    else
        moveToFirstAccount();
}

/// To the first account, whichever was current before.
void AccountRemoval::moveToFirstAccount()
{
    const AccountPtr first = m_parts.state.accounts.first();
    m_currentBlog.take(first);
    m_currentBlog.setSelectedAccount(first);
    m_parts.selector.showCurrentBlog();
    m_currentBlog.pointServiceAtCurrentAccount();
    if (m_parts.state.wordpressService)
        m_parts.state.wordpressService->account = first;
    m_parts.posts.loadLocalPosts();
    if (m_parts.environment.platform.reachability.isReachable(QUrl(m_parts.state.blogURL)))
        m_connection.getBlogData();
    else
        m_parts.environment.windows.prompts->alert(u"Internet appears to be offline."_qs);
    m_parts.selector.refreshSelectorItemsWithAccounts();
}

void AccountRemoval::beWithoutBlog()
{
    m_parts.selector.removeBlogSelector();
    m_parts.state.selectedAccount.reset();
    m_parts.state.blogName = QString();
    m_connection.newAccount();
    m_parts.posts.clear();
    m_parts.environment.windows.postList->deselectRow();
    m_parts.environment.windows.compose->newPost();
    m_parts.environment.windows.compose->setIsNewPostNotInList(true);
    m_parts.environment.windows.selector->setTitle(QString(), QString());
    Q_EMIT m_parts.environment.notifications.didUpdatePosts();
}
