#include "wordpress/BlogPostSync.h"

#include "model/PostSync.h"
#include "platform/ZLLog.h"
#include "wordpress/SyncGroup.h"
#include "wordpress/ZLWordpressService.h"

#include <QElapsedTimer>
#include <QFileInfo>

namespace {
constexpr int recentPosts = 50; // fixed: there is no paging
constexpr qint64 turnMilliseconds = 12; // of writing, before the event loop has its turn
} // namespace

BlogPostSync::BlogPostSync(
    ZLWordpressService &service, const ZLServiceEnvironment &environment, ServiceCalls &calls, SyncGroup &group)
    : m_service(service)
    , m_environment(environment)
    , m_calls(calls)
    , m_group(group)
{
}

void BlogPostSync::syncBlogPosts()
{
    const QString number = QStringLiteral("number");
    const QString postType = QStringLiteral("post_type");
    const RequestPtr posts = m_calls.blogRequest(QStringLiteral("wp.getPosts"), {XMLRPCStruct{{number, recentPosts}}});
    const RequestPtr pages = m_calls.blogRequest(
        QStringLiteral("wp.getPosts"), {XMLRPCStruct{{number, recentPosts}, {postType, QStringLiteral("page")}}});
    m_group.clear();
    m_group.add(posts);
    m_group.add(pages);
    m_calls.spawn(posts, ZLWordpressServiceRequestTypeSyncPosts);
    m_calls.spawn(pages, ZLWordpressServiceRequestTypeSyncPosts);
}

void BlogPostSync::getPosts()
{
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("metaWeblog.getRecentPosts"), {recentPosts}),
        ZLWordpressServiceRequestTypeGetPosts);
}

void BlogPostSync::syncPosts(
    const QList<PostPtr> &posts, const ZLWordpressXMLRPCRequest &call, std::function<void()> then)
{
    // The blog may have been renamed since the call was sent, or the service given another blog; the address tells.
    const QString blogName = call.isForCurrentBlog() ? m_service.blogName : call.additionalInfo.blogName;
    writeSome({posts, blogName, call.currentRequest, std::move(then)});
}

void BlogPostSync::writeSome(Batch batch)
{
    QElapsedTimer turn;
    turn.start();
    while (!batch.posts.isEmpty() && turn.elapsed() < turnMilliseconds)
        write(*batch.posts.takeFirst(), batch.blogName);
    if (!batch.posts.isEmpty()) {
        ++m_waitingBatches;
        QTimer::singleShot(0, &m_service, [this, batch = std::move(batch)] {
            --m_waitingBatches;
            const auto service = m_service.weak_from_this().lock();
            writeSome(batch);
        });
        return;
    }
    m_group.finish(batch.request);
    if (batch.then)
        batch.then();
}

void BlogPostSync::write(ZLWordpressPost &post, const QString &blogName)
{
    if (post.id.isEmpty()) {
        ZLLog(QStringLiteral("error-The blog sent a post without an id"));
        return;
    }
    const QString folder = m_environment.files.postPathForBlogURL(blogName, post.id);
    if (folder.isNull()) {
        ZLLog(QStringLiteral("error-There is no folder for the post “%1”").arg(post.title));
        return;
    }
    const QString type = QStringLiteral("zalmo");
    const QString path = PostSync::postPath(folder);
    const Result<void> written = QFileInfo::exists(path)
        ? post.syncWithPostAtPath(path, type, m_environment.currentDocument ? m_environment.currentDocument() : nullptr)
        : post.saveAtPath(path, type);
    if (!written)
        ZLLog(QStringLiteral("error-%1").arg(written.error().description));
}
