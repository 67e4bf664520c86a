#include "app/ZLAppDelegate.h"

#include "app/Launch.h"
#include "app/Termination.h"
#include "wordpress/ServiceFailures.h"

// Resources of a static library are known only after this, which must stand outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(defaults);
}

ZLAppDelegate::ZLAppDelegate(const ZLPlatform &platform, QObject *parent)
    : QObject(parent)
    , m_environment(platform)
    , m_store(m_environment)
    , m_services(m_environment, m_store, *this)
    , m_favicons(m_environment)
    , m_selector(m_environment, m_state, m_favicons)
    , m_posts(m_environment, m_state)
    , m_logins(m_environment, m_state, m_store, m_services)
    , m_rounds(m_environment, m_state, m_services, m_posts, m_logins)
    , m_currentBlog(m_environment, m_state, m_store, m_services, m_selector, m_posts, m_logins, m_rounds)
    , m_connection(m_environment, m_state, m_store, m_services, m_logins, m_currentBlog, m_favicons)
    , m_failures(m_environment, m_logins, m_rounds)
    , m_outcomes(m_environment, m_posts, m_state)
    , m_saveFailures(m_environment)
    , m_openPosts(m_environment, m_state)
{
    initResources();
    // Before the windows are made, which read some of them.
    platform.defaults.registerDefaultsFromFile(u":/defaultPrefs.json"_qs);
    connect(&platform.keychain, &ZLKeychain::becameUnavailable, this, [this] {
        prompts().alert(u"Zalmo cannot reach a keychain on this computer."_qs,
            u"Your password is kept for this session only, and Zalmo will ask for it at the next start. To have it "
            "remembered, set up your desktop's password service, such as GNOME Keyring or KWallet."_qs);
    });
    connect(&m_logins, &BlogLogins::didLogIn, &m_rounds, &SyncRounds::syncAccount);
    connect(&m_logins, &BlogLogins::didNotLogIn, &m_rounds, &SyncRounds::didNotLogIn);
    connect(&m_currentBlog, &CurrentBlog::wantsBlog, &m_connection, &BlogConnection::newAccount);
}

ZLAppDelegate::~ZLAppDelegate() = default;

void ZLAppDelegate::setWindows(const ZLWindows &windows)
{
    m_environment.windows = windows;
}

void ZLAppDelegate::applicationDidFinishLaunching()
{
    if (!std::exchange(m_isLaunched, true))
        launch(*this);
}

void ZLAppDelegate::goOnline()
{
    ::goOnline(*this);
}

void ZLAppDelegate::applicationDidResignActive()
{
    documentController().saveAll();
    m_openPosts.remember();
}

QCoro::Task<bool> ZLAppDelegate::applicationShouldTerminate()
{
    if (std::exchange(m_isTerminating, true))
        co_return false; // the question is on the screen already
    const QPointer<ZLAppDelegate> self(this);
    const bool answer = co_await terminate(self);
    if (self)
        m_isTerminating = false;
    co_return answer;
}

void ZLAppDelegate::showMainApplicationWindow()
{
    if (m_environment.windows.comeToFront)
        m_environment.windows.comeToFront();
    if (m_state.accounts.isEmpty())
        m_connection.newAccount();
}

// Outcomes of the services

void ZLAppDelegate::didSyncBlogWithName(ZLWordpressService *service, const QString &)
{
    m_rounds.didSyncBlogWithName(service);
}

void ZLAppDelegate::didFailToUploadPost(ZLWordpressService *, const PostPtr &post)
{
    Q_EMIT notifications().didFailToUploadPost(post);
}

void ZLAppDelegate::didFailToPerformRequest(
    ZLWordpressService *service, ZLWordpressServiceRequestType type, const ZLError &error)
{
    m_failures.didFailToPerformRequest(service, type, error);
}

void ZLAppDelegate::didPublishPost(ZLWordpressService *service, const PostPtr &remote, const PostPtr &original)
{
    m_rounds.didReach(*service);
    m_outcomes.didPublishPost(service, remote, original);
}

void ZLAppDelegate::didUpdatePost(ZLWordpressService *service, const PostPtr &post)
{
    m_rounds.didReach(*service);
    m_outcomes.didUpdatePost(service, post);
}

void ZLAppDelegate::didPublishDraftPost(ZLWordpressService *service, const PostPtr &post)
{
    m_rounds.didReach(*service);
    m_outcomes.didPublishDraftPost(service, post);
}

void ZLAppDelegate::didDeletePost(ZLWordpressService *service, const PostPtr &post)
{
    const QUrl file = post->localFile;
    m_outcomes.didDeletePost(post, service->blogName);
    Q_EMIT notifications().deletionDidEnd(file);
}

void ZLAppDelegate::didFailToDeletePost(ZLWordpressService *service, const PostPtr &post, const ZLError &error)
{
    if (ServiceFailures::isNotFound(error))
        m_outcomes.offerToDeleteCopy(post, service->blogName);
    Q_EMIT notifications().deletionDidEnd(post->localFile, LoginTry::isRefusal(error));
}

void ZLAppDelegate::didFindConflict(ZLWordpressService *service, const PostPtr &post)
{
    if (post->localPost)
        post->localPost->status = ZLLocalPostRepresentation::Conflict;
    if (service->account == m_state.selectedAccount)
        m_posts.loadLocalPosts();
}
