#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>

/// Which files of this computer the editor page may show: those below the allowed folders, and single files that the
/// user chose. Everything is compared after links are resolved.
class LocalMedia {
public:
    void allowFolder(const QString &folder);
    void allowFile(const QString &file);
    /// The file behind a zalmo://media address; empty when it is missing, no picture, or not allowed.
    QString fileForAddress(const QUrl &address) const;
    /// The file that a file:// address of a post's content names; empty for other addresses.
    static QString fileForContentAddress(const QUrl &address);

private:
    bool isAllowed(const QString &canonicalPath) const;
    QStringList m_folders;
    QSet<QString> m_files;
};
