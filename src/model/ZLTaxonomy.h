#pragma once

#include <QList>
#include <QString>

/// A category or tag of one post.
struct ZLTaxonomy {
    enum Type { Category = 0, Tag = 1 };

    QString name;
    QString termId; ///< the blog's id of the term; empty when it is not known. Two terms of one name differ in it
    int type = Category; ///< files treat all but tags as categories

    /// As files and the tag field name it: a category by its bare name, a tag with a leading "#".
    QString keyword() const { return type == Tag ? u'#' + name : name; }
    /// The reverse. A category whose name begins with "#" comes back as a tag: that loss belongs to the format.
    static ZLTaxonomy fromKeyword(const QString &keyword)
    {
        return keyword.startsWith(u'#') ? ZLTaxonomy{keyword.mid(1), {}, Tag} : ZLTaxonomy{keyword, {}, Category};
    }
    bool operator==(const ZLTaxonomy &) const = default;
};
