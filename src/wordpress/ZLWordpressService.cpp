#include "wordpress/ZLWordpressService.h"

#include "platform/ZLLog.h"
#include "wordpress/BlogPostSync.h"
#include "wordpress/ImageUploads.h"
#include "wordpress/PublishingPipeline.h"
#include "wordpress/ReplyDispatch.h"
#include "wordpress/ServiceCalls.h"
#include "wordpress/SyncGroup.h"
#include "wordpress/TaxonomySync.h"

struct ZLWordpressService::Private {
    Private(ZLWordpressService &service, const ZLServiceEnvironment &given)
        : environment(given)
        , calls(service, environment.connections)
        , group(service, calls)
        , uploads(environment, calls)
        , publishing(service, environment, calls, uploads)
        , posts(service, environment, calls, group)
        , taxonomies(service, environment, calls, group)
        , dispatch(service, environment, {publishing, posts, taxonomies, group})
    {
        calls.setReceiver(&dispatch);
    }

    ZLServiceEnvironment environment;
    QUrl blogApiURL;
    ServiceCalls calls;
    SyncGroup group;
    ImageUploads uploads;
    PublishingPipeline publishing;
    BlogPostSync posts;
    TaxonomySync taxonomies;
    ReplyDispatch dispatch;
};

ZLWordpressService::ZLWordpressService(const QUrl &apiURL, const ZLServiceEnvironment &environment, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>(*this, environment))
{
    d->blogApiURL = apiURL;
}

ZLWordpressService::ZLWordpressService(
    const AccountPtr &account, const ZLServiceEnvironment &environment, QObject *parent)
    : ZLWordpressService(apiURLOfBlog(account->url), environment, parent)
{
    this->account = account;
    username = account->name;
    blogName = account->alias();
    readPassword(account);
}

ZLWordpressService::~ZLWordpressService() = default;

QUrl ZLWordpressService::apiURLOfBlog(const QString &blogURL)
{
    return QUrl(blogURL + QLatin1String("/xmlrpc.php"));
}

QUrl ZLWordpressService::blogApiURL() const
{
    return d->blogApiURL;
}

void ZLWordpressService::changeApiURL(const QUrl &url)
{
    if (url != d->blogApiURL)
        d->publishing.leaveBlog();
    d->blogApiURL = url;
}

void ZLWordpressService::readPassword(const AccountPtr &account)
{
    password =
        d->environment.keychain.passwordForService(keychainService(), keychainAccount(account->name, account->url));
    if (password.isNull())
        ZLLog(QStringLiteral("No password for acc: %1").arg(account->name));
}

void ZLWordpressService::cleanData()
{
    d->publishing.cleanData();
    d->taxonomies.cleanData();
}

QString ZLWordpressService::keychainAccount(const QString &name, const QString &url)
{
    return name + QLatin1String("::") + url;
}

QString ZLWordpressService::keychainService()
{
    return QStringLiteral("com.zalmo.Zalmo");
}

void ZLWordpressService::getOptions()
{
    d->calls.spawn(d->calls.blogRequest(QStringLiteral("wp.getOptions")), ZLWordpressServiceRequestTypeGetOptions);
}

void ZLWordpressService::reconnect()
{
    d->calls.spawn(d->calls.blogRequest(QStringLiteral("wp.getOptions")), ZLWordpressServiceRequestTypeReconnect);
}

void ZLWordpressService::didReconnect()
{
    ZLLog(QStringLiteral("didReconnect"));
    if (account && account->preferences && account->preferences->login_automatically.value_or(false)) {
        const Result<void> stored = d->environment.keychain.setPassword(
            password, keychainService(), keychainAccount(account->name, account->url));
        if (!stored)
            ZLLog(QStringLiteral("error storing password - %1").arg(stored.error().description));
    }
    syncBlogPosts();
    if (delegate)
        delegate->didReconnectAccount(this, account);
}

void ZLWordpressService::didCancelReconnect()
{
    d->group.abandon();
}

void ZLWordpressService::getProfile()
{
    d->calls.spawn(d->calls.blogRequest(QStringLiteral("wp.getProfile")), ZLWordpressServiceRequestTypeGetProfile);
}

void ZLWordpressService::getUserBlogs()
{
    d->calls.spawn(d->calls.request(QStringLiteral("wp.getUsersBlogs"), d->calls.authenticationParameters()),
        ZLWordpressServiceRequestTypeGetUserBlogs);
}

void ZLWordpressService::syncCategoriesAndPublishPost(const PostPtr &post, int kind)
{
    // The name is older than the flow: new categories go along with the content by name.
    d->publishing.syncImagesFromPost(post, kind);
}

void ZLWordpressService::publishPost(const PostPtr &post)
{
    d->publishing.publishPost(post);
}

void ZLWordpressService::updatePost(const PostPtr &post)
{
    d->publishing.updatePost(post);
}

void ZLWordpressService::publishDraftPost(const PostPtr &post)
{
    d->publishing.publishDraftPost(post);
}

void ZLWordpressService::deletePost(const PostPtr &post)
{
    d->publishing.deletePost(post);
}

void ZLWordpressService::getPost(const QString &id)
{
    d->calls.spawn(
        d->calls.postFirstRequest(QStringLiteral("metaWeblog.getPost"), id), ZLWordpressServiceRequestTypeGetPost);
}

void ZLWordpressService::getPost(const QString &id, const PostPtr &original)
{
    d->publishing.getPost(id, original);
}

void ZLWordpressService::newCategory(const QString &name)
{
    d->publishing.newCategory(name);
}

void ZLWordpressService::syncCategory(const QString &name, const PostPtr &post, int kind)
{
    d->publishing.syncCategory(name, post, kind);
}

void ZLWordpressService::uploadImage(const QByteArray &picture)
{
    d->uploads.uploadImage(picture);
}

void ZLWordpressService::publishPostForPreview(const PostPtr &post)
{
    d->publishing.publishPostForPreview(post);
}

void ZLWordpressService::deletePostForPreview(const PostPtr &post)
{
    d->publishing.deletePostForPreview(post);
}

void ZLWordpressService::cancelUploadOfPost(const PostPtr &post)
{
    d->publishing.cancelUploadOfPost(post);
}

void ZLWordpressService::addImageSrcForSyncedImages(const QString &source, const QString &file)
{
    d->uploads.syncedImages.insert(file, source);
}

void ZLWordpressService::syncBlogPosts()
{
    d->posts.syncBlogPosts();
}

void ZLWordpressService::syncBlogTaxonomies()
{
    d->taxonomies.syncBlogTaxonomies();
}

void ZLWordpressService::syncTaxonomiesAfterPublish(const PostPtr &post)
{
    d->taxonomies.syncTaxonomiesAfterPublish(*post);
}

void ZLWordpressService::getPosts()
{
    d->posts.getPosts();
}

void ZLWordpressService::getTaxonomies()
{
    d->taxonomies.getTaxonomies();
}

void ZLWordpressService::stopSync()
{
    d->group.stop();
}

bool ZLWordpressService::isSyncing() const
{
    return !d->group.isEmpty();
}

bool ZLWordpressService::isIdle() const
{
    return d->calls.unanswered().isEmpty() && !d->uploads.isEncoding() && !d->posts.isWriting();
}

EditorBody ZLWordpressService::postContentForZalmoEditor(const QString &stored)
{
    EditorBody body = ContentConversion::postContentForZalmoEditor(stored, d->environment.files);
    // So that publishing turns the local addresses back without an upload.
    d->uploads.syncedImages.insert(body.localImages);
    return body;
}
