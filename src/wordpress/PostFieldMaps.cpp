#include "wordpress/PostFieldMaps.h"

#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"

namespace {
/// An empty record as the maps start from: unlike a new post it allows nothing and has no slug.
PostPtr blankPost()
{
    auto post = std::make_shared<ZLWordpressPost>();
    post->allowComments = false;
    post->allowPingback = false;
    post->slug = QString();
    return post;
}

/// What waits for review or is private counts as a draft, so that publishing it updates the post and never makes
/// a public copy; what is scheduled counts as published. Any other word keeps "new".
int statusFromWord(const QString &word)
{
    static const QHash<QString, int> statuses = {
        {QStringLiteral("publish"), ZLWordpressPost::Publish},
        {QStringLiteral("future"), ZLWordpressPost::Publish},
        {QStringLiteral("draft"), ZLWordpressPost::Draft},
        {QStringLiteral("pending"), ZLWordpressPost::Draft},
        {QStringLiteral("private"), ZLWordpressPost::Draft},
    };
    return statuses.value(word, ZLWordpressPost::New);
}

int typeFromWord(const QString &word)
{
    return word == QLatin1String("page") ? ZLWordpressPost::Page : ZLWordpressPost::Post;
}

ZLTaxonomy taxonomy(const QString &name, int type)
{
    ZLTaxonomy taxonomy;
    taxonomy.name = HTMLEntities::stringByDecodingHTMLEntities(name);
    taxonomy.type = type;
    return taxonomy;
}

QList<ZLTaxonomy> taxonomiesFromKeywords(const XMLRPCValue &response)
{
    QList<ZLTaxonomy> taxonomies;
    const QString keywords = response[u"mt_keywords"].string();
    if (!keywords.isEmpty()) {
        for (const QString &keyword : keywords.split(QLatin1Char(',')))
            taxonomies.append(taxonomy(keyword.trimmed(), ZLTaxonomy::Tag));
    }
    for (const XMLRPCValue &category : response[u"categories"].array())
        taxonomies.append(taxonomy(category.string(), ZLTaxonomy::Category));
    return taxonomies;
}

QList<ZLTaxonomy> taxonomiesFromTerms(const XMLRPCValue &terms)
{
    QList<ZLTaxonomy> taxonomies;
    for (const XMLRPCValue &term : terms.array()) {
        const bool isCategory = term[u"taxonomy"].string() == QLatin1String("category");
        taxonomies.append(taxonomy(term[u"name"].string(), isCategory ? ZLTaxonomy::Category : ZLTaxonomy::Tag));
    }
    return taxonomies;
}

void takeBody(ZLWordpressPost &post, const XMLRPCValue &response)
{
    const QString description = response[u"description"].string();
    const QString more = response[u"mt_text_more"].string();
    post.storedContent = more.isEmpty() ? description : description + QLatin1String("<!--more-->") + more;
    const QString whole = more.isEmpty() ? description : description + ContentPasses::readMoreAnchor() + more;
    post.content = ContentPasses::contentReplacingImageClasses(whole);
}

/// A picture without "image_meta" is not taken: such a post counts as one without featured image. Kept on purpose, as
/// the file knows no third case; meant was every picture.
void takeThumbnail(ZLWordpressPost &post, const XMLRPCValue &thumbnail)
{
    if (thumbnail[u"metadata"][u"image_meta"].isAbsent())
        return;
    post.featuredImageId = thumbnail[u"attachment_id"].string();
    post.featuredImageURL = thumbnail[u"link"].string();
}

QList<PostPtr> mapped(const XMLRPCValue &response, PostPtr (*map)(const XMLRPCValue &))
{
    QList<PostPtr> posts;
    for (const XMLRPCValue &element : response.array())
        posts.append(map(element));
    return posts;
}
} // namespace

PostPtr PostFieldMaps::postFromResponse(const XMLRPCValue &response)
{
    PostPtr post = blankPost();
    post->title = response[u"title"].string();
    post->id = response[u"postid"].string();
    post->createdAt = response[u"date_created_gmt"].date();
    post->updatedAt = response[u"date_modified_gmt"].date();
    takeBody(*post, response);
    post->authorId = response[u"wp_author_id"].string();
    post->URL = response[u"link"].string();
    post->status = statusFromWord(response[u"post_status"].string());
    post->type = typeFromWord(response[u"post_type"].string());
    post->taxonomies = taxonomiesFromKeywords(response);
    // Read as booleans on purpose, so the text "open" reads false: this family gives numbers, unlike the one below.
    post->allowPingback = response[u"mt_allow_pings"].boolean();
    post->allowComments = response[u"mt_allow_comments"].boolean();
    post->slug = response[u"wp_slug"].string();
    return post;
}

PostPtr PostFieldMaps::postFromWPGetPostResponse(const XMLRPCValue &response)
{
    PostPtr post = blankPost();
    post->title = response[u"post_title"].string();
    post->id = response[u"post_id"].string();
    post->createdAt = response[u"post_date_gmt"].date();
    post->updatedAt = response[u"post_modified_gmt"].date();
    post->content = response[u"post_content"].string();
    post->storedContent = post->content;
    post->authorId = response[u"post_author"].string();
    post->URL = response[u"link"].string();
    post->status = statusFromWord(response[u"post_status"].string());
    post->type = typeFromWord(response[u"post_type"].string());
    post->taxonomies = taxonomiesFromTerms(response[u"terms"]);
    post->allowPingback = response[u"ping_status"].string() == QLatin1String("open");
    post->allowComments = response[u"comment_status"].string() == QLatin1String("open");
    post->slug = response[u"post_name"].string();
    takeThumbnail(*post, response[u"post_thumbnail"]);
    return post;
}

QList<PostPtr> PostFieldMaps::postsFromResponse(const XMLRPCValue &response)
{
    return mapped(response, postFromResponse);
}

QList<PostPtr> PostFieldMaps::postsFromWPGetPostsResponse(const XMLRPCValue &response)
{
    return mapped(response, postFromWPGetPostResponse);
}
