#include "model/ZLDocumentController.h"

#include "model/LocalFileURL.h"

#include <QCoroTimer>
#include <QPointer>

ZLDocumentController::ZLDocumentController(QObject *parent)
    : QObject(parent)
{
}

ZLDocumentController::~ZLDocumentController()
{
    for (const DocumentPtr &document : documents())
        document->disconnect(this);
}

QCoro::Task<Result<DocumentPtr>> ZLDocumentController::openDocumentWithContentsOfURL(QUrl url)
{
    const QPointer<ZLDocumentController> self(this);
    co_await QCoro::sleepFor(std::chrono::milliseconds(0));
    if (!self)
        co_return failure(QStringLiteral("ZLFile"), 1, QStringLiteral("The program is ending"));
    if (const DocumentPtr open = documentForURL(url)) {
        open->revertIfReplaced();
        co_return open;
    }
    const Result<DocumentPtr> opened = ZLDocument::open(url);
    if (opened)
        watch(*opened);
    co_return opened;
}

DocumentPtr ZLDocumentController::unwrittenDocument(const QUrl &url, const QByteArray &bytes)
{
    const DocumentPtr document = ZLDocument::unwritten(url, bytes);
    watch(document);
    m_unsaved.append(document);
    return document;
}

void ZLDocumentController::watch(const DocumentPtr &document)
{
    m_documents.removeIf([](const std::weak_ptr<ZLDocument> &candidate) { return candidate.expired(); });
    const std::weak_ptr<ZLDocument> weak = document;
    m_documents.append(weak);
    const auto hold = [this](const DocumentPtr &unsaved) {
        if (unsaved && !m_unsaved.contains(unsaved))
            m_unsaved.append(unsaved);
    };
    connect(document.get(), &ZLDocument::didChange, this, [hold, weak] { hold(weak.lock()); });
    connect(document.get(), &ZLDocument::didSave, this, [this, weak] {
        const DocumentPtr saved = weak.lock();
        // Let go later: this may be the last that holds the document, which is in the midst of saving.
        if (m_unsaved.removeAll(saved) > 0)
            QMetaObject::invokeMethod(
                this, [saved] {}, Qt::QueuedConnection);
    });
    connect(document.get(), &ZLDocument::didFailToSave, this, [this, hold, weak](const ZLError &error) {
        hold(weak.lock());
        if (const DocumentPtr unsaved = weak.lock())
            Q_EMIT didFailToSave(unsaved, error);
    });
}

QList<DocumentPtr> ZLDocumentController::documents() const
{
    QList<DocumentPtr> open;
    for (const std::weak_ptr<ZLDocument> &weak : m_documents) {
        if (const DocumentPtr document = weak.lock())
            open.append(document);
    }
    return open;
}

DocumentPtr ZLDocumentController::documentForURL(const QUrl &url) const
{
    for (const DocumentPtr &document : documents()) {
        if (isSameFile(document->fileURL(), url))
            return document;
    }
    return nullptr;
}

Result<void> ZLDocumentController::move(const DocumentPtr &document, const QUrl &to)
{
    const DocumentPtr there = documentForURL(to);
    if (!there || there == document)
        return document->moveToURL(to);
    if (there->hasUnautosavedChanges())
        (void)there->saveDocument(); // a failure is said there; its text goes along in memory
    const Result<void> moved = document->moveToURL(to, there.get());
    // Without local changes its file was replaced, and it shows the new one.
    if (moved && isSameFile(there->fileURL(), to))
        (void)there->revertDocument();
    return moved;
}

void ZLDocumentController::forget(const QUrl &url)
{
    for (const DocumentPtr &document : documents()) {
        if (!isSameFile(document->fileURL(), url))
            continue;
        document->forgetChanges();
        m_unsaved.removeAll(document);
    }
}

void ZLDocumentController::saveAll()
{
    for (const DocumentPtr &document : documents()) {
        if (document->hasUnautosavedChanges())
            (void)document->saveDocument();
    }
}
