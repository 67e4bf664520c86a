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
        const TestTable<int, QString, QString, QString> row({"status", "blogStatus", "wp", "metaWeblog"});
        const QString publish = u"publish"_qs;
        const QString draft = u"draft"_qs;
        row("new", 0, {}, publish, publish);
        row("draft", 1, {}, draft, draft);
        row("published", 2, {}, publish, publish);
        row("private", 2, u"private"_qs, u"private"_qs, publish);
        row("pending", 1, u"pending"_qs, u"pending"_qs, draft);
        row("pending and published now", 2, u"pending"_qs, publish, publish);
        row("private and a draft now", 1, u"private"_qs, draft, draft);
        row("note", 3, {}, publish, draft);
        row("none", -1, {}, draft, draft);
    }

    void sendsStatuses()
    {
        ZLWordpressPost post;
        QFETCH(int, status);
        post.status = status;
        QFETCH(QString, blogStatus);
        post.blogStatus = blogStatus;
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
        const XMLRPCStruct content = PostParameters::forWPPost(post,
            {.account = hasAccount ? account : nullptr,
                .syncedWPImages = noImages,
                .isUpdate = isUpdate,
                .termsByName = byName});
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

    void sendsWhatTheWriterChanged_data()
    {
        const TestTable<std::function<void(ZLWordpressPost &)>, QString> row({"change", "sent"});
        row("nothing", [](auto &) {}, {});
        row(
            "title", [](auto &p) { p.title = u"New"_qs; }, u"\"post_title\": \"New\""_qs);
        row(
            "body", [](auto &p) { p.content = u"two"_qs; }, u"\"post_content\": \"two\""_qs);
        row("seconds of the date", [](auto &p) { p.createdAt = p.createdAt.addSecs(-7); }, {});
        row(
            "date", [](auto &p) { p.createdAt = p.createdAt.addSecs(60); },
            u"\"post_date_gmt\": @20240301T10:01:07"_qs);
        row(
            "made a draft", [](auto &p) { p.status = ZLWordpressPost::Draft; }, u"\"post_status\": \"draft\""_qs);
        row("order of terms", [](auto &p) { std::reverse(p.taxonomies.begin(), p.taxonomies.end()); }, {});
        row(
            "a tag more",
            [](auto &p) {
                p.taxonomies.append({u"blue"_qs, {}, ZLTaxonomy::Tag});
            },
            u"\"terms\": {\"post_tag\": [\"6\"]}, \"terms_names\": {\"post_tag\": [\"blue\"]}"_qs);
        row(
            "no tag", [](auto &p) { p.taxonomies.removeLast(); },
            u"\"terms\": {\"post_tag\": []}, \"terms_names\": {}"_qs);
        row(
            "a category more beside two of one name",
            [](auto &p) {
                p.taxonomies.append({u"Tea"_qs, {}, ZLTaxonomy::Category});
            },
            u"\"terms\": {\"category\": [\"11\", \"12\"]}, \"terms_names\": {\"category\": [\"Tea\"]}"_qs);
        row(
            "slug", [](auto &p) { p.slug = u"new"_qs; }, u"\"post_name\": \"new\""_qs);
        row(
            "comments", [](auto &p) { p.allowComments = false; }, u"\"comment_status\": \"closed\""_qs);
        row(
            "pings", [](auto &p) { p.allowPingback = false; }, u"\"ping_status\": \"closed\""_qs);
        row(
            "featured picture", [](auto &p) { p.featuredImageId = u"9"_qs; }, u"\"post_thumbnail\": \"9\""_qs);
    }

    void sendsWhatTheWriterChanged()
    {
        QFETCH(std::function<void(ZLWordpressPost &)>, change);
        ZLWordpressPost post;
        post.title = u"T"_qs;
        post.content = u"one"_qs;
        post.slug = u"t"_qs;
        post.status = ZLWordpressPost::Publish;
        post.createdAt = QDateTime(QDate(2024, 3, 1), QTime(10, 0, 7), Qt::UTC);
        post.taxonomies = {{u"News"_qs, u"11"_qs, 0}, {u"News"_qs, u"12"_qs, 0}, {u"green"_qs, u"6"_qs, 1}};
        post.synced = std::make_shared<ZLWordpressPost>(post);
        change(post);
        const XMLRPCStruct content =
            PostParameters::forWPPost(post, {.account = nullptr, .syncedWPImages = noImages, .isUpdate = true});
        QFETCH(QString, sent);
        QCOMPARE(XMLRPCDocuments::described(content), u'{' + sent + u'}');
        // What is not known to be there goes out whole.
        post.synced.reset();
        QCOMPARE(PostParameters::forWPPost(post, {.account = nullptr, .syncedWPImages = noImages, .isUpdate = true})
                     .members()
                     .size(),
            size_t(11));
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
            "\"mt_keywords\": [\"green\"], \"mt_allow_comments\": \"closed\", "
            "\"mt_allow_pings\": \"open\"}"_qs);
    }
};

static const RegisteredTest<PostParametersTest> registered;
#include "PostParametersTest.moc"
