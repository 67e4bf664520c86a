#include "support/TestClasses.h"
#include "wordpress/ServiceFixture.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// A post without pictures on its way to the blog: content calls, their answers and failures.
class PublishingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void publishesANewPostAndReadsItBack();
    void updatesAPostWithoutReadingItBack_data();
    void updatesAPostWithoutReadingItBack();
    void sendsTheContentInTheSameTurn();
    void tellsFailures_data();
    void tellsFailures();
    void keepsThePostWhenTheReadBackIsUnusable_data();
    void keepsThePostWhenTheReadBackIsUnusable();
    void sendsTermsByNameWhenTheBlogRefusesAnId_data();
    void sendsTermsByNameWhenTheBlogRefusesAnId();
    void asksForALoginWhenTheSecondTryIsRefusedToo();
    void neverMakesAPublicCopyOfAPrivatePost();
    void clearsTheLastTermsOfAPost();
    void sendsAPageWithoutTerms();
    void deletesAPost();
    void makesAndRemovesAPreview();
    void makesACategoryAndThenPublishes();
    void dropsAnswersOfACancelledUpload_data();
    void dropsAnswersOfACancelledUpload();
};

namespace {
ZLTaxonomy category(const QString &name)
{
    return {name, {}, ZLTaxonomy::Category};
}
ZLTaxonomy tag(const QString &name)
{
    return {name, {}, ZLTaxonomy::Tag};
}

void addTaxonomy(const AccountPtr &account, const QString &name, int type, const QString &id)
{
    auto taxonomy = std::make_shared<Taxonomy>();
    taxonomy->name = name;
    taxonomy->taxonomy_type = type;
    taxonomy->taxonomy_id = id;
    account->taxonomies.append(taxonomy);
}

PostPtr stored(const FakeBlog::Post &onBlog)
{
    const PostPtr post = ServiceFixture::post(onBlog.title, onBlog.content);
    post->id = onBlog.id;
    post->status = ZLWordpressPost::Publish;
    post->slug = onBlog.slug;
    post->createdAt = onBlog.date;
    return post;
}
} // namespace

void PublishingTest::publishesANewPostAndReadsItBack()
{
    ServiceFixture f;
    const PostPtr post = f.post(u"Tea & cake"_s, u"<p>Ünïcode 🫖</p>"_s);
    post->createdAt = QDateTime(QDate(2024, 2, 29), QTime(8, 30), Qt::UTC);
    post->taxonomies = {category(u"R&D"_s), tag(u"green"_s)};
    f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::NewPost);
    QTRY_COMPARE(f.journal(),
        (QStringList{u"note: content Tea & cake"_s, u"published Tea & cake"_s, u"note: published Tea & cake"_s}));

    QCOMPARE(f.blog.methods(), (QStringList{u"wp.newPost"_s, u"wp.getPost"_s}));
    QCOMPARE(f.parameters(f.blog.calls[0]),
        u"[\"\", \"ada\", \"secret\", {\"post_title\": \"Tea & cake\", \"post_content\": \"<p>Ünïcode 🫖</p>\", "
        "\"post_date_gmt\": @20240229T08:30:00, \"post_status\": \"publish\", \"post_type\": \"post\", "
        "\"terms\": {}, \"terms_names\": {\"category\": [\"R&D\"], \"post_tag\": [\"green\"]}, "
        "\"post_name\": \"Tea & cake\", \"comment_status\": \"open\", \"ping_status\": \"open\", "
        "\"post_thumbnail\": \"0\"}]"_s);
    const FakeBlog::Post onBlog = f.blog.posts.first();
    QCOMPARE(f.parameters(f.blog.calls[1]), u"[\"\", \"ada\", \"secret\", \"%1\"]"_s.arg(onBlog.id));
    QCOMPARE(onBlog.content, u"<p>Ünïcode 🫖</p>"_s);
    QCOMPARE(onBlog.categories, QStringList{u"R&D"_s});

    const ZLWordpressPost &remote = *f.delegate.remote;
    QCOMPARE(remote.id, onBlog.id);
    QCOMPARE(remote.status, int(ZLWordpressPost::Publish));
    QCOMPARE(remote.createdAt, post->createdAt);
    QCOMPARE(remote.URL, QUrl(u"http://blog.test/?p="_s + onBlog.id));
    QCOMPARE(remote.taxonomies, (QList<ZLTaxonomy>{category(u"R&D"_s), tag(u"green"_s)}));
    QCOMPARE(post->id, u"q7Tz0kLm"_s);
}

