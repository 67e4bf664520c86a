#include "wordpress/ZLWordpressService.h"

#include "platform/ZLLog.h"
#include "wordpress/PostFieldMaps.h"
#include "wordpress/PostParameters.h"
#include "wordpress/SyncShare.h"
#include "wordpress/SyncedImages.h"
#include "wordpress/TaxonomySync.h"
#include "xmlrpc/TransferErrors.h"

using ServiceFailures::isCancelled;

struct ZLWordpressService::Private {
    Private(ZLWordpressService &service, const ZLServiceEnvironment &given)
        : environment(given)
        , calls(service, environment.connections)
        , share(service, environment)
    {
    }

    ZLServiceEnvironment environment;
    QUrl blogApiURL;
    SyncedImages images;
    QSet<QString> deletions; ///< ids of posts that the blog was asked to delete
    ServiceCalls calls;
    SyncShare share;
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

ZLWordpressService::~ZLWordpressService()
{
    qDeleteAll(findChildren<PostUpload *>(Qt::FindDirectChildrenOnly)); // before what they stand on
}

QUrl ZLWordpressService::apiURLOfBlog(const QString &blogURL)
{
    return QUrl(blogURL + QLatin1String("/xmlrpc.php"));
}

QUrl ZLWordpressService::blogApiURL() const
{
    return account ? apiURLOfBlog(account->url) : d->blogApiURL;
}

void ZLWordpressService::readPassword(const AccountPtr &account)
{
    password =
        d->environment.keychain.passwordForService(keychainService(), keychainAccount(account->name, account->url));
    if (password.isNull())
        ZLLog(QStringLiteral("No password for acc: %1").arg(account->name));
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
    askForOptions();
}

QCoro::Task<void> ZLWordpressService::askForOptions()
{
    const CallAnswer answer = co_await d->calls.send(d->calls.blogRequest(QStringLiteral("wp.getOptions")));
    if (!answer)
        tellFailure(ZLWordpressServiceRequestTypeGetOptions, answer.error());
    else if (delegate)
        delegate->didGetBlogOptions(this, (*answer)->object());
}

/// Not to be called with anything after it that looks at the service: when the failure is that it ends, so it does.
void ZLWordpressService::tellFailure(ZLWordpressServiceRequestType type, const ZLError &error)
{
    if (!isCancelled(error) && delegate)
        delegate->didFailToPerformRequest(this, type, error);
}

PostUpload *ZLWordpressService::syncCategoriesAndPublishPost(const PostPtr &post, Upload::Kind kind)
{
    // The name is older than the flow: new categories go along with the content by name.
    for (PostUpload *upload : uploads()) {
        if (upload->post() == post)
            return upload;
    }
    const auto self = weak_from_this().lock(); // the delegate may let go of it when the upload fails at once
    auto *upload = new PostUpload(post, kind, *this, d->environment, d->images);
    upload->start();
    return upload;
}

QList<PostUpload *> ZLWordpressService::uploads() const
{
    QList<PostUpload *> all = findChildren<PostUpload *>(Qt::FindDirectChildrenOnly);
    all.removeIf([](const PostUpload *upload) { return upload->hasEnded(); });
    return all;
}

PostUpload *ZLWordpressService::uploadOfPost(const QUrl &localFile) const
{
    for (PostUpload *upload : uploads()) {
        if (upload->localFile() == localFile)
            return upload;
    }
    return nullptr;
}

void ZLWordpressService::cancelUploadOfPost(const PostPtr &post)
{
    for (PostUpload *upload : uploads()) {
        if (upload->post() == post)
            upload->cancel();
    }
}

void ZLWordpressService::cancelUploads()
{
    for (PostUpload *upload : uploads())
        upload->cancel();
}

void ZLWordpressService::addImageSrcForSyncedImages(const QString &source, const QString &file)
{
    d->images.syncedImages.insert(file, source);
}

void ZLWordpressService::deletePost(const PostPtr &post)
{
    // A second call would empty the blog's trash.
    if (!d->deletions.contains(post->id))
        askForDeletion(post);
}

QCoro::Task<void> ZLWordpressService::askForDeletion(PostPtr post)
{
    const QString id = post->id;
    d->deletions.insert(id);
    auto asking = d->calls.send(d->calls.blogRequest(QStringLiteral("wp.deletePost"), {id}));
    const CallAnswer answer = co_await asking;
    if (!answer && isCancelled(answer.error()))
        co_return;
    d->deletions.remove(id);
    const QPointer<ZLWordpressService> self(this);
    if (answer) {
        if (delegate)
            delegate->didDeletePost(this, post); // whatever the blog answered
        co_return;
    }
    ZLError error = answer.error();
    if (TransferErrors::mayHaveHappened(error))
        error.description = QStringLiteral("The blog's answer could not be read, so the post is kept on this computer. "
                                           "Please look whether the blog has deleted it, and try again.");
    tellFailure(ZLWordpressServiceRequestTypeDeletePost, error);
    if (self && delegate)
        delegate->didFailToDeletePost(this, post, error);
}

void ZLWordpressService::publishPostForPreview(const PostPtr &post)
{
    isGeneratingPreview = true;
    makePreview(d->calls.blogRequest(QStringLiteral("metaWeblog.newPost"), {PostParameters::forPost(*post)}));
}

QCoro::Task<void> ZLWordpressService::makePreview(RequestPtr request)
{
    const CallAnswer made = co_await d->calls.send(request);
    if (!made) {
        tellFailure(ZLWordpressServiceRequestTypePublishPostForPreview, made.error());
        co_return;
    }
    const QString id = (*made)->object().string();
    const CallAnswer post = co_await d->calls.send(d->calls.postFirstRequest(QStringLiteral("metaWeblog.getPost"), id));
    if (!post)
        tellFailure(ZLWordpressServiceRequestTypeGetPostForPreview, post.error());
    else if (delegate)
        delegate->makePreviewTemplateForPost(PostFieldMaps::postFromResponse((*post)->object()));
}

void ZLWordpressService::deletePostForPreview(const PostPtr &post)
{
    ZLLog(QStringLiteral("delete: %1").arg(post->id));
    removePreview(post);
}

QCoro::Task<void> ZLWordpressService::removePreview(PostPtr post)
{
    auto asking = d->calls.send(d->calls.blogRequest(QStringLiteral("wp.deletePost"), {post->id}));
    const CallAnswer answer = co_await asking;
    if (answer)
        ZLLog(QStringLiteral("did delete post for preview"));
    else
        tellFailure(ZLWordpressServiceRequestTypeDeletePostForPreview, answer.error());
}

void ZLWordpressService::syncBlogPosts()
{
    d->share.syncBlogPosts();
}

void ZLWordpressService::syncBlogTaxonomies()
{
    d->share.syncBlogTaxonomies();
}

void ZLWordpressService::syncTaxonomiesAfterPublish(const PostPtr &post)
{
    if (account)
        TaxonomySync::add(*account, post->taxonomies, d->environment);
}

void ZLWordpressService::stopSync()
{
    d->share.stop();
}

bool ZLWordpressService::isSyncing() const
{
    return d->share.isUnderWay();
}

EditorBody ZLWordpressService::postContentForZalmoEditor(const QString &stored)
{
    EditorBody body = ContentConversion::postContentForZalmoEditor(stored, d->environment.files);
    // So that publishing turns the local addresses back without an upload.
    d->images.syncedImages.insert(body.localImages);
    return body;
}
