#pragma once

#include <QDir>
#include <QUrl>

/// The path that a file URL names, whether it says "localhost" or nothing. Empty for any other URL.
inline QString pathOfFileURL(const QUrl &url)
{
    return url.scheme() == QLatin1String("file") ? QDir::cleanPath(url.path(QUrl::FullyDecoded)) : QString();
}

/// Whether both name one file.
inline bool isSameFile(const QUrl &one, const QUrl &other)
{
    return one == other || (!pathOfFileURL(one).isEmpty() && pathOfFileURL(one) == pathOfFileURL(other));
}
