#pragma once

#include <QList>
#include <QString>

/// A category or tag of one post.
struct ZLTaxonomy {
    enum Type { Category = 0, Tag = 1 };

    QString name;
    QString taxonomyId; ///< filled only on the way to the blog
    int type = Category; ///< other values occur in foreign data: files treat them as categories, strings leave them out

    bool operator==(const ZLTaxonomy &) const = default;
};
