#pragma once

#include <QString>

/// The folders of the program and of each post. All paths are absolute and without a trailing slash, unless told.
class ZLFileManager {
public:
    /// `dataHome` and `cacheHome` are the user's data and cache directories (XDG_DATA_HOME, XDG_CACHE_HOME).
    ZLFileManager(const QString &dataHome, const QString &cacheHome);
    /// On the directories of the user who runs the program.
    static ZLFileManager forUser();

    /// The data directory plus "zalmo", made if missing; null when it cannot be made (logged).
    QString applicationSupportDirectory() const;
    /// The data directory plus "Zalmo.Zalmo", where the account store lives. Not made here.
    QString applicationFilesDirectory() const;
    /// The cache directory plus "com.zalmo.Zalmo", made if missing; null when it cannot be made.
    QString cacheFolder() const;
    /// "%@/accounts/%@" of the alias; not made here. Null for an alias that is empty or would lead outside.
    QString blogPath(const QString &alias) const;
    /// "%@/accounts/%@/posts/p%@"; not made here. Null (logged) when the alias or the id would lead outside its own
    /// folder: "..", an absolute path, a NUL, an id with a separator.
    QString postPath(const QString &alias, const QString &postId) const;
    /// The same, made with its parents; null (logged) when it cannot be made.
    QString postPathForBlogURL(const QString &alias, const QString &postId) const;
    /// "favicon.ico" in the blog's folder, which is made. Null as above.
    QString faviconPathWithBlogName(const QString &alias) const;

    /// Whether `name` can be one file name: not empty, no separator, no NUL, not "." or "..".
    static bool isPlainFileName(const QString &name);
    /// Whether `alias` names a folder of its own: not empty, parts between "/" are plain names; deeper directories are
    /// fine.
    static bool isSafeAlias(const QString &alias);

private:
    QString m_dataHome;
    QString m_cacheHome;
};
