#pragma once

#include "model/PostFields.h"
#include "model/ZLFileInfo.h"

/// What becomes of a post file when a remote copy of the post arrives.
namespace PostSync {
enum Effect {
    Keep, ///< nothing is written
    Overwrite, ///< the local file follows the remote post
    PutConflictBeside, ///< both changed: the file is marked, and the remote copy goes beside it
};

/// `known` is the version that the blog last gave, or the file's where that is not known; `file` is the file's block.
Effect decide(const PostFields &remote, const PostFields &known, const ZLFileInfo &file, const QString &path);
/// Whether the file holds what the blog does not have yet.
bool hasLocalChanges(const ZLFileInfo &file);

// The files of a post's folder.
inline constexpr char postName[] = "post.zalmo";
inline constexpr char conflictName[] = "conflict.zalmo";
inline constexpr char conflictSolvedName[] = "conflict-solved.zalmo";
inline constexpr char syncedName[] = "synced.zalmo";

/// "post.zalmo" in the folder of a post.
QString postPath(const QString &folder);
// What stands beside a "post.zalmo": the blog's version that waits for a decision, and the version that the blog last
// gave. The second counts only while the post has local changes; else it is a left-over.
QString conflictPath(const QString &path);
QString syncedPath(const QString &path);
bool isPostPath(const QString &path); ///< ends in "post.zalmo"
bool isConflictSolvedPath(const QString &path);
/// Where a further copy goes: "conflict-solved.zalmo", or a name that ends in it where that is taken.
QString freeConflictSolvedPath(const QString &path);
} // namespace PostSync
