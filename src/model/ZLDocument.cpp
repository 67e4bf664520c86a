#include "model/ZLDocument.h"

#include "model/FilesAside.h"
#include "model/LocalFileURL.h"
#include "model/PostFile.h"
#include "model/PostFileWords.h"
#include "model/PostSync.h"
#include "model/ZLFileExtension.h"
#include "platform/ZLAtomicFile.h"
#include "platform/ZLFileManager.h"
#include "platform/ZLLog.h"
#include "text/BlankContent.h"

#include <QFile>
#include <QFileInfo>

namespace {
constexpr int autosaveDelay = 1000;
constexpr int longestAutosaveDelay = 3000;

std::shared_ptr<const ZLWordpressPost> syncedPostOf(const PostFields &stored)
{
    auto made = std::make_shared<ZLWordpressPost>();
    static_cast<PostFields &>(*made) = stored;
    made->storedContent = stored.content;
    return made;
}
} // namespace

ZLDocument::ZLDocument(const QUrl &fileURL)
    : m_fileURL(fileURL)
{
    m_autosave.setSingleShot(true);
    connect(&m_autosave, &QTimer::timeout, this, [this] { (void)saveDocument(); });
}

ZLDocument::~ZLDocument()
{
    if (m_changed)
        (void)write();
}

Result<DocumentPtr> ZLDocument::open(const QUrl &fileURL)
{
    const DocumentPtr document(new ZLDocument(fileURL));
    if (const Result<void> read = document->revertDocument(); !read)
        return failure(read.error());
    return document;
}

DocumentPtr ZLDocument::unwritten(const QUrl &fileURL, const QByteArray &bytes)
{
    const DocumentPtr document(new ZLDocument(fileURL));
    document->take(PostFile::fromData(bytes));
    document->m_changed = true;
    document->m_unsavedFor.start();
    return document;
}

Result<void> ZLDocument::revertDocument()
{
    const QString path = pathOfFileURL(m_fileURL);
    const Result<QByteArray> bytes = ZLAtomicFile::read(path);
    if (!bytes && !QFileInfo(path).isFile())
        return failure(bytes.error());
    m_fileState = currentFileState();
    const PostFile file = PostFile::fromData(bytes.value_or(QByteArray()));
    m_damaged = !file.isWhole;
    if (!bytes)
        ZLLog(QStringLiteral("error-%1").arg(bytes.error().description));
    else if (m_damaged)
        ZLLog(QStringLiteral("error-The post file “%1” is damaged").arg(path));
    take(file);
    m_changed = false;
    m_autosave.stop();
    m_onDisk = contents();
    m_synced.reset();
    if (isInStepOnDisk())
        m_synced = syncedPostOf(storedFields());
    return {};
}

void ZLDocument::take(const PostFile &file)
{
    static_cast<PostFields &>(post) = file;
    fileInfo = file.fileInfo;
    if (post.title.isNull())
        post.title = QStringLiteral("");
    if (post.content.isNull())
        post.content = BlankContent::paragraph;
    post.localFile = m_fileURL;
    m_title = {post.title, file.storedTitle.isNull() ? post.title : file.storedTitle};
    m_content = {post.content, file.storedContent.isNull() ? post.content : file.storedContent};
    // Copies that were kept by earlier versions still lead to the blog's post.
    if (PostSync::isConflictSolvedPath(pathOfFileURL(m_fileURL)))
        post.becomeNew({});
}

QString ZLDocument::storedTitle() const
{
    return m_title.of(post.title);
}

QString ZLDocument::storedContent() const
{
    return m_content.of(post.content);
}

QString ZLDocument::storedTitle(const QString &shown) const
{
    return m_title.of(shown);
}

PostFields ZLDocument::storedFields() const
{
    PostFields fields = post;
    fields.title = storedTitle();
    fields.content = storedContent();
    return fields;
}

QByteArray ZLDocument::data() const
{
    ZLFileInfo written = fileInfo;
    if (written.appVersion.isEmpty())
        written.appVersion = QString::number(PostFileWords::currentVersion);
    return ZLFileExtension::generateXMLDataForPost(storedFields(), &written);
}

void ZLDocument::updateChangeCount()
{
    if (fileInfo.status.isEmpty() && m_onDisk != contents())
        fileInfo.status = post.status == PostFields::New ? QStringLiteral("new") : QStringLiteral("modified");
    noteChange();
}

