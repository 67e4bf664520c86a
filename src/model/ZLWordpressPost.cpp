#include "model/ZLWordpressPost.h"

#include "model/FilesAside.h"
#include "model/LocalFileURL.h"
#include "model/PostSync.h"
#include "model/ZLDocument.h"
#include "model/ZLFileExtension.h"
#include "platform/ZLAtomicFile.h"
#include "platform/ZLLog.h"
#include "text/ContentPasses.h"

#include <QFileInfo>

namespace {
QString statusInFile(int status)
{
    switch (status) {
    case ZLWordpressPost::New:
    case ZLWordpressPost::Note:
        return QStringLiteral("new");
    case ZLWordpressPost::Draft:
        return QStringLiteral("draft");
    case ZLWordpressPost::Publish:
        return QStringLiteral("publish");
    default:
        return {};
    }
}

QString oneOrZero(bool flag)
{
    return flag ? QStringLiteral("1") : QStringLiteral("0");
}
} // namespace

void ZLWordpressPost::replaceWPContentsForEditor()
{
    content = ContentPasses::contentForEditor(content);
}

QVariantMap ZLWordpressPost::infoDictionary() const
{
    QVariantMap info{
        {QStringLiteral("engine"), status == Note ? QStringLiteral("evernote") : QStringLiteral("wordpress")},
        {QStringLiteral("id"), id},
        {QStringLiteral("status"), statusInFile(status)},
        {QStringLiteral("type"), type == Page ? QStringLiteral("page") : QStringLiteral("post")},
        {QStringLiteral("created_at"), createdAt},
        {QStringLiteral("updated_at"), updatedAt},
        {QStringLiteral("author_id"), authorId},
        {QStringLiteral("URL"), URL},
        {QStringLiteral("allow_comments"), oneOrZero(allowComments)},
        {QStringLiteral("allow_pingback"), oneOrZero(allowPingback)},
        {QStringLiteral("slug"), slug},
    };
    QVariantMap image;
    if (!featuredImageId.isEmpty())
        image.insert(QStringLiteral("media_id"), featuredImageId);
    if (!featuredImageURL.isEmpty())
        image.insert(QStringLiteral("URL"), featuredImageURL);
    if (!image.isEmpty())
        info.insert(QStringLiteral("featured_image"), image);
    return info;
}

QByteArray ZLWordpressPost::generateXMLDataFileInfo(const ZLFileInfo *fileInfo) const
{
    const QVariantMap postFields{
        {QStringLiteral("title"), title},
        {QStringLiteral("content"), storedContent.isNull() ? content : storedContent},
        {QStringLiteral("keywords"), taxonomiesArray()},
    };
    const QVariantMap infoFields = infoDictionary();
    if (!fileInfo)
        return ZLFileExtension::generateXMLDataForPost(&postFields, &infoFields, nullptr);
    QVariantMap fileFields;
    if (!fileInfo->status.isNull())
        fileFields.insert(QStringLiteral("status"), fileInfo->status);
    if (!fileInfo->appVersion.isNull())
        fileFields.insert(QStringLiteral("app_version"), fileInfo->appVersion);
    return ZLFileExtension::generateXMLDataForPost(&postFields, &infoFields, &fileFields);
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
    } else if (path.endsWith(QLatin1String(PostSync::conflictSolvedName))) {
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
    return ZLAtomicFile::write(path, data, updatedAt);
}

Result<void> ZLWordpressPost::syncWithPostAtPath(
    const QString &path, const QString &type, const DocumentPtr &currentDocument)
{
    const QUrl url = QUrl::fromLocalFile(path);
    const bool isOnScreen = currentDocument && isSameFile(currentDocument->fileURL(), url);
    const Result<DocumentPtr> opened = isOnScreen ? Result<DocumentPtr>(currentDocument) : ZLDocument::open(url);
    if (!opened) {
        ZLLog(QStringLiteral("error: %1").arg(opened.error().description));
        return failure(opened.error());
    }
    const DocumentPtr document = *opened;
    switch (PostSync::decide(updatedAt, document->postInfo.updatedAt, document->fileInfo, path)) {
    case PostSync::Keep:
        return {};
    case PostSync::PutConflictBeside:
        document->fileInfo.status = QStringLiteral("conflict");
        (void)document->saveDocument(); // a failure is logged there
        return saveAtPath(PostSync::conflictPath(path), type);
    case PostSync::Overwrite:
        break;
    }
    if (document->isDamaged()) {
        const Result<QString> aside = FilesAside::keepBeside(path, QStringLiteral(".damaged"));
        if (!aside)
            return failure(aside.error());
    }
    const Result<void> saved = saveAtPath(path, type);
    if (saved && isOnScreen)
        (void)document->revertDocument();
    return saved;
}
