#include "app/PublicationOutcomes.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"

#include <QPointer>

namespace {

bool isPage(const PostPtr &post)
{
    return post->type == ZLWordpressPost::Page;
}

/// The texts that the post's file held when it was sent.
PostFields textsOf(const ZLWordpressPost &sent)
{
    PostFields texts = sent;
    if (!sent.storedContent.isNull())
        texts.content = sent.storedContent;
    return texts;
}

/// What was sent is what the blog stores from now on; what the file held is past.
void rememberAsStored(ZLWordpressPost &sent)
{
    sent.storedContent = sent.content;
}

/// What was typed into a document since its post was sent. It stays, as a change of what the blog has.
class TypedSince {
public:
    TypedSince(const ZLDocument &document, const PostFields &sent)
    {
        if (document.storedTitle() != sent.title)
            m_title = document.post.title;
        if (document.storedContent() != sent.content)
            m_content = document.storedContent();
        if (document.post.taxonomies != sent.taxonomies)
            m_taxonomies = document.post.taxonomies;
    }
    bool isNothing() const { return !m_title && !m_content && !m_taxonomies; }
    void putInto(ZLDocument &document) const
    {
        document.post.title = m_title.value_or(document.post.title);
        document.post.content = m_content.value_or(document.post.content);
        document.post.taxonomies = m_taxonomies.value_or(document.post.taxonomies);
        document.updateChangeCount();
    }

private:
    std::optional<QString> m_title;
    std::optional<QString> m_content;
    std::optional<QList<ZLTaxonomy>> m_taxonomies;
};

/// "Successfully Published Page", and its like.
QString success(const char16_t *deed, const PostPtr &post)
{
    return u"Successfully %1 %2"_qs.arg(QString::fromUtf16(deed), isPage(post) ? u"Page"_qs : u"Post"_qs);
}

} // namespace

PublicationOutcomes::PublicationOutcomes(AppEnvironment &environment, LocalPosts &posts, const CurrentBlogState &state)
    : m_environment(environment)
    , m_posts(posts)
    , m_state(state)
{
}

/// The post's row. A post that the list does not show, or not any more, gets one for its file.
LocalPostPtr PublicationOutcomes::rowOf(const ZLWordpressPost &post, const QString &blogName) const
{
    if (post.localPost)
        return post.localPost;
    const QString folder = m_environment.platform.files.postPath(blogName, post.id);
    const QUrl file = post.localFile.isEmpty() ? QUrl::fromLocalFile(PostSync::postPath(folder)) : post.localFile;
    for (const LocalPostPtr &row : m_posts.posts()) {
        if (isSameFile(row->localFile, file))
            return row;
    }
    return ZLLocalPostRepresentation::initWithContentsOfFileURL(file, m_environment.platform.clock.now());
}

void PublicationOutcomes::setRowStatus(ZLLocalPostRepresentation &row, const PostPtr &post) const
{
    row.published = post->status == ZLWordpressPost::Publish;
    row.blogStatus = post->blogStatus;
    row.status = !row.published ? ZLLocalPostRepresentation::Draft
        : isInFuture(post)      ? ZLLocalPostRepresentation::Scheduled
        : isPage(post)          ? ZLLocalPostRepresentation::PublishedPage
                                : ZLLocalPostRepresentation::Published;
}

QVariantMap PublicationOutcomes::publishDimensions(const PostPtr &post) const
{
    const QString kind = isInFuture(post) ? u"scheduled"_qs : isPage(post) ? u"page"_qs : u"post"_qs;
    const QString hasImage = post->featuredImageId.isEmpty() ? u"false"_qs : u"true"_qs;
    return {{u"type"_qs, kind}, {u"engine"_qs, u"wordpress"_qs}, {u"featured-image"_qs, hasImage}};
}

void PublicationOutcomes::didPublishPost(ZLWordpressService *service, const PostPtr &remote, const PostPtr &original)
{
    const LocalPostPtr row = rowOf(*original, service->blogName);
    row->postURL = QUrl(remote->URL);
    ZLTelemetry &telemetry = m_environment.telemetry;
    const bool isScheduled = isInFuture(remote);
    setRowStatus(*row, remote);
    if (row->published)
        telemetry.trackEvent(u"publish"_qs, publishDimensions(remote));
    else
        telemetry.trackEvent(u"draft"_qs, {{u"engine"_qs, u"wordpress"_qs}});

    const ZLDefaults &defaults = m_environment.platform.defaults;
    if (remote->status == ZLWordpressPost::Publish && defaults.boolForKey(u"notifyPublish"_qs))
        notify(*service, success(isScheduled ? u"Scheduled" : u"Published", remote), QUrl(remote->URL));
    else if (remote->status == ZLWordpressPost::Draft && defaults.boolForKey(u"notifyDraft"_qs))
        notify(*service, u"Successfully Saved Draft"_qs, {});
    openInBrowserIfWanted(remote);

    const bool stays = original->id == remote->id;
    const QString home =
        stays ? QString() : m_environment.platform.files.postPathForBlogURL(service->blogName, remote->id);
    storeRemoteState({remote, row, home, textsOf(*original)});
    service->syncTaxonomiesAfterPublish(remote);
}

