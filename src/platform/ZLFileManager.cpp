#include "platform/ZLFileManager.h"

#include "platform/ZLLog.h"

#include <QDir>
#include <QStandardPaths>

namespace {

constexpr QLatin1String executableName("zalmo");
constexpr QLatin1String bundleIdentifier("com.zalmo.Zalmo");

/// The path when the folder is there or could be made, else null with a log line.
QString madeFolder(const QString &path)
{
    if (QDir().mkpath(path))
        return path;
    ZLLog(QStringLiteral("could not make the folder %1").arg(path));
    return {};
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
    if (QDir().mkpath(path))
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
    return m_dataHome + u'/' + executableName + QStringLiteral("/accounts/") + alias;
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

bool ZLFileManager::isSafeAlias(const QString &alias)
{
    const QStringList parts = alias.split(u'/', Qt::SkipEmptyParts);
    return !alias.isEmpty() && !alias.startsWith(u'/')
        && std::all_of(parts.begin(), parts.end(), [](const QString &part) { return isPlainFileName(part); });
}
