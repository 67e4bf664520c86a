#include "app/LocalPosts.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "text/BlankContent.h"
#include "text/RandomString.h"

#include <QFile>

LocalPosts::LocalPosts(AppEnvironment &environment, CurrentBlogState &state)
    : m_environment(environment)
    , m_state(state)
    , m_catalogue(environment.platform.files)
{
}

void LocalPosts::moveToTop(const LocalPostPtr &row, const QUrl &previousLocalURL)
{
    m_posts.removeIf([&](const LocalPostPtr &other) {
        return other == row || other->localFile == row->localFile || other->localFile == previousLocalURL;
    });
    m_posts.prepend(row);
}

void LocalPosts::readAhead(const QString &blogName)
{
    m_blogAhead = blogName;
    m_ahead = std::async(std::launch::async, [this, blogName, now = m_environment.platform.clock.now()] {
        return m_catalogue.postsFromLocalFiles(blogName, now);
    });
}

QList<LocalPostPtr> LocalPosts::readPosts()
{
    const QList<LocalPostPtr> ahead = m_ahead.valid() ? m_ahead.get() : QList<LocalPostPtr>();
    if (const QString blog = std::exchange(m_blogAhead, {}); !blog.isEmpty() && blog == m_state.blogName)
        return ahead;
    return m_catalogue.postsFromLocalFiles(m_state.blogName, m_environment.platform.clock.now());
}

void LocalPosts::loadLocalPosts()
{
    m_posts = readPosts();
    Q_EMIT m_environment.notifications.didUpdatePosts();
}

void LocalPosts::reloadPostsListAfterSync()
{
    m_posts = readPosts();
    m_environment.windows.postList->updatePostsAndSelectPreviousPost();
    m_environment.windows.compose->reloadCurrentPostAfterSyncingEngine(SyncEngine::WordPress);
}

PostPtr LocalPosts::makeNewPost() const
{
    auto post = std::make_shared<ZLWordpressPost>();
    post->title = u""_qs;
    post->content = BlankContent::paragraph;
    post->id = genRandString(8);
    post->status = ZLWordpressPost::New;
    if (const AccountPreferences *preferences = m_state.preferences()) {
        post->allowComments = preferences->allow_comments;
        post->allowPingback = preferences->allow_pingback;
        post->type = preferences->default_article_type == 1 ? ZLWordpressPost::Page : ZLWordpressPost::Post;
    }
    return post;
}

bool LocalPosts::createNewPost()
{
    // The object made here is only written: the editor gets its own when the row is opened.
    const PostPtr post = makeNewPost();
    const QString folder = m_environment.platform.files.postPathForBlogURL(m_state.blogName, post->id);
    if (folder.isNull()) {
        ZLLog(u"no folder for a new post of %1"_qs.arg(m_state.blogName));
        m_environment.windows.prompts->alert(u"The folder of the new post could not be made."_qs,
            u"Make room on the disk, or see that you may write to “%1”."_qs.arg(
                m_environment.platform.files.applicationSupportDirectory()));
        return false;
    }
    const QString path = PostSync::postPath(folder);
    if (const Result<void> saved = post->saveAtPath(path); !saved) {
        ZLLog(saved.error().description);
        m_environment.windows.prompts->alert(u"The new post could not be saved to “%1”."_qs.arg(path),
            u"%1\n\nMake room on the disk, or see that you may write to that folder."_qs.arg(
                saved.error().description));
        return false;
    }
    auto row = std::make_shared<ZLLocalPostRepresentation>();
    row->title = u""_qs;
    row->content = u""_qs;
    row->localFile = QUrl::fromLocalFile(path);
    row->status = ZLLocalPostRepresentation::New;
    m_posts.prepend(row);
    Q_EMIT m_environment.notifications.openNewPost();
    return true;
}

void LocalPosts::removeLocalPostFromList(const LocalPostPtr &row)
{
    // A rebuild may have put another row for the file in its place.
    m_posts.removeIf([&](const LocalPostPtr &other) { return other == row || other->localFile == row->localFile; });
    m_environment.windows.postList->didDeleteLocalPost(row);
}

void LocalPosts::deletePostAtLocalURL(const QUrl &url)
{
    const QList<DocumentPtr> documents = m_environment.documents.documents();
    m_environment.documents.forget(url); // closing would write once more
    for (const DocumentPtr &document : documents) {
        if (isSameFile(document->fileURL(), url))
            document->close();
    }
    QFile file(pathOfFileURL(url));
    if (PostSync::isPostPath(file.fileName()))
        QFile::remove(PostSync::syncedPath(file.fileName()));
    const bool wasThere = file.exists();
    if (file.remove())
        return;
    ZLLog(u"%1: %2"_qs.arg(file.fileName(), file.errorString()));
    if (wasThere)
        m_environment.windows.prompts->alert(u"The post could not be deleted from this computer."_qs,
            u"%1: %2"_qs.arg(file.fileName(), file.errorString()));
}

QList<LocalPostPtr> LocalPosts::getPostsForSearch(const QString &text) const
{
    const QString wanted = text.toLower();
    QList<LocalPostPtr> found;
    for (const LocalPostPtr &row : m_posts) {
        if (!row->title.isNull() && row->title.toLower().contains(wanted))
            found.append(row);
    }
    return found;
}

QStringList LocalPosts::getTaxonomiesForSearch(const QString &text) const
{
    const bool wantsTags = text.startsWith(u'#');
    const QString beginning = wantsTags ? text.mid(1) : text;
    QStringList found;
    if (!m_state.selectedAccount)
        return found;
    for (const TaxonomyPtr &taxonomy : m_state.selectedAccount->taxonomies) {
        const bool isTag = taxonomy->taxonomy_type == ZLTaxonomy::Tag;
        if (isTag == wantsTags && taxonomy->name.startsWith(beginning, Qt::CaseInsensitive))
            found.append(isTag ? u"#"_qs + taxonomy->name : taxonomy->name);
    }
    return found;
}
