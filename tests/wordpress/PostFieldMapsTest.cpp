#include "wordpress/PostFieldMaps.h"
#include "support/TestClasses.h"

namespace {
const QDateTime march(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC);
const QDateTime april(QDate(2024, 4, 1), QTime(10, 0), Qt::UTC);

XMLRPCStruct term(const QString &taxonomy, const QString &name)
{
    return {{u"taxonomy"_qs, taxonomy}, {u"name"_qs, name}, {u"term_id"_qs, u"4"_qs}};
}
} // namespace

/// From the blog's structs to posts.
class PostFieldMapsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mapsAWPStruct()
    {
        const QString body = u"<!-- wp:paragraph -->\n<p>a<!--more--><img class=\"aligncenter\" src=\"x\" /></p>"_qs;
        const PostPtr post = PostFieldMaps::postFromWPGetPostResponse(XMLRPCStruct{
            {u"post_id"_qs, u"42"_qs},
            {u"post_title"_qs, u"Tea &amp; cake"_qs},
            {u"post_date_gmt"_qs, march},
            {u"post_modified_gmt"_qs, april},
            {u"post_content"_qs, body},
            {u"post_author"_qs, u"3"_qs},
            {u"link"_qs, u"http://blog.test/?p=42&x=ü"_qs},
            {u"post_status"_qs, u"publish"_qs},
            {u"post_type"_qs, u"page"_qs},
            {u"post_name"_qs, u"tea"_qs},
            {u"terms"_qs,
                XMLRPCArray{term(u"category"_qs, u"R&amp;D"_qs), term(u"post_tag"_qs, u"5 &gt; 4"_qs),
                    term(u"post_format"_qs, u"Quote"_qs)}},
        });
        QCOMPARE(post->id, u"42"_qs);
        QCOMPARE(post->title, u"Tea &amp; cake"_qs);
        QCOMPARE(post->createdAt, march);
        QCOMPARE(post->updatedAt, april);
        QCOMPARE(post->content, body);
        QCOMPARE(post->storedContent, body);
        QCOMPARE(post->authorId, u"3"_qs);
        QCOMPARE(post->URL, u"http://blog.test/?p=42&x=ü"_qs);
        QCOMPARE(post->type, int(ZLWordpressPost::Page));
        QCOMPARE(post->slug, u"tea"_qs);
        // A post format and a taxonomy of a plug-in are no terms of the writer's.
        QCOMPARE(post->taxonomies, (QList<ZLTaxonomy>{{u"R&D"_qs, u"4"_qs, 0}, {u"5 > 4"_qs, u"4"_qs, 1}}));
    }

    void mapsAMetaWeblogStruct()
    {
        const PostPtr post = PostFieldMaps::postFromResponse(XMLRPCStruct{
            {u"postid"_qs, 42},
            {u"title"_qs, u"Tea"_qs},
            {u"date_created_gmt"_qs, march},
            {u"date_modified_gmt"_qs, april},
            {u"description"_qs, u"<p><img src=\"a.png\" class='aligncenter' /></p>"_qs},
            {u"mt_text_more"_qs, u"rest"_qs},
            {u"wp_author_id"_qs, u"3"_qs},
            {u"post_status"_qs, u"draft"_qs},
            {u"mt_keywords"_qs, u"green"_qs},
            {u"categories"_qs, XMLRPCArray{u"R&amp;D"_qs}},
            {u"wp_slug"_qs, u"tea"_qs},
        });
        QCOMPARE(post->id, u"42"_qs);
        QCOMPARE(post->updatedAt, april);
        QCOMPARE(post->content,
            u"<p><img src=\"a.png\"  align=\"middle\" class=\"aligncenter full\"  /></p>"
            "<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>rest"_qs);
        QCOMPARE(post->storedContent, u"<p><img src=\"a.png\" class='aligncenter' /></p><!--more-->rest"_qs);
        QCOMPARE(post->status, int(ZLWordpressPost::Draft));
        QCOMPARE(post->taxonomies, (QList<ZLTaxonomy>{{u"green"_qs, {}, 1}, {u"R&D"_qs, {}, 0}}));
        QCOMPARE(post->slug, u"tea"_qs);
    }

    void leavesOutWhatIsMissing()
    {
        for (const PostPtr &post : {PostFieldMaps::postFromWPGetPostResponse(XMLRPCStruct()),
                 PostFieldMaps::postFromResponse(XMLRPCValue())}) {
            QVERIFY(post->title.isNull() && post->content.isEmpty() && post->slug.isNull());
            QVERIFY(!post->createdAt.isValid() && !post->updatedAt.isValid() && post->URL.isEmpty());
            QCOMPARE(post->status, int(ZLWordpressPost::New));
            QCOMPARE(post->type, int(ZLWordpressPost::Post));
            QVERIFY(!post->allowComments && !post->allowPingback); // unlike on a post that the writer makes
            QVERIFY(post->taxonomies.isEmpty());
        }
    }

    void readsStatuses_data()
    {
        const TestTable<QString, int, QString> row({"word", "status", "blogStatus"});
        row("publish", u"publish"_qs, 2, {});
        row("future", u"future"_qs, 2, {});
        row("private", u"private"_qs, 2, u"private"_qs);
        row("draft", u"draft"_qs, 1, {});
        row("pending", u"pending"_qs, 1, u"pending"_qs);
        row("unknown", u"inherit"_qs, 0, {});
    }

    void readsStatuses()
    {
        QFETCH(QString, word);
        const XMLRPCStruct reply{{u"post_status"_qs, word}};
        for (const PostPtr &post :
            {PostFieldMaps::postFromWPGetPostResponse(reply), PostFieldMaps::postFromResponse(reply)}) {
            QTEST(post->status, "status");
            QTEST(post->blogStatus, "blogStatus");
        }
    }

    void readsFlags_data()
    {
        const TestTable<bool, XMLRPCValue, bool> row({"isWP", "value", "allowed"});
        row("wp: open", true, XMLRPCValue(u"open"_qs), true);
        row("wp: closed", true, XMLRPCValue(u"closed"_qs), false);
        row("wp: a number", true, XMLRPCValue(1), false);
        row("metaWeblog: 1", false, XMLRPCValue(1), true);
        row("metaWeblog: 0", false, XMLRPCValue(0), false);
        row("metaWeblog: open reads false", false, XMLRPCValue(u"open"_qs), false);
    }

    void readsFlags()
    {
        QFETCH(bool, isWP);
        QFETCH(XMLRPCValue, value);
        QFETCH(bool, allowed);
        const PostPtr post = isWP ? PostFieldMaps::postFromWPGetPostResponse(
                                 XMLRPCStruct{{u"ping_status"_qs, value}, {u"comment_status"_qs, value}})
                                  : PostFieldMaps::postFromResponse(
                                      XMLRPCStruct{{u"mt_allow_pings"_qs, value}, {u"mt_allow_comments"_qs, value}});
        QCOMPARE(post->allowPingback, allowed);
        QCOMPARE(post->allowComments, allowed);
    }

    void readsTheThumbnail_data()
    {
        const TestTable<XMLRPCValue, QString> row({"thumbnail", "id"});
        const auto with = [](const XMLRPCValue &metadata) {
            return XMLRPCValue(XMLRPCStruct{{u"attachment_id"_qs, u"9"_qs}, {u"link"_qs, u"http://blog.test/a.png"_qs},
                {u"metadata"_qs, metadata}});
        };
        row("whole", with(XMLRPCStruct{{u"image_meta"_qs, XMLRPCStruct()}}), u"9"_qs);
        row("none: an empty array", XMLRPCValue(XMLRPCArray()), {});
        row("no image_meta", with(XMLRPCStruct{{u"file"_qs, u"a.png"_qs}}), {});
        row("metadata is a text", with(u""_qs), {});
        row("missing", XMLRPCValue(), {});
    }

    void readsTheThumbnail()
    {
        QFETCH(XMLRPCValue, thumbnail);
        QFETCH(QString, id);
        const PostPtr post = PostFieldMaps::postFromWPGetPostResponse(XMLRPCStruct{{u"post_thumbnail"_qs, thumbnail}});
        QCOMPARE(post->featuredImageId, id);
        QCOMPARE(post->featuredImageURL, id.isNull() ? QString() : u"http://blog.test/a.png"_qs);
    }

    void splitsKeywords_data()
    {
        const TestTable<QString, QStringList> row({"keywords", "tags"});
        row("none", u""_qs, {});
        row("some", u"a, b c ,d"_qs, {u"#a"_qs, u"#b c"_qs, u"#d"_qs});
        row("entities", u"R&amp;D, &lt;b&gt;"_qs, {u"#R&D"_qs, u"#<b>"_qs});
    }

    void splitsKeywords()
    {
        QFETCH(QString, keywords);
        QTEST(PostFieldMaps::postFromResponse(XMLRPCStruct{{u"mt_keywords"_qs, keywords}})->taxonomiesArray(), "tags");
    }
};

static const RegisteredTest<PostFieldMapsTest> registered;
#include "PostFieldMapsTest.moc"
