#include "wordpress/PostFieldMaps.h"
#include "support/TestClasses.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// From the blog's structs to posts.
class PostFieldMapsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void mapsAWPStruct();
    void mapsAMetaWeblogStruct();
    void leavesOutWhatIsMissing();
    void readsStatuses_data();
    void readsStatuses();
    void readsFlags_data();
    void readsFlags();
    void readsTheThumbnail_data();
    void readsTheThumbnail();
    void splitsKeywords_data();
    void splitsKeywords();
};

namespace {
const QDateTime march(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC);
const QDateTime april(QDate(2024, 4, 1), QTime(10, 0), Qt::UTC);

XMLRPCStruct term(const QString &taxonomy, const QString &name)
{
    return {{u"taxonomy"_s, taxonomy}, {u"name"_s, name}, {u"term_id"_s, u"4"_s}};
}
} // namespace

void PostFieldMapsTest::mapsAWPStruct()
{
    const QString body = u"<!-- wp:paragraph -->\n<p>a<!--more--><img class=\"aligncenter\" src=\"x\" /></p>"_s;
    const PostPtr post = PostFieldMaps::postFromWPGetPostResponse(XMLRPCStruct{
        {u"post_id"_s, u"42"_s},
        {u"post_title"_s, u"Tea &amp; cake"_s},
        {u"post_date_gmt"_s, march},
        {u"post_modified_gmt"_s, april},
        {u"post_content"_s, body},
        {u"post_author"_s, u"3"_s},
        {u"link"_s, u"http://blog.test/?p=42&x=ü"_s},
        {u"post_status"_s, u"publish"_s},
        {u"post_type"_s, u"page"_s},
        {u"post_name"_s, u"tea"_s},
        {u"terms"_s,
            XMLRPCArray{term(u"category"_s, u"R&amp;D"_s), term(u"post_tag"_s, u"5 &gt; 4"_s),
                term(u"post_format"_s, u"Quote"_s)}},
    });
    QCOMPARE(post->id, u"42"_s);
    QCOMPARE(post->title, u"Tea &amp; cake"_s);
    QCOMPARE(post->createdAt, march);
    QCOMPARE(post->updatedAt, april);
    QCOMPARE(post->content, body);
    QCOMPARE(post->storedContent, body);
    QCOMPARE(post->authorId, u"3"_s);
    QCOMPARE(post->URL.toString(), u"http://blog.test/?p=42&x=ü"_s);
    QCOMPARE(post->type, int(ZLWordpressPost::Page));
    QCOMPARE(post->slug, u"tea"_s);
    QCOMPARE(post->taxonomies, (QList<ZLTaxonomy>{{u"R&D"_s, {}, 0}, {u"5 > 4"_s, {}, 1}, {u"Quote"_s, {}, 1}}));
}

void PostFieldMapsTest::mapsAMetaWeblogStruct()
{
    const PostPtr post = PostFieldMaps::postFromResponse(XMLRPCStruct{
        {u"postid"_s, 42},
        {u"title"_s, u"Tea"_s},
        {u"date_created_gmt"_s, march},
        {u"date_modified_gmt"_s, april},
        {u"description"_s, u"<p><img src=\"a.png\" class='aligncenter' /></p>"_s},
        {u"mt_text_more"_s, u"rest"_s},
        {u"wp_author_id"_s, u"3"_s},
        {u"post_status"_s, u"draft"_s},
        {u"mt_keywords"_s, u"green"_s},
        {u"categories"_s, XMLRPCArray{u"R&amp;D"_s}},
        {u"wp_slug"_s, u"tea"_s},
    });
    QCOMPARE(post->id, u"42"_s);
    QCOMPARE(post->updatedAt, april);
    QCOMPARE(post->content,
        u"<p><img src=\"a.png\"  align=\"middle\" class=\"aligncenter full\"  /></p>"
        "<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>rest"_s);
    QCOMPARE(post->storedContent, u"<p><img src=\"a.png\" class='aligncenter' /></p><!--more-->rest"_s);
    QCOMPARE(post->status, int(ZLWordpressPost::Draft));
    QCOMPARE(post->taxonomies, (QList<ZLTaxonomy>{{u"green"_s, {}, 1}, {u"R&D"_s, {}, 0}}));
    QCOMPARE(post->slug, u"tea"_s);
}

void PostFieldMapsTest::leavesOutWhatIsMissing()
{
    for (const PostPtr &post :
        {PostFieldMaps::postFromWPGetPostResponse(XMLRPCStruct()), PostFieldMaps::postFromResponse(XMLRPCValue())}) {
        QVERIFY(post->title.isNull() && post->content.isEmpty() && post->slug.isNull());
        QVERIFY(!post->createdAt.isValid() && !post->updatedAt.isValid() && post->URL.isEmpty());
        QCOMPARE(post->status, int(ZLWordpressPost::New));
        QCOMPARE(post->type, int(ZLWordpressPost::Post));
        QVERIFY(!post->allowComments && !post->allowPingback); // unlike on a post that the writer makes
        QVERIFY(post->taxonomies.isEmpty());
    }
}

