#pragma once

#include "platform/ZLFileManager.h"

#include <QString>

/// Local pictures as bodies name them: "file://localhost" or "file://" and a path, percent-encoded or as it is.
namespace LocalPictures {
/// The path of the address, not looked for.
QString path(const QString &address);
/// The file of the address, or null when there is none in the cache folder. A body is foreign text: it could name any
/// file of the user, so nothing outside that folder is ever read for it.
QString file(const QString &address, const ZLFileManager &files);
/// Whether the address names something in the cache folder, be it there or not: only those are this program's.
bool isInCacheFolder(const QString &address, const ZLFileManager &files);
/// "file://localhost%@/%@" of a folder and a name.
QString address(const QString &folder, const QString &name);
/// What follows the last "/" of the address of any picture, as it stands.
QString fileName(const QString &address);
} // namespace LocalPictures
