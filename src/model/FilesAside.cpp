#include "model/FilesAside.h"

#include "platform/ZLLog.h"

#include <QFile>
#include <QFileInfo>
#include <filesystem>

namespace {
QString freePath(const QString &path)
{
    QString candidate = path;
    for (int number = 2; QFileInfo::exists(candidate); ++number)
        candidate = QStringLiteral("%1-%2").arg(path).arg(number);
    return candidate;
}

Result<QString> kept(
    const QString &path, const QString &suffix, Result<void> (*keep)(const QString &from, const QString &to))
{
    const QString aside = freePath(path + suffix);
    if (const Result<void> done = keep(path, aside); !done)
        return failure(done.error());
    ZLLog(QStringLiteral("kept “%1” as “%2”").arg(path, aside));
    return aside;
}
} // namespace

Result<QString> FilesAside::setAside(const QString &path, const QString &suffix)
{
    return kept(path, suffix, move);
}

Result<QString> FilesAside::keepBeside(const QString &path, const QString &suffix)
{
    return QFileInfo(path).size() == 0 ? QString() : kept(path, suffix, linkOrCopy);
}

Result<void> FilesAside::linkOrCopy(const QString &from, const QString &to)
{
    // A second name also serves a file that must not be read; not every file system has them.
    std::error_code error;
    std::filesystem::create_hard_link(from.toStdU16String(), to.toStdU16String(), error);
    QFile file(from);
    if (!error || file.copy(to))
        return {};
    return failure(QStringLiteral("ZLFile"), 1,
        QStringLiteral("Could not keep the file “%1” as “%2”: %3").arg(from, to, file.errorString()));
}

Result<void> FilesAside::move(const QString &from, const QString &to)
{
    QFile file(from);
    if (file.rename(to))
        return {};
    return failure(QStringLiteral("ZLFile"), 1,
        QStringLiteral("Could not move the file “%1” to “%2”: %3").arg(from, to, file.errorString()));
}