void PostFieldMapsTest::readsStatuses_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("status");
    QTest::newRow("publish") << u"publish"_s << 2;
    QTest::newRow("future") << u"future"_s << 2;
    QTest::newRow("draft") << u"draft"_s << 1;
    QTest::newRow("pending") << u"pending"_s << 1;
    QTest::newRow("private") << u"private"_s << 1;
    QTest::newRow("unknown") << u"inherit"_s << 0;
}

void PostFieldMapsTest::readsStatuses()
{
    QFETCH(QString, word);
    const XMLRPCStruct reply{{u"post_status"_s, word}};
    QTEST(PostFieldMaps::postFromWPGetPostResponse(reply)->status, "status");
    QTEST(PostFieldMaps::postFromResponse(reply)->status, "status");
}

void PostFieldMapsTest::readsFlags_data()
{
    QTest::addColumn<bool>("isWP");
    QTest::addColumn<XMLRPCValue>("value");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("wp: open") << true << XMLRPCValue(u"open"_s) << true;
    QTest::newRow("wp: closed") << true << XMLRPCValue(u"closed"_s) << false;
    QTest::newRow("wp: a number") << true << XMLRPCValue(1) << false;
    QTest::newRow("metaWeblog: 1") << false << XMLRPCValue(1) << true;
    QTest::newRow("metaWeblog: 0") << false << XMLRPCValue(0) << false;
    QTest::newRow("metaWeblog: open reads false") << false << XMLRPCValue(u"open"_s) << false;
}

void PostFieldMapsTest::readsFlags()
{
    QFETCH(bool, isWP);
    QFETCH(XMLRPCValue, value);
    QFETCH(bool, allowed);
    const PostPtr post = isWP
        ? PostFieldMaps::postFromWPGetPostResponse(
            XMLRPCStruct{{u"ping_status"_s, value}, {u"comment_status"_s, value}})
        : PostFieldMaps::postFromResponse(XMLRPCStruct{{u"mt_allow_pings"_s, value}, {u"mt_allow_comments"_s, value}});
    QCOMPARE(post->allowPingback, allowed);
    QCOMPARE(post->allowComments, allowed);
}

void PostFieldMapsTest::readsTheThumbnail_data()
{
    QTest::addColumn<XMLRPCValue>("thumbnail");
    QTest::addColumn<QString>("id");
    const auto with = [](const XMLRPCValue &metadata) {
        return XMLRPCValue(XMLRPCStruct{
            {u"attachment_id"_s, u"9"_s}, {u"link"_s, u"http://blog.test/a.png"_s}, {u"metadata"_s, metadata}});
    };
    QTest::newRow("whole") << with(XMLRPCStruct{{u"image_meta"_s, XMLRPCStruct()}}) << u"9"_s;
    QTest::newRow("none: an empty array") << XMLRPCValue(XMLRPCArray()) << QString();
    QTest::newRow("no image_meta") << with(XMLRPCStruct{{u"file"_s, u"a.png"_s}}) << QString();
    QTest::newRow("metadata is a text") << with(u""_s) << QString();
    QTest::newRow("missing") << XMLRPCValue() << QString();
}

void PostFieldMapsTest::readsTheThumbnail()
{
    QFETCH(XMLRPCValue, thumbnail);
    QFETCH(QString, id);
    const PostPtr post = PostFieldMaps::postFromWPGetPostResponse(XMLRPCStruct{{u"post_thumbnail"_s, thumbnail}});
    QCOMPARE(post->featuredImageId, id);
    QCOMPARE(post->featuredImageURL, id.isNull() ? QUrl() : QUrl(u"http://blog.test/a.png"_s));
}

void PostFieldMapsTest::splitsKeywords_data()
{
    QTest::addColumn<QString>("keywords");
    QTest::addColumn<QStringList>("tags");
    QTest::newRow("none") << u""_s << QStringList();
    QTest::newRow("some") << u"a, b c ,d"_s << QStringList{u"#a"_s, u"#b c"_s, u"#d"_s};
    QTest::newRow("entities") << u"R&amp;D, &lt;b&gt;"_s << QStringList{u"#R&D"_s, u"#<b>"_s};
}

void PostFieldMapsTest::splitsKeywords()
{
    QFETCH(QString, keywords);
    QTEST(PostFieldMaps::postFromResponse(XMLRPCStruct{{u"mt_keywords"_s, keywords}})->taxonomiesArray(), "tags");
}

static const RegisteredTest<PostFieldMapsTest> registered;
#include "PostFieldMapsTest.moc"
