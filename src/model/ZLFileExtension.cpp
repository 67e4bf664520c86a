#include "model/ZLFileExtension.h"

#include "model/PostFileDate.h"
#include "model/XMLStrings.h"

#include <QDateTime>

namespace {
QString textOf(const QVariant &value)
{
    if (value.typeId() == QMetaType::QDateTime)
        return PostFileDate::description(value.toDateTime());
    return value.toString();
}

/// Appends elements to the text of a file. All are escaped, since what a blog calls an id may hold anything.
class Elements {
public:
    void open(QLatin1String name) { m_text.append(u'<').append(name).append(u'>'); }
    void close(QLatin1String name) { m_text.append(QLatin1String("</")).append(name).append(u'>'); }
    void element(QLatin1String name, const QVariant &value)
    {
        open(name);
        m_text.append(XMLEncodedString(textOf(value)));
        close(name);
    }
    QByteArray data() const { return m_text.toUtf8(); }

private:
    QString m_text;
};

QVariant field(const QVariantMap &map, QLatin1String name)
{
    return map.value(QString(name));
}

void writePost(Elements &elements, const QVariantMap &post)
{
    elements.open(QLatin1String("post"));
    elements.element(QLatin1String("title"), field(post, QLatin1String("title")));
    elements.element(QLatin1String("content"), field(post, QLatin1String("content")));
    elements.open(QLatin1String("keywords"));
    const QVariant keywords = field(post, QLatin1String("keywords"));
    if (keywords.typeId() == QMetaType::QStringList || keywords.typeId() == QMetaType::QVariantList) {
        for (const QVariant &keyword : keywords.toList())
            elements.element(QLatin1String("keyword"), keyword);
    }
    elements.close(QLatin1String("keywords"));
    elements.close(QLatin1String("post"));
}

void writeFeaturedImage(Elements &elements, const QVariant &image)
{
    elements.open(QLatin1String("featured_image"));
    const QVariantMap fields = image.toMap();
    if (fields.contains(QStringLiteral("media_id")))
        elements.element(QLatin1String("media_id"), field(fields, QLatin1String("media_id")));
    if (fields.contains(QStringLiteral("URL")))
        elements.element(QLatin1String("URL"), field(fields, QLatin1String("URL")));
    elements.close(QLatin1String("featured_image"));
}

void writePostInfo(Elements &elements, const QVariantMap &info)
{
    elements.open(QLatin1String("post_info"));
    for (const auto name :
        {QLatin1String("engine"), QLatin1String("id"), QLatin1String("status"), QLatin1String("type"),
            QLatin1String("created_at"), QLatin1String("updated_at"), QLatin1String("author_id"), QLatin1String("URL"),
            QLatin1String("allow_comments"), QLatin1String("allow_pingback"), QLatin1String("slug")})
        elements.element(name, field(info, name));
    writeFeaturedImage(elements, field(info, QLatin1String("featured_image")));
    elements.close(QLatin1String("post_info"));
}

void writeFileInfo(Elements &elements, const QVariantMap *info)
{
    elements.open(QLatin1String("file_info"));
    if (!info) {
        elements.element(QLatin1String("app_version"), QStringLiteral("3"));
    } else {
        elements.element(QLatin1String("status"), field(*info, QLatin1String("status")));
        if (info->contains(QStringLiteral("app_version")))
            elements.element(QLatin1String("app_version"), field(*info, QLatin1String("app_version")));
    }
    elements.close(QLatin1String("file_info"));
}
} // namespace

QByteArray ZLFileExtension::generateXMLDataForPost(
    const QVariantMap *post, const QVariantMap *postInfo, const QVariantMap *fileInfo)
{
    Elements elements;
    elements.open(QLatin1String("zalmo"));
    if (post)
        writePost(elements, *post);
    if (postInfo)
        writePostInfo(elements, *postInfo);
    writeFileInfo(elements, fileInfo);
    elements.close(QLatin1String("zalmo"));
    return elements.data();
}
