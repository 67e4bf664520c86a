#include "wordpress/ReplyDispatch.h"

#include "platform/ZLLog.h"
#include "wordpress/BlogPostSync.h"
#include "wordpress/PostFieldMaps.h"
#include "wordpress/PublishingPipeline.h"
#include "wordpress/SyncGroup.h"
#include "wordpress/TaxonomySync.h"
#include "wordpress/ZLWordpressService.h"
#include "xmlrpc/TransferErrors.h"

namespace {
/// The calls whose failure ends the upload of their post.
bool isInPublishChain(int type)
{
    switch (type) {
    case ZLWordpressServiceRequestTypePublishPost:
    case ZLWordpressServiceRequestTypeUpdatePost:
    case ZLWordpressServiceRequestTypePublishDraftPost:
    case ZLWordpressServiceRequestTypeNewCategoryForPost:
    case ZLWordpressServiceRequestTypeUploadImageFromURL:
        return true;
    default:
        return false;
    }
}

bool isEdit(int type)
{
    return type == ZLWordpressServiceRequestTypeUpdatePost || type == ZLWordpressServiceRequestTypePublishDraftPost;
}

bool isOfARound(int type)
{
    return type == ZLWordpressServiceRequestTypeSyncPosts || type == ZLWordpressServiceRequestTypeSyncCategories
        || type == ZLWordpressServiceRequestTypeSyncTags;
}

/// Below it is known what the host did, but not what was asked of it.
ZLError withWordsForPosts(ZLError error, int type)
{
    if (!TransferErrors::isUnreadable(error))
        return error;
    if (type == ZLWordpressServiceRequestTypeDeletePost)
        error.description = QStringLiteral("The blog's answer could not be read, so the post is kept on this computer. "
                                           "Please look whether the blog has deleted it, and try again.");
    else if (isInPublishChain(type) && type != ZLWordpressServiceRequestTypeUploadImageFromURL)
        error.description = QStringLiteral("The blog's answer could not be read; the post may be there");
    return error;
}

bool isOnTheWeb(const QString &address)
{
    const QString scheme = QUrl(address).scheme();
    return scheme == QLatin1String("http") || scheme == QLatin1String("https");
}

ZLError errorOf(const XMLRPCResponse &fault)
{
    const int code = int(fault.faultCode());
    const QString text = fault.faultString();
    return {QStringLiteral("Response error"), code,
        text.isEmpty() ? QStringLiteral("The blog refused the call (fault %1) without saying why.").arg(code) : text};
}
} // namespace

ReplyDispatch::ReplyDispatch(
    ZLWordpressService &service, const ZLServiceEnvironment &environment, const Collaborators &collaborators)
    : m_service(service)
    , m_notifications(environment.notifications)
    , m_clock(environment.clock)
    , m_to(collaborators)
{
}

ReplyDispatch::Handler ReplyDispatch::handlerForType(int type)
{
    // The types of comments have no row until there are calls for them.
    static const QHash<int, Handler> handlers = {
        {ZLWordpressServiceRequestTypeGetPosts, &ReplyDispatch::getPosts},
        {ZLWordpressServiceRequestTypeGetPost, &ReplyDispatch::getPost},
        {ZLWordpressServiceRequestTypePublishPost, &ReplyDispatch::publishPost},
        {ZLWordpressServiceRequestTypeUpdatePost, &ReplyDispatch::updatePost},
        {ZLWordpressServiceRequestTypePublishDraftPost, &ReplyDispatch::publishDraftPost},
        {ZLWordpressServiceRequestTypeDeletePost, &ReplyDispatch::deletePost},
        {ZLWordpressServiceRequestTypeGetCategories, &ReplyDispatch::getCategories},
        {ZLWordpressServiceRequestTypeGetTags, &ReplyDispatch::getTags},
        {ZLWordpressServiceRequestTypeUploadImage, &ReplyDispatch::uploadImage},
        {ZLWordpressServiceRequestTypeUploadImageFromURL, &ReplyDispatch::uploadImageFromURL},
        {ZLWordpressServiceRequestTypeNewCategory, &ReplyDispatch::newCategory},
        {ZLWordpressServiceRequestTypeNewCategoryForPost, &ReplyDispatch::newCategoryForPost},
        {ZLWordpressServiceRequestTypePublishPostForPreview, &ReplyDispatch::publishPostForPreview},
        {ZLWordpressServiceRequestTypeGetPostForPreview, &ReplyDispatch::getPostForPreview},
        {ZLWordpressServiceRequestTypeDeletePostForPreview, &ReplyDispatch::deletePostForPreview},
        {ZLWordpressServiceRequestTypeGetProfile, &ReplyDispatch::getProfile},
        {ZLWordpressServiceRequestTypeGetUserBlogs, &ReplyDispatch::getUserBlogs},
        {ZLWordpressServiceRequestTypeSyncPosts, &ReplyDispatch::syncPosts},
        {ZLWordpressServiceRequestTypeGetOptions, &ReplyDispatch::getOptions},
        {ZLWordpressServiceRequestTypeReconnect, &ReplyDispatch::reconnect},
        {ZLWordpressServiceRequestTypeSyncCategories, &ReplyDispatch::syncCategories},
        {ZLWordpressServiceRequestTypeSyncTags, &ReplyDispatch::syncTags},
    };
    return handlers.value(type);
}

