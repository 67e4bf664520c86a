#pragma once

#include "model/ZLDocument.h"

#include <QCoroTask>

/// Hands out open documents. A document that somebody still holds is handed to every caller of its URL, which is how
/// edits and outcomes meet in one object. One with unsaved changes is held here too, until it could be written.
class ZLDocumentController : public QObject {
    Q_OBJECT
public:
    explicit ZLDocumentController(QObject *parent = nullptr);
    ~ZLDocumentController() override;

    /// Opens the file, or gives the open document, on a later turn of the event loop. An open document without unsaved
    /// changes is read anew when its file has been replaced since.
    QCoro::Task<Result<DocumentPtr>> openDocumentWithContentsOfURL(QUrl url);
    /// See ZLDocument::unwritten(). It is held here until it could be written.
    DocumentPtr unwrittenDocument(const QUrl &url, const QByteArray &bytes);
    QList<DocumentPtr> documents() const;
    /// The open document of this file, if any.
    DocumentPtr documentForURL(const QUrl &url) const;
    /// Moves the document's file. An open document whose file gives way to it goes with that file, so that no two write
    /// to one place.
    [[nodiscard]] Result<void> move(const DocumentPtr &document, const QUrl &to);
    /// Lets go of what is unsaved of this file, which is about to be deleted and must not come back.
    void forget(const QUrl &url);
    /// Writes every unsaved document: when a post is left, the window loses focus or the program ends.
    void saveAll();

Q_SIGNALS:
    /// Any open document could not be written; its text stays in memory.
    void didFailToSave(DocumentPtr document, const ZLError &error);

private:
    void watch(const DocumentPtr &document);

    QList<std::weak_ptr<ZLDocument>> m_documents;
    QList<DocumentPtr> m_unsaved;
};
