#pragma once

#include "platform/ZLError.h"

/// Files that give way without being lost.
namespace FilesAside {
/// Renames the file to its path plus `suffix`, or a number behind that when the name is taken, with a log line. Gives
/// where it went.
[[nodiscard]] Result<QString> setAside(const QString &path, const QString &suffix);
/// The same, but the file also stays where it is, for a whole-file write to replace: there is one at every moment. Null
/// when there is no file or nothing in it.
[[nodiscard]] Result<QString> keepBeside(const QString &path, const QString &suffix);
/// Gives the file a second name, or copies it where the file system has none; `to` must be free.
[[nodiscard]] Result<void> linkOrCopy(const QString &from, const QString &to);
/// Renames; fails with an error that names both, and never replaces a file.
[[nodiscard]] Result<void> move(const QString &from, const QString &to);
} // namespace FilesAside
