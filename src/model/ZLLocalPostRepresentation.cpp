#include "model/ZLLocalPostRepresentation.h"

#include "model/LocalFileURL.h"
#include "model/PostRow.h"
#include "platform/ZLAtomicFile.h"
#include "platform/ZLLog.h"

LocalPostPtr ZLLocalPostRepresentation::initWithContentsOfFileURL(const QUrl &url, const QDateTime &now)
{
    const QString path = pathOfFileURL(url);
    const Result<QByteArray> data = ZLAtomicFile::read(path);
    if (!data)
        ZLLog(QStringLiteral("error-%1").arg(data.error().description));
    const PostRow row = data ? PostRow::fromData(*data) : PostRow();
    if (data && !row.isWhole)
        ZLLog(QStringLiteral("error-The post file “%1” is damaged").arg(path));
    return std::make_shared<ZLLocalPostRepresentation>(row.row(url, now));
}

QString ZLLocalPostRepresentation::contentExtract(const QString &content)
{
    const qsizetype length = PostRow::extractLength(content, true);
    if (length == content.size())
        return content;
    // A copy of its own size: left() would do, but a row must not hold on to the whole body.
    return QString(content.constData(), length);
}
