#include "wordpress/PostParameters.h"
#include "support/TestClasses.h"
#include "support/XMLRPCDocuments.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// From posts to the structs that the blog takes.
class PostParametersTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsStatuses_data();
    void sendsStatuses();
    void partsTermsByWhatIsKnown_data();
    void partsTermsByWhatIsKnown();
    void leavesOutWhatIsMissing();
    void sendsTheBodyAsThePageGaveIt();
    void writesThePreviewStruct();
};

namespace {
const QHash<QString, ZLWordpressImage> noImages;
}

void PostParametersTest::sendsStatuses_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("wp");
    QTest::addColumn<QString>("metaWeblog");
    QTest::newRow("new") << 0 << u"publish"_s << u"publish"_s;
    QTest::newRow("draft") << 1 << u"draft"_s << u"draft"_s;
    QTest::newRow("published") << 2 << u"publish"_s << u"publish"_s;
    QTest::newRow("note") << 3 << u"publish"_s << u"draft"_s;
    QTest::newRow("none") << -1 << u"draft"_s << u"draft"_s;
}

void PostParametersTest::sendsStatuses()
{
    ZLWordpressPost post;
    QFETCH(int, status);
    post.status = status;
    const XMLRPCValue wp = PostParameters::forWPPost(post, {nullptr, noImages});
    QTEST(wp[u"post_status"].string(), "wp");
    QTEST(XMLRPCValue(PostParameters::forPost(post))[u"post_status"].string(), "metaWeblog");
}

void PostParametersTest::partsTermsByWhatIsKnown_data()
{
    QTest::addColumn<QStringList>("taxonomies");
    QTest::addColumn<bool>("hasAccount");
    QTest::addColumn<bool>("isUpdate");
    QTest::addColumn<bool>("byName");
    QTest::addColumn<QString>("terms");
    QTest::addColumn<QString>("names");
    const auto row = [](const char *name, const QStringList &taxonomies, const char *flags, const QString &terms,
                         const QString &names) {
        const QByteArray set(flags);
        QTest::newRow(name) << taxonomies << !set.contains("noaccount") << set.contains("update")
                            << set.contains("byname") << terms << names;
    };
    const QString none = u"{}"_s;
    row("none", {}, "", none, none);
    row("known", {u"News"_s, u"#green"_s}, "", u"{\"category\": [\"5\"], \"post_tag\": [\"6\"]}"_s, none);
    row("known and new", {u"News"_s, u"Tea"_s}, "", u"{\"category\": [\"5\"]}"_s, u"{\"category\": [\"Tea\"]}"_s);
    row("known without id", {u"Idless"_s}, "", none, u"{\"category\": [\"Idless\"]}"_s);
    row("a tag is no category", {u"#News"_s}, "", none, u"{\"post_tag\": [\"News\"]}"_s);
    row("without account", {u"News"_s}, "noaccount", none, u"{\"category\": [\"News\"]}"_s);
    row("all by name", {u"News"_s}, "byname", none, u"{\"category\": [\"News\"]}"_s);
    row("update: became empty", {}, "update", u"{\"category\": [], \"post_tag\": []}"_s, none);
    row("update: tags became empty", {u"News"_s}, "update", u"{\"category\": [\"5\"], \"post_tag\": []}"_s, none);
    row("update: a new name is not empty", {u"Tea"_s}, "update", u"{\"post_tag\": []}"_s,
        u"{\"category\": [\"Tea\"]}"_s);
}

void PostParametersTest::partsTermsByWhatIsKnown()
{
    QFETCH(QStringList, taxonomies);
    QFETCH(bool, hasAccount);
    QFETCH(bool, isUpdate);
    QFETCH(bool, byName);
    const auto account = std::make_shared<Account>();
    for (const Taxonomy &known :
        {Taxonomy{u"News"_s, u"5"_s, 0}, Taxonomy{u"green"_s, u"6"_s, 1}, Taxonomy{u"Idless"_s, {}, 0}})
        account->taxonomies.append(std::make_shared<Taxonomy>(known));
    ZLWordpressPost post;
    post.setTaxonomiesFromStringArray(taxonomies);
    post.taxonomies.append({u"of no known kind"_s, {}, 7});
    const XMLRPCStruct content =
        PostParameters::forWPPost(post, {hasAccount ? account : nullptr, noImages, isUpdate, byName});
    QTEST(XMLRPCDocuments::described(*content.find(u"terms")), "terms");
    QTEST(XMLRPCDocuments::described(*content.find(u"terms_names")), "names");
    QFETCH(QString, terms);
    QCOMPARE(PostParameters::hasTermIds(content), terms.contains(u"\"5\"") || terms.contains(u"\"6\""));
}

void PostParametersTest::leavesOutWhatIsMissing()
{
    ZLWordpressPost post;
    post.allowPingback = false;
    QCOMPARE(XMLRPCDocuments::described(PostParameters::forWPPost(post, {nullptr, noImages})),
        u"{\"post_status\": \"publish\", \"post_type\": \"post\", \"terms\": {}, \"terms_names\": {}, "
        "\"comment_status\": \"open\", \"ping_status\": \"closed\", \"post_thumbnail\": \"0\"}"_s);
    post.title = u"T"_s;
    post.slug = u"own"_s;
    QCOMPARE(PostParameters::forWPPost(post, {nullptr, noImages}).find(u"post_name")->string(), u"own"_s);
}

void PostParametersTest::sendsTheBodyAsThePageGaveIt()
{
    // divisions of the blog's own that look like the page's containers
    ZLWordpressPost post;
    post.storedContent = u"<div class=\"intro\">A</div>\n<p>B</p>\n<div class=\"embed\">[gallery]</div>"_s;
    post.content = u"<div class=\"intro\">A</div>\n<p>C</p>\n<div class=\"embed\">[gallery]</div>"_s;
    QCOMPARE(PostParameters::forWPPost(post, {nullptr, noImages}).find(u"post_content")->string(), post.content);
    QCOMPARE(PostParameters::forPost(post).find(u"description")->string(), post.content);
}

void PostParametersTest::writesThePreviewStruct()
{
    ZLWordpressPost post;
    post.title = u"T"_s;
    post.content = u"c"_s;
    post.createdAt = QDateTime(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC);
    post.type = ZLWordpressPost::Page;
    post.allowComments = false;
    post.setTaxonomiesFromStringArray({u"News"_s, u"#green"_s});
    QCOMPARE(XMLRPCDocuments::described(PostParameters::forPost(post)),
        u"{\"title\": \"T\", \"description\": \"c\", \"date_created_gmt\": @20240301T10:00:00, "
        "\"post_status\": \"publish\", \"post_type\": \"page\", \"categories\": [\"News\"], "
        "\"mt_keywords\": [\"green\"], \"wp_slug\": \"T\", \"mt_allow_comments\": \"closed\", "
        "\"mt_allow_pings\": \"open\"}"_s);
}

static const RegisteredTest<PostParametersTest> registered;
#include "PostParametersTest.moc"