void ZLDocument::noteChange()
{
    if (!m_changed)
        m_unsavedFor.start();
    m_changed = true;
    const int untilLatest = int(qMax<qint64>(0, longestAutosaveDelay - m_unsavedFor.elapsed()));
    m_autosave.start(qMin(autosaveDelay, untilLatest));
    Q_EMIT didChange();
}

Result<void> ZLDocument::saveDocument()
{
    m_autosave.stop();
    const Result<void> written = write();
    if (written) {
        m_changed = false;
        Q_EMIT didSave();
        return {};
    }
    ZLLog(QStringLiteral("Whoops, couldn't save: %1").arg(written.error().description));
    if (!m_changed)
        m_unsavedFor.start();
    m_changed = true;
    Q_EMIT didFailToSave(written.error());
    return written;
}

Result<void> ZLDocument::write()
{
    if (m_damaged && m_onDisk == contents())
        return {};
    const QString path = pathOfFileURL(m_fileURL);
    const Result<QString> aside =
        m_damaged ? FilesAside::keepBeside(path, QStringLiteral(".damaged")) : Result<QString>(QString());
    if (!aside)
        return failure(aside.error());
    if (!m_onDisk)
        ZLFileManager::makeFolder(QFileInfo(path).path()); // its failure shows with the file's
    if (isInStepOnDisk() && !fileInfo.status.isEmpty())
        keepSyncedVersion();
    const Result<void> written = ZLAtomicFile::write(path, data());
    if (!written) {
        if (!aside->isNull())
            QFile::remove(*aside);
        return written;
    }
    m_damaged = false;
    m_onDisk = contents();
    m_fileState = currentFileState();
    if (isInStepOnDisk())
        QFile::remove(PostSync::syncedPath(path));
    return {};
}

bool ZLDocument::isInStepOnDisk() const
{
    return m_onDisk && !m_damaged && m_onDisk->fileInfo.status.isEmpty() && m_onDisk->post.isOnBlog()
        && PostSync::isPostPath(pathOfFileURL(m_fileURL));
}

// What the writer has typed is worth more than this version, so that a failure does not keep it from the disk: the next
// update then sends the whole post.
void ZLDocument::keepSyncedVersion() const
{
    const QString path = pathOfFileURL(m_fileURL);
    const QString synced = PostSync::syncedPath(path);
    QFile::remove(synced); // a left-over
    if (const Result<void> kept = FilesAside::linkOrCopy(path, synced); !kept)
        ZLLog(kept.error().description);
}

void ZLDocument::close()
{
    // Who changed the fields without noting it means them to last as well.
    if (m_changed || m_onDisk != contents())
        (void)saveDocument();
    Q_EMIT didClose();
}

void ZLDocument::revertIfReplaced()
{
    if (m_changed || m_onDisk != contents() || m_fileState == currentFileState())
        return;
    if (const Result<void> read = revertDocument(); !read)
        ZLLog(QStringLiteral("error-%1").arg(read.error().description));
}

ZLDocument::FileState ZLDocument::currentFileState() const
{
    const QFileInfo file(pathOfFileURL(m_fileURL));
    return {file.lastModified(), file.metadataChangeTime(), file.size()};
}

void ZLDocument::forgetChanges()
{
    m_autosave.stop();
    m_changed = false;
    m_onDisk = contents();
}

Result<void> ZLDocument::moveToURL(const QUrl &to, ZLDocument *there)
{
    const QString from = pathOfFileURL(m_fileURL);
    const QString path = pathOfFileURL(to);
    if (from == path)
        return {};
    if (path.isEmpty() || !ZLFileManager::makeFolder(QFileInfo(path).path()))
        return failure(
            QStringLiteral("ZLFile"), 1, QStringLiteral("Could not make the folder of the file “%1”").arg(path));
    if (const Result<void> way = makeWay(path, there); !way)
        return way;
    if (const Result<void> moved = FilesAside::move(from, path); !moved)
        return moved;
    takePlace(to);
    return {};
}

void ZLDocument::takePlace(const QUrl &url)
{
    m_fileURL = url;
    post.localFile = url;
    m_fileState = currentFileState();
}

// A sync can have fetched a post before its outcome came in, so that its new place is taken. The document, which holds
// the remote state too, is the newer one of the two.
Result<void> ZLDocument::makeWay(const QString &path, ZLDocument *there)
{
    if (!QFileInfo::exists(path))
        return {};
    ZLLog(QStringLiteral("“%1” was there already and gives way").arg(path));
    if (there)
        return there->giveWay();
    const Result<DocumentPtr> other = open(QUrl::fromLocalFile(path));
    return other ? (*other)->giveWay() : failure(other.error());
}

