#include "model/ZLAbstractPost.h"

QStringList ZLAbstractPost::taxonomiesArray() const
{
    QStringList strings;
    for (const ZLTaxonomy &taxonomy : taxonomies) {
        if (taxonomy.type == ZLTaxonomy::Tag || taxonomy.type == ZLTaxonomy::Category)
            strings << taxonomy.keyword();
    }
    return strings;
}

void ZLAbstractPost::setTaxonomiesFromStringArray(const QStringList &strings)
{
    taxonomies.clear();
    for (const QString &string : strings) {
        if (!string.isEmpty())
            taxonomies.append(ZLTaxonomy::fromKeyword(string));
    }
}

QVariantMap ZLAbstractPost::dictionary() const
{
    const auto dateOrEmpty = [](const QDateTime &date) {
        return date.isValid() ? QVariant(date) : QVariant(QString());
    };
    return {
        {QStringLiteral("title"), title},
        {QStringLiteral("content"), content},
        {QStringLiteral("created_at"), dateOrEmpty(createdAt)},
        {QStringLiteral("updated_at"), dateOrEmpty(updatedAt)},
        {QStringLiteral("URL"), URL},
        {QStringLiteral("keywords"), taxonomiesArray()},
    };
}
