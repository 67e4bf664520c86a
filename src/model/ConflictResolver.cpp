#include "model/ConflictResolver.h"

#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "platform/ZLLog.h"

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

QString conflicted(const QString &title)
{
    return QStringLiteral("[conflicted] ") + title;
}

bool saveCopy(ZLWordpressPost &post, const QString &path)
{
    post.title = conflicted(post.title);
    const Result<void> saved = post.saveAtPath(path);
    if (!saved)
        logError(QStringLiteral("error saving conflicted-post: %1"), saved.error());
    return saved.has_value();
}

/// One answer at work.
class Answer {
public:
    Answer(const LocalPostPtr &row, const DocumentPtr &currentDocument)
        : m_row(row)
        , m_path(pathOfFileURL(row->localFile))
        , m_conflictPath(PostSync::conflictPath(m_path))
    {
        if (currentDocument && isSameFile(currentDocument->fileURL(), row->localFile))
            m_local = currentDocument;
        else
            m_local = opened(m_path);
        m_remote = opened(m_conflictPath);
        if (m_remote && m_remote->isDamaged())
            m_remote = nullptr;
    }

    ConflictResolver::Outcome keepLocal(bool keepsRemoteCopy, const QDateTime &now)
    {
        if (!m_local)
            return {};
        m_local->fileInfo.status = QStringLiteral("modified");
        m_local->postInfo.updatedAt = now;
        (void)m_local->saveDocument(); // logs, and tries again by itself
        // A copy that was to be kept and cannot be read or written stays where it is.
        if (!keepsRemoteCopy || (m_remote && saveCopy(*storedPost(*m_remote), PostSync::conflictSolvedPath(m_path))))
            removeFile(m_conflictPath);
        return {true, true, nullptr, {}, nullptr};
    }

    ConflictResolver::Outcome takeRemote(bool keepsLocalCopy)
    {
        if (!m_remote || (keepsLocalCopy && !m_local))
            return {};
        ConflictResolver::Outcome outcome{true, false, m_row, {}, nullptr};
        if (keepsLocalCopy) {
            const LocalPostPtr copy = localCopy();
            if (!copy)
                return {};
            outcome.insertedOnTop << copy;
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
        outcome.loaded = keepsLocalCopy ? std::make_shared<ZLLocalPostRepresentation>() : m_row;
        describe(*outcome.loaded, *winner);
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

    /// Null when it could not be written.
    LocalPostPtr localCopy()
    {
        const PostPtr copy = storedPost(*m_local);
        if (!saveCopy(*copy, PostSync::conflictSolvedPath(m_path)))
            return nullptr;
        auto row = std::make_shared<ZLLocalPostRepresentation>();
        row->status = ZLLocalPostRepresentation::ConflictSolved;
        row->title = conflicted(m_local->post.title);
        row->content = copy->content;
        row->localFile = QUrl::fromLocalFile(PostSync::conflictSolvedPath(m_path));
        return row;
    }

    /// A page reads as a post here, until the next read of the file puts it right. As intended it would be 2 at once.
    void describe(ZLLocalPostRepresentation &row, const ZLWordpressPost &post) const
    {
        row.status = post.status == ZLWordpressPost::Publish ? ZLLocalPostRepresentation::Published
            : post.status == ZLWordpressPost::Note           ? ZLLocalPostRepresentation::EvernoteNote
                                                             : ZLLocalPostRepresentation::Draft;
        row.title = m_remote->post.title;
        row.content = post.content;
        row.localFile = QUrl::fromLocalFile(m_path);
    }

    LocalPostPtr m_row;
    QString m_path;
    QString m_conflictPath;
    DocumentPtr m_local;
    DocumentPtr m_remote; ///< null when it cannot be read
};
} // namespace

ConflictResolver::Outcome ConflictResolver::resolve(Action action, Selection selection, const LocalPostPtr &row,
    const DocumentPtr &currentDocument, const QDateTime &now)
{
    if (!row || !PostSync::isPostPath(pathOfFileURL(row->localFile)))
        return {};
    Answer answer(row, currentDocument);
    return selection == Local ? answer.keepLocal(action == KeepBoth, now) : answer.takeRemote(action == KeepBoth);
}

QDateTime ConflictResolver::remoteDate(const LocalPostPtr &row)
{
    const QString path = PostSync::conflictPath(pathOfFileURL(row->localFile));
    const Result<DocumentPtr> remote = ZLDocument::open(QUrl::fromLocalFile(path));
    return remote ? (*remote)->postInfo.updatedAt : QDateTime();
}

QDateTime ConflictResolver::localDate(const LocalPostPtr &row)
{
    return QFileInfo(pathOfFileURL(row->localFile)).lastModified().toUTC();
}
