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

    void readsStatuses()
    {
        for (const auto &[word, status, blogStatus] :
            {std::tuple(u"publish"_qs, 2, QString()), {u"future"_qs, 2, {}}, {u"private"_qs, 2, u"private"_qs},
                {u"draft"_qs, 1, {}}, {u"pending"_qs, 1, u"pending"_qs}, {u"inherit"_qs, 0, {}}}) {
            const XMLRPCStruct reply{{u"post_status"_qs, word}};
            for (const PostPtr &post :
                {PostFieldMaps::postFromWPGetPostResponse(reply), PostFieldMaps::postFromResponse(reply)}) {
                QCOMPARE(post->status, status);
                QCOMPARE(post->blogStatus, blogStatus);
            }
        }
    }

    void readsFlags()
    {
        const auto wp = [](const XMLRPCValue &value) {
            return PostFieldMaps::postFromWPGetPostResponse(
                XMLRPCStruct{{u"ping_status"_qs, value}, {u"comment_status"_qs, value}});
        };
        const auto metaWeblog = [](const XMLRPCValue &value) {
            return PostFieldMaps::postFromResponse(
                XMLRPCStruct{{u"mt_allow_pings"_qs, value}, {u"mt_allow_comments"_qs, value}});
        };
        for (const PostPtr &post : {wp(u"open"_qs), metaWeblog(1)})
            QVERIFY(post->allowPingback && post->allowComments);
        for (const PostPtr &post : {wp(u"closed"_qs), wp(1), metaWeblog(0), metaWeblog(u"open"_qs)})
            QVERIFY(!post->allowPingback && !post->allowComments);
    }

    void readsTheThumbnail()
    {
        const auto idOf = [](const XMLRPCValue &thumbnail) {
            return PostFieldMaps::postFromWPGetPostResponse(XMLRPCStruct{{u"post_thumbnail"_qs, thumbnail}})
                ->featuredImageId;
        };
        const auto with = [](const XMLRPCValue &metadata) {
            return XMLRPCStruct{
                {u"attachment_id"_qs, u"9"_qs}, {u"link"_qs, u"http://blog.test/a.png"_qs}, {u"metadata"_qs, metadata}};
        };
        QCOMPARE(idOf(with(XMLRPCStruct{{u"image_meta"_qs, XMLRPCStruct()}})), u"9"_qs);
        for (const XMLRPCValue &none : {XMLRPCValue(XMLRPCArray()), XMLRPCValue(with(XMLRPCStruct{{u"file"_qs, 1}})),
                 XMLRPCValue(with(u""_qs)), XMLRPCValue()})
            QVERIFY(idOf(none).isNull());
    }

    void splitsKeywords()
    {
        const auto tags = [](const QString &keywords) {
            return PostFieldMaps::postFromResponse(XMLRPCStruct{{u"mt_keywords"_qs, keywords}})->taxonomiesArray();
        };
        QCOMPARE(tags({}), QStringList());
        QCOMPARE(tags(u"a, b c ,R&amp;D"_qs), (QStringList{u"#a"_qs, u"#b c"_qs, u"#R&D"_qs}));
    }
};

static const RegisteredTest<PostFieldMapsTest> registered;
#include "PostFieldMapsTest.moc"
