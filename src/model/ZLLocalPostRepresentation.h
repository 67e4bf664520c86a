#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>
#include <memory>

/// One row of the post list, read from a post file.
struct ZLLocalPostRepresentation {
    enum Status {
        Published = 0,
        Draft = 1,
        PublishedPage = 2,
        New = 3,
        Modified = 4,
        Conflict = 5,
        ConflictSolved = 6,
        EvernoteNote = 7,
        Scheduled = 8,
    };

    QString title; ///< null when the file has none or cannot be read
    /// The beginning of the body, enough for everything that the list shows of it (see contentExtract()); the whole
    /// body once the editor has set it.
    QString content;
    int status = New;
    QString blogStatus; ///< "private", "pending" or empty, see PostFields
    QUrl localFile;
    QUrl postURL; ///< empty when the post has no public address
    bool published = false; ///< the post exists in published form on the blog, whatever its local state

    /// Reads the row of one file. A file that cannot be read or is damaged gives a log line, and what can be made out:
    /// status 3 and a null title when that is nothing. `now` tells scheduled posts from published ones.
    static std::shared_ptr<ZLLocalPostRepresentation> initWithContentsOfFileURL(
        const QUrl &url, const QDateTime &now = QDateTime::currentDateTimeUtc());

    /// The list makes its extract from the first 300 characters that are left once the tags among them are gone, and
    /// compares the first 70 of those. So the beginning of a body up to its 400th character outside tags says all
    /// there is to see, and a list of thousands of posts stays small. A body that has fewer, such as one of images
    /// only, is kept whole.
    static QString contentExtract(const QString &content);
};
using LocalPostPtr = std::shared_ptr<ZLLocalPostRepresentation>;
