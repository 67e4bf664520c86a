#include "compose/PostOnScreen.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "platform/ZLLog.h"
#include "text/RandomString.h"

#include <QPointer>
#include <algorithm>
#include <tuple>
#include <utility>

namespace {
constexpr int idLength = 8;
constexpr int rememberedPosts = 8;

QString localStatus(int postStatus)
{
    return postStatus != ZLWordpressPost::New ? QStringLiteral("modified") : QStringLiteral("new");
}
} // namespace

PostOnScreen::PostOnScreen(ComposeHost &host, QObject *parent)
    : QObject(parent)
    , m_host(host)
    , m_post(std::make_shared<ZLWordpressPost>())
{
}

PostOnScreen::~PostOnScreen()
{
    if (m_document)
        m_document->disconnect(this);
    saveDocument();
}

void PostOnScreen::setBlankPost(const PostPtr &post)
{
    leaveDocument();
    ++m_openRequest;
    leavePost();
    m_post = post;
    m_promotedRow = nullptr;
    m_rowIsSelected = false;
    m_isLeavingBlankPost = false;
}

QCoro::Task<bool> PostOnScreen::open(LocalPostPtr row)
{
    const QPointer<PostOnScreen> self(this);
    leaveDocument();
    m_rowIsSelected = false;
    const int request = ++m_openRequest;
    m_isLeavingBlankPost |= std::exchange(m_isNewPostNotInList, false);
    QCoro::Task<Result<DocumentPtr>> opening = openRow(row);
    const Result<DocumentPtr> opened = co_await opening;
    if (!self || request != m_openRequest)
        co_return false;
    const bool wasBlank = std::exchange(m_isLeavingBlankPost, false);
    if (!opened) {
        m_isNewPostNotInList = wasBlank && !m_post->localPost;
        co_return false;
    }
    leavePost();
    m_promotedRow = nullptr;
    m_post = (*opened)->wordpressPost();
    m_post->localPost = row;
    m_shown = Texts::of(**opened);
    setDocument(*opened);
    m_rowIsSelected = true;
    co_return true;
}

QCoro::Task<PostOnScreen::Reopened> PostOnScreen::reopen(LocalPostPtr row)
{
    const QPointer<PostOnScreen> self(this);
    const int generation = m_generation;
    const int request = m_openRequest;
    saveDocument();
    QCoro::Task<Result<DocumentPtr>> opening = openRow(row);
    const Result<DocumentPtr> opened = co_await opening;
    if (!self || !opened || generation != m_generation || request != m_openRequest)
        co_return Reopened::No;
    const Texts texts = Texts::of(**opened);
    const bool isAsShown = std::exchange(m_shown, texts) == texts;
    if (!isAsShown)
        leavePost();
    m_post = (*opened)->wordpressPost();
    m_post->localPost = row;
    setDocument(*opened);
    co_return isAsShown ? Reopened::AsShown : Reopened::Changed;
}

void PostOnScreen::leavePost()
{
    m_postsBefore.append({m_generation++, m_post});
    if (m_postsBefore.size() > rememberedPosts)
        m_postsBefore.removeFirst();
}

PostOnScreen::Texts PostOnScreen::Texts::of(const ZLDocument &document)
{
    return {document.post.title, document.storedContent(), document.post.taxonomies};
}

void PostOnScreen::replaceAfterUpload(const PostPtr &returned, const LocalPostPtr &row)
{
    m_post = returned;
    if (row)
        m_post->localPost = row;
    // The outcome that brought this post has saved and closed the document; the next edit opens the file again.
    setDocument(nullptr);
}

QUrl PostOnScreen::newFileURL() const
{
    // This random id names the folder only. The post itself has none yet: the id in its file is settled by the first
    // save or publish.
    return QUrl::fromLocalFile(PostSync::postPath(m_host.postPathForPostId(genRandString(idLength))));
}

LocalPostPtr PostOnScreen::writeFirstVersion(const PostPtr &post)
{
    const QUrl file = newFileURL();
    if (const Result<void> written = post->saveAtPath(pathOfFileURL(file), QStringLiteral("zalmo")); !written) {
        ZLLog(written.error().description);
        return nullptr;
    }
    return insertOnList(post, file, QStringLiteral(""), QStringLiteral(""));
}