Result<void> ZLDocument::giveWay()
{
    const QString path = pathOfFileURL(m_fileURL);
    if (m_damaged && QFileInfo(path).size() > 0) {
        const Result<QString> aside = FilesAside::setAside(path, QStringLiteral(".damaged"));
        if (!aside)
            return failure(aside.error());
        takePlace(QUrl::fromLocalFile(*aside));
        return {};
    }
    if (fileInfo.status.isEmpty()) {
        QFile file(path);
        if (file.remove())
            return {};
        return failure(QStringLiteral("ZLFile"), 1,
            QStringLiteral("Could not replace the file “%1”: %2").arg(path, file.errorString()));
    }
    const QString copy = PostSync::freeConflictSolvedPath(path);
    if (const Result<void> moved = FilesAside::move(path, copy); !moved)
        return moved;
    QFile::remove(PostSync::syncedPath(path));
    takePlace(QUrl::fromLocalFile(copy));
    // Otherwise its row would stand for the post on the blog, and deleting the copy would delete that.
    post.becomeNew({});
    fileInfo.status = QStringLiteral("conflict-solved");
    (void)saveDocument(); // logs, and tries again by itself
    return {};
}

bool ZLDocument::isInConflict() const
{
    const QString path = pathOfFileURL(m_fileURL);
    return fileInfo.status == QLatin1String("conflict")
        || (PostSync::isPostPath(path) && QFileInfo::exists(PostSync::conflictPath(path)));
}

ZLDocument::SyncedPost ZLDocument::syncedPost() const
{
    if (m_synced)
        return *m_synced;
    m_synced = nullptr;
    const QString path = pathOfFileURL(m_fileURL);
    if (!PostSync::hasLocalChanges(fileInfo) || !PostSync::isPostPath(path))
        return nullptr;
    const QString synced = PostSync::syncedPath(path);
    const Result<QByteArray> bytes = QFileInfo::exists(synced) ? ZLAtomicFile::read(synced) : QByteArray();
    const PostFile file = PostFile::fromData(bytes.value_or(QByteArray()));
    if (file.isWhole && file.id == post.id)
        m_synced = syncedPostOf(file.stored());
    return *m_synced;
}

bool ZLDocument::hasSyncedVersion() const
{
    return PostSync::hasLocalChanges(fileInfo) && syncedPost();
}

Result<void> ZLDocument::revertToSyncedVersion()
{
    if (isInConflict() || !hasSyncedVersion())
        return failure(QStringLiteral("ZLFile"), 1,
            QStringLiteral("The blog's version of “%1” is not on this computer").arg(post.title));
    ZLWordpressPost synced = *syncedPost();
    if (const Result<void> saved = synced.saveAtPath(pathOfFileURL(m_fileURL)); !saved)
        return saved;
    const Result<void> read = revertDocument();
    if (read)
        Q_EMIT didSave();
    return read;
}

void ZLDocument::takeSyncedVersion(const QString &path)
{
    const QString synced = PostSync::syncedPath(pathOfFileURL(m_fileURL));
    QFile::remove(synced);
    if (const Result<void> moved = FilesAside::move(path, synced); !moved)
        ZLLog(moved.error().description);
    m_synced.reset();
}

Result<void> ZLDocument::setFirstPublishBegan(const QDateTime &date)
{
    post.firstPublishBegan = date;
    noteChange();
    return saveDocument();
}

PostPtr ZLDocument::wordpressPost() const
{
    auto made = std::make_shared<ZLWordpressPost>();
    static_cast<PostFields &>(*made) = post;
    made->localFile = m_fileURL;
    made->storedContent = storedContent();
    if (!made->storedContent.isEmpty())
        made->content = made->storedContent; // decoded twice, it would lose a literal "&lt;"
    made->synced = syncedPost();
    return made;
}

void ZLDocument::setRecentlySyncedWordpressPost(const ZLWordpressPost &remote)
{
    const int before = post.status;
    static_cast<PostFields &>(post) = remote;
    if (!post.isOnBlog())
        post.status = before;
    if (!remote.storedContent.isNull())
        post.content = remote.storedContent;
    post.firstPublishBegan = {};
    fileInfo.status = QStringLiteral("");
    m_title = {post.title, post.title};
    m_content = {post.content, post.content};
    m_synced = syncedPostOf(post);
    // A round can have met this very version before it was known to be the writer's own.
    const QFileInfo conflict(PostSync::conflictPath(pathOfFileURL(m_fileURL)));
    if (conflict.lastModified() <= post.updatedAt)
        QFile::remove(conflict.filePath());
    noteChange();
}
