#pragma once

#include <QDirIterator>
#include <QFile>

/// All of a file; nothing when there is none.
inline QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Puts a file there, and the folders above it.
inline void writeFile(const QString &path, const QByteArray &bytes = {})
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// The files below a folder, by their path from there, sorted.
inline QStringList filesBelow(const QString &folder)
{
    QStringList found;
    for (QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories); walk.hasNext();)
        found.append(QDir(folder).relativeFilePath(walk.next()));
    found.sort();
    return found;
}

/// Makes this process keep all of its files below a folder.
inline void usePrivateHome(const QString &home)
{
    for (const auto &[name, folder] : {std::pair("HOME", ""), std::pair("XDG_DATA_HOME", "/data"),
             std::pair("XDG_CACHE_HOME", "/cache"), std::pair("XDG_CONFIG_HOME", "/config")})
        qputenv(name, (home + folder).toUtf8());
}
