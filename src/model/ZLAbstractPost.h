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

    /// The taxonomies as keywords; types that are neither category nor tag are left out.
    QStringList taxonomiesArray() const;
    /// The reverse; empty strings are left out.
    void setTaxonomiesFromStringArray(const QStringList &strings);
    /// The form for writing: "title", "content", "created_at", "updated_at", "URL", "keywords".
    QVariantMap dictionary() const;
};
