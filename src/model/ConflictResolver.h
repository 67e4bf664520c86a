#pragma once

#include "model/ZLDocumentController.h"

#include <QDateTime>

/// The four answers to a conflict, as operations on the files beside each other. Which rows change is told as a value,
/// for the one who keeps the list. Every step that fails is logged, and the next goes on, but for what would lose a
/// version: when the remote copy is to win and cannot be read, or the local one is to be kept and cannot be written,
/// nothing is done at all; a remote copy that was to be kept and could not be stays as it is.
///
/// A copy that is kept leads to no post of the blog, whatever is done to it.
class ConflictResolver {
public:
    enum Action { KeepBoth = 0, Choose = 1 };
    enum Selection { Local = 0, Remote = 1 };

    /// What becomes of the list, in this order.
    struct Outcome {
        bool isDone = false; ///< false: the answer did nothing
        bool reloadsPosts = false; ///< rebuild the list from the files (local answers)
        LocalPostPtr removed; ///< leaves the list
        QList<LocalPostPtr> insertedOnTop; ///< each at the top, one after the other
        LocalPostPtr loaded; ///< is opened then; the row of `post.zalmo`
    };

    /// `row` is the row in conflict. An open document of its file is taken with what is unsaved in it. The local
    /// version, when it wins, goes to the blog with the next update.
    static Outcome resolve(Action action, Selection selection, const LocalPostPtr &row,
        const ZLDocumentController &documents, const QDateTime &now = QDateTime::currentDateTimeUtc());

    /// Makes the copy that a conflict left (a row of status 6), or a post that its blog has deleted, a new post in a
    /// folder of its own beside the other's. What was private stays so, and a date ahead stays, too.
    /// Gives its file; an open document goes along.
    [[nodiscard]] static Result<QUrl> makeNewPost(
        const LocalPostPtr &row, ZLDocumentController &documents, const QDateTime &now);
};