ZLWordpressServiceDelegate &ReplyDispatch::delegate() const
{
    static ZLWordpressServiceDelegate nobody;
    return m_service.delegate ? *m_service.delegate : nobody;
}

void ReplyDispatch::didReceiveResponse(const ZLWordpressXMLRPCRequest &call, const ResponsePtr &response)
{
    if (response->isFault()) {
        didReceiveFault(call, *response);
        return;
    }
    const XMLRPCValue &object = response->object();
    if (isEdit(call.currentRequestType) && object.boolean())
        noteEdit(*call.additionalInfo.processingPost, response->date());
    if (const Handler handler = handlerForType(call.currentRequestType))
        (this->*handler)(call, object);
}

/// An edit is not read back, and the blog dates it before it answers. With an earlier date here the next sync would
/// take the writer's own edit for a change made on the blog.
void ReplyDispatch::noteEdit(ZLWordpressPost &post, const QDateTime &answered) const
{
    post.updatedAt = answered.isValid() ? answered : m_clock.now();
}

void ReplyDispatch::didReceiveFault(const Call &call, const XMLRPCResponse &response)
{
    ZLLog(QStringLiteral("request failed"));
    const ZLError error = errorOf(response);
    if (m_to.publishing.resentWithTermsByName(call, error))
        return;
    const QPointer<ZLWordpressService> service(&m_service);
    tellFailure(call, error);
    if (service && call.currentRequestType == ZLWordpressServiceRequestTypeSyncPosts)
        m_to.group.didFailSyncPostsForRequest(call.currentRequest, error);
}

void ReplyDispatch::didFailWithError(const ZLWordpressXMLRPCRequest &call, const ZLError &error)
{
    if (call.currentRequestType == ZLWordpressServiceRequestTypeGetPost && call.additionalInfo.processingPost)
        return didFailToReadBack(call);
    const QPointer<ZLWordpressService> service(&m_service);
    tellFailure(call, withWordsForPosts(error, call.currentRequestType));
    if (service && isOfARound(call.currentRequestType))
        m_to.group.finish(call.currentRequest);
}

void ReplyDispatch::tellFailure(const Call &call, const ZLError &error)
{
    const QPointer<ZLWordpressService> service(&m_service);
    if (isInPublishChain(call.currentRequestType))
        delegate().didFailToUploadPost(&m_service, call.additionalInfo.processingPost);
    if (service)
        delegate().didFailToPerformRequest(&m_service, call.currentRequestType, error);
    if (service && call.currentRequestType == ZLWordpressServiceRequestTypeDeletePost)
        delegate().didFailToDeletePost(&m_service, call.additionalInfo.processingPost, error);
}

void ReplyDispatch::didSendBodyData(const ZLWordpressXMLRPCRequest &call, float progress)
{
    m_to.publishing.didSendBodyData(call, progress);
}

void ReplyDispatch::getPosts(const Call &call, const XMLRPCValue &object)
{
    const QList<PostPtr> posts = PostFieldMaps::postsFromResponse(object);
    m_to.posts.syncPosts(posts, call, [this, posts] { delegate().didGetPosts(&m_service, posts); });
}

void ReplyDispatch::syncPosts(const Call &call, const XMLRPCValue &object)
{
    m_to.posts.syncPosts(PostFieldMaps::postsFromWPGetPostsResponse(object), call);
}

void ReplyDispatch::publishPost(const Call &call, const XMLRPCValue &object)
{
    const PostPtr post = call.additionalInfo.processingPost;
    if (!object.boolean())
        delegate().didFailToUploadPost(&m_service, post);
    else if (call.isForCurrentBlog())
        m_to.publishing.getPost(object.string(), post);
    else
        didFailToReadBack(call); // its number means another post on the blog that the service stands for now
}

/// Nothing is there to put in place of the writer's post, which therefore stays as it is.
void ReplyDispatch::didFailToReadBack(const Call &call)
{
    const ZLError error{QStringLiteral("ZLUpload"), 2,
        QStringLiteral("The post is on the blog, but the blog's copy of it could not be read.")};
    ZLLog(error.description);
    const QPointer<ZLWordpressService> service(&m_service);
    delegate().didFailToUploadPost(&m_service, call.additionalInfo.processingPost);
    if (service)
        delegate().didFailToPerformRequest(&m_service, call.currentRequestType, error);
}

