#pragma once

#include "model/ZLFileInfo.h"

#include <QDateTime>

/// What becomes of a post file when a remote copy of the post arrives.
namespace PostSync {
enum Effect {
    Keep, ///< nothing is written
    Overwrite, ///< the local file follows the remote post
    PutConflictBeside, ///< both changed: the file is marked, and the remote copy goes beside it
};

/// Files of an older format than this are brought up, unless they have local changes.
constexpr int currentVersion = 3;

Effect decide(const QDateTime &remote, const QDateTime &local, const ZLFileInfo &file, const QString &path);

// The files of a post's folder.
inline constexpr char postName[] = "post.zalmo";
inline constexpr char conflictName[] = "conflict.zalmo";
inline constexpr char conflictSolvedName[] = "conflict-solved.zalmo";

/// "post.zalmo" in the folder of a post.
QString postPath(const QString &folder);
/// The twin of a "post.zalmo".
QString conflictPath(const QString &path);
QString conflictSolvedPath(const QString &path);
bool isPostPath(const QString &path); ///< ends in "post.zalmo"
} // namespace PostSync
