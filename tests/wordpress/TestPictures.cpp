#include "wordpress/TestPictures.h"

#include <vips/vips8>

using vips::VImage;

namespace {
VImage flat(int width, int height)
{
    static const bool started = VIPS_INIT("test") == 0;
    Q_ASSERT(started);
    return VImage::black(width, height, VImage::option()->set("bands", 3)).linear(1.0, 200.0).cast(VIPS_FORMAT_UCHAR);
}

QByteArray bytesOf(VipsBlob *blob)
{
    size_t length = 0;
    const void *data = vips_blob_get(blob, &length);
    const QByteArray bytes(static_cast<const char *>(data), qsizetype(length));
    vips_area_unref(VIPS_AREA(blob));
    return bytes;
}
} // namespace

QByteArray TestPictures::png(int width, int height)
{
    return bytesOf(flat(width, height).pngsave_buffer());
}

QByteArray TestPictures::jpeg(int width, int height, int orientation)
{
    VImage image = flat(width, height).copy();
    image.set("orientation", orientation);
    image.set("exif-ifd0-Make", "A camera (A camera, ASCII, 9 components, 9 bytes)");
    return bytesOf(image.jpegsave_buffer());
}

QByteArray TestPictures::gif()
{
    return QByteArray::fromBase64(
        "R0lGODlhAQABAIAAAP///wAAACH/C05FVFNDQVBFMi4wAwEAAAAh+QQBCgABACwAAAAAAQABAAACAkQBACH5BAEKAAEALA"
        "AAAAABAAEAAAICTAEAOw==");
}

QString TestPictures::facts(const QByteArray &picture)
{
    flat(1, 1);
    const char *loader = vips_foreign_find_load_buffer(picture.constData(), size_t(picture.size()));
    if (!loader)
        return {};
    const VImage image = VImage::new_from_buffer(picture.constData(), size_t(picture.size()), "");
    const QString format =
        QString::fromLatin1(vips_nickname_find(g_type_from_name(loader))).remove(QLatin1String("load_buffer"));
    return u"%1 %2x%3%4"_qs.arg(format)
        .arg(image.width())
        .arg(image.height())
        .arg(QLatin1String(image.get_typeof("exif-ifd0-Make") != 0 ? " with camera data" : ""));
}
