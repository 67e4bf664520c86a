#include "wordpress/ServiceFixture.h"

namespace {
ZLTaxonomy category(const QString &name)
{
    return {name, {}, ZLTaxonomy::Category};
}
ZLTaxonomy tag(const QString &name)
{
    return {name, {}, ZLTaxonomy::Tag};
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

/// A post without pictures on its way to the blog: content calls, their answers and failures.
class PublishingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void publishesANewPostAndReadsItBack()
    {
        ServiceFixture f;
        const PostPtr post = f.post(u"Tea & cake"_qs, u"<p>Ünïcode 🫖</p>"_qs);
        post->createdAt = QDateTime(QDate(2024, 2, 29), QTime(8, 30), Qt::UTC);
        post->taxonomies = {category(u"R&D"_qs), tag(u"green"_qs)};
        f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::NewPost);
        QCOMPARE(f.blog.methods(), QStringList{u"wp.newPost"_qs}); // in the same turn
        QTRY_COMPARE(f.journal(),
            (QStringList{
                u"note: content Tea & cake"_qs, u"published Tea & cake"_qs, u"note: published Tea & cake"_qs}));

        QCOMPARE(f.blog.methods(), (QStringList{u"wp.newPost"_qs, u"wp.getPost"_qs}));
        QCOMPARE(f.parameters(f.blog.calls[0]),
            u"[\"\", \"ada\", \"secret\", {\"post_title\": \"Tea & cake\", \"post_content\": \"<p>Ünïcode "
            u"🫖</p>\", "
            "\"post_date_gmt\": @20240229T08:30:00, \"post_status\": \"publish\", \"post_type\": \"post\", "
            "\"terms\": {}, \"terms_names\": {\"category\": [\"R&D\"], \"post_tag\": [\"green\"]}, "
            "\"post_name\": \"Tea & cake\", \"comment_status\": \"open\", \"ping_status\": \"open\", "
            "\"post_thumbnail\": \"0\"}]"_qs);
        const FakeBlog::Post onBlog = f.blog.posts.first();
        QCOMPARE(f.parameters(f.blog.calls[1]), u"[\"\", \"ada\", \"secret\", \"%1\"]"_qs.arg(onBlog.id));
        QCOMPARE(onBlog.content, u"<p>Ünïcode 🫖</p>"_qs);
        QCOMPARE(onBlog.categories, QStringList{u"R&D"_qs});

        const ZLWordpressPost &remote = *f.delegate.remote;
        QCOMPARE(remote.id, onBlog.id);
        QCOMPARE(remote.status, int(ZLWordpressPost::Publish));
        QCOMPARE(remote.createdAt, post->createdAt);
        QCOMPARE(remote.URL, u"http://blog.test/?p="_qs + onBlog.id);
        QCOMPARE(remote.taxonomies, (QList<ZLTaxonomy>{category(u"R&D"_qs), tag(u"green"_qs)}));
        QCOMPARE(post->id, u"q7Tz0kLm"_qs);
    }

    void updatesAPostWithoutReadingItBack_data()
    {
        const TestTable<int, QString> row({"kind", "told"});
        row("update", 1, u"updated Old"_qs);
        row("draft made public", 2, u"published draft Old"_qs);
    }

    void updatesAPostWithoutReadingItBack()
    {
        QFETCH(int, kind);
        QFETCH(QString, told);
        ServiceFixture f;
        FakeBlog::Post &before = f.blog.addPost(u"Old"_qs, u"<p>one</p>"_qs);
        before.categories = QStringList{u"Uncategorized"_qs};
        before.tags = QStringList{u"green"_qs, u"blue"_qs};
        FakeBlog::Post expected = before;
        const PostPtr post = stored(before);
        post->content = u"<p>two</p>"_qs;
        post->taxonomies = {category(u"Uncategorized"_qs)}; // the last tags go
        f.service->syncCategoriesAndPublishPost(post, kind);
        QTRY_COMPARE(f.journal(), (QStringList{told, u"note: updated Old"_qs}));
        f.settle();
        QCOMPARE(f.blog.methods(), QStringList{u"wp.editPost"_qs});
        QCOMPARE(f.blog.calls[0].parameters[3].string(), expected.id);
        expected.content = u"<p>two</p>"_qs;
        expected.tags.clear();
        expected.modified = f.blog.now;
        QVERIFY(f.blog.posts == (QMap<QString, FakeBlog::Post>{{expected.id, expected}}));
    }

