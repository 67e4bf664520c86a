#pragma once

#include "platform/ZLError.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// Whole-file reads and writes that leave the old file or the new one, never a part.
namespace ZLAtomicFile {
/// No post file is larger; what is, is not read.
constexpr qint64 largestFile = 64LL * 1024 * 1024;

/// Writes to a temporary beside `path` (its name and ".tmp", which the next write takes over when a kill left one),
/// syncs and renames. The file is the user's alone. A valid `modified` becomes its modification date. Fails with domain
/// "ZLFile" and a description that names the file and the reason. No two threads may write to one path.
[[nodiscard]] Result<void> write(const QString &path, const QByteArray &bytes, const QDateTime &modified = {});
/// The file's bytes; fails likewise. Files beyond `limit` bytes are refused.
[[nodiscard]] Result<QByteArray> read(const QString &path, qint64 limit = largestFile);
/// For a file that a library writes by itself: makes it, empty, with its folder where there is none, and closes both to
/// other users.
bool makePrivate(const QString &path);
} // namespace ZLAtomicFile
