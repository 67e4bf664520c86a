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

/// Appends elements to the text of a file.
class Elements {
public:
    void open(QLatin1String name) { m_text.append(u'<').append(name).append(u'>'); }
    void close(QLatin1String name) { m_text.append(QLatin1String("</")).append(name).append(u'>'); }
    void asItIs(QLatin1String name, const QVariant &value) { element(name, textOf(value)); }
    void escaped(QLatin1String name, const QVariant &value) { element(name, XMLEncodedString(textOf(value))); }
    QByteArray data() const { return m_text.toUtf8(); }

private:
    void element(QLatin1String name, const QString &text)
    {
        open(name);
        m_text.append(text);
        close(name);
    }
    QString m_text;
};

QVariant field(const QVariantMap &map, QLatin1String name)
{
    return map.value(QString(name));
}

void writePost(Elements &elements, const QVariantMap &post)
{
    elements.open(QLatin1String("post"));
    elements.escaped(QLatin1String("title"), field(post, QLatin1String("title")));
    elements.escaped(QLatin1String("content"), field(post, QLatin1String("content")));
    elements.open(QLatin1String("keywords"));
    const QVariant keywords = field(post, QLatin1String("keywords"));
    if (keywords.typeId() == QMetaType::QStringList || keywords.typeId() == QMetaType::QVariantList) {
        for (const QVariant &keyword : keywords.toList())
            elements.escaped(QLatin1String("keyword"), keyword);
    }
    elements.close(QLatin1String("keywords"));
    elements.close(QLatin1String("post"));
}

void writeFeaturedImage(Elements &elements, const QVariant &image)
{
    elements.open(QLatin1String("featured_image"));
    const QVariantMap fields = image.toMap();
    if (fields.contains(QStringLiteral("media_id")))
        elements.asItIs(QLatin1String("media_id"), field(fields, QLatin1String("media_id")));
    if (fields.contains(QStringLiteral("URL")))
        elements.escaped(QLatin1String("URL"), field(fields, QLatin1String("URL")));
    elements.close(QLatin1String("featured_image"));
}

void writePostInfo(Elements &elements, const QVariantMap &info)
{
    const auto asItIs = [&](QLatin1String name) { elements.asItIs(name, field(info, name)); };
    const auto escaped = [&](QLatin1String name) { elements.escaped(name, field(info, name)); };
    elements.open(QLatin1String("post_info"));
    escaped(QLatin1String("engine"));
    asItIs(QLatin1String("id"));
    asItIs(QLatin1String("status"));
    asItIs(QLatin1String("type"));
    asItIs(QLatin1String("created_at"));
    asItIs(QLatin1String("updated_at"));
    asItIs(QLatin1String("author_id"));
    escaped(QLatin1String("URL"));
    asItIs(QLatin1String("allow_comments"));
    asItIs(QLatin1String("allow_pingback"));
    escaped(QLatin1String("slug"));
    writeFeaturedImage(elements, field(info, QLatin1String("featured_image")));
    elements.close(QLatin1String("post_info"));
}

void writeFileInfo(Elements &elements, const QVariantMap *info)
{
    elements.open(QLatin1String("file_info"));
    if (!info) {
        elements.asItIs(QLatin1String("app_version"), QStringLiteral("3"));
    } else {
        elements.asItIs(QLatin1String("status"), field(*info, QLatin1String("status")));
        if (info->contains(QStringLiteral("app_version")))
            elements.asItIs(QLatin1String("app_version"), field(*info, QLatin1String("app_version")));
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
