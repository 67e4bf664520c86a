#include "model/PostFields.h"

void PostFields::becomeNew(const QString &newId)
{
    id = newId;
    status = New;
    blogStatus.clear();
    createdAt = {};
    updatedAt = {};
    authorId.clear();
    URL.clear();
    slug.clear();
    firstPublishBegan = {};
}

QStringList PostFields::taxonomiesArray() const
{
    QStringList keywords;
    for (const ZLTaxonomy &taxonomy : taxonomies)
        keywords << taxonomy.keyword();
    return keywords;
}

void PostFields::setTaxonomiesFromStringArray(const QStringList &strings)
{
    QList<ZLTaxonomy> before = std::exchange(taxonomies, {});
    for (const QString &string : strings) {
        const auto known = std::find_if(
            before.begin(), before.end(), [&](const ZLTaxonomy &taxonomy) { return taxonomy.keyword() == string; });
        if (known != before.end()) {
            taxonomies.append(*known);
            before.erase(known); // of two of one name, each is taken once
        } else if (!string.isEmpty()) {
            taxonomies.append(ZLTaxonomy::fromKeyword(string));
        }
    }
}
