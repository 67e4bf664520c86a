#pragma once

#include "model/PostFile.h"
#include "model/ZLLocalPostRepresentation.h"

/// What the post list needs of one file. Apart from a row, it does not depend on the moment and on files beside it, so
/// that it can be kept for as long as the file stays the same.
struct PostRow {
    QString title;
    QString content; ///< its beginning, see ZLLocalPostRepresentation::contentExtract()
    QString fileStatus;
    QString blogStatus;
    int status = PostFields::New;
    int type = PostFields::Post;
    QDateTime createdAt;
    QUrl postURL;
    bool isWhole = false; ///< the file is no damaged one

    static PostRow fromFile(const PostFile &file);
    /// The same for every input as fromFile(PostFile::fromData(data)), only faster.
    static PostRow fromData(const QByteArray &data);

    ZLLocalPostRepresentation row(const QUrl &localFile, const QDateTime &now) const;
    bool operator==(const PostRow &) const = default;

    /// Length of the beginning of `content` that a row keeps; -1 when more of the text has to be known. `isWhole`: the
    /// text ends here.
    static qsizetype extractLength(QStringView content, bool isWhole);

private:
    int rowStatus(const QDateTime &now) const;
};
