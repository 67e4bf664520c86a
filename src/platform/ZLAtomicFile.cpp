#include "platform/ZLAtomicFile.h"

#include "platform/ZLFileManager.h"

#include <QFile>
#include <QFileInfo>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr QFile::Permissions userAlone = QFile::ReadOwner | QFile::WriteOwner;

tl::unexpected<ZLError> fileFailure(const QString &what, const QString &path, const QString &reason)
{
    return failure(QStringLiteral("ZLFile"), 1, QStringLiteral("%1 “%2”: %3").arg(what, path, reason));
}

/// A rename lasts only when its folder has reached the disk.
void syncFolder(const QString &path)
{
#ifdef Q_OS_UNIX
    const int folder =
        ::open(QFile::encodeName(QFileInfo(path).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
    }
#else
    Q_UNUSED(path);
#endif
}

} // namespace

bool ZLAtomicFile::makePrivate(const QString &path)
{
    QFile file(path);
    return ZLFileManager::makeFolder(QFileInfo(path).path()) && file.open(QIODevice::ReadWrite, userAlone)
        && file.setPermissions(userAlone);
}

Result<void> ZLAtomicFile::write(const QString &path, const QByteArray &bytes, const QDateTime &modified)
{
    const QString what = QStringLiteral("Could not save the file");
    const QFileInfo info(path);
    const QString target = info.isSymLink() ? info.symLinkTarget() : path;
    QFile file(target + QStringLiteral(".tmp"));
    if (!file.open(QIODevice::WriteOnly, userAlone))
        return fileFailure(what, path, file.errorString());
    const auto give = [&](const QString &reason) {
        file.remove();
        return fileFailure(what, path, reason);
    };
    if (file.write(bytes) != bytes.size() || !file.flush())
        return give(file.errorString());
#ifdef Q_OS_UNIX
    if (::fsync(file.handle()) != 0)
        return give(qt_error_string());
#endif
    if (modified.isValid())
        file.setFileTime(modified, QFileDevice::FileModificationTime);
    file.close();
    std::error_code error;
    std::filesystem::rename(file.fileName().toStdU16String(), target.toStdU16String(), error);
    if (error)
        return give(QString::fromStdString(error.message()));
    syncFolder(target);
    return {};
}

Result<QByteArray> ZLAtomicFile::read(const QString &path, qint64 limit)
{
    const QString what = QStringLiteral("Could not read the file");
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return fileFailure(what, path, file.exists() ? file.errorString() : QStringLiteral("it is not there"));
    if (file.size() > limit)
        return fileFailure(what, path, QStringLiteral("it is too large"));
    QByteArray bytes = file.read(limit);
    if (file.error() != QFileDevice::NoError)
        return fileFailure(what, path, file.errorString());
    return bytes;
}
