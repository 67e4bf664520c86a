#include "wordpress/PictureEncoder.h"

#include "platform/ZLLog.h"

#include <QLibrary>
#include <memory>

// The names of Qt and of GLib meet in this file alone.
#include <vips/vips.h>

namespace {

/// The functions of libvips that are used here. With all that it brings along it takes as long to load as everything
/// else that the program needs for its start, so it is loaded with the first picture.
class Vips {
public:
    /// Null when it is not there or cannot be started.
    static const Vips *loaded()
    {
        static Vips vips;
        static const bool isStarted = vips.load() && vips.init("zalmo") == 0;
        if (!isStarted)
            return nullptr;
        vips.blockUntrusted(TRUE); // a file's bytes choose the reader: only those made for hostile input
        return &vips;
    }

    QString takeError() const
    {
        const QString message = QString::fromUtf8(errorBuffer()).trimmed();
        clearError();
        return message;
    }

    decltype(&vips_init) init = nullptr;
    decltype(&vips_block_untrusted_set) blockUntrusted = nullptr;
    decltype(&vips_error_buffer) errorBuffer = nullptr;
    decltype(&vips_error_clear) clearError = nullptr;
    decltype(&vips_image_new_from_buffer) newFromBuffer = nullptr;
    decltype(&vips_image_get_typeof) typeOfField = nullptr;
    decltype(&vips_autorot) autorot = nullptr;
    decltype(&vips_icc_transform) iccTransform = nullptr;
    decltype(&vips_pngsave_buffer) pngSaveBuffer = nullptr;
    decltype(&vips_jpegsave_buffer) jpegSaveBuffer = nullptr;
    decltype(&vips_array_double_newv) newDoubles = nullptr;
    decltype(&vips_area_unref) unrefArea = nullptr;
    decltype(&g_object_unref) unref = nullptr;
    decltype(&g_free) free = nullptr;

private:
    bool load()
    {
        return resolve(init, "vips_init") && resolve(blockUntrusted, "vips_block_untrusted_set")
            && resolve(errorBuffer, "vips_error_buffer") && resolve(clearError, "vips_error_clear")
            && resolve(newFromBuffer, "vips_image_new_from_buffer") && resolve(typeOfField, "vips_image_get_typeof")
            && resolve(autorot, "vips_autorot") && resolve(iccTransform, "vips_icc_transform")
            && resolve(pngSaveBuffer, "vips_pngsave_buffer") && resolve(jpegSaveBuffer, "vips_jpegsave_buffer")
            && resolve(newDoubles, "vips_array_double_newv") && resolve(unrefArea, "vips_area_unref")
            && resolve(unref, "g_object_unref") && resolve(free, "g_free");
    }

    template <class Function>
    bool resolve(Function &function, const char *name)
    {
        function = reinterpret_cast<Function>(m_library.resolve(name));
        return function != nullptr;
    }

    QLibrary m_library{QStringLiteral("vips"), VIPS_LIBRARY_CURRENT - VIPS_LIBRARY_AGE};
};

struct Unref {
    const Vips *vips;
    void operator()(VipsImage *image) const { vips->unref(image); }
};
using Image = std::unique_ptr<VipsImage, Unref>;

/// Upright and in the web's colours: its orientation and its colour profile are not sent along.
Image prepared(const Vips &vips, const QByteArray &picture)
{
    VipsImage *next = nullptr;
    Image image(vips.newFromBuffer(picture.constData(), size_t(picture.size()), "", nullptr), {&vips});
    if (!image || vips.autorot(image.get(), &next, nullptr) != 0)
        return {nullptr, {&vips}};
    image.reset(next);
    if (vips.typeOfField(image.get(), VIPS_META_ICC_NAME) == 0)
        return image;
    if (vips.iccTransform(image.get(), &next, "srgb", "embedded", TRUE, nullptr) != 0)
        return {nullptr, {&vips}};
    return {next, {&vips}};
}

/// Null when it could not be written.
QByteArray saved(const Vips &vips, VipsImage *image, PictureEncoder::Format format)
{
    void *buffer = nullptr;
    size_t length = 0;
    if (format == PictureEncoder::Format::PNG) {
        vips.pngSaveBuffer(image, &buffer, &length, "strip", TRUE, nullptr);
    } else {
        VipsArrayDouble *white = vips.newDoubles(1, 255.0);
        vips.jpegSaveBuffer(image, &buffer, &length, "Q", 100, "strip", TRUE, "background", white, nullptr);
        vips.unrefArea(VIPS_AREA(white));
    }
    const QByteArray bytes(static_cast<const char *>(buffer), qsizetype(length));
    vips.free(buffer);
    return bytes;
}

} // namespace

Result<QByteArray> PictureEncoder::encoded(const QByteArray &picture, Format format)
{
    const Vips *vips = Vips::loaded();
    if (!vips)
        return failure(QStringLiteral("ZLFile"), 1, QStringLiteral("The picture library could not be started."));
    const Image image = prepared(*vips, picture);
    const QByteArray bytes = image ? saved(*vips, image.get(), format) : QByteArray();
    if (bytes.isEmpty()) {
        ZLLog(vips->takeError());
        return failure(QStringLiteral("ZLFile"), 2, QStringLiteral("It is no picture that can be read."));
    }
    return bytes;
}
