#include "wordpress/MediaUpload.h"

#include "platform/ZLAtomicFile.h"

#include <QFileInfo>
#include <QHash>

// The names of Qt and of GLib meet in this file alone.
#include <vips/vips8>

namespace {
constexpr qint64 largestPicture = 512LL * 1024 * 1024;

bool startVips()
{
    static const bool started = [] {
        if (VIPS_INIT("zalmo") != 0)
            return false;
        vips_block_untrusted_set(TRUE); // a file's bytes choose the reader: only those made for hostile input
        return true;
    }();
    return started;
}

QByteArray bytesOf(VipsBlob *blob)
{
    size_t length = 0;
    const void *data = vips_blob_get(blob, &length);
    QByteArray bytes(static_cast<const char *>(data), qsizetype(length));
    vips_area_unref(VIPS_AREA(blob));
    return bytes;
}

/// The picture upright and in the web's colours: its orientation and its colour profile are not sent along.
vips::VImage prepared(const QByteArray &picture)
{
    vips::VImage image = vips::VImage::new_from_buffer(picture.constData(), size_t(picture.size()), "").autorot();
    if (image.get_typeof(VIPS_META_ICC_NAME) != 0)
        image = image.icc_transform("srgb", vips::VImage::option()->set("embedded", true));
    return image;
}

enum class Format { PNG, JPEG };

QByteArray saved(const vips::VImage &image, Format format)
{
    if (format == Format::PNG)
        return bytesOf(image.pngsave_buffer(vips::VImage::option()->set("strip", true)));
    const std::vector<double> white{255.0};
    return bytesOf(
        image.jpegsave_buffer(vips::VImage::option()->set("Q", 100)->set("strip", true)->set("background", white)));
}

Result<QByteArray> encoded(const QByteArray &picture, Format format)
{
    if (!startVips())
        return failure(QStringLiteral("ZLFile"), 1, QStringLiteral("The picture library could not be started."));
    try {
        return saved(prepared(picture), format);
    } catch (const vips::VError &error) {
        return failure(QStringLiteral("ZLFile"), 2, QString::fromUtf8(error.what()).trimmed());
    }
}
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
    return encoded(*bytes, type == QLatin1String("image/png") ? Format::PNG : Format::JPEG);
}

Result<QByteArray> MediaUpload::encodedAsJPEG(const QByteArray &picture)
{
    return encoded(picture, Format::JPEG);
}
