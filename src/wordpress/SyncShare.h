#pragma once

#include "model/ZLWordpressPost.h"
#include "wordpress/ServiceCalls.h"

#include <QSet>

struct ZLServiceEnvironment;

/// What one service does in a round: its blog's latest posts and pages come into post files, and the account's terms
/// follow the blog's. The four parts go on side by side. However each of them ends, the share ends with the last one,
/// and says so once, by didSyncBlogWithName().
///
/// It only adds and updates posts: one that has gone from the blog keeps its file.
class SyncShare {
public:
    SyncShare(ZLWordpressService &service, const ZLServiceEnvironment &environment);

    void syncBlogPosts();
    void syncBlogTaxonomies();
    /// The user gave up on it. It ends at once.
    void stop();
    bool isUnderWay() const { return !m_underWay.isEmpty(); }

private:
    enum Part { Posts, Pages, Categories, Tags };
    QCoro::Task<void> sync(Part part);
    QCoro::Task<Result<bool>> take(Part part, ResponsePtr response);
    QCoro::Task<Result<bool>> takePosts(ResponsePtr response);
    QCoro::Task<Result<bool>> takeTerms(Part part, ResponsePtr response);
    RequestPtr request(Part part) const;
    void begin(Part part);
    void write(ZLWordpressPost &post);
    void tellFailure(Part part, const ZLError &error);
    void tellEnd();

    ZLWordpressService &m_service;
    const ZLServiceEnvironment &m_environment;
    ServiceCalls m_calls;
    QSet<Part> m_underWay;
};
