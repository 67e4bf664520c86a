#pragma once

#include "model/ZLTaxonomy.h"

#include <QDateTime>
#include <QStringList>

/// Every field that the shapes of a post share (the working post, the open document, the file), copied as a whole.
struct PostFields {
    enum Status { Stub = -1, New = 0, Draft = 1, Publish = 2, Note = 3 };
    enum Type { Post = 0, Page = 1 };

    QString title;
    QString content; ///< HTML of the body
    QList<ZLTaxonomy> taxonomies;
    QString id; ///< empty, 8 random characters, the blog's number, or a note's guid
    int status = New;
    int type = Post;
    /// What the blog calls a post that `status` tells but roughly: "private" (a published one) or "pending" (a draft).
    /// Empty for all others.
    QString blogStatus;
    QDateTime createdAt; ///< publication date in UTC; invalid on a post never saved with a date
    QDateTime updatedAt;
    QString authorId;
    QString URL; ///< public address, to the byte as it came: QUrl would rewrite its escapes and its host
    bool allowComments = true;
    bool allowPingback = true;
    QString slug;
    QString featuredImageId;
    QString featuredImageURL; ///< as it came, too
    /// When a first publish was begun whose answer is not known yet; invalid normally.
    QDateTime firstPublishBegan;

    /// Whether a blog has this post.
    bool isOnBlog() const { return status == Draft || status == Publish; }
    /// Makes it a new post that no blog knows, with this id (which may be empty): all goes that would lead to the
    /// blog's post or pass for its own. Texts, terms, options and featured image stay.
    void becomeNew(const QString &newId);

    /// The taxonomies as keywords.
    QStringList taxonomiesArray() const;
    /// The reverse. A keyword that was there keeps the id that the blog gave it; empty strings are left out.
    void setTaxonomiesFromStringArray(const QStringList &strings);

    bool operator==(const PostFields &) const = default;
};