void PublicationOutcomes::didPublishDraftPost(ZLWordpressService *service, const PostPtr &post)
{
    const LocalPostPtr row = rowOf(*post, service->blogName);
    setRowStatus(*row, post);
    if (row->published) {
        m_environment.telemetry.trackEvent(u"publish"_qs, publishDimensions(post));
        if (m_environment.platform.defaults.boolForKey(u"notifyPublish"_qs))
            notify(*service, isPage(post) ? u"Successfully Published Page."_qs : success(u"Published", post),
                QUrl(post->URL));
    }
    openInBrowserIfWanted(post);
    const PostFields sent = textsOf(*post);
    rememberAsStored(*post);
    storeRemoteState({post, row, {}, sent});
    service->syncTaxonomiesAfterPublish(post);
}

void PublicationOutcomes::didUpdatePost(ZLWordpressService *service, const PostPtr &post)
{
    const LocalPostPtr row = rowOf(*post, service->blogName);
    const ZLDefaults &defaults = m_environment.platform.defaults;
    setRowStatus(*row, post);
    if (row->published && defaults.boolForKey(u"notifyPublish"_qs))
        notify(*service, success(isInFuture(post) ? u"Scheduled" : u"Updated", post), QUrl(post->URL));
    else if (!row->published && defaults.boolForKey(u"notifyDraft"_qs))
        notify(*service, u"Successfully Updated Draft."_qs, {});
    const PostFields sent = textsOf(*post);
    rememberAsStored(*post);
    storeRemoteState({post, row, {}, sent});
    service->syncTaxonomiesAfterPublish(post);
}

void PublicationOutcomes::didDeletePost(const PostPtr &post, const QString &blogName)
{
    const LocalPostPtr row = rowOf(*post, blogName);
    m_posts.removeLocalPostFromList(row);
    m_posts.deletePostAtLocalURL(row->localFile);
}

QCoro::Task<void> PublicationOutcomes::offerToDeleteCopy(PostPtr post, QString blogName)
{
    constexpr int deleteCopy = 0;
    constexpr int cancel = 1;
    const QPointer<PublicationOutcomes> self(this);
    auto asking = m_environment.windows.prompts->ask(u"Delete the copy on this computer?"_qs,
        u"“%1” does not have “%2” any more."_qs.arg(blogName, post->title), {u"Delete"_qs, u"Cancel"_qs}, cancel);
    const int answer = co_await asking;
    if (self && answer == deleteCopy)
        didDeletePost(post, blogName);
}

void PublicationOutcomes::notify(const ZLWordpressService &service, const QString &title, const QUrl &URL)
{
    const AccountPtr &account = service.account; // which need not be the current one any more
    if (account && account->preferences && account->preferences->allow_notifications)
        m_environment.platform.notificationCenter.deliver({title, u"on %1"_qs.arg(service.blogName), URL});
}

void PublicationOutcomes::openInBrowserIfWanted(const PostPtr &post)
{
    if (post->status == ZLWordpressPost::Publish
        && m_environment.platform.defaults.boolForKey(u"openBrowserAfterPublish"_qs))
        m_environment.platform.workspace.openURL(QUrl(post->URL));
}

bool PublicationOutcomes::isInFuture(const PostPtr &post) const
{
    return post->createdAt.isValid() && post->createdAt > m_environment.platform.clock.now();
}

bool PublicationOutcomes::isInFolderOf(const LocalPostPtr &row, const QString &alias) const
{
    const QString blog = m_environment.platform.files.blogPath(alias);
    return !blog.isNull() && pathOfFileURL(row->localFile).startsWith(QDir::cleanPath(blog) + u"/posts/"_qs);
}

QCoro::Task<void> PublicationOutcomes::storeRemoteState(Finished finished)
{
    const QPointer<PublicationOutcomes> self(this);
    const Result<DocumentPtr> opened =
        co_await m_environment.documents.openDocumentWithContentsOfURL(finished.row->localFile);
    if (!self)
        co_return;
    if (!opened) {
        ZLLog(opened.error().description);
        co_return;
    }
    const DocumentPtr document = *opened;
    const QUrl previousLocalURL = finished.row->localFile;
    const TypedSince typed(*document, finished.sent);
    document->setRecentlySyncedWordpressPost(*finished.post);
    // A failure is said by the document itself, which keeps the text.
    (void)document->saveDocument();
    if (!finished.home.isNull())
        moveDocument(document, finished);
    if (!typed.isNothing()) {
        typed.putInto(*document);
        (void)document->saveDocument();
        finished.row->status = ZLLocalPostRepresentation::Modified;
    }
    showOutcome(finished, previousLocalURL);
    document->close();
}

void PublicationOutcomes::moveDocument(const DocumentPtr &document, const Finished &finished)
{
    const QUrl newURL = QUrl::fromLocalFile(PostSync::postPath(finished.home));
    if (const Result<void> moved = m_environment.documents.move(document, newURL))
        finished.row->localFile = newURL;
    else
        ZLLog(u"error-%1"_qs.arg(moved.error().description)); // it lies untouched where it was
}

void PublicationOutcomes::showOutcome(const Finished &finished, const QUrl &previousLocalURL)
{
    // The user may have gone to another blog while the post was on its way; only the current one has rows.
    if (isInFolderOf(finished.row, m_state.blogName))
        m_posts.moveToTop(finished.row, previousLocalURL);
    m_environment.windows.postList->didUpdatePost(finished.post, finished.row, previousLocalURL);
    Q_EMIT m_environment.notifications.didUpdatePost(finished.post, {finished.post, finished.row});
}
