#pragma once

#include <QList>
#include <QString>

/// A category or tag of one post.
struct ZLTaxonomy {
    enum Type { Category = 0, Tag = 1 };

    QString name;
    QString taxonomyId; ///< filled only on the way to the blog
    int type = Category; ///< other values occur in foreign data: files treat them as categories, strings leave them out

    /// As files and the tag field name it: a category by its bare name, a tag with a leading "#".
    QString keyword() const { return type == Tag ? u'#' + name : name; }
    /// The reverse. A category whose name begins with "#" comes back as a tag: that loss belongs to the format.
    static ZLTaxonomy fromKeyword(const QString &keyword)
    {
        return keyword.startsWith(u'#') ? ZLTaxonomy{keyword.mid(1), {}, Tag} : ZLTaxonomy{keyword, {}, Category};
    }
    bool operator==(const ZLTaxonomy &) const = default;
};
