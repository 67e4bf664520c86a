#include "wordpress/LocalPictures.h"

#include "text/HTMLEntities.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace {
QString fileIn(const QString &folder, const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    return info.isFile() && canonical.startsWith(folder + QLatin1Char('/')) ? canonical : QString();
}

/// What follows the scheme and the host, as it stands.
QString undecodedPath(const QString &address)
{
    const QString rest = address.mid(QLatin1String("file://").size());
    const QString host = QStringLiteral("localhost");
    return rest.startsWith(host) ? rest.mid(host.size()) : rest;
}
} // namespace

QString LocalPictures::path(const QString &address)
{
    const QUrl url(HTMLEntities::stringByDecodingHTMLEntities(address), QUrl::TolerantMode);
    return url.path(QUrl::FullyDecoded);
}

QString LocalPictures::file(const QString &address, const ZLFileManager &files)
{
    const QString cache = QFileInfo(files.cacheFolder()).canonicalFilePath();
    if (cache.isEmpty() || address.contains(QChar::Null))
        return {};
    const QString decoded = fileIn(cache, path(address));
    return decoded.isNull() ? fileIn(cache, undecodedPath(address)) : decoded;
}

bool LocalPictures::isInCacheFolder(const QString &address, const ZLFileManager &files)
{
    const QString cache = files.cacheFolder();
    return !cache.isNull() && QDir::cleanPath(path(address)).startsWith(cache + QLatin1Char('/'));
}

QString LocalPictures::address(const QString &folder, const QString &name)
{
    return QStringLiteral("file://localhost") + folder + QLatin1Char('/') + name;
}

QString LocalPictures::fileName(const QString &address)
{
    return address.mid(address.lastIndexOf(QLatin1Char('/')) + 1);
}
