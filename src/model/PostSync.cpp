#include "model/PostSync.h"

#include "model/PostFileWords.h"

#include <QFileInfo>

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

bool PostSync::hasLocalChanges(const ZLFileInfo &file)
{
    return file.status == QLatin1String("modified") || file.status == QLatin1String("conflict");
}

PostSync::Effect PostSync::decide(
    const PostFields &remote, const PostFields &known, const ZLFileInfo &file, const QString &path)
{
    if (isNewer(remote.updatedAt, known.updatedAt)) {
        if (!hasLocalChanges(file))
            return Overwrite;
        return isPostPath(path) ? PutConflictBeside : Keep;
    }
    // Older files do not know private and pending.
    const bool isCurrent =
        integerValue(file.appVersion) >= PostFileWords::currentVersion && remote.blogStatus == known.blogStatus;
    return hasLocalChanges(file) || isCurrent ? Keep : Overwrite;
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

QString PostSync::syncedPath(const QString &path)
{
    return beside(path, syncedName);
}

bool PostSync::isConflictSolvedPath(const QString &path)
{
    return path.endsWith(QLatin1String(conflictSolvedName));
}

QString PostSync::freeConflictSolvedPath(const QString &path)
{
    const QString folder = QFileInfo(path).path() + u'/';
    QString candidate = folder + QLatin1String(conflictSolvedName);
    for (int number = 2; QFileInfo::exists(candidate); ++number)
        candidate = QStringLiteral("%1%2-%3").arg(folder).arg(number).arg(QLatin1String(conflictSolvedName));
    return candidate;
}
