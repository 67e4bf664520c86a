#include "wordpress/SyncShare.h"

#include "model/PostSync.h"
#include "platform/ZLLog.h"
#include "wordpress/PostFieldMaps.h"
#include "wordpress/TaxonomySync.h"
#include "wordpress/ZLWordpressService.h"

#include <QElapsedTimer>
#include <QFileInfo>

using ServiceFailures::isCancelled;

namespace {
constexpr int recentPosts = 50; // fixed: there is no paging
constexpr qint64 turnMilliseconds = 12; // of writing, before the event loop has its turn
} // namespace

SyncShare::SyncShare(ZLWordpressService &service, const ZLServiceEnvironment &environment)
    : m_service(service)
    , m_environment(environment)
    , m_calls(service, environment.connections)
{
}

void SyncShare::syncBlogPosts()
{
    begin(Posts);
    begin(Pages);
}

void SyncShare::syncBlogTaxonomies()
{
    begin(Categories);
    begin(Tags);
}

void SyncShare::begin(Part part)
{
    if (m_underWay.contains(part)) // its answer will do
        return;
    m_underWay.insert(part);
    sync(part);
}

void SyncShare::stop()
{
    m_underWay.clear();
    m_calls.cancelAll();
    tellEnd();
}

RequestPtr SyncShare::request(Part part) const
{
    const QString number = QStringLiteral("number");
    switch (part) {
    case Posts:
        return m_calls.blogRequest(QStringLiteral("wp.getPosts"), {XMLRPCStruct{{number, recentPosts}}});
    case Pages:
        return m_calls.blogRequest(QStringLiteral("wp.getPosts"),
            {XMLRPCStruct{{number, recentPosts}, {QStringLiteral("post_type"), QStringLiteral("page")}}});
    case Categories:
        return m_calls.blogRequest(QStringLiteral("metaWeblog.getCategories"));
    default:
        return m_calls.blogRequest(QStringLiteral("wp.getTerms"), {QStringLiteral("post_tag")});
    }
}

QCoro::Task<void> SyncShare::sync(Part part)
{
    CallAnswer answer = co_await m_calls.send(request(part));
    if (!answer && isCancelled(answer.error()))
        co_return;
    Result<bool> taken = answer ? Result<bool>(true) : failure(answer.error());
    if (answer) {
        taken = co_await take(part, *std::exchange(answer, ResponsePtr()));
        if (!taken && isCancelled(taken.error()))
            co_return;
    }
    const QPointer<ZLWordpressService> service(&m_service);
    if (!taken)
        tellFailure(part, taken.error());
    if (!service || !m_underWay.remove(part)) // stopped by whoever was told
        co_return;
    if (m_underWay.isEmpty())
        tellEnd();
}

QCoro::Task<Result<bool>> SyncShare::take(Part part, ResponsePtr response)
{
    if (!response->object().isArray())
        co_return failure(ServiceFailures::unusable());
    const bool isOfPosts = part == Posts || part == Pages;
    QCoro::Task<Result<bool>> taking = isOfPosts ? takePosts(response) : takeTerms(part, response);
    response.reset();
    const Result<bool> taken = co_await taking;
    co_return taken;
}

/// Writes them a few at a time, since each is synced to the disk and the window must go on.
QCoro::Task<Result<bool>> SyncShare::takePosts(ResponsePtr response)
{
    const QList<PostPtr> posts = PostFieldMaps::postsFromWPGetPostsResponse(response->object(), recentPosts);
    QElapsedTimer turn;
    turn.start();
    for (const PostPtr &post : posts) {
        if (turn.elapsed() >= turnMilliseconds) {
            const Result<bool> mayGoOn = co_await m_calls.nextTurn();
            if (!mayGoOn)
                co_return mayGoOn;
            turn.restart();
        }
        write(*post);
    }
    co_return true;
}

QCoro::Task<Result<bool>> SyncShare::takeTerms(Part part, ResponsePtr response)
{
    const int type = part == Categories ? ZLTaxonomy::Category : ZLTaxonomy::Tag;
    auto reading = m_calls.work<QList<TaxonomyPtr>>(
        [response = std::move(response), type] { return TaxonomySync::read(response->object(), type); });
    const Result<QList<TaxonomyPtr>> terms = co_await reading;
    if (!terms)
        co_return failure(terms.error());
    if (m_service.account)
        TaxonomySync::replace(*m_service.account, type, *terms, m_environment);
    co_return true;
}

void SyncShare::write(ZLWordpressPost &post)
{
    if (post.id.isEmpty()) {
        ZLLog(QStringLiteral("error-The blog sent a post without an id"));
        return;
    }
    // The blog may have been renamed since it was asked.
    const QString folder = m_environment.files.postPathForBlogURL(m_service.blogName, post.id);
    if (folder.isNull()) {
        ZLLog(QStringLiteral("error-There is no folder for the post “%1”").arg(post.title));
        return;
    }
    const QString type = QStringLiteral("zalmo");
    const QString path = PostSync::postPath(folder);
    // What the round brings may be the very update that is under way; a change of others the blog tells that by itself.
    if (m_service.uploadOfPost(QUrl::fromLocalFile(path)))
        return;
    const Result<void> written = QFileInfo::exists(path) ? post.syncWithPostAtPath(path, type, m_environment.documents)
                                                         : post.saveAtPath(path, type);
    if (!written)
        ZLLog(QStringLiteral("error-%1").arg(written.error().description));
}

void SyncShare::tellFailure(Part part, const ZLError &error)
{
    // Not everybody who may write on a blog may list its pages or terms: for those it has none.
    if (part != Posts && ServiceFailures::isForbidden(error)) {
        ZLLog(error.description);
        return;
    }
    const auto type = part == Categories ? ZLWordpressServiceRequestTypeSyncCategories
        : part == Tags                   ? ZLWordpressServiceRequestTypeSyncTags
                                         : ZLWordpressServiceRequestTypeSyncPosts;
    if (m_service.delegate)
        m_service.delegate->didFailToPerformRequest(&m_service, type, error);
}

void SyncShare::tellEnd()
{
    if (m_service.delegate)
        m_service.delegate->didSyncBlogWithName(&m_service, m_service.blogName);
}
