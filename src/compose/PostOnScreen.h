#pragma once

#include "app/ComposeHost.h"
#include "compose/RowUpdates.h"

#include <QCoroTask>
#include <QObject>
#include <functional>

/// The post on the screen in its two records: the working post, and the open document of its file, into which every
/// edit goes at once. A blank post has no document; its first edit makes one.
///
/// What was typed into one post reaches the file of that post, whatever is on the screen by then.
class PostOnScreen : public QObject {
    Q_OBJECT
public:
    explicit PostOnScreen(ComposeHost &host, QObject *parent = nullptr);
    ~PostOnScreen() override;

    void setRowUpdates(RowUpdates *rows) { m_rows = rows; }

    PostPtr post() const { return m_post; }
    DocumentPtr currentDocument() const { return m_document; } ///< null for a blank post
    bool isInConflict() const;
    /// An upload found that the blog has deleted it. A sync that brings it ends that.
    bool isGoneFromBlog() const { return m_isGone; }
    void setGoneFromBlog(bool isGone) { m_isGone = isGone; }
    /// Grows with each post that comes on the screen; who waited for an answer sees whether it is still about this one.
    int generation() const { return m_generation; }
    bool isFileOnScreen(const QUrl &file) const;

    /// A blank post without a file; the document before is saved and let go.
    void setBlankPost(const PostPtr &post);
    /// What has come on the screen, to be shown.
    enum class Came {
        No, ///< the post on the screen is still the one before
        AsShown, ///< the same one, with the texts that are shown; the generation stays
        SamePost, ///< with other texts
        Another,
    };
    /// Opens the row's file on a later turn and puts its post here, unless it cannot be opened or another post was
    /// asked for meanwhile.
    QCoro::Task<Came> open(LocalPostPtr row);
    /// Takes the post anew from its file, which a sync or an outcome may have written.
    Came readAgain();
    /// The list was rebuilt: its new row for this file is the one to work with.
    void followRow();

    // Edits. Each marks the file as changed here, but for a conflict, which stays one until it is answered.
    void setTitle(const QString &title);
    /// A report of what is there already changes nothing.
    void setContent(const QString &html);
    void setTokens(const QStringList &tokens);
    /// The content of a post that has left the screen: `generation` is the one that it had here. A blank post that was
    /// left with its first key gets its file now.
    void setContentOfPostBefore(int generation, const QString &html);

    /// Sees to it that the post has its file, and what was typed is in it.
    Result<void> becomeStored();
    /// The post to send, as a record of its own: what the screen shows, with the id that its file holds from now on.
    PostPtr postToSend(const QString &content);
    /// Makes a kept copy of a conflict, or a post that its blog has deleted, a new post in a folder of its own.
    Result<void> becomeNewPost();

Q_SIGNALS:
    // of the document of this post
    void documentDidChange();
    void documentDidSave();
    void documentDidFailToSave(const ZLError &error);
    void fileDidChange(); ///< by something that is not shown yet

private:
    using Edit = std::function<void(ZLDocument &)>;
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
        QString content; ///< that was shown
        QString blogName;
    };

    bool change(const Edit &edit);
    QCoro::Task<void> takeLateReport(QUrl file, QString before, QString html);
    void leavePost();
    void setDocument(const DocumentPtr &document);
    DocumentPtr makeFile(const PostPtr &post, const QString &blogName);
    void didWriteFirst(const PostPtr &post, const ZLDocument &document, const QString &blogName);
    QUrl newFileURL(const QString &blogName) const;
    RowUpdates *rowUpdates() const { return m_rowIsSelected ? m_rows : nullptr; }

    ComposeHost &m_host;
    RowUpdates *m_rows = nullptr;
    PostPtr m_post;
    DocumentPtr m_document;
    Texts m_shown;
    QList<PostBefore> m_postsBefore; ///< the last few, about which the page may still have something to say
    bool m_rowIsSelected = false; ///< the list's selected row is that of this post
    bool m_isOpening = false; ///< another post is about to come
    bool m_isGone = false;
    int m_generation = 0;
    int m_openRequest = 0;
    QObject m_firstWriting; ///< listens to documents that have no file yet, on the screen or not
};
