#include "app/SyncRounds.h"

#include <chrono>

namespace {

constexpr auto timeBetweenRounds = std::chrono::seconds(216'000);

/// The presence of the preference counts here and not its value: an account that does not log in by itself is
/// synchronised all the same, as long as its password is known.
bool takesPart(const ZLWordpressService &service)
{
    const AccountPtr &account = service.account;
    return !service.password.isEmpty() && account->preferences && account->preferences->login_automatically.has_value();
}

} // namespace

SyncRounds::SyncRounds(
    AppEnvironment &environment, CurrentBlogState &state, BlogServices &services, LocalPosts &posts, BlogLogins &logins)
    : m_environment(environment)
    , m_state(state)
    , m_services(services)
    , m_posts(posts)
    , m_logins(logins)
{
    m_syncTimer.setSingleShot(true);
    m_syncTimer.setTimerType(Qt::VeryCoarseTimer);
    m_syncTimer.setInterval(timeBetweenRounds);
    connect(&m_syncTimer, &QTimer::timeout, this, &SyncRounds::syncAllBlogs);
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

bool SyncRounds::canReach(const AccountPtr &account) const
{
    return m_environment.platform.reachability.isReachable(QUrl(account->url));
}

void SyncRounds::waitForConnection()
{
    ZLLog(u"No internet, did not sync blogs"_qs);
    m_shouldSyncBlogsOnInternetReturn = true;
    if (!m_round)
        showFailures();
}

void SyncRounds::syncAllBlogs()
{
    m_shouldSyncBlogsOnInternetReturn = false;
    for (const AccountPtr &account : QList<AccountPtr>(m_state.accounts))
        syncAccount(account);
    if (m_round)
        return;
    showFailures(); // nobody took part
    m_syncTimer.start();
}

void SyncRounds::syncAccount(const AccountPtr &account)
{
    if (!canReach(account))
        return waitForConnection();
    const ServicePtr service = m_services.serviceOf(account);
    if (takesPart(*service))
        round().add(service);
}

void SyncRounds::refreshCurrentBlog()
{
    const AccountPtr account = m_state.selectedAccount;
    if (!account)
        return;
    if (!canReach(account))
        waitForConnection();
    else if (m_logins.requirePassword(account)) // otherwise the login brings the round
        round().add(m_services.serviceOf(account));
}

SyncRound &SyncRounds::round()
{
    if (!m_round) {
        m_syncTimer.stop();
        m_failures.clear();
        m_environment.windows.postList->hideSyncFailure();
        m_environment.windows.postList->showSyncingLoading();
        m_round = std::make_unique<SyncRound>();
        connect(m_round.get(), &SyncRound::ended, this, &SyncRounds::endRound);
    }
    return *m_round;
}

void SyncRounds::stopSyncing()
{
    if (m_round)
        m_round->stop();
}

void SyncRounds::didSyncBlogWithName(ZLWordpressService *service)
{
    if (service->account == m_state.selectedAccount)
        m_posts.reloadPostsListAfterSync();
    if (m_round)
        m_round->didSync(service);
}

void SyncRounds::endRound()
{
    SyncRound *const ended = m_round.release(); // which is still speaking
    ended->setParent(this);
    ended->deleteLater();
    PostList &list = *m_environment.windows.postList;
    list.hideLoadingView();
    list.hideSyncingLoading();
    showFailures();
    m_syncTimer.start();
}

void SyncRounds::didFail(const ZLWordpressService &service, const ZLError &error)
{
    const auto isSame = [&](const QPair<QString, QString> &failure) { return failure.first == service.blogName; };
    if (std::none_of(m_failures.cbegin(), m_failures.cend(), isSame))
        m_failures.append({service.blogName, error.description});
    if (!m_round)
        showFailures();
}

void SyncRounds::didNotLogIn(const AccountPtr &account)
{
    didFail(*m_services.serviceOf(account), {{}, 0, u"It waits for you to log in."_qs});
}

void SyncRounds::didReach(const ZLWordpressService &service)
{
    const auto isOfIt = [&](const QPair<QString, QString> &failure) { return failure.first == service.blogName; };
    if (m_failures.removeIf(isOfIt) > 0 && !m_round)
        showFailures();
}

void SyncRounds::showFailures()
{
    PostList &list = *m_environment.windows.postList;
    if (m_failures.isEmpty()) {
        if (m_shouldSyncBlogsOnInternetReturn)
            list.showSyncFailure(u"You are offline. Your posts are synchronised when the connection is back."_qs);
        else
            list.hideSyncFailure();
        return;
    }
    QStringList blogs;
    for (const auto &[blog, reason] : std::as_const(m_failures))
        blogs.append(u"“%1”"_qs.arg(blog));
    const QString text = u"%1 could not be synchronised."_qs.arg(blogs.join(u", "_qs));
    list.showSyncFailure(m_failures.size() == 1 ? u"%1 %2"_qs.arg(text, m_failures.first().second) : text);
}
