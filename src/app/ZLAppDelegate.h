#pragma once

#include "app/BlogConnection.h"
#include "app/OpenPosts.h"
#include "app/PublicationOutcomes.h"
#include "app/RequestFailures.h"
#include "app/SaveFailures.h"

/// The program put together: makes what stands behind the windows, in the order in which each needs the others, hands
/// it out, and passes what the blogs answer on to whom it concerns.
class ZLAppDelegate : public QObject, public ZLWordpressServiceDelegate {
    Q_OBJECT
public:
    explicit ZLAppDelegate(const ZLPlatform &platform, QObject *parent = nullptr);
    ~ZLAppDelegate() override;

    /// The windows exist now; they outlive every call of the controller.
    void setWindows(const ZLWindows &windows);

    void applicationDidFinishLaunching();
    void goOnline(); ///< once, behind the launch
    /// Another program is in front now: what is open is saved.
    void applicationDidResignActive();
    /// Saves the open posts and the store. False: the user chose to stay.
    QCoro::Task<bool> applicationShouldTerminate();
    /// Brings the window to the front; without any blog it asks for one.
    void showMainApplicationWindow();

    AppEnvironment &environment() { return m_environment; }
    const ZLPlatform &platform() const { return m_environment.platform; }
    ZLNotifications &notifications() { return m_environment.notifications; }
    ZLDocumentController &documentController() { return m_environment.documents; }
    ZLTelemetry &telemetry() { return m_environment.telemetry; }
    ComposeScreen &compose() { return *m_environment.windows.compose; }
    Prompts &prompts() { return *m_environment.windows.prompts; }
    OpenPosts &openPosts() { return m_openPosts; }
    AccountStore &store() { return m_store; }
    BlogServices &services() { return m_services; }
    SelectorItems &selector() { return m_selector; }
    LocalPosts &posts() { return m_posts; }
    BlogLogins &logins() { return m_logins; }
    SyncRounds &rounds() { return m_rounds; }
    CurrentBlog &currentBlog() { return m_currentBlog; }
    BlogConnection &connection() { return m_connection; }
    SaveFailures &saveFailures() { return m_saveFailures; }

    // ZLWordpressServiceDelegate
    void didSyncBlogWithName(ZLWordpressService *, const QString &) override;
    void didFailToUploadPost(ZLWordpressService *, const PostPtr &) override;
    void didFailToPerformRequest(ZLWordpressService *, ZLWordpressServiceRequestType type, const ZLError &) override;
    void didPublishPost(ZLWordpressService *, const PostPtr &remote, const PostPtr &original) override;
    void didUpdatePost(ZLWordpressService *, const PostPtr &) override;
    void didPublishDraftPost(ZLWordpressService *, const PostPtr &) override;
    void didDeletePost(ZLWordpressService *, const PostPtr &) override;
    void didFailToDeletePost(ZLWordpressService *, const PostPtr &, const ZLError &) override;
    void didFindConflict(ZLWordpressService *, const PostPtr &) override;

private:
    AppEnvironment m_environment;
    AccountStore m_store;
    BlogServices m_services;
    CurrentBlogState m_state;
    FaviconLookup m_favicons;
    SelectorItems m_selector;
    LocalPosts m_posts;
    BlogLogins m_logins;
    SyncRounds m_rounds;
    CurrentBlog m_currentBlog;
    BlogConnection m_connection;
    RequestFailures m_failures;
    PublicationOutcomes m_outcomes;
    SaveFailures m_saveFailures;
    OpenPosts m_openPosts;
    bool m_isLaunched = false;
    bool m_isTerminating = false;
};
