#pragma once

#include "model/ZLFileInfo.h"
#include "model/ZLWordpressPost.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <optional>

struct PostFile;

/// An open post file. It autosaves a second after a change (three at the latest while changes go on), and at once on
/// saveDocument() and close().
///
/// Title and content have two readings. `post` holds what the format's reader gives: entities decoded twice, white
/// space trimmed. The document also remembers both texts byte for byte as the file stored them, and gives those back
/// (to the file and to the blog) for as long as `post` still holds what was read.
///
/// The first change of a post that the blog knows is written with the file as it was kept beside as "synced.zalmo",
/// until an upload has held or a sync has written the post.
///
/// A document is shared by all who opened its file, and lives until the last of them lets go. close() therefore only
/// says that one of them is done: what is unsaved is written, and an edit that another holder makes afterwards is
/// noted and saved like any other. So none can pull the file from under another, and no edit is lost.
class ZLDocument : public QObject {
    Q_OBJECT
public:
    /// Reads the file; fails when there is none. A file that is not readable, empty, cut off or no XML gives
    /// a document with what can be made out, or default values, that isDamaged().
    [[nodiscard]] static Result<std::shared_ptr<ZLDocument>> open(const QUrl &fileURL);
    /// For a file that could not be written yet and would hold these bytes. It counts as changed; its folder is made
    /// with the first writing.
    [[nodiscard]] static std::shared_ptr<ZLDocument> unwritten(const QUrl &fileURL, const QByteArray &bytes);
    ~ZLDocument() override;

    ZLAbstractPost post;
    ZLFileInfo fileInfo;

    QUrl fileURL() const { return m_fileURL; }
    /// The file could not be read as a post. It is written only when something has truly changed, and then the
    /// original is first set aside as "post.zalmo.damaged".
    bool isDamaged() const { return m_damaged; }

    /// The title and the content as the file stored them while `post` still holds what was read, else those of `post`.
    /// An empty body was shown as "<p><br></p>" and is "" here, not null.
    QString storedTitle() const;
    QString storedContent() const;
    /// What to send or store for a title that reads `shown` on the screen.
    QString storedTitle(const QString &shown) const;

    /// The text of the file. Bytes in UTF-8.
    QByteArray data() const;
    /// Notes a change of `post`, which is written a moment later. It marks the file: "modified" for a post that the
    /// blog knows, "new" for another; a mark that is there ("new", "conflict", "conflict-solved") stays.
    void updateChangeCount();
    bool hasUnautosavedChanges() const { return m_changed; }
    /// Writes now. A failure is returned, said by didFailToSave() and tried again at the next change or save; nothing
    /// is lost in memory. Saving a damaged document that nobody changed writes nothing.
    Result<void> saveDocument();
    /// Moves the file, keeping the object. The folder of `to` is made. A file that is there already gives way; when it
    /// holds local changes, it is kept beside as "conflict-solved.zalmo" or, where that exists, under a free name.
    /// `there` is the open document of that file, if any: it goes along. See ZLDocumentController::move().
    [[nodiscard]] Result<void> moveToURL(const QUrl &to, ZLDocument *there = nullptr);
    /// Saves what is unsaved. See above.
    void close();
    /// Counts what is in memory as written, for a file that is about to be deleted.
    void forgetChanges();
    /// Forgets unsaved changes and reads the file anew.
    Result<void> revertDocument();
    /// The same, when somebody else has written the file since and there is nothing unsaved here.
    void revertIfReplaced();

    /// A conflict waits: the blog's other version stands beside the file, or the file's mark says that it did.
    bool isInConflict() const;
    /// See ZLWordpressPost::synced.
    std::shared_ptr<const ZLWordpressPost> syncedPost() const;
    /// Whether there are local changes, and the version to which revertToSyncedVersion() goes back is known.
    bool hasSyncedVersion() const;
    /// Gives up the local changes, saved or not. Fails while a conflict waits and without a version to go back to.
    [[nodiscard]] Result<void> revertToSyncedVersion();
    /// The file at `path` becomes the version that the blog last gave.
    void takeSyncedVersion(const QString &path);
    /// Notes in the file, at once, that a first publish is under way; an invalid date, that it no longer is.
    Result<void> setFirstPublishBegan(const QDateTime &date);

    /// The fields with both texts as they are stored.
    PostFields storedFields() const;
    /// The working post of this document, its body as it is stored. `localPost` is left to the caller.
    PostPtr wordpressPost() const;
    /// Takes what the blog has now, all fields as they are; the file is in step with it then. A status that is neither
    /// draft nor published is not taken.
    void setRecentlySyncedWordpressPost(const ZLWordpressPost &remote);

Q_SIGNALS:
    void didChange();
    void didSave();
    void didFailToSave(const ZLError &error);
    void didClose();

private:
    explicit ZLDocument(const QUrl &fileURL);
    void take(const PostFile &file);
    void noteChange();
    [[nodiscard]] Result<void> write();
    bool isInStepOnDisk() const;
    void keepSyncedVersion() const;
    [[nodiscard]] static Result<void> makeWay(const QString &path, ZLDocument *there);
    [[nodiscard]] Result<void> giveWay();
    void takePlace(const QUrl &url);

    struct RememberedText {
        QString read; ///< what `post` was given
        QString stored; ///< what the file held
        QString of(const QString &now) const { return now == read ? stored : now; }
    };
    /// Tells a file that somebody else has written since.
    struct FileState {
        QDateTime modified;
        QDateTime changed; ///< unlike the other, no program sets it
        qint64 size = -1;
        bool operator==(const FileState &) const = default;
    };
    FileState currentFileState() const;
    /// What the file says, as far as the fields here can.
    struct Contents {
        PostFields post;
        ZLFileInfo fileInfo;
        bool operator==(const Contents &) const = default;
    };
    Contents contents() const { return {post, fileInfo}; }
    using SyncedPost = std::shared_ptr<const ZLWordpressPost>;

    QUrl m_fileURL;
    RememberedText m_title;
    RememberedText m_content;
    std::optional<Contents> m_onDisk; ///< when the file was last read or written; nothing before it was
    mutable std::optional<SyncedPost> m_synced; ///< nothing: synced.zalmo has to be asked
    FileState m_fileState;
    QTimer m_autosave;
    QElapsedTimer m_unsavedFor;
    bool m_changed = false;
    bool m_damaged = false;
};
using DocumentPtr = std::shared_ptr<ZLDocument>;
