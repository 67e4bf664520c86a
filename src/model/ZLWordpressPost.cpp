#include "model/ZLWordpressPost.h"

#include "model/ConflictSides.h"
#include "model/FilesAside.h"
#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "model/ZLDocumentController.h"
#include "model/ZLFileExtension.h"
#include "platform/ZLAtomicFile.h"
#include "platform/ZLLog.h"

#include <QFile>
#include <QFileInfo>
#include <utility>

QByteArray ZLWordpressPost::generateXMLDataFileInfo(const ZLFileInfo *fileInfo) const
{
    PostFields fields = *this;
    if (!storedContent.isNull())
        fields.content = storedContent;
    return ZLFileExtension::generateXMLDataForPost(fields, fileInfo);
}

Result<void> ZLWordpressPost::saveAtPath(const QString &path, const QString &)
{
    const QString folder = QFileInfo(path).path();
    if (path.isEmpty() || folder == QLatin1String(".") || folder == QLatin1String("/"))
        return failure(QStringLiteral("ZLFile"), 1, QStringLiteral("There is no place for the post “%1”").arg(title));
    QByteArray data;
    if (path.endsWith(QLatin1String(PostSync::conflictName))) {
        const ZLFileInfo fresh;
        data = generateXMLDataFileInfo(&fresh);
    } else if (PostSync::isConflictSolvedPath(path)) {
        const ZLFileInfo solved{QStringLiteral("conflict-solved"), {}};
        data = generateXMLDataFileInfo(&solved);
    } else {
        data = generateXMLDataFileInfo(nullptr);
    }
    // Only now: a new post's file has empty dates, while the object has dates from here on.
    const QDateTime now = QDateTime::currentDateTimeUtc();
    if (!createdAt.isValid())
        createdAt = now;
    if (!updatedAt.isValid())
        updatedAt = now;
    const Result<void> written = ZLAtomicFile::write(path, data, updatedAt);
    if (written && PostSync::isPostPath(path))
        QFile::remove(PostSync::syncedPath(path)); // the file itself is that version again
    return written;
}

Result<void> ZLWordpressPost::syncWithPostAtPath(
    const QString &path, const QString &type, const ZLDocumentController &documents)
{
    const QUrl url = QUrl::fromLocalFile(path);
    const DocumentPtr open = documents.documentForURL(url);
    const Result<DocumentPtr> opened = open ? Result<DocumentPtr>(open) : ZLDocument::open(url);
    if (!opened) {
        ZLLog(QStringLiteral("error: %1").arg(opened.error().description));
        return failure(opened.error());
    }
    const DocumentPtr document = *opened;
    const std::shared_ptr<const ZLWordpressPost> synced = document->syncedPost();
    const PostFields &known = synced ? static_cast<const PostFields &>(*synced) : document->post;
    switch (PostSync::decide(*this, known, document->fileInfo, path)) {
    case PostSync::Keep:
        return {};
    case PostSync::PutConflictBeside:
        if (!isSameAs(*document))
            return putConflictBeside(*document);
        break; // an update of which no answer came
    case PostSync::Overwrite:
        break;
    }
    if (document->isDamaged()) {
        const Result<QString> aside = FilesAside::keepBeside(path, QStringLiteral(".damaged"));
        if (!aside)
            return failure(aside.error());
    }
    const Result<void> saved = saveAtPath(path, type);
    if (saved && open)
        (void)open->revertDocument();
    return saved;
}

bool ZLWordpressPost::isSameAs(const ZLDocument &document) const
{
    PostFields fields = *this;
    if (!storedContent.isNull())
        fields.content = storedContent;
    return !document.isDamaged() && differencesBetween(document.storedFields(), fields).isEmpty();
}

Result<void> ZLWordpressPost::putConflictBeside(ZLDocument &document)
{
    // The file's date tells when its words were written.
    if (std::exchange(document.fileInfo.status, QStringLiteral("conflict")) != QLatin1String("conflict")
        || document.hasUnautosavedChanges())
        (void)document.saveDocument(); // a failure is logged there
    return saveAtPath(PostSync::conflictPath(pathOfFileURL(document.fileURL())));
}
