#pragma once

#include <QDateTime>
#include <QString>
#include <QVariantMap>

/// The `post_info` block of a post file. Texts keep their file form.
struct ZLPostInfo {
    QString engine; ///< "wordpress", "evernote"
    QString id;
    QString status; ///< "new", "draft", "publish"
    QString URL;
    QDateTime createdAt;
    QDateTime updatedAt;
    QString authorId;
    QString slug;
    bool allowComments = false;
    bool allowPingback = false;
    QString type; ///< "post", "page"
    QString featuredImageURL;
    QString featuredImageId;

    /// The form for writing: false is "", not 0; a missing text is "".
    QVariantMap dictionary() const;
};
