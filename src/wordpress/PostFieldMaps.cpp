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

/// A private post counts as published and one that waits for review as a draft, each with its own word; what is
/// scheduled counts as published. Any other word keeps "new".
void takeStatus(ZLWordpressPost &post, const QString &word)
{
    static const QHash<QString, ZLWordpressPost::Status> statuses = {
        {QStringLiteral("publish"), ZLWordpressPost::Publish},
        {QStringLiteral("future"), ZLWordpressPost::Publish},
        {QStringLiteral("private"), ZLWordpressPost::Publish},
        {QStringLiteral("draft"), ZLWordpressPost::Draft},
        {QStringLiteral("pending"), ZLWordpressPost::Draft},
    };
    post.status = statuses.value(word, ZLWordpressPost::New);
    if (word == QLatin1String("private") || word == QLatin1String("pending"))
        post.blogStatus = word;
}

int typeFromWord(const QString &word)
{
    return word == QLatin1String("page") ? ZLWordpressPost::Page : ZLWordpressPost::Post;
}

ZLTaxonomy taxonomy(const QString &name, int type, const QString &id = {})
{
    return {HTMLEntities::stringByDecodingHTMLEntities(name), id, type};
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

/// Other taxonomies than these two are left on the blog: a post format is no tag.
QList<ZLTaxonomy> taxonomiesFromTerms(const XMLRPCValue &terms)
{
    QList<ZLTaxonomy> taxonomies;
    for (const XMLRPCValue &term : terms.array()) {
        const QString kind = term[u"taxonomy"].string();
        const bool isCategory = kind == QLatin1String("category");
        if (isCategory || kind == QLatin1String("post_tag"))
            taxonomies.append(taxonomy(term[u"name"].string(), isCategory ? ZLTaxonomy::Category : ZLTaxonomy::Tag,
                term[u"term_id"].string()));
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
    takeStatus(*post, response[u"post_status"].string());
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
    takeStatus(*post, response[u"post_status"].string());
    post->type = typeFromWord(response[u"post_type"].string());
    post->taxonomies = taxonomiesFromTerms(response[u"terms"]);
    post->allowPingback = response[u"ping_status"].string() == QLatin1String("open");
    post->allowComments = response[u"comment_status"].string() == QLatin1String("open");
    post->slug = response[u"post_name"].string();
    takeThumbnail(*post, response[u"post_thumbnail"]);
    return post;
}

QList<PostPtr> PostFieldMaps::postsFromWPGetPostsResponse(const XMLRPCValue &response, int most)
{
    QList<PostPtr> posts;
    for (const XMLRPCValue &element : response.array()) {
        if (posts.size() == most)
            break;
        posts.append(postFromWPGetPostResponse(element));
    }
    return posts;
}
