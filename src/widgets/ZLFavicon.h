#pragma once

#include <QIcon>

namespace ZLFavicon {
/// A blog's favicon, 16 by 16; "wordpress_favicon" when the file does not load.
QIcon icon(const QString &path);
} // namespace ZLFavicon
