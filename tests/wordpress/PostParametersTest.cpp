#include "wordpress/PostParameters.h"
#include "support/TestClasses.h"
#include "support/XMLRPCDocuments.h"

namespace {
const QHash<QString, ZLWordpressImage> noImages;
}

/// From posts to the structs that the blog takes.
class PostParametersTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsStatuses_data()
    {
        const TestTable<int, QString, QString> row({"status", "wp", "metaWeblog"});
        row("new", 0, u"publish"_qs, u"publish"_qs);
        row("draft", 1, u"draft"_qs, u"draft"_qs);
        row("published", 2, u"publish"_qs, u"publish"_qs);
        row("note", 3, u"publish"_qs, u"draft"_qs);
        row("none", -1, u"draft"_qs, u"draft"_qs);
    }

    void sendsStatuses()
    {
        ZLWordpressPost post;
        QFETCH(int, status);
        post.status = status;
        const XMLRPCValue wp = PostParameters::forWPPost(post, {nullptr, noImages});
        QTEST(wp[u"post_status"].string(), "wp");
        QTEST(XMLRPCValue(PostParameters::forPost(post))[u"post_status"].string(), "metaWeblog");
    }

    void partsTermsByWhatIsKnown_data()
    {
        addColumns<QStringList, bool, bool, bool, QString>({"taxonomies", "hasAccount", "isUpdate", "byName", "terms"});
        QTest::addColumn<QString>("names");
        const auto row = [](const char *name, const QStringList &taxonomies, const char *flags, const QString &terms,
                             const QString &names) {
            const QByteArray set(flags);
            QTest::newRow(name) << taxonomies << !set.contains("noaccount") << set.contains("update")
                                << set.contains("byname") << terms << names;
        };
        const QString none = u"{}"_qs;
        row("none", {}, "", none, none);
        row("known", {u"News"_qs, u"#green"_qs}, "", u"{\"category\": [\"5\"], \"post_tag\": [\"6\"]}"_qs, none);
        row("known and new", {u"News"_qs, u"Tea"_qs}, "", u"{\"category\": [\"5\"]}"_qs,
            u"{\"category\": [\"Tea\"]}"_qs);
        row("known without id", {u"Idless"_qs}, "", none, u"{\"category\": [\"Idless\"]}"_qs);
        row("a tag is no category", {u"#News"_qs}, "", none, u"{\"post_tag\": [\"News\"]}"_qs);
        row("without account", {u"News"_qs}, "noaccount", none, u"{\"category\": [\"News\"]}"_qs);
        row("all by name", {u"News"_qs}, "byname", none, u"{\"category\": [\"News\"]}"_qs);
        row("update: became empty", {}, "update", u"{\"category\": [], \"post_tag\": []}"_qs, none);
        row("update: tags became empty", {u"News"_qs}, "update", u"{\"category\": [\"5\"], \"post_tag\": []}"_qs, none);
        row("update: a new name is not empty", {u"Tea"_qs}, "update", u"{\"post_tag\": []}"_qs,
            u"{\"category\": [\"Tea\"]}"_qs);
    }

    void partsTermsByWhatIsKnown()
    {
        QFETCH(QStringList, taxonomies);
        QFETCH(bool, hasAccount);
        QFETCH(bool, isUpdate);
        QFETCH(bool, byName);
        const auto account = std::make_shared<Account>();
        for (const Taxonomy &known :
            {Taxonomy{u"News"_qs, u"5"_qs, 0}, Taxonomy{u"green"_qs, u"6"_qs, 1}, Taxonomy{u"Idless"_qs, {}, 0}})
            account->taxonomies.append(std::make_shared<Taxonomy>(known));
        ZLWordpressPost post;
        post.setTaxonomiesFromStringArray(taxonomies);
        post.taxonomies.append({u"of no known kind"_qs, {}, 7});
        const XMLRPCStruct content =
            PostParameters::forWPPost(post, {hasAccount ? account : nullptr, noImages, isUpdate, byName});
        QTEST(XMLRPCDocuments::described(*content.find(u"terms")), "terms");
        QTEST(XMLRPCDocuments::described(*content.find(u"terms_names")), "names");
        QFETCH(QString, terms);
        QCOMPARE(PostParameters::hasTermIds(content), terms.contains(u"\"5\"") || terms.contains(u"\"6\""));
    }

    void leavesOutWhatIsMissing()
    {
        ZLWordpressPost post;
        post.allowPingback = false;
        QCOMPARE(XMLRPCDocuments::described(PostParameters::forWPPost(post, {nullptr, noImages})),
            u"{\"post_status\": \"publish\", \"post_type\": \"post\", \"terms\": {}, \"terms_names\": {}, "
            "\"comment_status\": \"open\", \"ping_status\": \"closed\", \"post_thumbnail\": \"0\"}"_qs);
        post.title = u"T"_qs;
        post.slug = u"own"_qs;
        QCOMPARE(PostParameters::forWPPost(post, {nullptr, noImages}).find(u"post_name")->string(), u"own"_qs);
    }

    void sendsTheBodyAsThePageGaveIt()
    {
        // divisions of the blog's own that look like the page's containers
        ZLWordpressPost post;
        post.storedContent = u"<div class=\"intro\">A</div>\n<p>B</p>\n<div class=\"embed\">[gallery]</div>"_qs;
        post.content = u"<div class=\"intro\">A</div>\n<p>C</p>\n<div class=\"embed\">[gallery]</div>"_qs;
        QCOMPARE(PostParameters::forWPPost(post, {nullptr, noImages}).find(u"post_content")->string(), post.content);
        QCOMPARE(PostParameters::forPost(post).find(u"description")->string(), post.content);
    }

    void writesThePreviewStruct()
    {
        ZLWordpressPost post;
        post.title = u"T"_qs;
        post.content = u"c"_qs;
        post.createdAt = QDateTime(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC);
        post.type = ZLWordpressPost::Page;
        post.allowComments = false;
        post.setTaxonomiesFromStringArray({u"News"_qs, u"#green"_qs});
        QCOMPARE(XMLRPCDocuments::described(PostParameters::forPost(post)),
            u"{\"title\": \"T\", \"description\": \"c\", \"date_created_gmt\": @20240301T10:00:00, "
            "\"post_status\": \"publish\", \"post_type\": \"page\", \"categories\": [\"News\"], "
            "\"mt_keywords\": [\"green\"], \"wp_slug\": \"T\", \"mt_allow_comments\": \"closed\", "
            "\"mt_allow_pings\": \"open\"}"_qs);
    }
};

static const RegisteredTest<PostParametersTest> registered;
#include "PostParametersTest.moc"
