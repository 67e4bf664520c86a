#include "compose/PostOnScreen.h"

#include "model/ConflictResolver.h"
#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "platform/ZLLog.h"
#include "text/BlankContent.h"
#include "text/RandomString.h"

#include <QPointer>
#include <algorithm>
#include <utility>

namespace {
constexpr int idLength = 8;
constexpr int rememberedPosts = 8;

} // namespace

PostOnScreen::PostOnScreen(ComposeHost &host, QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_post(std::make_shared<ZLWordpressPost>())
{
}

PostOnScreen::~PostOnScreen()
{
    setDocument(nullptr);
}

bool PostOnScreen::isInConflict() const
{
    return m_document && m_document->isInConflict();
}

bool PostOnScreen::isFileOnScreen(const QUrl &file) const
{
    return m_document && isSameFile(m_document->fileURL(), file);
}

// Which post is here

void PostOnScreen::setBlankPost(const PostPtr &post)
{
    ++m_openRequest;
    leavePost();
    setDocument(nullptr);
    m_post = post;
    m_shown = {};
    m_rowIsSelected = m_isOpening = false;
    if (m_rows)
        m_rows->selectFileWithoutLoad({}); // the post of the row is not here any more
}

QCoro::Task<PostOnScreen::Came> PostOnScreen::open(LocalPostPtr row)
{
    const QPointer<PostOnScreen> self(this);
    const int request = ++m_openRequest;
    m_rowIsSelected = false;
    m_isOpening = true;
    QCoro::Task<Result<DocumentPtr>> opening =
        m_host.documentController().openDocumentWithContentsOfURL(row->localFile);
    const Result<DocumentPtr> opened = co_await opening;
    if (!opened)
        ZLLog(opened.error().description);
    if (!self || request != m_openRequest)
        co_return Came::No;
    m_isOpening = false;
    if (!opened)
        co_return Came::No;
    m_rowIsSelected = true;
    if (m_document == *opened) {
        m_post->localPost = row;
        co_return readAgain();
    }
    leavePost();
    setDocument(*opened);
    m_post = m_document->wordpressPost();
    m_post->localPost = row;
    m_shown = Texts::of(*m_document);
    co_return Came::Another;
}

PostOnScreen::Came PostOnScreen::readAgain()
{
    if (!m_document->hasUnautosavedChanges() || m_document->saveDocument()) {
        // An outcome has put the texts in as they came; the file's reader gives them as they are shown.
        if (const Result<void> read = m_document->revertDocument(); !read)
            ZLLog(read.error().description);
    }
    if (m_document->fileInfo.status.isEmpty() || m_document->isInConflict())
        m_isGone = false;
    Texts texts = Texts::of(*m_document);
    const bool isAsShown = texts == m_shown;
    if (!isAsShown)
        leavePost();
    m_shown = std::move(texts);
    const LocalPostPtr row = m_post->localPost;
    m_post = m_document->wordpressPost();
    m_post->localPost = row;
    return isAsShown ? Came::AsShown : Came::SamePost;
}

void PostOnScreen::leavePost()
{
    m_postsBefore.append({m_generation++, m_post, m_shown.content, m_host.getBlogName()});
    if (m_postsBefore.size() > rememberedPosts)
        m_postsBefore.removeFirst();
}

void PostOnScreen::followRow()
{
    if (const LocalPostPtr listed = m_document ? m_host.rowForFile(m_document->fileURL()) : nullptr)
        m_post->localPost = listed;
}

void PostOnScreen::setDocument(const DocumentPtr &document)
{
    if (m_document == document)
        return;
    if (m_document) {
        m_document->disconnect(this);
        // When it cannot be written the document controller keeps it, and with it its text.
        m_document->close();
    }
    m_document = document;
    if (!m_document)
        return;
    connect(m_document.get(), &ZLDocument::didChange, this, &PostOnScreen::documentDidChange);
    connect(m_document.get(), &ZLDocument::didSave, this, &PostOnScreen::documentDidSave);
    connect(m_document.get(), &ZLDocument::didFailToSave, this, &PostOnScreen::documentDidFailToSave);
}

PostOnScreen::Texts PostOnScreen::Texts::of(const ZLDocument &document)
{
    return {document.post.title, document.storedContent(), document.post.taxonomies};
}

// Edits

bool PostOnScreen::change(const Edit &edit)
{
    if (!m_host.selectedAccount())
        return false; // there is no blog yet whose list the post could join
    if (!m_document)
        setDocument(makeFile(m_post, m_host.getBlogName()));
    edit(*m_document);
    m_document->updateChangeCount();
    return true;
}

void PostOnScreen::setTitle(const QString &title)
{
    if (title == m_post->title)
        return; // the field tells of formats and of keys that make no character yet, too
    if (!change([&title](ZLDocument &document) { document.post.title = title; }))
        return;
    m_post->title = m_shown.title = title;
    if (RowUpdates *rows = rowUpdates())
        rows->setTitleToSelectedPost(title);
}

void PostOnScreen::setContent(const QString &html)
{
    const QString stored = m_document ? m_document->storedContent() : QString();
    if (html == stored || (BlankContent::is(html) && BlankContent::is(stored)))
        return;
    if (!change([&html](ZLDocument &document) { document.post.content = html; }))
        return;
    m_shown.content = html;
    if (RowUpdates *rows = rowUpdates())
        rows->setContentToSelectedPost(html);
}

void PostOnScreen::setTokens(const QStringList &tokens)
{
    if (!change([&tokens](ZLDocument &document) { document.post.setTaxonomiesFromStringArray(tokens); }))
        return;
    m_shown.taxonomies = m_document->post.taxonomies;
    if (RowUpdates *rows = rowUpdates())
        rows->setStatusToSelectedPost(ZLLocalPostRepresentation::Modified);
}

void PostOnScreen::setContentOfPostBefore(int generation, const QString &html)
{
    const auto before = std::find_if(m_postsBefore.cbegin(), m_postsBefore.cend(),
        [generation](const PostBefore &left) { return left.generation == generation; });
    if (before == m_postsBefore.cend() || html == before->content
        || (before->post->localFile.isEmpty() && BlankContent::is(html)))
        return;
    const PostPtr post = before->post;
    if (post->localFile.isEmpty())
        makeFile(post, before->blogName);
    takeLateReport(post->localPost ? post->localPost->localFile : post->localFile, before->content, html);
}

/// What was typed on top of the content `before`. Where the blog's next version has come into the file since, that is
/// the other side of a conflict from now on.
QCoro::Task<void> PostOnScreen::takeLateReport(QUrl file, QString before, QString html)
{
    const QPointer<PostOnScreen> self(this);
    const Result<DocumentPtr> opened = co_await m_host.documentController().openDocumentWithContentsOfURL(file);
    if (!opened) {
        ZLLog(opened.error().description);
        co_return;
    }
    const DocumentPtr document = *opened;
    const bool isInStep = document->fileInfo.status.isEmpty() && document->post.isOnBlog();
    const bool isConflict = isInStep && document->storedContent() != before;
    if (isConflict) {
        const PostPtr onBlog = document->wordpressPost();
        onBlog->title = document->storedTitle();
        std::ignore = onBlog->putConflictBeside(*document);
    }
    document->post.content = html;
    document->updateChangeCount();
    std::ignore = document->saveDocument(); // a failure is said by the document controller
    if (self && isConflict)
        m_host.loadLocalPosts();
    if (self && document == m_document)
        Q_EMIT fileDidChange();
}

// Files

QUrl PostOnScreen::newFileURL(const QString &blogName) const
{
    // This random id names the folder only. The post itself has none yet: the id in its file is settled by the first
    // save or publish.
    return QUrl::fromLocalFile(PostSync::postPath(m_host.postPath(blogName, genRandString(idLength))));
}

DocumentPtr PostOnScreen::makeFile(const PostPtr &post, const QString &blogName)
{
    post->localFile = newFileURL(blogName);
    const DocumentPtr document =
        m_host.documentController().unwrittenDocument(post->localFile, post->generateXMLDataFileInfo(nullptr));
    connect(document.get(), &ZLDocument::didSave, &m_firstWriting, [this, post, blogName, document = document.get()] {
        if (!post->localPost)
            didWriteFirst(post, *document, blogName);
    });
    std::ignore = document->saveDocument(); // a failure is said by the document controller, which keeps the document
    return document;
}

void PostOnScreen::didWriteFirst(const PostPtr &post, const ZLDocument &document, const QString &blogName)
{
    auto row = std::make_shared<ZLLocalPostRepresentation>();
    row->title = document.post.title;
    row->content = BlankContent::is(document.post.content) ? QStringLiteral("") : document.post.content;
    row->localFile = document.fileURL();
    row->status = ZLLocalPostRepresentation::New;
    post->localPost = row;
    if (blogName != m_host.getBlogName())
        return; // its row is there when that blog is chosen again
    m_host.insertPost(0, row);
    Q_EMIT m_host.notifications().didUpdatePosts();
    if (post != m_post || m_isOpening)
        return;
    m_rowIsSelected = true;
    if (m_rows)
        m_rows->selectFileWithoutLoad(row->localFile);
}

Result<void> PostOnScreen::becomeStored()
{
    if (!m_document)
        setDocument(makeFile(m_post, m_host.getBlogName()));
    return m_document->hasUnautosavedChanges() ? m_document->saveDocument() : Result<void>();
}

PostPtr PostOnScreen::postToSend(const QString &content)
{
    if (m_document->post.id.isEmpty()) {
        m_post->id = m_document->post.id = genRandString(idLength);
        m_document->updateChangeCount();
    }
    const auto sent = std::make_shared<ZLWordpressPost>(*m_post);
    sent->title = m_document->storedTitle();
    sent->content = content;
    sent->storedContent = m_document->storedContent();
    sent->taxonomies = m_document->post.taxonomies;
    sent->firstPublishBegan = m_document->post.firstPublishBegan; // an upload may have failed meanwhile
    sent->synced = m_document->syncedPost();
    return sent;
}

Result<void> PostOnScreen::becomeNewPost()
{
    const Result<QUrl> made =
        ConflictResolver::makeNewPost(m_post->localPost, m_host.documentController(), m_host.now());
    if (!made)
        return failure(made.error());
    m_host.loadLocalPosts();
    followRow();
    if (m_rows)
        m_rows->selectFileWithoutLoad(*made);
    return {};
}
