#include "wordpress/ServiceFixture.h"

#include <QSignalSpy>

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
        f.service->syncCategoriesAndPublishPost(post, Upload::NewPost);
        QTRY_COMPARE(f.journal(),
            (QStringList{
                u"note: content Tea & cake"_qs, u"published Tea & cake"_qs, u"note: published Tea & cake"_qs}));

        QCOMPARE(f.blog.methods(), (QStringList{u"wp.newPost"_qs, u"wp.getPost"_qs}));
        QCOMPARE(f.parameters(f.blog.calls[0]),
            u"[\"\", \"ada\", \"secret\", {\"post_title\": \"Tea & cake\", \"post_content\": \"<p>Ünïcode "
            u"🫖</p>\", "
            "\"post_date_gmt\": @20240229T08:30:00, \"post_status\": \"publish\", \"post_type\": \"post\", "
            "\"terms\": {}, \"terms_names\": {\"category\": [\"R&D\"], \"post_tag\": [\"green\"]}, "
            "\"comment_status\": \"open\", \"ping_status\": \"open\", "
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
        QCOMPARE(remote.taxonomiesArray(), (QStringList{u"R&D"_qs, u"#green"_qs}));
        QCOMPARE(remote.slug, u"tea-&-cake"_qs);
        QCOMPARE(post->id, u"q7Tz0kLm"_qs);
    }

    void updatesAPostWithoutReadingItBack()
    {
        for (const Upload::Kind kind : {Upload::Update, Upload::PublishDraft}) {
            ServiceFixture f;
            FakeBlog::Post &before = f.blog.addPost(u"Old"_qs, u"<p>one</p>"_qs);
            before.categories = QStringList{u"Uncategorized"_qs};
            before.tags = QStringList{u"green"_qs, u"blue"_qs};
            FakeBlog::Post expected = before;
            const PostPtr post = stored(before);
            post->content = u"<p>two</p>"_qs;
            post->taxonomies = {category(u"Uncategorized"_qs)}; // the last tags go
            f.service->syncCategoriesAndPublishPost(post, kind);
            QTRY_COMPARE(f.journal(), QStringList{kind == Upload::Update ? u"updated Old"_qs : u"published draft Old"_qs});
            f.settle();
            QCOMPARE(f.blog.methods(), QStringList{u"wp.editPost"_qs});
            expected.content = u"<p>two</p>"_qs;
            expected.tags.clear();
            expected.modified = f.blog.now;
            QVERIFY(f.blog.posts == (QMap<QString, FakeBlog::Post>{{expected.id, expected}}));
        }
    }

    void tellsFailures_data()
    {
        const QString upload = u"upload failed: Old"_qs;
        const TestTable<int, std::function<void(FakeBlog &)>, QStringList, int> row(
            {"kind", "spoil", "journal", "outcome"});
        const auto failed = [&](int type, const QString &error) {
            return QStringList{upload, u"request %1 failed: %2"_qs.arg(type).arg(error)};
        };
        const auto failedNew = [&](int type, const QString &error) {
            return QStringList{u"note: content Old"_qs} + failed(type, error);
        };
        const auto lost = QNetworkReply::RemoteHostClosedError;
        const QString unreadable = u"NSURLErrorDomain -1017"_qs;
        row(
            "new: fault", 0, [](FakeBlog &b) { b.answerWithFault(u"wp.newPost"_qs, 500, u"no"_qs); },
            failedNew(2, u"Response error 500"_qs), UploadOutcome::Failed);
        row(
            "new: answers 0", 0, [](FakeBlog &b) { b.answerWith(u"wp.newPost"_qs, u"0"_qs); },
            failedNew(2, u"ZLUpload 6"_qs), UploadOutcome::Failed);
        row(
            "new: cut off", 0, [](FakeBlog &b) { b.answerCut(u"wp.newPost"_qs, 60); }, failedNew(2, unreadable),
            UploadOutcome::Unclear);
        const auto row1 = [&](const char *name, const std::function<void(FakeBlog &)> &spoil) {
            row(name, 0, spoil, failedNew(1, u"ZLUpload 2"_qs), UploadOutcome::Published);
        };
        row1("read-back refused", [](FakeBlog &b) { b.answerWithFault(u"wp.getPost"_qs, 404, u"no"_qs); });
        row1("read-back cut off", [](FakeBlog &b) { b.answerCut(u"wp.getPost"_qs, 150); });
        row1("read-back of another kind", [](FakeBlog &b) { b.answerWith(u"wp.getPost"_qs, true); });
        const auto answer = [](const QString &id, const QString &status, const QString &type) {
            return [=](FakeBlog &b) {
                b.answerWith(u"wp.getPost"_qs,
                    XMLRPCStruct{{u"post_id"_qs, id}, {u"post_title"_qs, u"x"_qs}, {u"post_status"_qs, status},
                        {u"post_type"_qs, type}});
            };
        };
        const QString made = u"103"_qs;
        row1("read-back without id", answer({}, u"publish"_qs, u"post"_qs));
        row1("read-back of another post", answer(u"7"_qs, u"publish"_qs, u"post"_qs));
        row1("read-back from the trash", answer(made, u"trash"_qs, u"post"_qs));
        row1("read-back of a page", answer(made, u"publish"_qs, u"page"_qs));
        row(
            "update: fault", 1, [](FakeBlog &b) { b.answerWithFault(u"wp.editPost"_qs, 404, u"no"_qs); },
            failed(3, u"Response error 404"_qs), UploadOutcome::Failed);
        row(
            "update: answers false", 1, [](FakeBlog &b) { b.answerWith(u"wp.editPost"_qs, false); },
            failed(3, u"ZLUpload 6"_qs), UploadOutcome::Failed);
        row(
            "update: reset", 1, [=](FakeBlog &b) { b.breakConnection(u"wp.editPost"_qs, lost); },
            failed(3, u"NSURLErrorDomain -1005"_qs), UploadOutcome::Unclear);
        row(
            "draft: no XML", 2, [](FakeBlog &b) { b.answerWithBytes(u"wp.editPost"_qs, "PHP Fatal error"); },
            failed(4, unreadable), UploadOutcome::Unclear);
    }

    void tellsFailures()
    {
        QFETCH(int, kind);
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        QFETCH(QStringList, journal);
        ServiceFixture f;
        const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
        spoil(f.blog);
        int outcome = -1;
        QObject::connect(f.service->syncCategoriesAndPublishPost(post, Upload::Kind(kind)), &PostUpload::ended, f.service.get(),
            [&](const UploadOutcome &ended) { outcome = ended.kind; });
        f.settle();
        QCOMPARE(f.journal(), journal);
        QTEST(outcome, "outcome");
        QCOMPARE(post->content, u"text"_qs);
        if (outcome == UploadOutcome::Unclear && f.delegate.error.code == -1017)
            QCOMPARE(f.delegate.error.description, u"The blog's answer could not be read; the post may be there"_qs);
    }

    void sendsTermsByNameWhenTheBlogRefusesAnId()
    {
        const QStringList told{u"note: published Old"_qs, u"updated Old"_qs, u"published draft Old"_qs};
        for (const auto kind : {Upload::NewPost, Upload::Update, Upload::PublishDraft}) {
            ServiceFixture f;
            f.addTaxonomy(ZLTaxonomy::Category, u"News"_qs, f.blog.addTerm(u"category"_qs, u"News"_qs));
            f.addTaxonomy(ZLTaxonomy::Tag, u"gone"_qs, u"999"_qs);
            const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
            post->taxonomies = {category(u"News"_qs), tag(u"gone"_qs)};
            f.service->syncCategoriesAndPublishPost(post, kind);
            QTRY_COMPARE(f.journal().value(f.journal().size() - 1), told[kind]);
            QVERIFY(f.journal().filter(u"failed"_qs).isEmpty());
            QCOMPARE(f.blog.count(kind == Upload::NewPost ? u"wp.newPost"_qs : u"wp.editPost"_qs), 2);
            QCOMPARE(f.blog.posts.last().categories, QStringList{u"News"_qs});
            QCOMPARE(f.blog.posts.last().tags, QStringList{u"gone"_qs});
        }
    }

    void asksForALoginWhenTheSecondTryIsRefusedToo()
    {
        ServiceFixture f;
        f.addTaxonomy(ZLTaxonomy::Category, u"News"_qs, u"5"_qs);
        const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
        post->taxonomies = {category(u"News"_qs)};
        f.service->password = u"changed meanwhile"_qs;
        f.service->syncCategoriesAndPublishPost(post, Upload::Update);
        QTRY_COMPARE(f.journal(), (QStringList{u"upload failed: Old"_qs, u"request 3 failed: Response error 403"_qs}));
        f.settle();
        QCOMPARE(f.blog.count(u"wp.editPost"_qs), 2);
    }

    void sendsAPageWithoutTerms()
    {
        ServiceFixture f;
        const PostPtr page = f.post(u"About"_qs, u"text"_qs);
        page->type = ZLWordpressPost::Page;
        page->taxonomies = {category(u"News"_qs), tag(u"green"_qs)};
        f.service->syncCategoriesAndPublishPost(page, Upload::NewPost);
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
        f.service->deletePost(post); // a second call would empty the trash
        QTRY_COMPARE(f.journal(), QStringList{u"deleted Old"_qs});
        QCOMPARE(f.blog.posts.first().status, u"trash"_qs);
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
        f.settle();
        QCOMPARE(f.blog.posts.first().status, u"trash"_qs);
        QCOMPARE(f.journal().size(), 1);
    }

    void dropsAnswersOfACancelledUpload()
    {
        for (const QString &method : {u"wp.newPost"_qs, u"wp.getPost"_qs}) {
            ServiceFixture f;
            f.blog.answerLate(method);
            const PostPtr post = f.post(u"T"_qs, u"c"_qs);
            post->createdAt = f.blog.now.addDays(-1);
            f.service->syncCategoriesAndPublishPost(post, Upload::NewPost);
            QTRY_COMPARE(f.environment.network.heldCount(), 1);
            QSignalSpy said(&f.environment.notifications, &ZLNotifications::didFailToUploadPost);
            QList<int> outcomes;
            QObject::connect(f.service->uploads().first(), &PostUpload::ended, f.service.get(),
                [&](const UploadOutcome &ended) { outcomes.append(ended.kind); });
            f.service->cancelUploadOfPost(post);
            f.environment.network.release();
            f.settle();
            QCOMPARE(f.journal(), QStringList{u"note: content T"_qs});
            QCOMPARE(outcomes, QList<int>{UploadOutcome::Cancelled});
            QCOMPARE(said.size(), 1); // its row is drawn without the mark
            f.service->syncCategoriesAndPublishPost(post, Upload::NewPost); // looks on the blog first
            QTRY_VERIFY(f.journal().contains(u"note: published T"_qs));
            QCOMPARE(f.blog.posts.size(), 1);
        }
    }
};

static const RegisteredTest<PublishingTest> registered;
#include "PublishingTest.moc"
