#include "wordpress/PublishingPipeline.h"

#include "platform/ZLLog.h"
#include "text/ContentPasses.h"
#include "wordpress/LocalPictures.h"
#include "wordpress/PostParameters.h"
#include "wordpress/ZLWordpressService.h"

#include <QFileInfo>

namespace {
const QString &filePrefix()
{
    static const QString prefix = QStringLiteral("file://");
    return prefix;
}

/// The full-size twin of a thumbnail's address: "_thumb" in its last piece becomes "_full".
QString fullSizeAddress(const QString &address)
{
    const QString name = LocalPictures::fileName(address);
    const QString fullName = QString(name).replace(QLatin1String("_thumb"), QLatin1String("_full"));
    return address.chopped(name.size()) + fullName;
}

void logExtensions(const ZLWordpressPost &post)
{
    for (const QString &address : ContentPasses::imageSources(post.content, filePrefix()))
        ZLLog(QFileInfo(LocalPictures::fileName(address)).suffix());
}

CallInfo infoOf(const PostPtr &post)
{
    CallInfo info;
    info.processingPost = post;
    return info;
}

bool isContentCall(int type)
{
    return type == ZLWordpressServiceRequestTypePublishPost || type == ZLWordpressServiceRequestTypeUpdatePost
        || type == ZLWordpressServiceRequestTypePublishDraftPost;
}

bool isOnUploadRoad(int type)
{
    return isContentCall(type) || type == ZLWordpressServiceRequestTypeGetPost
        || type == ZLWordpressServiceRequestTypeUploadImageFromURL
        || type == ZLWordpressServiceRequestTypeNewCategoryForPost;
}
} // namespace

PublishingPipeline::PublishingPipeline(
    ZLWordpressService &service, const ZLServiceEnvironment &environment, ServiceCalls &calls, ImageUploads &uploads)
    : m_service(service)
    , m_environment(environment)
    , m_calls(calls)
    , m_uploads(uploads)
{
}

bool PublishingPipeline::isForeign(const QString &address, const ZLWordpressPost &post) const
{
    return post.storedContent.contains(address) && !LocalPictures::isInCacheFolder(address, m_environment.files);
}

QStringList PublishingPipeline::localPictures(const ZLWordpressPost &post) const
{
    QStringList noted;
    for (const QString &address : ContentPasses::imageSources(post.content, filePrefix())) {
        if (isForeign(address, post))
            continue;
        noted.append(address);
        // A picture without a thumbnail is its own full size and stands twice in the list, on purpose: it is sent once.
        const QString full = fullSizeAddress(address);
        if (post.content.contains(full))
            noted.append(full);
    }
    if (post.featuredImageId.isEmpty() && post.featuredImageURL.startsWith(filePrefix()))
        noted.append(post.featuredImageURL);
    return noted;
}

void PublishingPipeline::syncImagesFromPost(const PostPtr &post, int kind)
{
    logExtensions(*post);
    const QStringList noted = localPictures(*post);
    qsizetype onTheBlog = 0;
    for (const QString &address : noted) {
        Q_EMIT m_environment.notifications.syncingImagesPostStatus(post);
        if (m_uploads.syncedImages.contains(address))
            ++onTheBlog;
        else if (!m_uploads.syncingImages.contains(address))
            m_uploads.syncImage(address, post, kind);
    }
    if (onTheBlog != noted.size())
        return;
    if (post->content.contains(filePrefix()))
        post->content = ContentPasses::replaceOccurrences(post->content, localAddressesOnTheBlog(post->content));
    // A picture that the body has lost meanwhile may still be on its way, and its reply would send the content again.
    m_uploads.cancel(post, noted);
    sendContent(post, kind);
}

QHash<QString, QString> PublishingPipeline::localAddressesOnTheBlog(const QString &content) const
{
    QHash<QString, QString> addresses;
    for (auto image = m_uploads.syncedImages.cbegin(); image != m_uploads.syncedImages.cend(); ++image) {
        if (image.key().startsWith(filePrefix()) && content.contains(image.key()))
            addresses.insert(image.key(), image.value());
    }
    return addresses;
}

void PublishingPipeline::sendContent(const PostPtr &post, int kind)
{
    if (kind == ZLWordpressService::NewPost)
        publishPost(post);
    else if (kind == ZLWordpressService::Update)
        updatePost(post);
    else if (kind == ZLWordpressService::PublishDraft)
        publishDraftPost(post);
}

bool PublishingPipeline::didUploadImageFromURL(
    const QString &address, const ZLWordpressImage &image, const PostPtr &post, int kind)
{
    if (!m_uploads.didUpload(address, image))
        return false;
    if (post)
        syncImagesFromPost(post, kind);
    return true;
}

void PublishingPipeline::publishPost(const PostPtr &post, bool termsByName)
{
    Q_EMIT m_environment.notifications.syncingContentPostStatus(post);
    spawnContentCall(QStringLiteral("wp.newPost"), {}, post, ZLWordpressServiceRequestTypePublishPost, termsByName);
}

void PublishingPipeline::updatePost(const PostPtr &post, bool termsByName)
{
    editPost(post, ZLWordpressServiceRequestTypeUpdatePost, termsByName);
}

void PublishingPipeline::publishDraftPost(const PostPtr &post, bool termsByName)
{
    editPost(post, ZLWordpressServiceRequestTypePublishDraftPost, termsByName);
}

void PublishingPipeline::editPost(const PostPtr &post, int type, bool termsByName)
{
    spawnContentCall(QStringLiteral("wp.editPost"), {post->id}, post, type, termsByName);
}