void PublishingTest::updatesAPostWithoutReadingItBack_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("told");
    QTest::newRow("update") << 1 << u"updated Old"_s;
    QTest::newRow("draft made public") << 2 << u"published draft Old"_s;
}

void PublishingTest::updatesAPostWithoutReadingItBack()
{
    QFETCH(int, kind);
    QFETCH(QString, told);
    ServiceFixture f;
    const FakeBlog::Post before = f.blog.addPost(u"Old"_s, u"<p>one</p>"_s);
    const PostPtr post = stored(before);
    post->content = u"<p>two</p>"_s;
    f.service->syncCategoriesAndPublishPost(post, kind);
    QTRY_COMPARE(f.journal(), (QStringList{told, u"note: updated Old"_s}));
    f.settle();
    QCOMPARE(f.blog.methods(), QStringList{u"wp.editPost"_s});
    QCOMPARE(f.blog.calls[0].parameters[3].string(), before.id);
    FakeBlog::Post expected = before;
    expected.content = u"<p>two</p>"_s;
    expected.modified = f.blog.now;
    QVERIFY(f.blog.posts == (QMap<QString, FakeBlog::Post>{{before.id, expected}}));
}

void PublishingTest::sendsTheContentInTheSameTurn()
{
    ServiceFixture f;
    f.service->syncCategoriesAndPublishPost(f.post(u"T"_s, u"c"_s), ZLWordpressService::NewPost);
    QCOMPARE(f.blog.methods(), QStringList{u"wp.newPost"_s});
}

void PublishingTest::tellsFailures_data()
{
    using Spoil = std::function<void(FakeBlog &)>;
    QTest::addColumn<int>("kind");
    QTest::addColumn<std::function<void(FakeBlog &)>>("spoil");
    QTest::addColumn<QStringList>("journal");
    const QString upload = u"upload failed: Old"_s;
    const auto row = [](const char *name, int kind, const Spoil &spoil, const QStringList &journal) {
        QTest::newRow(name) << kind << spoil << journal;
    };
    row("new: fault", 0, [](FakeBlog &b) { b.answerWithFault(u"wp.newPost"_s, 500, u"no"_s); },
        {u"note: content Old"_s, upload, u"request 2 failed: Response error 500"_s});
    row("new: status", 0, [](FakeBlog &b) { b.answerWithStatus(u"wp.newPost"_s, 503); },
        {u"note: content Old"_s, upload, u"request 2 failed: HTTP 503"_s});
    row("new: answers 0", 0, [](FakeBlog &b) { b.answerWith(u"wp.newPost"_s, u"0"_s); },
        {u"note: content Old"_s, upload});
    row("new: cut off", 0, [](FakeBlog &b) { b.answerCut(u"wp.newPost"_s, 60); }, {u"note: content Old"_s, upload});
    row("new: read-back refused", 0, [](FakeBlog &b) { b.answerWithFault(u"wp.getPost"_s, 404, u"no"_s); },
        {u"note: content Old"_s, u"request 1 failed: Response error 404"_s});
    row("update: fault", 1, [](FakeBlog &b) { b.answerWithFault(u"wp.editPost"_s, 404, u"no"_s); },
        {upload, u"request 3 failed: Response error 404"_s});
    row("update: answers false", 1, [](FakeBlog &b) { b.answerWith(u"wp.editPost"_s, false); }, {upload});
    row("update: reset", 1,
        [](FakeBlog &b) { b.breakConnection(u"wp.editPost"_s, QNetworkReply::RemoteHostClosedError); },
        {upload, u"request 3 failed: NSURLErrorDomain -1005"_s});
    row("draft: fault", 2, [](FakeBlog &b) { b.answerWithFault(u"wp.editPost"_s, 401, u"no"_s); },
        {upload, u"request 4 failed: Response error 401"_s});
    row("draft: no XML", 2, [](FakeBlog &b) { b.answerWithBytes(u"wp.editPost"_s, "PHP Fatal error"); }, {upload});
    row("update: empty reply says nothing", 1, [](FakeBlog &b) { b.answerEmpty(u"wp.editPost"_s); }, {});
}

