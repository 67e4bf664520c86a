#include "support/FakeBlogStructs.h"

QString FakeBlogStructs::escaped(const QString &text)
{
    return QString(text).replace(QLatin1Char('&'), QLatin1String("&amp;"));
}

XMLRPCStruct FakeBlogStructs::term(const FakeBlog::Term &term)
{
    return {{QStringLiteral("term_id"), term.id}, {QStringLiteral("name"), escaped(term.name)},
        {QStringLiteral("taxonomy"), term.taxonomy}, {QStringLiteral("parent"), QStringLiteral("0")}};
}

QString FakeBlogStructs::link(const FakeBlog::Post &post) const
{
    return m_blog.url() + QLatin1String("/?p=") + post.id;
}

XMLRPCValue FakeBlogStructs::thumbnail(const FakeBlog::Post &post) const
{
    for (const FakeBlog::Media &item : m_blog.media) {
        if (item.id == post.thumbnail) {
            const XMLRPCStruct metadata{
                {QStringLiteral("file"), item.name}, {QStringLiteral("image_meta"), XMLRPCStruct()}};
            return XMLRPCStruct{{QStringLiteral("attachment_id"), item.id}, {QStringLiteral("link"), item.url},
                {QStringLiteral("metadata"), metadata}};
        }
    }
    return XMLRPCArray();
}

XMLRPCStruct FakeBlogStructs::post(const FakeBlog::Post &post) const
{
    XMLRPCArray postTerms;
    for (const FakeBlog::Term &term : m_blog.terms) {
        const QStringList &names = term.taxonomy == QLatin1String("category") ? post.categories : post.tags;
        if (names.contains(term.name))
            postTerms.push_back(FakeBlogStructs::term(term));
    }
    return {
        {QStringLiteral("post_id"), post.id},
        {QStringLiteral("post_title"), post.title},
        {QStringLiteral("post_date"), post.date},
        {QStringLiteral("post_date_gmt"), post.date},
        {QStringLiteral("post_modified"), post.modified},
        {QStringLiteral("post_modified_gmt"), post.modified},
        {QStringLiteral("post_status"), post.status},
        {QStringLiteral("post_type"), post.type},
        {QStringLiteral("post_name"), post.slug},
        {QStringLiteral("post_author"), QStringLiteral("1")},
        {QStringLiteral("post_content"), post.content},
        {QStringLiteral("link"), link(post)},
        {QStringLiteral("comment_status"), post.commentStatus},
        {QStringLiteral("ping_status"), post.pingStatus},
        {QStringLiteral("post_thumbnail"), thumbnail(post)},
        {QStringLiteral("terms"), postTerms},
    };
}

XMLRPCStruct FakeBlogStructs::metaWeblogPost(const FakeBlog::Post &post) const
{
    const QStringList halves = post.content.split(QStringLiteral("<!--more-->"));
    XMLRPCArray categories;
    for (const QString &name : post.categories)
        categories.emplace_back(escaped(name));
    return {
        {QStringLiteral("postid"), post.id.toLongLong()},
        {QStringLiteral("title"), post.title},
        {QStringLiteral("description"), halves.value(0)},
        {QStringLiteral("mt_text_more"), halves.value(1)},
        {QStringLiteral("date_created_gmt"), post.date},
        {QStringLiteral("date_modified_gmt"), post.modified},
        {QStringLiteral("wp_author_id"), QStringLiteral("1")},
        {QStringLiteral("link"), link(post)},
        {QStringLiteral("post_status"), post.status},
        {QStringLiteral("mt_keywords"), escaped(post.tags.join(QStringLiteral(", ")))},
        {QStringLiteral("categories"), categories},
        {QStringLiteral("mt_allow_pings"), post.pingStatus == QLatin1String("open") ? 1 : 0},
        {QStringLiteral("mt_allow_comments"), post.commentStatus == QLatin1String("open") ? 1 : 0},
        {QStringLiteral("wp_slug"), post.slug},
    };
}