    void tellsFailures_data()
    {
        const QString upload = u"upload failed: Old"_qs;
        const TestTable<int, std::function<void(FakeBlog &)>, QStringList> row({"kind", "spoil", "journal"});
        row("new: fault", 0, [](FakeBlog &b) { b.answerWithFault(u"wp.newPost"_qs, 500, u"no"_qs); },
            {u"note: content Old"_qs, upload, u"request 2 failed: Response error 500"_qs});
        row("new: status", 0, [](FakeBlog &b) { b.answerWithStatus(u"wp.newPost"_qs, 503); },
            {u"note: content Old"_qs, upload, u"request 2 failed: HTTP 503"_qs});
        row("new: answers 0", 0, [](FakeBlog &b) { b.answerWith(u"wp.newPost"_qs, u"0"_qs); },
            {u"note: content Old"_qs, upload});
        row("new: cut off", 0, [](FakeBlog &b) { b.answerCut(u"wp.newPost"_qs, 60); },
            {u"note: content Old"_qs, upload, u"request 2 failed: NSURLErrorDomain -1017"_qs});
        row("new: read-back refused", 0, [](FakeBlog &b) { b.answerWithFault(u"wp.getPost"_qs, 404, u"no"_qs); },
            {u"note: content Old"_qs, u"request 1 failed: Response error 404"_qs});
        const QStringList unusable{u"note: content Old"_qs, upload, u"request 1 failed: ZLUpload 2"_qs};
        row(
            "new: read-back cut off", 0, [](FakeBlog &b) { b.answerCut(u"wp.getPost"_qs, 150); }, unusable);
        row(
            "new: read-back of another kind", 0, [](FakeBlog &b) { b.answerWith(u"wp.getPost"_qs, true); }, unusable);
        row(
            "new: read-back without id", 0,
            [](FakeBlog &b) {
                b.answerWith(u"wp.getPost"_qs, XMLRPCStruct{{u"post_title"_qs, u"x"_qs}});
            },
            unusable);
        row("update: fault", 1, [](FakeBlog &b) { b.answerWithFault(u"wp.editPost"_qs, 404, u"no"_qs); },
            {upload, u"request 3 failed: Response error 404"_qs});
        row("update: answers false", 1, [](FakeBlog &b) { b.answerWith(u"wp.editPost"_qs, false); }, {upload});
        row("update: reset", 1,
            [](FakeBlog &b) { b.breakConnection(u"wp.editPost"_qs, QNetworkReply::RemoteHostClosedError); },
            {upload, u"request 3 failed: NSURLErrorDomain -1005"_qs});
        row("draft: fault", 2, [](FakeBlog &b) { b.answerWithFault(u"wp.editPost"_qs, 401, u"no"_qs); },
            {upload, u"request 4 failed: Response error 401"_qs});
        row("draft: no XML", 2, [](FakeBlog &b) { b.answerWithBytes(u"wp.editPost"_qs, "PHP Fatal error"); },
            {upload, u"request 4 failed: NSURLErrorDomain -1017"_qs});
        row("update: empty reply", 1, [](FakeBlog &b) { b.answerEmpty(u"wp.editPost"_qs); },
            {upload, u"request 3 failed: NSURLErrorDomain -1017"_qs});
    }

    void tellsFailures()
    {
        QFETCH(int, kind);
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        QFETCH(QStringList, journal);
        ServiceFixture f;
        const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
        spoil(f.blog);
        f.service->syncCategoriesAndPublishPost(post, kind);
        f.settle();
        QCOMPARE(f.journal(), journal);
        QCOMPARE(post->content, u"text"_qs);
    }

    void sendsTermsByNameWhenTheBlogRefusesAnId_data()
    {
        const TestTable<int, QString, QString> row({"kind", "method", "told"});
        row("new", 0, u"wp.newPost"_qs, u"note: published Old"_qs);
        row("update", 1, u"wp.editPost"_qs, u"note: updated Old"_qs);
        row("draft made public", 2, u"wp.editPost"_qs, u"note: updated Old"_qs);
    }

    void sendsTermsByNameWhenTheBlogRefusesAnId()
    {
        QFETCH(int, kind);
        QFETCH(QString, method);
        QFETCH(QString, told);
        ServiceFixture f;
        f.addTaxonomy(ZLTaxonomy::Category, u"News"_qs, f.blog.addTerm(u"category"_qs, u"News"_qs));
        f.addTaxonomy(ZLTaxonomy::Tag, u"gone"_qs, u"999"_qs);
        const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
        post->taxonomies = {category(u"News"_qs), tag(u"gone"_qs)};
        f.service->syncCategoriesAndPublishPost(post, kind);
        QTRY_COMPARE(f.journal().value(f.journal().size() - 1), told);
        QVERIFY(f.journal().filter(u"failed"_qs).isEmpty());
        QCOMPARE(f.blog.count(method), 2);
        const FakeBlog::Post onBlog = f.blog.posts.last();
        QCOMPARE(onBlog.categories, QStringList{u"News"_qs});
        QCOMPARE(onBlog.tags, QStringList{u"gone"_qs});
    }

