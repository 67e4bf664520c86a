#pragma once

#include "model/ZLTaxonomy.h"

#include <QDateTime>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

/// What every post has, whatever it is stored in.
struct ZLAbstractPost {
    QString title;
    QString id; ///< empty, 8 random characters, the blog's number, or a note's guid
    QDateTime createdAt; ///< publication date in UTC; invalid on a post never saved with a date
    QDateTime updatedAt;
    QString content; ///< HTML of the body
    QList<ZLTaxonomy> taxonomies;
    QString URL; ///< public address, to the byte as it came: QUrl would rewrite its escapes and its host
    QUrl localFile;

    /// The taxonomies as strings: a category is its bare name, a tag has a leading "#"; other types are left out.
    QStringList taxonomiesArray() const;
    /// The reverse. A category whose name begins with "#" comes back as a tag: that loss belongs to the format.
    void setTaxonomiesFromStringArray(const QStringList &strings);
    /// The form for writing: "title", "content", "created_at", "updated_at", "URL", "keywords".
    QVariantMap dictionary() const;
};
