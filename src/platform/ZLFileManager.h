#pragma once

#include <QString>

/// The folders of the program and of each post. All paths are absolute and without a trailing slash, unless told. What
/// is made is open to the user alone.
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
    /// "%@/accounts/%@" with the folder name of the alias; not made here. Null for an alias that cannot name a folder.
    /// A blog that has its posts in the deeper folder that earlier versions made of a name with "/" keeps it.
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
    /// What names the blog's folder: the alias with "-" for each "/". Two blogs of one folder name must not be.
    static QString folderNameForAlias(const QString &alias);
    /// Whether the folder name of `alias` can be one.
    static bool isSafeAlias(const QString &alias) { return isPlainFileName(folderNameForAlias(alias)); }
    /// Makes the folder with its parents, for the user alone, and closes it to others if it was there. False (logged)
    /// when it cannot be made.
    static bool makeFolder(const QString &path);

private:
    QString m_dataHome;
    QString m_cacheHome;
};
