#include "wordpress/MediaUpload.h"

#include "platform/ZLAtomicFile.h"
#include "wordpress/PictureEncoder.h"

#include <QFileInfo>
#include <QHash>

namespace {
constexpr qint64 largestPicture = 512LL * 1024 * 1024;
} // namespace

QString MediaUpload::mediaType(const QString &fileName)
{
    static const QHash<QString, QString> types = {
        {QStringLiteral("png"), QStringLiteral("image/png")},
        {QStringLiteral("jpg"), QStringLiteral("image/jpeg")},
        {QStringLiteral("jpeg"), QStringLiteral("image/jpeg")},
        {QStringLiteral("gif"), QStringLiteral("image/gif")},
    };
    return types.value(QFileInfo(fileName).suffix().toLower());
}

Result<QByteArray> MediaUpload::encodedFile(const QString &path)
{
    const Result<QByteArray> bytes = ZLAtomicFile::read(path, largestPicture);
    const QString type = mediaType(path);
    if (!bytes || type == QLatin1String("image/gif"))
        return bytes;
    using PictureEncoder::Format;
    return PictureEncoder::encoded(*bytes, type == QLatin1String("image/png") ? Format::PNG : Format::JPEG);
}
