#include "app/CurrentBlog.h"

CurrentBlog::CurrentBlog(AppEnvironment &environment, CurrentBlogState &state, AccountStore &store,
    ServiceFactory &services, SelectorItems &selector, LocalPosts &posts, LoginSheet &login)
    : m_environment(environment)
    , m_state(state)
    , m_store(store)
    , m_services(services)
    , m_selector(selector)
    , m_posts(posts)
    , m_login(login)
{
}

void CurrentBlog::take(const AccountPtr &account)
{
    m_state.selectedAccount = account;
    m_state.blogURL = account->url;
    m_state.blogName = account->alias();
}

void CurrentBlog::selectorDidChange(int selectorIndex)
{
    const AccountPtr account = m_state.accounts.value(selectorIndex - 1);
    if (!account || account == m_state.selectedAccount)
        return;
    leavePostOfEarlierBlog();
    take(account);
    if (m_state.wordpressService)
        m_state.wordpressService->cleanData();
    replaceService(m_services.serviceForAccount(account));
    syncTerms();
    m_selector.showCurrentBlog();
    emptyAndReload();
    setSelectedAccount(account);
    if (askForLoginIfNeeded())
        ZLLog(u"No Password or !login_automatically"_qs);
}

void CurrentBlog::syncTerms()
{
    // Without a password the call would only fail, and the login sheet is about to open.
    if (!m_state.wordpressService->password.isEmpty())
        m_state.wordpressService->syncBlogTaxonomies();
}

void CurrentBlog::selectAccount(const AccountPtr &account)
{
    if (!account || account == m_state.selectedAccount)
        return;
    take(account);
    m_selector.selectItemOfAccount(account);
    // The service stays the same object and keeps its earlier account: what it learns of terms still goes there until
    // the user picks a blog in the selector. Meant was a service for the account that is now selected.
    pointServiceAtCurrentAccount();
    m_selector.showCurrentBlog();
    emptyAndReload();
    setSelectedAccount(account);
}

void CurrentBlog::pointServiceAtCurrentAccount()
{
    const ServicePtr service = m_state.wordpressService;
    if (!service)
        return;
    const AccountPtr account = m_state.selectedAccount;
    service->cleanData();
    service->changeApiURL(QUrl(u"%1/xmlrpc.php"_qs.arg(account->url)));
    service->username = account->name;
    service->readPassword(account);
    service->blogName = m_state.blogName;
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
    if (account == m_state.selectedAccount) {
        m_state.blogName = account->alias();
        m_selector.showCurrentBlog();
    }
    m_selector.refreshSelectorItemsWithAccounts();
}

void CurrentBlog::replaceService(const ServicePtr &service)
{
    m_services.retire(m_state.wordpressService);
    m_state.wordpressService = service;
}

bool CurrentBlog::askForLoginIfNeeded()
{
    const AccountPreferences *preferences = m_state.preferences();
    const bool logsInByItself = preferences && preferences->login_automatically.value_or(false);
    if (!m_state.wordpressService->password.isEmpty() && logsInByItself)
        return false;
    m_login.openLoginForService(m_state.wordpressService.get());
    return true;
}

void CurrentBlog::leavePostOfEarlierBlog()
{
    ComposeScreen &compose = *m_environment.windows.compose;
    const PostPtr post = compose.currentPost();
    if (!post || post->status == ZLWordpressPost::New)
        return;
    compose.newPost();
    compose.setIsNewPostNotInList(true);
}

void CurrentBlog::emptyAndReload()
{
    m_state.taxonomies.clear();
    m_posts.clear();
    m_posts.loadLocalPosts();
}
