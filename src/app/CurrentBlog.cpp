#include "app/CurrentBlog.h"

CurrentBlog::CurrentBlog(const BlogParts &parts)
    : m_parts(parts)
{
}

void CurrentBlog::take(const AccountPtr &account)
{
    m_parts.state.selectedAccount = account;
    m_parts.state.blogURL = account->url;
    m_parts.state.blogName = account->alias();
}

void CurrentBlog::selectorDidChange(int selectorIndex)
{
    const AccountPtr account = m_parts.state.accounts.value(selectorIndex - 1);
    if (!account || account == m_parts.state.selectedAccount)
        return;
    leavePostOfEarlierBlog();
    take(account);
    if (m_parts.state.wordpressService)
        m_parts.state.wordpressService->cleanData();
    replaceService(m_parts.services.serviceForAccount(account));
    syncTerms();
    m_parts.selector.showCurrentBlog();
    emptyAndReload();
    setSelectedAccount(account);
    if (needsLogin()) {
        ZLLog(u"No Password or !login_automatically"_qs);
        askForLogin();
    }
}

void CurrentBlog::syncTerms()
{
    // Without a password the call would only fail, and the login sheet is about to open.
    if (!m_parts.state.wordpressService->password.isEmpty())
        m_parts.state.wordpressService->syncBlogTaxonomies();
}

void CurrentBlog::selectAccount(const AccountPtr &account)
{
    if (!account || account == m_parts.state.selectedAccount)
        return;
    take(account);
    m_parts.selector.selectItemOfAccount(account);
    // The service stays the same object and keeps its earlier account: what it learns of terms still goes there until
    // the user picks a blog in the selector. Meant was a service for the account that is now selected.
    pointServiceAtCurrentAccount();
    m_parts.selector.showCurrentBlog();
    emptyAndReload();
    setSelectedAccount(account);
}

void CurrentBlog::pointServiceAtCurrentAccount()
{
    const ServicePtr service = m_parts.state.wordpressService;
    if (!service)
        return;
    const AccountPtr account = m_parts.state.selectedAccount;
    service->cleanData();
    service->changeApiURL(ZLWordpressService::apiURLOfBlog(account->url));
    service->username = account->name;
    service->readPassword(account);
    service->blogName = m_parts.state.blogName;
}

void CurrentBlog::setSelectedAccount(const AccountPtr &account)
{
    ZLManagedObjectContext *context = m_parts.store.managedObjectContext();
    if (!context)
        return;
    const QList<SelectedAccountPtr> all = context->selectedAccounts();
    const SelectedAccountPtr selected = all.isEmpty() ? context->insertSelectedAccount() : all.first();
    selected->account = account;
    selected->date = m_parts.environment.platform.clock.now();
    for (const SelectedAccountPtr &other : all.mid(1))
        context->deleteSelectedAccount(other);
    m_parts.store.saveOrLog();
}

void CurrentBlog::didChangeBlogAliasForAccount(const AccountPtr &account)
{
    if (account == m_parts.state.selectedAccount) {
        m_parts.state.blogName = account->alias();
        m_parts.selector.showCurrentBlog();
    }
    m_parts.selector.refreshSelectorItemsWithAccounts();
}

void CurrentBlog::replaceService(const ServicePtr &service)
{
    m_parts.services.retire(m_parts.state.wordpressService);
    m_parts.state.wordpressService = service;
}

bool CurrentBlog::needsLogin() const
{
    const AccountPreferences *preferences = m_parts.state.preferences();
    const bool logsInByItself = preferences && preferences->login_automatically.value_or(false);
    return m_parts.state.wordpressService->password.isEmpty() || !logsInByItself;
}

void CurrentBlog::askForLogin()
{
    m_parts.login.openLoginForService(m_parts.state.wordpressService.get());
}

void CurrentBlog::leavePostOfEarlierBlog()
{
    ComposeScreen &compose = *m_parts.environment.windows.compose;
    const PostPtr post = compose.currentPost();
    if (!post || post->status == ZLWordpressPost::New)
        return;
    compose.newPost();
    compose.setIsNewPostNotInList(true);
}

void CurrentBlog::emptyAndReload()
{
    m_parts.state.taxonomies.clear();
    m_parts.posts.clear();
    m_parts.posts.loadLocalPosts();
}
