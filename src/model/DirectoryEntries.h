#pragma once

#include <QByteArray>
#include <functional>

namespace DirectoryEntries {
/// Gives the entries of an open folder to `visit`, but for "." and ".."; links to folders are no folders. False with
/// errno when it cannot be listed.
bool visit(int directory, const std::function<void(QByteArrayView name, bool isFolder)> &visit);
} // namespace DirectoryEntries
