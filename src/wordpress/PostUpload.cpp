#include "wordpress/PostUpload.h"

#include "model/ZLDocumentController.h"
#include "platform/ZLLog.h"
#include "text/StoredText.h"
#include "wordpress/PostChanges.h"
#include "wordpress/PostFieldMaps.h"
#include "wordpress/PostParameters.h"
#include "wordpress/PostPictures.h"
#include "wordpress/ZLWordpressService.h"
#include "xmlrpc/TransferErrors.h"

using ServiceFailures::isCancelled;

/// One sending of the post's content.
struct ContentCall {
    QString id; ///< of the post on the blog; empty: it is to be made
    bool isWhole = false; ///< all goes out, whatever the blog is known to have
    QDateTime ifNotModifiedSince = {}; ///< invalid: whatever happened on the blog meanwhile
    bool termsByName = false;
};

namespace {
constexpr int newestPosts = 20; // among which a post is looked for that may have been made

bool isTrashed(const XMLRPCValue &post)
{
    return post[u"post_status"].string() == QLatin1String("trash");
}

/// The blog's own word for the status that the post was sent with, where `status` tells it but roughly.
QString blogStatus(const ZLWordpressPost &post)
{
    const QString word = PostChanges::statusWord(post);
    return word == post.blogStatus ? word : QString();
}

/// Whether the blog has made of this post another text than it was sent.
bool isOtherText(const ZLWordpressPost &sent, const ZLWordpressPost &onBlog)
{
    return !sameStoredText(sent.title, onBlog.title) || !sameStoredText(sent.content, onBlog.content);
}

bool isSame(const ZLWordpressPost &one, const ZLWordpressPost &other)
{
    const PostChanges::Fields fields = PostChanges::between(one, other);
    const bool hasSameText = sameStoredText(one.title, other.title) && sameStoredText(one.content, other.content);
    return hasSameText && !(fields & ~(PostChanges::Title | PostChanges::Content));
}

/// Whether this post of the blog is what an earlier upload made, of which no answer came. It went out with the date
/// that was noted then; the writer may have changed its title or its text since.
bool mayBeFrom(const ZLWordpressPost &onBlog, const ZLWordpressPost &sent)
{
    return onBlog.type == sent.type && onBlog.createdAt.secsTo(sent.firstPublishBegan) == 0
        && (sameStoredText(onBlog.title, sent.title) || sameStoredText(onBlog.content, sent.content));
}
} // namespace

PostUpload::PostUpload(
    PostPtr post, Kind kind, ZLWordpressService &service, const ZLServiceEnvironment &environment, SyncedImages &images)
    : Upload(&service)
    , m_post(std::move(post))
    , m_kind(kind)
    , m_service(service)
    , m_environment(environment)
    , m_images(images)
    , m_calls(service, environment.connections)
{
}

AccountPtr PostUpload::account() const
{
    return m_service.account;
}

QString PostUpload::blogName() const
{
    return m_service.blogName;
}

QUrl PostUpload::localFile() const
{
    return m_post->localPost ? m_post->localPost->localFile : m_post->localFile;
}

void PostUpload::start()
{
    run();
}

void PostUpload::cancel()
{
    end({UploadOutcome::Cancelled});
}

QCoro::Task<void> PostUpload::run()
{
    const bool sent = co_await sendPictures();
    if (!sent)
        co_return;
    m_post->content = PostPictures::withAddressesOnTheBlog(m_post->content, m_images);
    setStep(UploadingContent);
    if (m_kind == NewPost)
        publishNew();
    else
        update();
}

QCoro::Task<void> PostUpload::publishNew()
{
    Q_EMIT m_environment.notifications.syncingContentPostStatus(m_post);
    const Result<QString> id = co_await makePost();
    if (id)
        readBack(*id);
    else if (!isCancelled(id.error()))
        fail(ZLWordpressServiceRequestTypePublishPost, id.error());
}

