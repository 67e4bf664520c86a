#include "model/PostSync.h"

namespace {
/// The file of this name beside a "post.zalmo".
QString beside(const QString &path, const char *name)
{
    return path.chopped(qsizetype(std::size(PostSync::postName)) - 1) + QLatin1String(name);
}

/// Strictly newer. A remote post without a date is not; a file without one is older than any date.
bool isNewer(const QDateTime &remote, const QDateTime &local)
{
    return remote.isValid() && (!local.isValid() || remote > local);
}
/// The integer at the beginning, 0 where there is none.
int integerValue(const QString &version)
{
    const auto end = std::find_if_not(version.cbegin(), version.cend(), [](QChar c) { return c.isDigit(); });
    return version.left(end - version.cbegin()).toInt();
}
} // namespace

PostSync::Effect PostSync::decide(
    const QDateTime &remote, const QDateTime &local, const ZLFileInfo &file, const QString &path)
{
    const bool hasLocalChanges = file.status == QLatin1String("modified") || file.status == QLatin1String("conflict");
    if (isNewer(remote, local)) {
        if (!hasLocalChanges)
            return Overwrite;
        return isPostPath(path) ? PutConflictBeside : Keep;
    }
    return hasLocalChanges || integerValue(file.appVersion) >= currentVersion ? Keep : Overwrite;
}

bool PostSync::isPostPath(const QString &path)
{
    return path.endsWith(QLatin1String(postName));
}

QString PostSync::postPath(const QString &folder)
{
    return folder + u'/' + QLatin1String(postName);
}

QString PostSync::conflictPath(const QString &path)
{
    return beside(path, conflictName);
}

QString PostSync::conflictSolvedPath(const QString &path)
{
    return beside(path, conflictSolvedName);
}
