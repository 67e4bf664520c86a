#pragma once

#include <QString>

/// The `file_info` block of a post file.
struct ZLFileInfo {
    QString status; ///< null, "", "new", "modified", "conflict", "conflict-solved"
    QString appVersion; ///< the format's version; null in some older files

    bool operator==(const ZLFileInfo &) const = default;
};