void PublishingTest::tellsFailures()
{
    QFETCH(int, kind);
    QFETCH(std::function<void(FakeBlog &)>, spoil);
    QFETCH(QStringList, journal);
    ServiceFixture f;
    const PostPtr post = stored(f.blog.addPost(u"Old"_s, u"text"_s));
    spoil(f.blog);
    f.service->syncCategoriesAndPublishPost(post, kind);
    f.settle();
    QCOMPARE(f.journal(), journal);
    QCOMPARE(post->content, u"text"_s);
}

void PublishingTest::keepsThePostWhenTheReadBackIsUnusable_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("cut off") << QByteArray("<?xml version=\"1.0\"?><methodResponse><params><param><value><struct>");
    QTest::newRow("another kind") << XMLRPCDocuments::response(true);
    QTest::newRow("no id") << XMLRPCDocuments::response(XMLRPCStruct{{u"post_title"_s, u"x"_s}});
}

void PublishingTest::keepsThePostWhenTheReadBackIsUnusable()
{
    QFETCH(QByteArray, reply);
    ServiceFixture f;
    f.blog.answerWithBytes(u"wp.getPost"_s, reply);
    f.service->syncCategoriesAndPublishPost(f.post(u"T"_s, u"c"_s), ZLWordpressService::NewPost);
    QTRY_COMPARE(
        f.journal(), (QStringList{u"note: content T"_s, u"upload failed: T"_s, u"request 1 failed: ZLUpload 2"_s}));
}

void PublishingTest::sendsTermsByNameWhenTheBlogRefusesAnId_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("told");
    QTest::newRow("new") << 0 << u"wp.newPost"_s << u"note: published Old"_s;
    QTest::newRow("update") << 1 << u"wp.editPost"_s << u"note: updated Old"_s;
    QTest::newRow("draft made public") << 2 << u"wp.editPost"_s << u"note: updated Old"_s;
}

void PublishingTest::sendsTermsByNameWhenTheBlogRefusesAnId()
{
    QFETCH(int, kind);
    QFETCH(QString, method);
    QFETCH(QString, told);
    ServiceFixture f;
    addTaxonomy(f.account, u"News"_s, ZLTaxonomy::Category, f.blog.addTerm(u"category"_s, u"News"_s));
    addTaxonomy(f.account, u"gone"_s, ZLTaxonomy::Tag, u"999"_s);
    const PostPtr post = stored(f.blog.addPost(u"Old"_s, u"text"_s));
    post->taxonomies = {category(u"News"_s), tag(u"gone"_s)};
    f.service->syncCategoriesAndPublishPost(post, kind);
    QTRY_COMPARE(f.journal().value(f.journal().size() - 1), told);
    QVERIFY(f.journal().filter(u"failed"_s).isEmpty());
    QCOMPARE(f.blog.count(method), 2);
    const FakeBlog::Post onBlog = f.blog.posts.last();
    QCOMPARE(onBlog.categories, QStringList{u"News"_s});
    QCOMPARE(onBlog.tags, QStringList{u"gone"_s});
}

void PublishingTest::asksForALoginWhenTheSecondTryIsRefusedToo()
{
    ServiceFixture f;
    addTaxonomy(f.account, u"News"_s, ZLTaxonomy::Category, u"5"_s);
    const PostPtr post = stored(f.blog.addPost(u"Old"_s, u"text"_s));
    post->taxonomies = {category(u"News"_s)};
    f.service->password = u"changed meanwhile"_s;
    f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::Update);
    QTRY_COMPARE(f.journal(), (QStringList{u"upload failed: Old"_s, u"request 3 failed: Response error 403"_s}));
    f.settle();
    QCOMPARE(f.blog.count(u"wp.editPost"_s), 2);
}

void PublishingTest::neverMakesAPublicCopyOfAPrivatePost()
{
    ServiceFixture f;
    FakeBlog::Post &secret = f.blog.addPost(u"Secret"_s, u"text"_s);
    secret.status = u"private"_s;
    f.service->getPost(secret.id, f.post(u"any"_s, {}));
    QTRY_VERIFY(f.delegate.remote);
    const PostPtr post = f.delegate.remote;
    QCOMPARE(post->status, int(ZLWordpressPost::Draft)); // which the compose screen publishes as an update
    f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::PublishDraft);
    QTRY_VERIFY(f.journal().contains(u"note: updated Secret"_s));
    QCOMPARE(f.blog.posts.size(), 1);
    QCOMPARE(f.blog.count(u"wp.newPost"_s), 0);
}

