#pragma once

#include "app/BlogLogins.h"
#include "app/LocalPosts.h"
#include "app/SyncRound.h"

#include <QTimer>

/// Decides when blogs are synchronised. There is one round at a time; a blog that is asked for meanwhile joins it. Its
/// end arms the timer of the next one, whatever failed. What failed stands in a quiet line of the post list. A round
/// that is owed because there is no connection starts when the connection comes back.
class SyncRounds : public QObject {
    Q_OBJECT
public:
    SyncRounds(AppEnvironment &environment, CurrentBlogState &state, BlogServices &services, LocalPosts &posts,
        BlogLogins &logins);

    void testInternetConnection();
    void syncAllBlogs();
    void syncAccount(const AccountPtr &account);
    /// The user asks for the current blog.
    void refreshCurrentBlog();
    /// The user waits no longer.
    void stopSyncing();

    void didSyncBlogWithName(ZLWordpressService *service);
    /// A call of a blog's share failed.
    void didFail(const ZLWordpressService &service, const ZLError &error);
    /// The login sheet of a blog was cancelled.
    void didNotLogIn(const AccountPtr &account);
    /// A blog has taken what was sent to it, so that what is said about it is out of date.
    void didReach(const ZLWordpressService &service);

private:
    bool canReach(const AccountPtr &account) const;
    void waitForConnection();
    SyncRound &round();
    void endRound();
    void showFailures();

    AppEnvironment &m_environment;
    CurrentBlogState &m_state;
    BlogServices &m_services;
    LocalPosts &m_posts;
    BlogLogins &m_logins;
    std::unique_ptr<SyncRound> m_round; ///< null between rounds
    QList<QPair<QString, QString>> m_failures; ///< of the last round: the blog, and what it said first
    QTimer m_syncTimer;
    bool m_shouldSyncBlogsOnInternetReturn = false;
};
