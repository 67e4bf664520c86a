#include "app/PublicationOutcomes.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"

#include <QPointer>

namespace {

bool isPage(const PostPtr &post)
{
    return post->type == ZLWordpressPost::Page;
}

int publishedRowStatus(const PostPtr &post)
{
    return isPage(post) ? ZLLocalPostRepresentation::PublishedPage : ZLLocalPostRepresentation::Published;
}

QString publishedKind(const PostPtr &post)
{
    return isPage(post) ? u"page"_qs : u"post"_qs;
}

QVariantMap publishDimensions(const PostPtr &post, const QString &kind)
{
    const QString hasImage = post->featuredImageId.isEmpty() ? u"false"_qs : u"true"_qs;
    return {{u"type"_qs, kind}, {u"engine"_qs, u"wordpress"_qs}, {u"featured-image"_qs, hasImage}};
}

/// What was sent is what the blog stores from now on; what was read when the post was opened is past.
void rememberAsStored(ZLWordpressPost &sent)
{
    sent.storedContent = sent.content;
}

/// "Successfully Published Page", and its like.
QString success(const char16_t *deed, const PostPtr &post)
{
    return u"Successfully %1 %2"_qs.arg(QString::fromUtf16(deed), isPage(post) ? u"Page"_qs : u"Post"_qs);
}

} // namespace

PublicationOutcomes::PublicationOutcomes(AppEnvironment &environment, CurrentBlogState &state, LocalPosts &posts)
    : m_environment(environment)
    , m_state(state)
    , m_posts(posts)
{
}

void PublicationOutcomes::didPublishPost(ZLWordpressService *service, const PostPtr &remote, const PostPtr &original)
{
    const LocalPostPtr row = original->localPost;
    if (!row)
        return;
    row->postURL = QUrl(remote->URL);
    ZLTelemetry &telemetry = m_environment.telemetry;
    const bool isScheduled = isInFuture(remote);
    // These events go out whatever "sendAnonymousData" says.
    if (remote->status == ZLWordpressPost::Publish) {
        row->status = isScheduled ? int(ZLLocalPostRepresentation::Scheduled) : publishedRowStatus(remote);
        row->published = true;
        telemetry.trackEvent(
            u"publish"_qs, publishDimensions(remote, isScheduled ? u"scheduled"_qs : publishedKind(remote)));
    } else if (remote->status == ZLWordpressPost::Draft) {
        row->status = ZLLocalPostRepresentation::Draft;
        row->published = false;
        telemetry.trackEvent(u"draft"_qs, {{u"engine"_qs, u"wordpress"_qs}});
    }

    const ZLDefaults &defaults = m_environment.platform.defaults;
    if (remote->status == ZLWordpressPost::Publish && defaults.boolForKey(u"notifyPublish"_qs))
        notify(*service, success(isScheduled ? u"Scheduled" : u"Published", remote), QUrl(remote->URL));
    else if (remote->status == ZLWordpressPost::Draft && defaults.boolForKey(u"notifyDraft"_qs))
        notify(*service, u"Successfully Saved Draft"_qs, {});
    openInBrowserIfWanted(remote);

    const bool stays = original->id == remote->id;
    const QString home =
        stays ? QString() : m_environment.platform.files.postPathForBlogURL(service->blogName, remote->id);
    storeRemoteState({remote, row, home});
    service->syncTaxonomiesAfterPublish(remote);
}

void PublicationOutcomes::didPublishDraftPost(ZLWordpressService *service, const PostPtr &post)
{
    const LocalPostPtr row = post->localPost;
    if (!row)
        return;
    if (post->status == ZLWordpressPost::Publish) {
        // A scheduled draft shows as published until its file is read again; meant was status 8 at once.
        row->status = publishedRowStatus(post);
        row->published = true;
        m_environment.telemetry.trackEvent(u"publish"_qs, publishDimensions(post, publishedKind(post)));
        if (m_environment.platform.defaults.boolForKey(u"notifyPublish"_qs))
            notify(*service, isPage(post) ? u"Successfully Published Page."_qs : success(u"Published", post),
                QUrl(post->URL));
    }
    openInBrowserIfWanted(post);
    rememberAsStored(*post);
    storeRemoteState({post, row, {}});
    service->syncTaxonomiesAfterPublish(post);
}

void PublicationOutcomes::didUpdatePost(ZLWordpressService *service, const PostPtr &post)
{
    const LocalPostPtr row = post->localPost;
    if (!row)
        return;
    const ZLDefaults &defaults = m_environment.platform.defaults;
    if (post->status == ZLWordpressPost::Publish) {
        const bool isScheduled = isInFuture(post);
        row->status = isScheduled ? int(ZLLocalPostRepresentation::Scheduled) : publishedRowStatus(post);
        row->published = true;
        if (defaults.boolForKey(u"notifyPublish"_qs))
            notify(*service, success(isScheduled ? u"Scheduled" : u"Updated", post), QUrl(post->URL));
    } else if (post->status == ZLWordpressPost::Draft) {
        row->status = ZLLocalPostRepresentation::Draft;
        row->published = false;
        if (defaults.boolForKey(u"notifyDraft"_qs))
            notify(*service, u"Successfully Updated Draft."_qs, {});
    }
    rememberAsStored(*post);
    storeRemoteState({post, row, {}, true});
    service->syncTaxonomiesAfterPublish(post);
}

void PublicationOutcomes::didDeletePost(const PostPtr &post)
{
    const LocalPostPtr row = post->localPost;
    if (!row)
        return;
    m_posts.removeLocalPostFromList(row);
    m_posts.deletePostAtLocalURL(row->localFile);
}

void PublicationOutcomes::notify(const ZLWordpressService &service, const QString &title, const QUrl &URL)
{
    const AccountPreferences *preferences = m_state.preferences();
    if (preferences && preferences->allow_notifications)
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
    document->setRecentlySyncedWordpressPost(*finished.post);
    const QUrl previousLocalURL = finished.row->localFile;
    // A failure is said by the document itself, which keeps the text.
    (void)document->saveDocument();
    if (!finished.home.isNull())
        moveDocument(document, finished);
    showOutcome(finished, previousLocalURL);
    document->close();
}

void PublicationOutcomes::moveDocument(const DocumentPtr &document, const Finished &finished)
{
    const QUrl newURL = QUrl::fromLocalFile(PostSync::postPath(finished.home));
    // The row takes the new address even when the move fails, and then points to no file until the list is rebuilt.
    // Meant was the address where the file really is; it lies untouched where it was.
    finished.row->localFile = newURL;
    if (const Result<void> moved = m_environment.documents.move(document, newURL); !moved)
        ZLLog(u"error-%1"_qs.arg(moved.error().description));
}

void PublicationOutcomes::showOutcome(const Finished &finished, const QUrl &previousLocalURL)
{
    // The user may have gone to another blog while the post was on its way; only the current one has rows.
    if (isInFolderOf(finished.row, m_state.blogName))
        m_posts.moveToTop(finished.row, previousLocalURL);
    if (finished.preparesForEditor)
        finished.post->replaceWPContentsForEditor();
    m_environment.windows.postList->didUpdatePost(finished.post, finished.row, previousLocalURL);
    Q_EMIT m_environment.notifications.didUpdatePost(finished.post, {finished.post, finished.row});
}
