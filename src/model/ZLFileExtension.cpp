#include "model/ZLFileExtension.h"

#include "model/PostFileDate.h"
#include "model/PostFileWords.h"
#include "model/XMLStrings.h"
#include "model/ZLFileInfo.h"

namespace {
/// Appends elements to the text of a file. All are escaped, since what a blog calls an id may hold anything.
class Elements {
public:
    void open(QLatin1String name) { m_text.append(u'<').append(name).append(u'>'); }
    void close(QLatin1String name) { m_text.append(QLatin1String("</")).append(name).append(u'>'); }
    void element(QLatin1String name, const QString &value)
    {
        open(name);
        m_text.append(XMLEncodedString(value));
        close(name);
    }
    void element(QLatin1String name, const QDateTime &date) { element(name, PostFileDate::description(date)); }
    void element(QLatin1String name, bool flag) { element(name, flag ? QStringLiteral("1") : QStringLiteral("0")); }
    /// Only what is there, so that the file of a plain post has the plain form.
    template <class Value>
    void elementIfAny(QLatin1String name, const Value &value, bool isAny)
    {
        if (isAny)
            element(name, value);
    }
    QByteArray data() const { return m_text.toUtf8(); }

private:
    QString m_text;
};

void writePost(Elements &elements, const PostFields &post)
{
    elements.open(QLatin1String("post"));
    elements.element(QLatin1String("title"), post.title);
    elements.element(QLatin1String("content"), post.content);
    elements.open(QLatin1String("keywords"));
    for (const QString &keyword : post.taxonomiesArray())
        elements.element(QLatin1String("keyword"), keyword);
    elements.close(QLatin1String("keywords"));
    const QString ids = PostFileWords::keywordIds(post.taxonomies);
    elements.elementIfAny(QLatin1String("keyword_ids"), ids, !ids.isEmpty());
    elements.close(QLatin1String("post"));
}

void writePostInfo(Elements &elements, const PostFields &post)
{
    elements.open(QLatin1String("post_info"));
    elements.element(QLatin1String("engine"), PostFileWords::engine(post.status));
    elements.element(QLatin1String("id"), post.id);
    elements.element(QLatin1String("status"), PostFileWords::status(post.status));
    elements.elementIfAny(QLatin1String("blog_status"), post.blogStatus, !post.blogStatus.isEmpty());
    elements.element(QLatin1String("type"), PostFileWords::type(post.type));
    elements.element(QLatin1String("created_at"), post.createdAt);
    elements.element(QLatin1String("updated_at"), post.updatedAt);
    elements.element(QLatin1String("author_id"), post.authorId);
    elements.element(QLatin1String("URL"), post.URL);
    elements.element(QLatin1String("allow_comments"), post.allowComments);
    elements.element(QLatin1String("allow_pingback"), post.allowPingback);
    elements.element(QLatin1String("slug"), post.slug);
    elements.open(QLatin1String("featured_image"));
    elements.elementIfAny(QLatin1String("media_id"), post.featuredImageId, !post.featuredImageId.isEmpty());
    elements.elementIfAny(QLatin1String("URL"), post.featuredImageURL, !post.featuredImageURL.isEmpty());
    elements.close(QLatin1String("featured_image"));
    elements.close(QLatin1String("post_info"));
}

void writeFileInfo(Elements &elements, const PostFields &post, const ZLFileInfo *info)
{
    const QString version = info ? info->appVersion : QString::number(PostFileWords::currentVersion);
    elements.open(QLatin1String("file_info"));
    if (info)
        elements.element(QLatin1String("status"), info->status);
    elements.elementIfAny(QLatin1String("app_version"), version, !version.isNull());
    elements.elementIfAny(
        QLatin1String("first_publish_began"), post.firstPublishBegan, post.firstPublishBegan.isValid());
    elements.close(QLatin1String("file_info"));
}
} // namespace

QByteArray ZLFileExtension::generateXMLDataForPost(const PostFields &post, const ZLFileInfo *fileInfo)
{
    Elements elements;
    elements.open(QLatin1String("zalmo"));
    writePost(elements, post);
    writePostInfo(elements, post);
    writeFileInfo(elements, post, fileInfo);
    elements.close(QLatin1String("zalmo"));
    return elements.data();
}
