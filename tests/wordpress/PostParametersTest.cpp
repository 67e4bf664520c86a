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
    void sendsStatuses()
    {
        const auto sent = [](int status, const QString &blogStatus) {
            ZLWordpressPost post;
            post.status = status;
            post.blogStatus = blogStatus;
            return XMLRPCValue(PostParameters::forWPPost(post, {nullptr, noImages}))[u"post_status"].string() + u' '
                + XMLRPCValue(PostParameters::forPost(post))[u"post_status"].string();
        };
        QCOMPARE(sent(ZLWordpressPost::New, {}), u"publish publish"_qs);
        QCOMPARE(sent(ZLWordpressPost::Draft, {}), u"draft draft"_qs);
        QCOMPARE(sent(ZLWordpressPost::Publish, {}), u"publish publish"_qs);
        QCOMPARE(sent(ZLWordpressPost::Publish, u"private"_qs), u"private publish"_qs);
        QCOMPARE(sent(ZLWordpressPost::Draft, u"pending"_qs), u"pending draft"_qs);
        QCOMPARE(sent(ZLWordpressPost::Publish, u"pending"_qs), u"publish publish"_qs); // published now
        QCOMPARE(sent(ZLWordpressPost::Draft, u"private"_qs), u"draft draft"_qs); // a draft now
        QCOMPARE(sent(ZLWordpressPost::Note, {}), u"publish draft"_qs);
        QCOMPARE(sent(-1, {}), u"draft draft"_qs);
    }

    void partsTermsByWhatIsKnown()
    {
        const auto account = std::make_shared<Account>();
        for (const Taxonomy &known :
            {Taxonomy{u"News"_qs, u"5"_qs, 0}, Taxonomy{u"green"_qs, u"6"_qs, 1}, Taxonomy{u"Idless"_qs, {}, 0}})
            account->taxonomies.append(std::make_shared<Taxonomy>(known));
        PostParameters::Surroundings surroundings{.account = account, .syncedWPImages = noImages};
        const auto sent = [&surroundings](const QStringList &taxonomies) {
            ZLWordpressPost post;
            post.setTaxonomiesFromStringArray(taxonomies);
            post.taxonomies.append({u"of no known kind"_qs, {}, 7});
            const XMLRPCStruct content = PostParameters::forWPPost(post, surroundings);
            const QString ids = XMLRPCDocuments::described(*content.find(u"terms"));
            if (PostParameters::hasTermIds(content) != (ids.contains(u"\"5\"") || ids.contains(u"\"6\"")))
                qFatal("the ids in %s", qPrintable(ids));
            return QString(ids + u' ' + XMLRPCDocuments::described(*content.find(u"terms_names"))).remove(u'"');
        };
        QCOMPARE(sent({}), u"{} {}"_qs);
        QCOMPARE(sent({u"News"_qs, u"#green"_qs}), u"{category: [5], post_tag: [6]} {}"_qs);
        QCOMPARE(sent({u"News"_qs, u"Tea"_qs}), u"{category: [5]} {category: [Tea]}"_qs);
        QCOMPARE(sent({u"Idless"_qs}), u"{} {category: [Idless]}"_qs);
        QCOMPARE(sent({u"#News"_qs}), u"{} {post_tag: [News]}"_qs); // a tag is no category
        surroundings.isUpdate = true;
        QCOMPARE(sent({}), u"{category: [], post_tag: []} {}"_qs);
        QCOMPARE(sent({u"News"_qs}), u"{category: [5], post_tag: []} {}"_qs);
        QCOMPARE(sent({u"Tea"_qs}), u"{post_tag: []} {category: [Tea]}"_qs);
        surroundings.isUpdate = false;
        surroundings.termsByName = true;
        QCOMPARE(sent({u"News"_qs}), u"{} {category: [News]}"_qs);
        surroundings.termsByName = false;
        surroundings.account = nullptr;
        QCOMPARE(sent({u"News"_qs}), u"{} {category: [News]}"_qs);
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
        const TestTable<QString, std::function<void(ZLWordpressPost &)>> row({"sent", "change"});
        row("nothing", {}, [](auto &) {});
        row("title", u"post_title: New"_qs, [](auto &p) { p.title = u"New"_qs; });
        row("body", u"post_content: two"_qs, [](auto &p) { p.content = u"two"_qs; });
        row("seconds of the date", {}, [](auto &p) { p.createdAt = p.createdAt.addSecs(-7); });
        row("date", u"post_date_gmt: @20240301T10:01:07"_qs, [](auto &p) { p.createdAt = p.createdAt.addSecs(60); });
        row("made a draft", u"post_status: draft"_qs, [](auto &p) { p.status = ZLWordpressPost::Draft; });
        row("order of terms", {}, [](auto &p) { std::reverse(p.taxonomies.begin(), p.taxonomies.end()); });
        row("a tag more", u"terms: {post_tag: [6]}, terms_names: {post_tag: [blue]}"_qs, [](auto &p) {
            p.taxonomies += ZLTaxonomy{u"blue"_qs, {}, ZLTaxonomy::Tag};
        });
        row("no tag", u"terms: {post_tag: []}, terms_names: {}"_qs, [](auto &p) { p.taxonomies.removeLast(); });
        row("a category more beside two of one name", u"terms: {category: [11, 12]}, terms_names: {category: [Tea]}"_qs,
            [](auto &p) {
                p.taxonomies += ZLTaxonomy{u"Tea"_qs, {}, ZLTaxonomy::Category};
            });
        row("slug", u"post_name: new"_qs, [](auto &p) { p.slug = u"new"_qs; });
        row("comments", u"comment_status: closed"_qs, [](auto &p) { p.allowComments = false; });
        row("pings", u"ping_status: closed"_qs, [](auto &p) { p.allowPingback = false; });
        row("featured picture", u"post_thumbnail: 9"_qs, [](auto &p) { p.featuredImageId = u"9"_qs; });
    }
    void sendsWhatTheWriterChanged()
    {
        QFETCH(std::function<void(ZLWordpressPost &)>, change);
        QFETCH(QString, sent);
        ZLWordpressPost post;
        post.title = u"T"_qs;
        post.content = u"one"_qs;
        post.slug = u"t"_qs;
        post.status = ZLWordpressPost::Publish;
        post.createdAt = QDateTime(QDate(2024, 3, 1), QTime(10, 0, 7), Qt::UTC);
        post.taxonomies = {{u"News"_qs, u"11"_qs, 0}, {u"News"_qs, u"12"_qs, 0}, {u"green"_qs, u"6"_qs, 1}};
        post.synced = std::make_shared<ZLWordpressPost>(post);
        change(post);
        const auto content = [&post] {
            return PostParameters::forWPPost(post, {.account = nullptr, .syncedWPImages = noImages, .isUpdate = true});
        };
        QCOMPARE(XMLRPCDocuments::described(content()).remove(u'"'), u'{' + sent + u'}');
        post.synced.reset(); // What is not known to be there goes out whole.
        QCOMPARE(content().members().size(), size_t(11));
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