LocalPostPtr PostOnScreen::insertOnList(
    const PostPtr &post, const QUrl &file, const QString &title, const QString &content)
{
    auto row = std::make_shared<ZLLocalPostRepresentation>();
    row->title = title;
    row->content = content;
    row->localFile = file;
    row->status = ZLLocalPostRepresentation::New;
    m_host.insertPost(0, row);
    post->localPost = row;
    Q_EMIT m_host.notifications().didUpdatePosts();
    return row;
}

DocumentPtr PostOnScreen::keepInMemory(const PostPtr &post)
{
    post->localFile = newFileURL();
    const DocumentPtr document =
        m_host.documentController().unwrittenDocument(post->localFile, post->generateXMLDataFileInfo(nullptr));
    connect(document.get(), &ZLDocument::didSave, &m_lateWriting, [this, post, document = document.get()] {
        if (!post->localPost)
            didWriteLate(post, *document);
    });
    return document;
}

void PostOnScreen::didWriteLate(const PostPtr &post, const ZLDocument &document)
{
    insertOnList(post, document.fileURL(), document.post.title, document.post.content);
    if (m_document.get() != &document)
        return;
    m_rowIsSelected = true;
    if (m_rows)
        m_rows->selectRowWithoutLoad(0);
}

QCoro::Task<Result<DocumentPtr>> PostOnScreen::openRow(LocalPostPtr row)
{
    QCoro::Task<Result<DocumentPtr>> opening =
        m_host.documentController().openDocumentWithContentsOfURL(row->localFile);
    Result<DocumentPtr> opened = co_await opening;
    if (!opened)
        ZLLog(opened.error().description);
    co_return opened;
}

void PostOnScreen::takeDocument(const LocalPostPtr &row, const DocumentPtr &document)
{
    if (m_promotedRow && isSameFile(m_promotedRow->localFile, row->localFile)) {
        const LocalPostPtr promoted = std::exchange(m_promotedRow, nullptr);
        m_post = document->wordpressPost();
        m_post->localPost = promoted;
        m_shown = Texts::of(*document);
    }
    if (isFileOnScreen(row->localFile))
        setDocument(document);
}

void PostOnScreen::followRow()
{
    const LocalPostPtr row = m_post->localPost;
    const LocalPostPtr listed = row ? m_host.rowForFile(row->localFile) : nullptr;
    if (!listed)
        return;
    m_post->localPost = listed;
    if (m_promotedRow)
        m_promotedRow = listed;
}

QCoro::Task<bool> PostOnScreen::createNewPostOnList()
{
    const QPointer<PostOnScreen> self(this);
    m_isNewPostNotInList = false;
    const LocalPostPtr row = writeFirstVersion(m_post);
    if (!row) {
        setDocument(keepInMemory(m_post));
        m_shown = Texts::of(*m_document);
        co_return m_document->saveDocument().has_value(); // tried again, so that the failure is said
    }
    m_promotedRow = row;
    QCoro::Task<Result<DocumentPtr>> opening = openRow(row);
    m_rowIsSelected = true;
    if (m_rows)
        m_rows->selectRowWithoutLoad(0);
    const Result<DocumentPtr> opened = co_await opening;
    if (!self || !opened)
        co_return false;
    takeDocument(row, *opened);
    co_return true;
}

QCoro::Task<bool> PostOnScreen::becomeReady()
{
    const QPointer<PostOnScreen> self(this);
    const int generation = m_generation;
    const LocalPostPtr row = m_post->localPost;
    if (!row && m_document) {
        const Result<void> written = m_document->saveDocument();
        if (!written)
            Q_EMIT didFailToPromote(written.error());
        co_return written.has_value();
    }
    if (!row) {
        QCoro::Task<bool> promoting = createNewPostOnList();
        const bool promoted = co_await promoting;
        co_return promoted &&self &&generation == m_generation;
    }
    if (!m_document) {
        QCoro::Task<Result<DocumentPtr>> opening = openRow(row);
        const Result<DocumentPtr> opened = co_await opening;
        if (self && opened)
            takeDocument(row, *opened);
    }
    co_return self &&generation == m_generation;
}

void PostOnScreen::write(Mark mark, const Edit &edit)
{
    const LocalPostPtr row = m_post->localPost;
    if (!m_document) {
        if (row)
            reopenAndWrite(row->localFile, {mark, m_post->status, row->status, edit});
        else
            writeFirstEdit(m_post, mark, edit);
        return;
    }
    apply(edit, *m_document);
    // A change of the tokens leaves the status of an open document alone: that is settled. Meant is that every edit
    // marks the file as changed here.
    if (mark == Mark::Always)
        m_document->fileInfo.status = localStatus(m_post->status);
    m_document->updateChangeCount();
}

