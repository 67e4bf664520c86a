#pragma once

#include "app/LocalPosts.h"
#include "app/ServiceFactory.h"

#include <QPointer>
#include <QTimer>

/// Decides when blogs are synchronised. A round gives every account that can log in a service of its own; each reports
/// once, when its last call is answered, and the round ends with the last report. Then a timer starts the next round.
/// A round that is owed because there is no connection starts when the connection comes back.
class SyncRounds : public QObject {
    Q_OBJECT
public:
    SyncRounds(AppEnvironment &environment, CurrentBlogState &state, ServiceFactory &services, LocalPosts &posts);

    void testInternetConnection();
    /// A round is owed as soon as there is a connection.
    void oweRound() { m_shouldSyncBlogsOnInternetReturn = true; }
    bool canReachAnyBlog() const;
    void syncAllBlogs();
    void refreshCurrentBlog();
    void syncPosts();
    void stopSyncing();
    void didSyncBlogWithName(ZLWordpressService *service, const QString &name);

private:
    void syncAccount(const AccountPtr &account);
    void addObjectToSyncingServices(const ServicePtr &service);
    void checkIfAllBlogsSynced();
    void armTimer();
    void endTimer();

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    ServiceFactory &m_services;
    LocalPosts &m_posts;
    QList<ServicePtr> m_syncServices;
    QPointer<QTimer> m_syncTimer;
    bool m_shouldSyncBlogsOnInternetReturn = false;
};
