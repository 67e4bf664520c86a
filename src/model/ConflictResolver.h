#pragma once

#include "model/ZLDocument.h"

#include <QDateTime>

/// The four answers to a conflict, as operations on the files beside each other. Which rows change is told as a value,
/// for the one who keeps the list. Every step that fails is logged, and the next goes on, but for what would lose a
/// version: when the remote copy is to win and cannot be read, or the local one is to be kept and cannot be written,
/// nothing is done at all; a remote copy that was to be kept and could not be stays as it is.
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

    /// `row` is the row in conflict. `currentDocument` is taken with what is unsaved in it when it is the row's file.
    static Outcome resolve(Action action, Selection selection, const LocalPostPtr &row,
        const DocumentPtr &currentDocument, const QDateTime &now = QDateTime::currentDateTimeUtc());

    /// What the second card of the question tells: the remote copy's date. Invalid when it cannot be opened.
    static QDateTime remoteDate(const LocalPostPtr &row);
    /// What the first card tells: the modification date of the row's file.
    static QDateTime localDate(const LocalPostPtr &row);
};