/// Gives the post's number on the blog.
QCoro::Task<Result<QString>> PostUpload::makePost()
{
    QString found;
    if (m_post->firstPublishBegan.isValid()) {
        const Result<QString> earlier = co_await findOnBlog();
        if (!earlier)
            co_return earlier;
        found = *earlier;
    }
    const QDateTime now = m_environment.clock.now();
    if (!found.isEmpty() && !(m_post->createdAt > now)) {
        m_post->createdAt = m_post->firstPublishBegan; // it is out since then
    } else if (found.isEmpty()) {
        // By its date it is found again, so that it does not go out without one.
        if (!m_post->createdAt.isValid())
            m_post->createdAt = now;
        if (!co_await noteFirstPublish(m_post->createdAt))
            co_return failure(ServiceFailures::cancelled());
    }
    QCoro::Task<CallAnswer> sending = sendContent({.id = found, .isWhole = true});
    const CallAnswer answer = co_await sending;
    if (answer && !(*answer)->object().boolean())
        co_return failure(ServiceFailures::upload(
            ServiceFailures::NotTaken, QStringLiteral("The blog did not take the post, and does not say why.")));
    if (answer)
        co_return found.isEmpty() ? (*answer)->object().string() : found;
    if (!isCancelled(answer.error()) && !TransferErrors::mayHaveHappened(answer.error()) && found.isEmpty()) {
        QCoro::Task<bool> clearing = noteFirstPublish({});
        if (!co_await clearing)
            co_return failure(ServiceFailures::cancelled());
    }
    co_return failure(answer.error());
}

/// The number of the post that an earlier upload may have made, empty when it has not.
QCoro::Task<Result<QString>> PostUpload::findOnBlog()
{
    const bool isPage = m_post->type == ZLWordpressPost::Page;
    const XMLRPCStruct filter{{QStringLiteral("number"), newestPosts},
        {QStringLiteral("orderby"), QStringLiteral("ID")}, {QStringLiteral("order"), QStringLiteral("DESC")},
        {QStringLiteral("post_type"), isPage ? QStringLiteral("page") : QStringLiteral("post")}};
    auto sending = m_calls.send(m_calls.blogRequest(QStringLiteral("wp.getPosts"), {filter}));
    const CallAnswer answer = co_await sending;
    if (!answer)
        co_return failure(answer.error());
    if (!(*answer)->object().isArray())
        co_return failure(ServiceFailures::unusable());
    for (const PostPtr &onBlog : PostFieldMaps::postsFromWPGetPostsResponse((*answer)->object(), newestPosts)) {
        if (!onBlog->id.isEmpty() && mayBeFrom(*onBlog, *m_post))
            co_return onBlog->id;
    }
    co_return QString();
}

QCoro::Task<void> PostUpload::readBack(QString id)
{
    setStep(Finishing);
    const Result<PostPtr> onBlog = co_await fetch(id);
    if (onBlog)
        endPublished(*onBlog);
    else if (!isCancelled(onBlog.error()))
        end({.kind = UploadOutcome::Published,
            .type = ZLWordpressServiceRequestTypeGetPost,
            .error = ServiceFailures::upload(ServiceFailures::NotReadBack,
                QStringLiteral("The post is on the blog, but the blog's copy of it could not be read."))});
}

/// The blog's version, if it is this very post: a blog that is not quite right must not put another in its place.
QCoro::Task<Result<PostPtr>> PostUpload::fetch(QString id)
{
    auto sending = m_calls.send(m_calls.blogRequest(QStringLiteral("wp.getPost"), {id}));
    const CallAnswer answer = co_await sending;
    if (!answer)
        co_return failure(ServiceFailures::isNotFound(answer.error()) ? ServiceFailures::gone() : answer.error());
    const XMLRPCValue &object = (*answer)->object();
    const PostPtr onBlog = PostFieldMaps::postFromWPGetPostResponse(object);
    if (isTrashed(object))
        co_return failure(ServiceFailures::gone());
    if (onBlog->id != id || onBlog->type != m_post->type)
        co_return failure(ServiceFailures::unusable());
    co_return onBlog;
}