void PublishingPipeline::spawnContentCall(
    const QString &method, XMLRPCArray leading, const PostPtr &post, int type, bool termsByName)
{
    const bool isUpdate = type != ZLWordpressServiceRequestTypePublishPost;
    const PostParameters::Surroundings surroundings{m_service.account, m_uploads.syncedWPImages, isUpdate, termsByName};
    XMLRPCStruct content = PostParameters::forWPPost(*post, surroundings);
    CallInfo info = infoOf(post);
    info.hasTermIds = PostParameters::hasTermIds(content);
    info.termsByName = termsByName;
    leading.emplace_back(std::move(content));
    m_calls.spawn(m_calls.blogRequest(method, std::move(leading)), type, info);
}

bool PublishingPipeline::resentWithTermsByName(const ZLWordpressXMLRPCRequest &call, const ZLError &error)
{
    // The blog gives the same code for a refused login; then the second try fails as well, and that is told.
    const CallInfo &info = call.additionalInfo;
    const bool mayHelp = error.code == 403 && isContentCall(call.currentRequestType) && info.hasTermIds;
    if (!mayHelp || !info.processingPost || !call.isForCurrentBlog())
        return false;
    ZLLog(QStringLiteral("sending the post again with its terms by name"));
    if (call.currentRequestType == ZLWordpressServiceRequestTypePublishPost)
        publishPost(info.processingPost, true);
    else
        editPost(info.processingPost, call.currentRequestType, true);
    return true;
}

void PublishingPipeline::deletePost(const PostPtr &post)
{
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("wp.deletePost"), {post->id}),
        ZLWordpressServiceRequestTypeDeletePost, infoOf(post));
}

void PublishingPipeline::getPost(const QString &id, const PostPtr &original)
{
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("wp.getPost"), {id}), ZLWordpressServiceRequestTypeGetPost,
        infoOf(original));
}

void PublishingPipeline::cancelUploadOfPost(const PostPtr &post)
{
    m_uploads.cancel(post, localPictures(*post));
    m_calls.cancel([&](const ZLWordpressXMLRPCRequest &call) {
        return isOnUploadRoad(call.currentRequestType) && call.additionalInfo.processingPost == post;
    });
}

void PublishingPipeline::leaveBlog()
{
    QSet<PostPtr> posts = m_uploads.posts();
    for (const ServiceCallPtr &call : m_calls.unanswered()) {
        if (call->currentRequestType == ZLWordpressServiceRequestTypeNewCategoryForPost)
            posts.insert(call->additionalInfo.processingPost);
    }
    for (const PostPtr &post : std::as_const(posts)) {
        cancelUploadOfPost(post);
        if (!m_service.delegate)
            continue;
        const QString text = QStringLiteral("“%1” was not sent, because another blog was chosen before its pictures "
                                            "were there.");
        m_service.delegate->didFailToUploadPost(&m_service, post);
        m_service.delegate->didFailToPerformRequest(&m_service, ZLWordpressServiceRequestTypeUploadImageFromURL,
            {QStringLiteral("ZLUpload"), 1, text.arg(post->title)});
    }
}

void PublishingPipeline::didSendBodyData(const ZLWordpressXMLRPCRequest &call, float progress)
{
    const PostPtr post = call.additionalInfo.processingPost;
    const bool isUpload = call.currentRequestType == ZLWordpressServiceRequestTypeUploadImageFromURL;
    if (!post || !(isUpload || isContentCall(call.currentRequestType)) || !m_service.delegate)
        return;
    if (isUpload)
        m_uploads.setProgress(call.additionalInfo.processingMedia, progress);
    const float whole = isUpload ? m_uploads.progress(localPictures(*post)) : progress;
    m_service.delegate->didSendBodyData(&m_service, post, whole);
}

void PublishingPipeline::publishPostForPreview(const PostPtr &post)
{
    m_service.isGeneratingPreview = true;
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("metaWeblog.newPost"), {PostParameters::forPost(*post)}),
        ZLWordpressServiceRequestTypePublishPostForPreview);
}

void PublishingPipeline::getPostForPreview(const QString &id)
{
    m_calls.spawn(m_calls.postFirstRequest(QStringLiteral("metaWeblog.getPost"), id),
        ZLWordpressServiceRequestTypeGetPostForPreview);
}

void PublishingPipeline::deletePostForPreview(const PostPtr &post)
{
    ZLLog(QStringLiteral("delete: %1").arg(post->id));
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("wp.deletePost"), {post->id}),
        ZLWordpressServiceRequestTypeDeletePostForPreview, infoOf(post));
}

void PublishingPipeline::syncCategory(const QString &name, const PostPtr &post, int kind)
{
    m_syncingCategories.insert(name);
    CallInfo info = infoOf(post);
    info.processingCategory = name;
    info.processingType = kind;
    const XMLRPCStruct category{{QStringLiteral("name"), name}};
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("wp.newCategory"), {category}),
        ZLWordpressServiceRequestTypeNewCategoryForPost, info);
}

void PublishingPipeline::newCategory(const QString &name)
{
    CallInfo info;
    info.processingCategory = name;
    const XMLRPCStruct category{{QStringLiteral("name"), name}};
    m_calls.spawn(m_calls.blogRequest(QStringLiteral("wp.newCategory"), {category}),
        ZLWordpressServiceRequestTypeNewCategory, info);
}

void PublishingPipeline::didCreateCategory(const QString &name, const PostPtr &post, int kind)
{
    m_syncedCategories.insert(name);
    m_syncingCategories.remove(name);
    syncImagesFromPost(post, kind);
}

void PublishingPipeline::cleanData()
{
    m_syncingCategories.clear();
    m_syncedCategories.clear();
    m_uploads.cleanData();
}
