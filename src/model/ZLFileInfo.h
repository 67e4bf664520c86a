#pragma once

#include <QString>
#include <QVariantMap>

/// The `file_info` block of a post file.
struct ZLFileInfo {
    QString status; ///< null, "", "new", "modified", "conflict", "conflict-solved"
    QString appVersion; ///< the format's version; null in some older files

    /// The form for writing; "app_version" is "3" when there is none.
    QVariantMap dictionary() const;
};
