#include "model/ZLPostInfo.h"

QVariantMap ZLPostInfo::dictionary() const
{
    const auto dateOrEmpty = [](const QDateTime &date) {
        return date.isValid() ? QVariant(date) : QVariant(QString());
    };
    // False is written as an empty element here, while a working post writes "0". Both read as false.
    const auto oneOrEmpty = [](bool flag) { return flag ? QVariant(1) : QVariant(QString()); };
    QVariant image = QString();
    if (!featuredImageId.isNull() || !featuredImageURL.isNull()) {
        QVariantMap fields;
        if (!featuredImageId.isNull())
            fields.insert(QStringLiteral("media_id"), featuredImageId);
        if (!featuredImageURL.isNull())
            fields.insert(QStringLiteral("URL"), featuredImageURL);
        image = fields;
    }
    return {
        {QStringLiteral("engine"), engine},
        {QStringLiteral("id"), id},
        {QStringLiteral("status"), status},
        {QStringLiteral("URL"), URL},
        {QStringLiteral("created_at"), dateOrEmpty(createdAt)},
        {QStringLiteral("updated_at"), dateOrEmpty(updatedAt)},
        {QStringLiteral("author_id"), authorId},
        {QStringLiteral("slug"), slug},
        {QStringLiteral("allow_comments"), oneOrEmpty(allowComments)},
        {QStringLiteral("allow_pingback"), oneOrEmpty(allowPingback)},
        {QStringLiteral("type"), type},
        {QStringLiteral("featured_image"), image},
    };
}
