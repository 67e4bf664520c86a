#pragma once

#include "model/ZLDocumentController.h"

/// What the question about a conflict shows of the two versions.
struct ConflictSides {
    struct Side {
        bool isThere = false; ///< false: the file is missing or damaged, and the side cannot be chosen
        QDateTime date; ///< of the last change, in UTC; invalid when it is not known
        QString title;
        QStringList firstLines; ///< of the text: the words of its first paragraphs
        QStringList
            differingLines; ///< where the text first differs from the other's; mark-up where the words are the same
    };
    Side local;
    Side remote;
    /// What differs, in the words of the screen: "Title", "Text", "Categories and tags", "Date", "Address", "Status",
    /// "Options", "Featured image".
    QStringList differences;
};

/// In which of these the two differ: none, but for white space, line ends and seconds, is the same post twice. The
/// texts are the stored ones.
QStringList differencesBetween(const PostFields &one, const PostFields &other);

/// Reads both sides of the row in conflict; an open document of its file with what is unsaved in it.
ConflictSides conflictSides(const LocalPostPtr &row, const ZLDocumentController &documents);
