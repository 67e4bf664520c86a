#include "model/ZLDocument.h"

#include "model/FilesAside.h"
#include "model/LocalFileURL.h"
#include "model/PostFile.h"
#include "model/PostSync.h"
#include "model/ZLFileExtension.h"
#include "platform/ZLAtomicFile.h"
#include "platform/ZLLog.h"
#include "text/BlankContent.h"
#include "text/ContentPasses.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
constexpr int autosaveDelay = 1000;
constexpr int longestAutosaveDelay = 3000;

QStringList keywordsOf(const QList<ZLTaxonomy> &taxonomies)
{
    // Unlike taxonomiesArray(), a taxonomy of a foreign type is kept here, as a category.
    QStringList keywords;
    for (const ZLTaxonomy &taxonomy : taxonomies)
        keywords << taxonomy.keyword();
    return keywords;
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
    if (const Result<void> read = document->readFromURL(); !read)
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

Result<void> ZLDocument::readFromURL()
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
    m_dataOnDisk = data();
    return {};
}

void ZLDocument::take(const PostFile &file)
{
    post.title = file.title.isNull() ? QStringLiteral("") : file.title;
    post.content = file.content.isNull() ? BlankContent::paragraph : file.content;
    post.createdAt = file.createdAt;
    post.updatedAt = file.updatedAt;
    post.URL = file.postURL;
    post.taxonomies = file.taxonomies;
    post.localFile = m_fileURL;
    m_title = {post.title, file.storedTitle.isNull() ? post.title : file.storedTitle};
    m_content = {post.content, file.storedContent.isNull() ? post.content : file.storedContent};

    postInfo.engine = file.engine;
    postInfo.status = file.status;
    postInfo.type = file.type;
    postInfo.id = file.id;
    postInfo.authorId = file.authorId;
    postInfo.URL = file.URL;
    postInfo.updatedAt = file.updatedAt;
    postInfo.createdAt = file.createdAt;
    postInfo.slug = file.slug;
    postInfo.allowComments = file.allowComments;
    postInfo.allowPingback = file.allowPingback;
    postInfo.featuredImageId = file.featuredImageId;
    postInfo.featuredImageURL = file.featuredImageURL;
    fileInfo.status = file.fileStatus;
    fileInfo.appVersion = file.appVersion;
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

QByteArray ZLDocument::data() const
{
    const QVariantMap postFields{
        {QStringLiteral("title"), storedTitle()},
        {QStringLiteral("content"), storedContent()},
        {QStringLiteral("keywords"), keywordsOf(post.taxonomies)},
    };
    const QVariantMap infoFields = postInfo.dictionary();
    const QVariantMap fileFields = fileInfo.dictionary();
    return ZLFileExtension::generateXMLDataForPost(&postFields, &infoFields, &fileFields);
}

void ZLDocument::updateChangeCount()
{
    if (!m_changed)
        m_unsavedFor.start();
    m_changed = true;
    scheduleAutosave();
    Q_EMIT didChange();
}

void ZLDocument::scheduleAutosave()
{
    const int untilLatest = int(qMax<qint64>(0, longestAutosaveDelay - m_unsavedFor.elapsed()));
    m_autosave.start(qMin(autosaveDelay, untilLatest));
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
    const QByteArray bytes = data();
    if (m_damaged && bytes == m_dataOnDisk)
        return {};
    const QString path = pathOfFileURL(m_fileURL);
    const Result<QString> aside =
        m_damaged ? FilesAside::keepBeside(path, QStringLiteral(".damaged")) : Result<QString>(QString());
    if (!aside)
        return failure(aside.error());
    if (m_dataOnDisk.isNull())
        QDir().mkpath(QFileInfo(path).path()); // its failure shows with the file's
    const Result<void> written = ZLAtomicFile::write(path, bytes);
    if (!written) {
        if (!aside->isNull())
            QFile::remove(*aside);
        return written;
    }
    m_damaged = false;
    m_dataOnDisk = bytes;
    m_fileState = currentFileState();
    return {};
}

void ZLDocument::close()
{
    // Who changed the fields without noting it means them to last as well.
    if (m_changed || data() != m_dataOnDisk)
        (void)saveDocument();
    Q_EMIT didClose();
}

Result<void> ZLDocument::revertDocument()
{
    return readFromURL();
}

void ZLDocument::revertIfReplaced()
{
    if (m_changed || data() != m_dataOnDisk || m_fileState == currentFileState())
        return;
    if (const Result<void> read = readFromURL(); !read)
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
    m_dataOnDisk = data();
}

Result<void> ZLDocument::moveToURL(const QUrl &to, ZLDocument *there)
{
    const QString from = pathOfFileURL(m_fileURL);
    const QString path = pathOfFileURL(to);
    if (from == path)
        return {};
    if (path.isEmpty() || !QDir().mkpath(QFileInfo(path).path()))
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
    if (m_damaged && QFileInfo(path).size() > 0)
        return setAside(QStringLiteral(".damaged"));
    if (fileInfo.status.isEmpty()) {
        QFile file(path);
        if (file.remove())
            return {};
        return failure(QStringLiteral("ZLFile"), 1,
            QStringLiteral("Could not replace the file “%1”: %2").arg(path, file.errorString()));
    }
    const QString copy = QFileInfo(path).path() + u'/' + QLatin1String(PostSync::conflictSolvedName);
    if (QFileInfo::exists(copy))
        return setAside(QStringLiteral(".kept"));
    if (const Result<void> moved = FilesAside::move(path, copy); !moved)
        return moved;
    takePlace(QUrl::fromLocalFile(copy));
    // Otherwise its row would stand for the post on the blog, and deleting the copy would delete that.
    fileInfo.status = QStringLiteral("conflict-solved");
    (void)saveDocument(); // logs, and tries again by itself
    return {};
}

Result<void> ZLDocument::setAside(const QString &suffix)
{
    const Result<QString> aside = FilesAside::setAside(pathOfFileURL(m_fileURL), suffix);
    if (!aside)
        return failure(aside.error());
    takePlace(QUrl::fromLocalFile(*aside));
    return {};
}

PostPtr ZLDocument::wordpressPost() const
{
    auto made = std::make_shared<ZLWordpressPost>();
    made->title = post.title;
    made->storedContent = storedContent();
    // The page shows what the blog stores, so the editor's form comes of that; the text decoded twice would lose
    // a literal "&lt;".
    made->content = made->storedContent.isEmpty() ? post.content : made->storedContent;
    made->replaceWPContentsForEditor();
    made->taxonomies = post.taxonomies;
    made->localFile = m_fileURL;
    made->id = postInfo.id;
    made->createdAt = postInfo.createdAt;
    made->updatedAt = postInfo.updatedAt;
    made->authorId = postInfo.authorId;
    made->URL = postInfo.URL;
    made->featuredImageURL = postInfo.featuredImageURL;
    made->featuredImageId = postInfo.featuredImageId;
    made->status = postInfo.status == QLatin1String("publish") ? ZLWordpressPost::Publish
        : postInfo.status == QLatin1String("draft")            ? ZLWordpressPost::Draft
                                                               : ZLWordpressPost::New;
    if (postInfo.engine == QLatin1String("evernote"))
        made->status = ZLWordpressPost::Note;
    made->type = postInfo.type == QLatin1String("page") ? ZLWordpressPost::Page : ZLWordpressPost::Post;
    made->allowComments = postInfo.allowComments;
    made->allowPingback = postInfo.allowPingback;
    made->slug = postInfo.slug;
    return made;
}

void ZLDocument::setRecentlySyncedWordpressPost(const ZLWordpressPost &remote)
{
    if (remote.status == ZLWordpressPost::Draft)
        postInfo.status = QStringLiteral("draft");
    else if (remote.status == ZLWordpressPost::Publish)
        postInfo.status = QStringLiteral("publish");
    fileInfo.status = QStringLiteral("");
    post.title = remote.title;
    post.content = remote.storedContent.isNull() ? remote.content : remote.storedContent;
    post.taxonomies = remote.taxonomies;
    m_title = {post.title, post.title};
    m_content = {post.content, post.content};
    postInfo.engine = QStringLiteral("wordpress");
    postInfo.id = remote.id;
    postInfo.authorId = remote.authorId;
    postInfo.createdAt = remote.createdAt;
    postInfo.updatedAt = remote.updatedAt;
    postInfo.URL = remote.URL;
    postInfo.featuredImageURL = remote.featuredImageURL.isEmpty() ? QString() : remote.featuredImageURL;
    postInfo.featuredImageId = remote.featuredImageId.isEmpty() ? QString() : remote.featuredImageId;
    updateChangeCount();
}