void ReplyDispatch::getPost(const Call &call, const XMLRPCValue &object)
{
    const PostPtr original = call.additionalInfo.processingPost;
    const PostPtr remote = PostFieldMaps::postFromWPGetPostResponse(object);
    // A copy that comes after the service has gone to another blog would be filed under that one.
    if (remote->id.isEmpty() || !call.isForCurrentBlog()) {
        didFailToReadBack(call);
        return;
    }
    ZLNotifications &notifications = m_notifications;
    delegate().didPublishPost(&m_service, remote, original);
    Q_EMIT notifications.didPublishPost(remote);
}

void ReplyDispatch::updatePost(const Call &call, const XMLRPCValue &object)
{
    const PostPtr post = call.additionalInfo.processingPost;
    if (!object.boolean()) {
        delegate().didFailToUploadPost(&m_service, post);
        return;
    }
    ZLNotifications &notifications = m_notifications;
    delegate().didUpdatePost(&m_service, post);
    Q_EMIT notifications.didUpdatePost(post, {});
}

void ReplyDispatch::publishDraftPost(const Call &call, const XMLRPCValue &object)
{
    const PostPtr post = call.additionalInfo.processingPost;
    if (!object.boolean()) {
        delegate().didFailToUploadPost(&m_service, post);
        return;
    }
    ZLNotifications &notifications = m_notifications;
    delegate().didPublishDraftPost(&m_service, post);
    Q_EMIT notifications.didUpdatePost(post, {});
}

void ReplyDispatch::deletePost(const Call &call, const XMLRPCValue &)
{
    delegate().didDeletePost(&m_service, call.additionalInfo.processingPost); // whatever the blog answered
}

void ReplyDispatch::getCategories(const Call &, const XMLRPCValue &object)
{
    m_to.taxonomies.addCategoriesToProcessedTaxonomies(object);
}

void ReplyDispatch::getTags(const Call &, const XMLRPCValue &object)
{
    m_to.taxonomies.addTagsToProcessedTaxonomies(object);
}

void ReplyDispatch::uploadImage(const Call &, const XMLRPCValue &object)
{
    delegate().didUploadImage(&m_service, QUrl(object[u"url"].string()));
}

void ReplyDispatch::uploadImageFromURL(const Call &call, const XMLRPCValue &object)
{
    const CallInfo &info = call.additionalInfo;
    if (info.lacksPicture) {
        // A blog should refuse a picture without bytes. Some make an empty file of it, which no post should show.
        const QString text = QStringLiteral("The picture %1 could not be read.").arg(info.processingMedia);
        tellFailure(call, {QStringLiteral("ZLFile"), 2, text});
        return;
    }
    const ZLWordpressImage image{object[u"url"].string(), object[u"id"].string()};
    if (!image.url.isEmpty() && !isOnTheWeb(image.url)) {
        const QString text =
            QStringLiteral("The blog took the picture %1, but names a place that is not on the web: %2");
        tellFailure(call, {QStringLiteral("ZLUpload"), 4, text.arg(info.processingMedia, image.url)});
        return;
    }
    const QString text = QStringLiteral("The blog took the picture %1, but does not say where it is.");
    if (!m_to.publishing.didUploadImageFromURL(info.processingMedia, image, info.processingPost, info.processingType))
        tellFailure(call, {QStringLiteral("ZLUpload"), 3, text.arg(info.processingMedia)});
}

void ReplyDispatch::newCategory(const Call &call, const XMLRPCValue &)
{
    delegate().didCreateCategory(&m_service, call.additionalInfo.processingCategory);
}

void ReplyDispatch::newCategoryForPost(const Call &call, const XMLRPCValue &)
{
    const CallInfo &info = call.additionalInfo;
    m_to.publishing.didCreateCategory(info.processingCategory, info.processingPost, info.processingType);
}

void ReplyDispatch::publishPostForPreview(const Call &, const XMLRPCValue &object)
{
    m_to.publishing.getPostForPreview(object.string());
}

void ReplyDispatch::getPostForPreview(const Call &, const XMLRPCValue &object)
{
    delegate().makePreviewTemplateForPost(PostFieldMaps::postFromResponse(object));
}

void ReplyDispatch::deletePostForPreview(const Call &, const XMLRPCValue &)
{
    ZLLog(QStringLiteral("did delete post for preview"));
}

void ReplyDispatch::getProfile(const Call &, const XMLRPCValue &object)
{
    delegate().didGetProfile(&m_service, object);
}

void ReplyDispatch::getUserBlogs(const Call &, const XMLRPCValue &object)
{
    delegate().didGetUserBlogs(&m_service, object);
}

void ReplyDispatch::getOptions(const Call &, const XMLRPCValue &object)
{
    delegate().didGetBlogOptions(&m_service, object);
}

void ReplyDispatch::reconnect(const Call &, const XMLRPCValue &)
{
    m_service.didReconnect();
}

void ReplyDispatch::syncCategories(const Call &call, const XMLRPCValue &object)
{
    m_to.taxonomies.syncCategories(object, call);
}

void ReplyDispatch::syncTags(const Call &call, const XMLRPCValue &object)
{
    m_to.taxonomies.syncTags(object, call);
}