    void asksForALoginWhenTheSecondTryIsRefusedToo()
    {
        ServiceFixture f;
        f.addTaxonomy(ZLTaxonomy::Category, u"News"_qs, u"5"_qs);
        const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
        post->taxonomies = {category(u"News"_qs)};
        f.service->password = u"changed meanwhile"_qs;
        f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::Update);
        QTRY_COMPARE(f.journal(), (QStringList{u"upload failed: Old"_qs, u"request 3 failed: Response error 403"_qs}));
        f.settle();
        QCOMPARE(f.blog.count(u"wp.editPost"_qs), 2);
    }

    void neverMakesAPublicCopyOfAPrivatePost()
    {
        ServiceFixture f;
        FakeBlog::Post &secret = f.blog.addPost(u"Secret"_qs, u"text"_qs);
        secret.status = u"private"_qs;
        f.service->getPost(secret.id, f.post(u"any"_qs, {}));
        QTRY_VERIFY(f.delegate.remote);
        const PostPtr post = f.delegate.remote;
        QCOMPARE(post->status, int(ZLWordpressPost::Draft)); // which the compose screen publishes as an update
        f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::PublishDraft);
        QTRY_VERIFY(f.journal().contains(u"note: updated Secret"_qs));
        QCOMPARE(f.blog.posts.size(), 1);
        QCOMPARE(f.blog.count(u"wp.newPost"_qs), 0);
    }

    void sendsAPageWithoutTerms()
    {
        ServiceFixture f;
        const PostPtr page = f.post(u"About"_qs, u"text"_qs);
        page->type = ZLWordpressPost::Page;
        page->taxonomies = {category(u"News"_qs), tag(u"green"_qs)};
        f.service->syncCategoriesAndPublishPost(page, ZLWordpressService::NewPost);
        QTRY_VERIFY(f.journal().contains(u"note: published About"_qs));
        QCOMPARE(f.blog.posts.first().type, u"page"_qs);
        const XMLRPCStruct &content = f.blog.calls[0].parameters[3].structure();
        QVERIFY(!content.find(u"terms") && !content.find(u"terms_names"));
    }

    void deletesAPost()
    {
        ServiceFixture f;
        const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
        f.service->deletePost(post);
        QTRY_COMPARE(f.journal(), QStringList{u"deleted Old"_qs});
        QVERIFY(f.blog.posts.isEmpty());
        f.blog.answerWith(u"wp.deletePost"_qs, false);
        f.service->deletePost(post);
        QTRY_COMPARE(f.journal().size(), 2); // told as done, whatever the answer says
        f.blog.answerCut(u"wp.deletePost"_qs, 60);
        f.service->deletePost(post);
        QTRY_COMPARE(f.journal().last(), u"request 5 failed: NSURLErrorDomain -1017"_qs);
    }

    void makesAndRemovesAPreview()
    {
        ServiceFixture f;
        f.service->publishPostForPreview(f.post(u"T"_qs, u"a<!--more-->b"_qs));
        QVERIFY(f.service->isGeneratingPreview);
        QTRY_COMPARE(f.journal(), QStringList{u"preview of T"_qs});
        QCOMPARE(f.blog.methods(), (QStringList{u"metaWeblog.newPost"_qs, u"metaWeblog.getPost"_qs}));
        QCOMPARE(f.blog.calls[0].parameters.size(), size_t(4));
        f.service->deletePostForPreview(f.delegate.remote);
        QTRY_VERIFY(f.blog.posts.isEmpty());
        f.settle();
        QCOMPARE(f.journal().size(), 1);
    }

    void makesACategoryAndThenPublishes()
    {
        ServiceFixture f;
        f.service->syncCategory(u"Tea"_qs, f.post(u"T"_qs, u"c"_qs), ZLWordpressService::NewPost);
        QTRY_VERIFY(f.journal().contains(u"note: published T"_qs));
        QCOMPARE(f.blog.methods(), (QStringList{u"wp.newCategory"_qs, u"wp.newPost"_qs, u"wp.getPost"_qs}));
    }

    void dropsAnswersOfACancelledUpload_data()
    {
        const TestTable<QString> row({"method"});
        row("content", u"wp.newPost"_qs);
        row("read-back", u"wp.getPost"_qs);
    }

    void dropsAnswersOfACancelledUpload()
    {
        QFETCH(QString, method);
        ServiceFixture f;
        f.blog.answerLate(method);
        const PostPtr post = f.post(u"T"_qs, u"c"_qs);
        f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::NewPost);
        QTRY_COMPARE(f.environment.network.heldCount(), 1);
        f.service->cancelUploadOfPost(post);
        f.environment.network.release();
        f.settle();
        QCOMPARE(f.journal(), QStringList{u"note: content T"_qs});
    }
};

static const RegisteredTest<PublishingTest> registered;
#include "PublishingTest.moc"
