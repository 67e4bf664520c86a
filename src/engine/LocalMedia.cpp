#include "engine/LocalMedia.h"

#include <QFileInfo>
#include <QMimeDatabase>

void LocalMedia::allowFolder(const QString &folder)
{
    const QString path = QFileInfo(folder).canonicalFilePath();
    if (!path.isEmpty() && !m_folders.contains(path))
        m_folders << path;
}

void LocalMedia::allowFile(const QString &file)
{
    const QString path = QFileInfo(file).canonicalFilePath();
    if (!path.isEmpty())
        m_files << path;
}

bool LocalMedia::isAllowed(const QString &canonicalPath) const
{
    if (m_files.contains(canonicalPath))
        return true;
    for (const QString &folder : m_folders) {
        if (canonicalPath.startsWith(folder + u'/'))
            return true;
    }
    return false;
}

QString LocalMedia::fileForAddress(const QUrl &address) const
{
    const QFileInfo file(address.path(QUrl::FullyDecoded));
    const QString path = file.canonicalFilePath();
    if (path.isEmpty() || !file.isFile() || !isAllowed(path))
        return {};
    // A picture only: the cache folder also holds other downloads.
    return QMimeDatabase().mimeTypeForFile(path).name().startsWith(u"image/") ? path : QString();
}

QString LocalMedia::fileForContentAddress(const QUrl &address)
{
    return address.scheme() == u"file" ? address.path(QUrl::FullyDecoded) : QString();
}
