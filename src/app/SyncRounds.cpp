#include "app/SyncRounds.h"

#include <chrono>

namespace {
constexpr auto timeBetweenRounds = std::chrono::seconds(216'000);
}

SyncRounds::SyncRounds(
    AppEnvironment &environment, CurrentBlogState &state, ServiceFactory &services, LocalPosts &posts)
    : m_environment(environment)
    , m_state(state)
    , m_services(services)
    , m_posts(posts)
{
}

void SyncRounds::testInternetConnection()
{
    ZLLog(u"testInternetConnection"_qs);
    Reachability &reachability = m_environment.platform.reachability;
    connect(&reachability, &Reachability::becameReachable, this, [this] {
        ZLLog(u"reachable"_qs);
        ZLLog(u"Yayyy, we have the interwebs!"_qs);
        if (m_shouldSyncBlogsOnInternetReturn)
            syncAllBlogs();
    });
    connect(&reachability, &Reachability::becameUnreachable, this, [] {
        ZLLog(u"not reachable"_qs);
        ZLLog(u"Someone broke the internet :("_qs);
    });
    reachability.startNotifier();
}

bool SyncRounds::canReachAnyBlog() const
{
    const Reachability &reachability = m_environment.platform.reachability;
    return reachability.isReachable()
        || std::any_of(m_state.accounts.begin(), m_state.accounts.end(),
            [&](const AccountPtr &account) { return reachability.isReachable(QUrl(account->url)); });
}

void SyncRounds::syncAllBlogs()
{
    endTimer();
    if (!canReachAnyBlog()) {
        ZLLog(u"No internet, did not sync blogs"_qs);
        m_shouldSyncBlogsOnInternetReturn = true;
        return;
    }
    m_shouldSyncBlogsOnInternetReturn = false;
    // When no account takes part, nothing ends the round and the indicator stays until the user stops it or the next
    // round succeeds. Meant was to hide it at once.
    m_environment.windows.postList->showSyncingLoading();
    // The entries of an unfinished round stay.
    for (const AccountPtr &account : QList<AccountPtr>(m_state.accounts))
        syncAccount(account);
}

void SyncRounds::syncAccount(const AccountPtr &account)
{
    if (!m_environment.platform.reachability.isReachable(QUrl(account->url))) {
        m_shouldSyncBlogsOnInternetReturn = true;
        return;
    }
    const ServicePtr service = m_services.serviceForAccount(account);
    // The presence of the preference counts here and not its value: an account that does not log in by itself is
    // synchronised all the same, as long as its password is known.
    const bool hasPreference = account->preferences && account->preferences->login_automatically.has_value();
    if (service->password.isEmpty() || !hasPreference)
        return;
    addObjectToSyncingServices(service);
    service->syncBlogPosts();
    service->syncBlogTaxonomies();
}

void SyncRounds::addObjectToSyncingServices(const ServicePtr &service)
{
    if (!m_syncServices.contains(service))
        m_syncServices.append(service);
}

void SyncRounds::refreshCurrentBlog()
{
    const ServicePtr service = m_state.wordpressService;
    if (!service)
        return;
    m_environment.windows.postList->showSyncingLoading();
    addObjectToSyncingServices(service);
    service->syncBlogPosts();
}

void SyncRounds::syncPosts()
{
    const ServicePtr service = m_state.wordpressService;
    if (!service)
        return;
    m_environment.windows.postList->showSyncingLoading();
    service->getPosts();
    service->getTaxonomies();
}

void SyncRounds::stopSyncing()
{
    m_environment.windows.postList->hideLoadingView();
    const QList<ServicePtr> waiting = m_syncServices;
    for (const ServicePtr &service : waiting)
        service->stopSync();
    // The last report has ended the round, unless there was nobody to report.
    if (!waiting.isEmpty() && m_syncServices.isEmpty())
        return;
    m_syncServices.clear();
    checkIfAllBlogsSynced();
}

void SyncRounds::didSyncBlogWithName(ZLWordpressService *service, const QString &name)
{
    m_syncServices.removeIf([service](const ServicePtr &entry) { return entry.get() == service; });
    if (name == m_state.blogName)
        m_posts.reloadPostsListAfterSyncingEngine(0);
    checkIfAllBlogsSynced();
}

void SyncRounds::checkIfAllBlogsSynced()
{
    if (!m_syncServices.isEmpty())
        return;
    m_environment.windows.postList->hideSyncingLoading();
    armTimer();
}

/// A service outside of a round reports as well, so that more than one timer can stand; a new round ends only the last
/// one. Meant was one timer at a time.
void SyncRounds::armTimer()
{
    m_syncTimer = new QTimer(this);
    m_syncTimer->setSingleShot(true);
    m_syncTimer->setTimerType(Qt::VeryCoarseTimer);
    connect(m_syncTimer, &QTimer::timeout, this, &SyncRounds::syncAllBlogs);
    connect(m_syncTimer, &QTimer::timeout, m_syncTimer, &QTimer::deleteLater);
    m_syncTimer->start(timeBetweenRounds);
}

void SyncRounds::endTimer()
{
    if (!m_syncTimer)
        return;
    m_syncTimer->stop();
    m_syncTimer->deleteLater();
    m_syncTimer.clear();
}