QCoro::Task<void> PostUpload::update()
{
    QCoro::Task<CallAnswer> sending = sendContent({.id = m_post->id, .ifNotModifiedSince = lastKnownDate()});
    CallAnswer answer = co_await sending;
    if (!answer && ServiceFailures::isConflict(answer.error())) {
        answer = co_await editAgainstNewerVersion();
    }
    if (!answer && ServiceFailures::isNotFound(answer.error())) { // the post itself, or something that it names
        const Result<PostPtr> onBlog = co_await fetch(m_post->id);
        if (!onBlog && (isCancelled(onBlog.error()) || ServiceFailures::isGone(onBlog.error())))
            answer = failure(onBlog.error());
    }
    if (!answer) {
        if (!isCancelled(answer.error()))
            fail(contentType(), answer.error());
        co_return;
    }
    if (!(*answer)->object().boolean()) {
        fail(contentType(),
            ServiceFailures::upload(
                ServiceFailures::NotTaken, QStringLiteral("The blog did not take the post, and does not say why.")));
        co_return;
    }
    QDateTime date = (*answer)->date();
    if (!date.isValid()) { // it is read back: the clock here may be ahead, and would hide what others change
        const Result<PostPtr> onBlog = co_await fetch(m_post->id);
        if (!onBlog && isCancelled(onBlog.error()))
            co_return;
        if (onBlog && isSame(**onBlog, *m_post))
            date = (*onBlog)->updatedAt;
    }
    takeAsOnBlog(date);
    end({UploadOutcome::Updated});
}

/// The blog has refused the update, since the post has changed there. That may have been this very update, of which no
/// answer came, or something that the writer never sees; else the two versions are the writer's to choose from.
QCoro::Task<CallAnswer> PostUpload::editAgainstNewerVersion()
{
    const Result<PostPtr> fetched = co_await fetch(m_post->id);
    if (!fetched)
        co_return failure(fetched.error());
    const PostPtr onBlog = *fetched;
    if (isSame(*onBlog, *m_post) || (m_post->synced && isSame(*onBlog, *m_post->synced))) {
        QCoro::Task<CallAnswer> sending = sendContent({.id = m_post->id, .ifNotModifiedSince = onBlog->updatedAt});
        const CallAnswer answer = co_await sending;
        co_return answer;
    }
    const Result<DocumentPtr> document = co_await openDocument();
    if (!document)
        co_return failure(document.error());
    const Result<void> put = onBlog->putConflictBeside(**document);
    if (!put)
        co_return failure(put.error());
    end({UploadOutcome::ConflictFound});
    co_return failure(ServiceFailures::cancelled());
}

QCoro::Task<CallAnswer> PostUpload::sendContent(ContentCall call)
{
    const PostParameters::Surroundings surroundings{.account = m_service.account,
        .syncedWPImages = m_images.syncedWPImages,
        .isUpdate = !call.id.isEmpty(),
        .isWhole = call.isWhole,
        .termsByName = call.termsByName};
    XMLRPCStruct content = PostParameters::forWPPost(*m_post, surroundings);
    content.setObjectIfNotNil(call.ifNotModifiedSince, QStringLiteral("if_not_modified_since"));
    const bool hasTermIds = PostParameters::hasTermIds(content);
    const RequestPtr request = call.id.isEmpty()
        ? m_calls.blogRequest(QStringLiteral("wp.newPost"), {std::move(content)})
        : m_calls.blogRequest(QStringLiteral("wp.editPost"), {call.id, std::move(content)});
    auto sending = m_calls.send(request, [this](float progress) { setProgress(progress); });
    const CallAnswer answer = co_await sending;
    // A blog that has deleted a term refuses its id; the post must not be lost for that. The same code stands for a
    // refused login: then the second try fails as well, and that is told.
    if (answer || !hasTermIds || !isRefusedLogin(answer.error(), contentType()))
        co_return answer;
    ZLLog(QStringLiteral("sending the post again with its terms by name"));
    call.termsByName = true;
    const CallAnswer second = co_await sendContent(call);
    co_return second;
}

/// Notes in the file, too, that the post may be on the blog from now on, or, without a date, that it is not.
QCoro::Task<bool> PostUpload::noteFirstPublish(QDateTime began)
{
    m_post->firstPublishBegan = began;
    if (localFile().isEmpty())
        co_return true;
    const Result<DocumentPtr> document = co_await openDocument();
    if (!document && isCancelled(document.error()))
        co_return false;
    if (document) {
        (void)(*document)->setFirstPublishBegan(began); // a failure is said by the document itself
    } else {
        ZLLog(document.error().description);
    }
    co_return true;
}

