#include "model/ZLAbstractPost.h"

QStringList ZLAbstractPost::taxonomiesArray() const
{
    QStringList strings;
    for (const ZLTaxonomy &taxonomy : taxonomies) {
        if (taxonomy.type == ZLTaxonomy::Tag)
            strings << u'#' + taxonomy.name;
        else if (taxonomy.type == ZLTaxonomy::Category)
            strings << taxonomy.name;
    }
    return strings;
}

void ZLAbstractPost::setTaxonomiesFromStringArray(const QStringList &strings)
{
    taxonomies.clear();
    for (const QString &string : strings) {
        if (string.startsWith(u'#'))
            taxonomies.append({string.mid(1), {}, ZLTaxonomy::Tag});
        else if (!string.isEmpty())
            taxonomies.append({string, {}, ZLTaxonomy::Category});
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
