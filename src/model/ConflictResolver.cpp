#include "model/ConflictResolver.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "platform/ZLLog.h"
#include "text/RandomString.h"

#include <QFile>
#include <QFileInfo>

namespace {
void logError(const QString &format, const ZLError &error)
{
    ZLLog(format.arg(error.description));
}

void removeFile(const QString &path)
{
    QFile file(path);
    if (!file.remove())
        ZLLog(QStringLiteral("error - %1: %2").arg(path, file.errorString()));
}

/// The working post with its title as it is stored.
PostPtr storedPost(const ZLDocument &document)
{
    PostPtr post = document.wordpressPost();
    post->title = document.storedTitle();
    return post;
}

const QString conflictedPrefix = QStringLiteral("[conflicted] ");

/// Saves it beside the post; gives where, or nothing when it could not be written.
QString saveCopy(ZLWordpressPost &post, const QString &postPath)
{
    const QString path = PostSync::freeConflictSolvedPath(postPath);
    post.title.prepend(conflictedPrefix);
    post.becomeNew({});
    const Result<void> saved = post.saveAtPath(path);
    if (!saved)
        logError(QStringLiteral("error saving conflicted-post: %1"), saved.error());
    return saved ? path : QString();
}

/// One answer at work.
class Answer {
public:
    Answer(const LocalPostPtr &row, const ZLDocumentController &documents, const QDateTime &now)
        : m_row(row)
        , m_now(now)
        , m_path(pathOfFileURL(row->localFile))
        , m_conflictPath(PostSync::conflictPath(m_path))
    {
        m_local = documents.documentForURL(row->localFile);
        if (!m_local)
            m_local = opened(m_path);
        m_remote = opened(m_conflictPath);
        if (m_remote && m_remote->isDamaged())
            m_remote = nullptr;
    }

    ConflictResolver::Outcome keepLocal(bool keepsRemoteCopy)
    {
        if (!m_local)
            return {};
        m_local->fileInfo.status = QStringLiteral("modified");
        m_local->post.updatedAt = m_now;
        if (!m_local->saveDocument()) // logs, and tries again by itself
            return {};
        // A copy that was to be kept and cannot be read or written stays where it is.
        if (keepsRemoteCopy && (!m_remote || saveCopy(*storedPost(*m_remote), m_path).isNull()))
            return {true, true, nullptr, {}, nullptr};
        // The next update brings the blog from its own version to this one.
        if (m_remote)
            m_local->takeSyncedVersion(m_conflictPath);
        else
            removeFile(m_conflictPath);
        return {true, true, nullptr, {}, nullptr};
    }

    ConflictResolver::Outcome takeRemote(bool keepsLocalCopy)
    {
        if (!m_remote || (keepsLocalCopy && !m_local))
            return {};
        ConflictResolver::Outcome outcome{true, false, m_row, {}, nullptr};
        if (keepsLocalCopy) {
            const QString copy = saveCopy(*storedPost(*m_local), m_path);
            if (copy.isNull())
                return {};
            outcome.insertedOnTop << rowOf(copy);
        }
        const PostPtr winner = storedPost(*m_remote);
        // One atomic write stands for removing the old file and saving the new one.
        if (const Result<void> saved = winner->saveAtPath(m_path); !saved) {
            logError(QStringLiteral("error: %1"), saved.error());
            return {};
        }
        removeFile(m_conflictPath);
        if (m_local)
            (void)m_local->revertDocument();
        outcome.loaded = rowOf(m_path);
        if (!keepsLocalCopy) {
            *m_row = *outcome.loaded;
            outcome.loaded = m_row;
        }
        outcome.insertedOnTop << outcome.loaded;
        return outcome;
    }

private:
    static DocumentPtr opened(const QString &path)
    {
        const Result<DocumentPtr> document = ZLDocument::open(QUrl::fromLocalFile(path));
        if (!document)
            logError(QStringLiteral("error: %1"), document.error());
        return document.value_or(nullptr);
    }

    LocalPostPtr rowOf(const QString &path) const
    {
        return ZLLocalPostRepresentation::initWithContentsOfFileURL(QUrl::fromLocalFile(path), m_now);
    }

    LocalPostPtr m_row;
    QDateTime m_now;
    QString m_path;
    QString m_conflictPath;
    DocumentPtr m_local;
    DocumentPtr m_remote; ///< null when it cannot be read
};
} // namespace

ConflictResolver::Outcome ConflictResolver::resolve(Action action, Selection selection, const LocalPostPtr &row,
    const ZLDocumentController &documents, const QDateTime &now)
{
    if (!row || !PostSync::isPostPath(pathOfFileURL(row->localFile)))
        return {};
    Answer answer(row, documents, now);
    return selection == Local ? answer.keepLocal(action == KeepBoth) : answer.takeRemote(action == KeepBoth);
}

Result<QUrl> ConflictResolver::makeNewPost(
    const LocalPostPtr &row, ZLDocumentController &documents, const QDateTime &now)
{
    const DocumentPtr open = documents.documentForURL(row->localFile);
    const Result<DocumentPtr> opened = open ? Result<DocumentPtr>(open) : ZLDocument::open(row->localFile);
    if (!opened)
        return failure(opened.error());
    const DocumentPtr document = *opened;
    const QString id = genRandString(8);
    const QString from = pathOfFileURL(row->localFile);
    const QString posts = QFileInfo(QFileInfo(from).path()).path();
    const QUrl url = QUrl::fromLocalFile(PostSync::postPath(posts + QStringLiteral("/p") + id));
    const PostFields before = document->post;
    document->post.becomeNew(id);
    if (before.blogStatus == QLatin1String("private"))
        document->post.blogStatus = before.blogStatus;
    if (before.createdAt > now)
        document->post.createdAt = before.createdAt;
    if (document->post.title.startsWith(conflictedPrefix))
        document->post.title = document->storedTitle().mid(conflictedPrefix.size());
    document->fileInfo.status = QStringLiteral("new");
    if (const Result<void> saved = document->saveDocument(); !saved)
        return failure(saved.error());
    if (const Result<void> moved = documents.move(document, url); !moved)
        return failure(moved.error());
    if (PostSync::isPostPath(from))
        QFile::remove(PostSync::syncedPath(from)); // what the blog last gave of it; a copy's belongs to the other
    return url;
}
