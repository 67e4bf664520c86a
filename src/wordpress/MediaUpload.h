#pragma once

#include "platform/ZLError.h"

#include <QByteArray>
#include <QString>

/// Pictures as they go to the blog. Used on workers.
namespace MediaUpload {
/// The media type for a file name's extension in any case: PNG, JPEG and GIF. Null for any other, which is not sent.
QString mediaType(const QString &fileName);
/// The file's picture, written anew as its type says: upright and without the camera's data. A GIF goes byte for byte,
/// so that it keeps moving.
[[nodiscard]] Result<QByteArray> encodedFile(const QString &path);
} // namespace MediaUpload
