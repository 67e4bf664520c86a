#pragma once

#include "platform/ZLError.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// Whole-file reads and writes that leave the old file or the new one, never a part.
namespace ZLAtomicFile {
/// No post file is larger; what is, is not read.
constexpr qint64 largestFile = 64LL * 1024 * 1024;

/// Writes to a temporary beside `path`, syncs and renames. A valid `modified` becomes the file's modification date.
/// Fails with domain "ZLFile" and a description that names the file and the reason.
[[nodiscard]] Result<void> write(const QString &path, const QByteArray &bytes, const QDateTime &modified = {});
/// The file's bytes; fails likewise. Files beyond `limit` bytes are refused.
[[nodiscard]] Result<QByteArray> read(const QString &path, qint64 limit = largestFile);
} // namespace ZLAtomicFile
