#pragma once

#include "model/ZLWordpressPost.h"
#include "wordpress/ServiceCalls.h"

class SyncGroup;
struct ZLServiceEnvironment;

/// Brings the blog's latest posts and pages into post files. It only adds and updates: a post that has gone from the
/// blog keeps its file.
class BlogPostSync {
public:
    BlogPostSync(
        ZLWordpressService &service, const ZLServiceEnvironment &environment, ServiceCalls &calls, SyncGroup &group);

    void syncBlogPosts();
    void getPosts();
    /// Writes the posts in their order and then takes the call out of its round. The posts are written a few at a time,
    /// since each is synced to the disk and the window must go on.
    void syncPosts(const QList<PostPtr> &posts, const ZLWordpressXMLRPCRequest &call, std::function<void()> then = {});
    /// Whether posts wait for their turn to be written.
    bool isWriting() const { return m_waitingBatches > 0; }

private:
    struct Batch {
        QList<PostPtr> posts;
        QString blogName;
        RequestPtr request;
        std::function<void()> then;
    };
    void writeSome(Batch batch);
    void write(ZLWordpressPost &post, const QString &blogName);

    ZLWordpressService &m_service;
    const ZLServiceEnvironment &m_environment;
    ServiceCalls &m_calls;
    SyncGroup &m_group;
    int m_waitingBatches = 0;
};