void PostOnScreen::writeToPostBefore(int generation, Mark mark, const Edit &edit)
{
    const auto before = std::find_if(m_postsBefore.cbegin(), m_postsBefore.cend(),
        [generation](const PostBefore &left) { return left.generation == generation; });
    if (before == m_postsBefore.cend())
        return;
    const PostPtr post = before->post;
    if (const LocalPostPtr row = post->localPost)
        reopenAndWrite(row->localFile, {mark, post->status, row->status, edit});
    else
        writeFirstEdit(post, mark, edit);
}

void PostOnScreen::writeFirstEdit(const PostPtr &post, Mark mark, const Edit &edit)
{
    DocumentPtr document = m_host.documentController().documentForURL(post->localFile);
    if (const LocalPostPtr row = document ? nullptr : writeFirstVersion(post)) {
        reopenAndWrite(row->localFile, {mark, post->status, row->status, edit});
        return;
    }
    if (!document)
        document = keepInMemory(post);
    edit(*document);
    document->updateChangeCount();
}

void PostOnScreen::apply(const Edit &edit, ZLDocument &document)
{
    // A document that a sync has changed is not what the screen shows, whatever is typed into it.
    const bool wasShown = m_shown == Texts::of(document);
    edit(document);
    if (wasShown)
        m_shown = Texts::of(document);
}

QCoro::Task<void> PostOnScreen::reopenAndWrite(QUrl file, PendingEdit pending)
{
    const QPointer<PostOnScreen> self(this);
    QCoro::Task<Result<DocumentPtr>> opening = m_host.documentController().openDocumentWithContentsOfURL(file);
    const Result<DocumentPtr> opened = co_await opening;
    const bool isOnScreen = self && isFileOnScreen(file);
    if (!opened) {
        ZLLog(opened.error().description);
        if (isOnScreen)
            Q_EMIT documentDidFailToSave(opened.error());
        co_return;
    }
    const DocumentPtr document = *opened;
    if (isOnScreen)
        apply(pending.edit, *document);
    else
        pending.edit(*document);
    const bool isSolvedConflict =
        pending.postStatus != ZLWordpressPost::New && pending.rowStatus == ZLLocalPostRepresentation::ConflictSolved;
    if (pending.mark != Mark::Never && !isSolvedConflict)
        document->fileInfo.status = localStatus(pending.postStatus);
    document->updateChangeCount();
    if (isOnScreen)
        setDocument(document);
    else
        std::ignore = document->saveDocument(); // a failure is said by the document controller
}

bool PostOnScreen::isFileOnScreen(const QUrl &file) const
{
    return m_post->localPost && isSameFile(m_post->localPost->localFile, file);
}

void PostOnScreen::setDocument(const DocumentPtr &document)
{
    if (m_document == document)
        return;
    if (m_document) {
        m_document->disconnect(this);
        // When it cannot be written the document controller keeps it, and with it its text.
        saveDocument();
    }
    m_document = document;
    if (!m_document)
        return;
    connect(m_document.get(), &ZLDocument::didChange, this, &PostOnScreen::documentDidChange);
    connect(m_document.get(), &ZLDocument::didSave, this, &PostOnScreen::documentDidSave);
    connect(m_document.get(), &ZLDocument::didFailToSave, this, &PostOnScreen::documentDidFailToSave);
    // An outcome or a deletion is done with it; the next edit asks for the file's document again.
    connect(m_document.get(), &ZLDocument::didClose, this, [this] { setDocument(nullptr); });
}

void PostOnScreen::leaveDocument()
{
    const DocumentPtr document = m_document;
    if (!document)
        return;
    setDocument(nullptr);
    document->close();
}

void PostOnScreen::saveDocument()
{
    if (m_document && m_document->hasUnautosavedChanges())
        std::ignore = m_document->saveDocument();
}

void PostOnScreen::giveIdIfNone()
{
    if (!m_post->id.isEmpty())
        return;
    m_post->id = genRandString(idLength);
    // With the id in the file the overlay finds its post again when the writer comes back to it during the upload.
    write(Mark::Never, [id = m_post->id](ZLDocument &document) { document.postInfo.id = id; });
}

void PostOnScreen::forgetFailedUpload()
{
    if (m_document)
        m_post->status = m_document->wordpressPost()->status;
}

QString PostOnScreen::titleForBlog(const QString &shown) const
{
    return m_document ? m_document->storedTitle(shown) : shown;
}
