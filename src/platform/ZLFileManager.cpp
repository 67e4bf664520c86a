#include "platform/ZLFileManager.h"

#include "platform/ZLLog.h"

#include <QDir>
#include <QStandardPaths>

namespace {

constexpr QLatin1String executableName("zalmo");
constexpr QLatin1String bundleIdentifier("com.zalmo.Zalmo");

constexpr QFile::Permissions userAlone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

bool isMade(const QString &path)
{
    return QFileInfo(path).isDir() || (isMade(QFileInfo(path).path()) && QDir().mkdir(path, userAlone));
}

/// The path when the folder is there or could be made, else null with a log line.
QString madeFolder(const QString &path)
{
    return ZLFileManager::makeFolder(path) ? path : QString();
}

} // namespace

ZLFileManager::ZLFileManager(const QString &dataHome, const QString &cacheHome)
    : m_dataHome(QDir::cleanPath(dataHome))
    , m_cacheHome(QDir::cleanPath(cacheHome))
{
}

ZLFileManager ZLFileManager::forUser()
{
    return {QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)};
}

QString ZLFileManager::applicationSupportDirectory() const
{
    const QString path = m_dataHome + u'/' + executableName;
    if (makeFolder(path))
        return path;
    ZLLog(QStringLiteral("Unable to find or create application support directory:\n%1").arg(path));
    return {};
}

QString ZLFileManager::applicationFilesDirectory() const
{
    return m_dataHome + QStringLiteral("/Zalmo.Zalmo");
}

QString ZLFileManager::cacheFolder() const
{
    return madeFolder(m_cacheHome + u'/' + bundleIdentifier);
}

QString ZLFileManager::blogPath(const QString &alias) const
{
    if (!isSafeAlias(alias)) {
        ZLLog(QStringLiteral("refused a blog name that cannot name a folder: %1").arg(alias));
        return {};
    }
    const QString accounts = m_dataHome + u'/' + executableName + QStringLiteral("/accounts/");
    const QString deeper = accounts + alias;
    const bool isInUse =
        alias.contains(u'/') && QDir::cleanPath(deeper) == deeper && QDir(deeper + QStringLiteral("/posts")).exists();
    return isInUse ? deeper : accounts + folderNameForAlias(alias);
}

QString ZLFileManager::postPath(const QString &alias, const QString &postId) const
{
    const QString blog = blogPath(alias);
    if (blog.isNull())
        return {};
    const QString folder = u'p' + postId;
    if (!isPlainFileName(postId) || !isPlainFileName(folder)) {
        ZLLog(QStringLiteral("refused a post id that leads outside its folder: %1").arg(postId));
        return {};
    }
    return blog + QStringLiteral("/posts/") + folder;
}

QString ZLFileManager::postPathForBlogURL(const QString &alias, const QString &postId) const
{
    const QString folder = postPath(alias, postId);
    return folder.isNull() ? folder : madeFolder(folder);
}

QString ZLFileManager::faviconPathWithBlogName(const QString &alias) const
{
    const QString blog = blogPath(alias);
    const QString folder = blog.isNull() ? blog : madeFolder(blog);
    return folder.isNull() ? folder : folder + QStringLiteral("/favicon.ico");
}

bool ZLFileManager::isPlainFileName(const QString &name)
{
    constexpr int longestName = 255; // bytes, on every file system in use
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") && !name.contains(u'/')
        && !name.contains(QDir::separator()) && !name.contains(QChar(u'\0')) && name.toUtf8().size() <= longestName;
}

QString ZLFileManager::folderNameForAlias(const QString &alias)
{
    return QString(alias).replace(u'/', u'-');
}

bool ZLFileManager::makeFolder(const QString &path)
{
    if (!path.startsWith(u'/') || !isMade(path)) {
        ZLLog(QStringLiteral("could not make the folder %1").arg(path));
        return false;
    }
    if (QFile::permissions(path) & (QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther))
        QFile::setPermissions(path, userAlone);
    return true;
}
