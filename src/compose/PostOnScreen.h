#pragma once

#include "app/ComposeHost.h"
#include "compose/RowUpdates.h"

#include <QCoroTask>
#include <QObject>
#include <functional>

/// The post on the screen in its two records: the working post, and the open document of its file.
///
/// Every edit goes into the document, by write(). A document is there while a post is loaded; it is gone after an
/// upload came back and while a load is under way, and then the next edit opens the file again. What was typed into
/// one post thus reaches the file of that post, whatever is on the screen by the time the file is open.
class PostOnScreen : public QObject {
    Q_OBJECT
public:
    using Edit = std::function<void(ZLDocument &)>;
    /// What an edit does to the file's status ("modified", or "new" for a post that no server has seen).
    enum class Mark {
        Always, ///< set, but for a solved conflict whose file has to be opened anew
        OnlyWhenReopened,
        Never,
    };

    explicit PostOnScreen(ComposeHost &host, QObject *parent = nullptr);
    ~PostOnScreen() override;

    void setRowUpdates(RowUpdates *rows) { m_rows = rows; }

    PostPtr post() const { return m_post; }
    DocumentPtr currentDocument() const { return m_document; }
    bool isNewPostNotInList() const { return m_isNewPostNotInList; }
    void setIsNewPostNotInList(bool value) { m_isNewPostNotInList = value; }
    /// Grows with each post that comes on the screen; who waited for an answer sees whether it is still about this one.
    int generation() const { return m_generation; }

    /// A blank post without a file; the document before is saved and closed.
    void setBlankPost(const PostPtr &post);
    /// Saves and closes the document, then opens the row's file on a later turn and puts its post here. False: it did
    /// not open, or another post was asked for meanwhile; the post on the screen is then still the one before.
    QCoro::Task<bool> open(LocalPostPtr row);
    enum class Reopened { No, AsShown, Changed };
    /// The row's file is that of this post, and a sync may have written it: opens it again on a later turn and takes
    /// the post anew. As long as the texts are those that are shown, the generation stays.
    QCoro::Task<Reopened> reopen(LocalPostPtr row);
    /// The post as it came back from the blog; the document is let go.
    void replaceAfterUpload(const PostPtr &returned, const LocalPostPtr &row);
    /// Gives a blank post its file and its row on top of the list; done when its document is open. False: the file
    /// could not be written. The document then stays in memory, and the row comes with the first writing that works.
    QCoro::Task<bool> createNewPostOnList();
    /// Waits until the post has its file and its open document, whatever that still takes. False: it has no file, or
    /// another post came on the screen meanwhile.
    QCoro::Task<bool> becomeReady();

    /// The list was rebuilt: its new row for this file is the one to work with.
    void followRow();

    void write(Mark mark, const Edit &edit);
    /// An edit of a post that has left the screen: `generation` is the one that it had here. A blank post that was left
    /// with its first key gets its file now.
    void writeToPostBefore(int generation, Mark mark, const Edit &edit);
    /// The list's face for the row of this post; null while the selected row is another's.
    RowUpdates *rowUpdates() const { return m_rowIsSelected ? m_rows : nullptr; }
    /// The id that a post gets at its first upload; the file takes it too.
    void giveIdIfNone();
    /// A failed upload leaves the status that it was to give. The next try starts from the one in the file.
    void forgetFailedUpload();
    /// What the blog is to get for a title that reads `shown`: the stored bytes if the writer left it alone.
    QString titleForBlog(const QString &shown) const;
    void saveDocument();

Q_SIGNALS:
    void didFailToPromote(const ZLError &error);
    // of the document of this post
    void documentDidChange();
    void documentDidSave();
    void documentDidFailToSave(const ZLError &error);

private:
    struct PendingEdit {
        Mark mark;
        int postStatus;
        int rowStatus;
        Edit edit;
    };
    /// What the screen shows of a document.
    struct Texts {
        static Texts of(const ZLDocument &document);
        bool operator==(const Texts &) const = default;

        QString title;
        QString content;
        QList<ZLTaxonomy> taxonomies;
    };
    struct PostBefore {
        int generation;
        PostPtr post;
    };
    void leavePost();
    void apply(const Edit &edit, ZLDocument &document);
    QCoro::Task<void> reopenAndWrite(QUrl file, PendingEdit pending);
    void setDocument(const DocumentPtr &document);
    void leaveDocument();
    bool isFileOnScreen(const QUrl &file) const;
    QUrl newFileURL() const;
    LocalPostPtr writeFirstVersion(const PostPtr &post);
    LocalPostPtr insertOnList(const PostPtr &post, const QUrl &file, const QString &title, const QString &content);
    DocumentPtr keepInMemory(const PostPtr &post);
    void didWriteLate(const PostPtr &post, const ZLDocument &document);
    void writeFirstEdit(const PostPtr &post, Mark mark, const Edit &edit);
    QCoro::Task<Result<DocumentPtr>> openRow(LocalPostPtr row);
    void takeDocument(const LocalPostPtr &row, const DocumentPtr &document);

    ComposeHost &m_host;
    RowUpdates *m_rows = nullptr;
    PostPtr m_post;
    DocumentPtr m_document;
    Texts m_shown;
    QList<PostBefore> m_postsBefore; ///< the last few, about which the page may still have something to say
    LocalPostPtr m_promotedRow; ///< of a post that waits for the document of its new file
    bool m_isNewPostNotInList = true;
    bool m_rowIsSelected = false;
    bool m_isLeavingBlankPost = false; ///< another post is being opened
    int m_generation = 0;
    int m_openRequest = 0;
    QObject m_lateWriting; ///< listens to documents without a file, on the screen or not
};