QCoro::Task<Result<DocumentPtr>> PostUpload::openDocument()
{
    const QPointer<PostUpload> self(this);
    const Result<DocumentPtr> document = co_await m_environment.documents.openDocumentWithContentsOfURL(localFile());
    if (!self || hasEnded())
        co_return failure(ServiceFailures::cancelled());
    co_return document;
}

void PostUpload::setStep(Step step)
{
    m_step = step;
    m_progress = 0;
    Q_EMIT changed();
}

void PostUpload::setProgress(float progress)
{
    m_progress = progress;
    Q_EMIT changed();
    if (m_service.delegate)
        m_service.delegate->didSendBodyData(&m_service, m_post, progress);
}

/// The date that the blog compares with its own. Invalid for what is scheduled: a blog may date that ahead.
QDateTime PostUpload::lastKnownDate() const
{
    const ZLWordpressPost &known = m_post->synced ? *m_post->synced : *m_post;
    return known.createdAt > m_environment.clock.now() ? QDateTime() : known.updatedAt;
}

/// An update is not read back where its answer is dated, and the blog dates it before it answers. With an earlier date
/// here the next sync would take the writer's own edit for a change made on the blog.
void PostUpload::takeAsOnBlog(const QDateTime &answered)
{
    if (answered.isValid())
        m_post->updatedAt = answered; // else the last known one stays
    m_post->blogStatus = blogStatus(*m_post);
    auto onBlog = std::make_shared<ZLWordpressPost>(*m_post);
    onBlog->synced.reset();
    m_post->synced = onBlog;
}

ZLWordpressServiceRequestType PostUpload::contentType() const
{
    switch (m_kind) {
    case NewPost:
        return ZLWordpressServiceRequestTypePublishPost;
    case Update:
        return ZLWordpressServiceRequestTypeUpdatePost;
    default:
        return ZLWordpressServiceRequestTypePublishDraftPost;
    }
}

void PostUpload::endPublished(const PostPtr &onBlog)
{
    m_post->firstPublishBegan = {};
    UploadOutcome outcome{.kind = UploadOutcome::Published, .remote = onBlog};
    if (isOtherText(*m_post, *onBlog)) {
        outcome.blogVersion = std::make_shared<ZLWordpressPost>(*onBlog);
        onBlog->title = m_post->title;
        onBlog->content = onBlog->storedContent = m_post->content;
    }
    end(outcome);
}

void PostUpload::fail(ZLWordpressServiceRequestType type, const ZLError &error)
{
    const bool isContent = type != ZLWordpressServiceRequestTypeUploadImageFromURL;
    const bool isUnclear = isContent && TransferErrors::mayHaveHappened(error);
    end({.kind = isUnclear ? UploadOutcome::Unclear : UploadOutcome::Failed,
        .type = type,
        .error = isUnclear ? ServiceFailures::postMayBeThere(error) : error});
}

void PostUpload::end(const UploadOutcome &outcome)
{
    if (m_outcome)
        return;
    const QPointer<PostUpload> self(this);
    m_outcome = outcome;
    deleteLater();
    m_calls.cancelAll();
    tell(outcome);
    if (self)
        Q_EMIT ended(outcome);
}

void PostUpload::tell(const UploadOutcome &outcome)
{
    static ZLWordpressServiceDelegate nobody;
    ZLWordpressServiceDelegate &delegate = m_service.delegate ? *m_service.delegate : nobody;
    const PostPtr post = m_post; // the delegate may let go of all this
    const QPointer<ZLWordpressService> service(&m_service);
    ZLNotifications &notifications = m_environment.notifications;
    if (outcome.kind == UploadOutcome::Updated) {
        m_kind == PublishDraft ? delegate.didPublishDraftPost(service, post) : delegate.didUpdatePost(service, post);
    } else if (outcome.remote) {
        delegate.didPublishPost(service, outcome.remote, post);
        Q_EMIT notifications.didPublishPost(outcome.remote);
    } else if (outcome.kind == UploadOutcome::Cancelled) {
        Q_EMIT notifications.didFailToUploadPost(post); // nobody needs telling, but its row is not on its way any more
    } else {
        delegate.didFailToUploadPost(service, post);
        if (service && outcome.kind == UploadOutcome::ConflictFound)
            delegate.didFindConflict(service, post);
        else if (service)
            delegate.didFailToPerformRequest(service, outcome.type, outcome.error);
    }
}
