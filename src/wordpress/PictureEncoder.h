#pragma once

#include "platform/ZLError.h"

#include <QByteArray>

/// Pictures on their way to the blog.
namespace PictureEncoder {
enum class Format { PNG, JPEG };

/// The picture written anew: upright, in the web's colours, without metadata; a JPEG at quality 100, on white where it
/// was transparent. Fails for what is no picture that libvips reads safely.
Result<QByteArray> encoded(const QByteArray &picture, Format format);
} // namespace PictureEncoder