void PublishingTest::clearsTheLastTermsOfAPost()
{
    ServiceFixture f;
    FakeBlog::Post &onBlog = f.blog.addPost(u"Old"_s, u"text"_s);
    onBlog.categories = QStringList{u"Uncategorized"_s};
    onBlog.tags = QStringList{u"green"_s, u"blue"_s};
    const PostPtr post = stored(onBlog);
    post->taxonomies = {category(u"Uncategorized"_s)};
    f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::Update);
    QTRY_COMPARE(f.journal().size(), 2);
    QCOMPARE(f.blog.posts[post->id].tags, QStringList());
    QCOMPARE(f.blog.posts[post->id].categories, QStringList{u"Uncategorized"_s});
}

void PublishingTest::sendsAPageWithoutTerms()
{
    ServiceFixture f;
    const PostPtr page = f.post(u"About"_s, u"text"_s);
    page->type = ZLWordpressPost::Page;
    page->taxonomies = {category(u"News"_s), tag(u"green"_s)};
    f.service->syncCategoriesAndPublishPost(page, ZLWordpressService::NewPost);
    QTRY_VERIFY(f.journal().contains(u"note: published About"_s));
    QCOMPARE(f.blog.posts.first().type, u"page"_s);
    const XMLRPCStruct &content = f.blog.calls[0].parameters[3].structure();
    QVERIFY(!content.find(u"terms") && !content.find(u"terms_names"));
}

void PublishingTest::deletesAPost()
{
    ServiceFixture f;
    const PostPtr post = stored(f.blog.addPost(u"Old"_s, u"text"_s));
    f.service->deletePost(post);
    QTRY_COMPARE(f.journal(), QStringList{u"deleted Old"_s});
    QVERIFY(f.blog.posts.isEmpty());
    f.blog.answerWith(u"wp.deletePost"_s, false);
    f.service->deletePost(post);
    QTRY_COMPARE(f.journal().size(), 2); // told as done, whatever the answer says
}

void PublishingTest::makesAndRemovesAPreview()
{
    ServiceFixture f;
    f.service->publishPostForPreview(f.post(u"T"_s, u"a<!--more-->b"_s));
    QVERIFY(f.service->isGeneratingPreview);
    QTRY_COMPARE(f.journal(), QStringList{u"preview of T"_s});
    QCOMPARE(f.blog.methods(), (QStringList{u"metaWeblog.newPost"_s, u"metaWeblog.getPost"_s}));
    QCOMPARE(f.blog.calls[0].parameters.size(), size_t(4));
    f.service->deletePostForPreview(f.delegate.remote);
    QTRY_VERIFY(f.blog.posts.isEmpty());
    f.settle();
    QCOMPARE(f.journal().size(), 1);
}

void PublishingTest::makesACategoryAndThenPublishes()
{
    ServiceFixture f;
    f.service->syncCategory(u"Tea"_s, f.post(u"T"_s, u"c"_s), ZLWordpressService::NewPost);
    QTRY_VERIFY(f.journal().contains(u"note: published T"_s));
    QCOMPARE(f.blog.methods(), (QStringList{u"wp.newCategory"_s, u"wp.newPost"_s, u"wp.getPost"_s}));
}

void PublishingTest::dropsAnswersOfACancelledUpload_data()
{
    QTest::addColumn<QString>("method");
    QTest::newRow("content") << u"wp.newPost"_s;
    QTest::newRow("read-back") << u"wp.getPost"_s;
}

void PublishingTest::dropsAnswersOfACancelledUpload()
{
    QFETCH(QString, method);
    ServiceFixture f;
    f.blog.answerLate(method);
    const PostPtr post = f.post(u"T"_s, u"c"_s);
    f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::NewPost);
    QTRY_COMPARE(f.environment.network.heldCount(), 1);
    f.service->cancelUploadOfPost(post);
    f.environment.network.release();
    f.settle();
    QCOMPARE(f.journal(), QStringList{u"note: content T"_s});
}

static const RegisteredTest<PublishingTest> registered;
#include "PublishingTest.moc"
