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
        const FakeBlog::Post onBlog = f.blog.posts.first();
        QCOMPARE(onBlog.title, u"Tea & cake"_qs);
        QCOMPARE(onBlog.date, post->createdAt);
        QCOMPARE(onBlog.content, u"<p>Ünïcode 🫖</p>"_qs);
        QCOMPARE(onBlog.categories, QStringList{u"R&D"_qs});

        const ZLWordpressPost &remote = *f.delegate.remote;
        QCOMPARE(remote.id, onBlog.id);
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
            QTRY_COMPARE(
                f.journal(), QStringList{kind == Upload::Update ? u"updated Old"_qs : u"published draft Old"_qs});
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
        using Outcome = UploadOutcome::Kind;
        const TestTable<int, QString, Outcome, std::function<void(FakeBlog &)>> row(
            {"kind", "failure", "outcome", "spoil"});
        const auto failed = UploadOutcome::Failed, unclear = UploadOutcome::Unclear;
        const QString unreadable = u"NSURLErrorDomain -1017"_qs;
        const QString create = u"wp.newPost"_qs, edit = u"wp.editPost"_qs, get = u"wp.getPost"_qs;
        row("new: fault", 0, u"2: Response error 500"_qs, failed,
            [=](FakeBlog &b) { b.answerWithFault(create, 500, u"no"_qs); });
        row("new: answers 0", 0, u"2: ZLUpload 6"_qs, failed, [=](FakeBlog &b) { b.answerWith(create, u"0"_qs); });
        row("new: cut off", 0, u"2: "_qs + unreadable, unclear, [=](FakeBlog &b) { b.answerCut(create, 60); });
        row("update: fault", 1, u"3: Response error 404"_qs, failed,
            [=](FakeBlog &b) { b.answerWithFault(edit, 404, u"no"_qs); });
        row("update: answers false", 1, u"3: ZLUpload 6"_qs, failed, [=](FakeBlog &b) { b.answerWith(edit, false); });
        row("update: reset", 1, u"3: NSURLErrorDomain -1005"_qs, unclear,
            [=](FakeBlog &b) { b.breakConnection(edit, QNetworkReply::RemoteHostClosedError); });
        row("draft: no XML", 2, u"4: "_qs + unreadable, unclear,
            [=](FakeBlog &b) { b.answerWithBytes(edit, "PHP Fatal error"); });
        const auto readBack = [&](const char *name, const std::function<void(FakeBlog &)> &spoil) {
            row(name, 0, u"1: ZLUpload 2"_qs, UploadOutcome::Published, spoil);
        };
        readBack("read-back refused", [=](FakeBlog &b) { b.answerWithFault(get, 404, u"no"_qs); });
        readBack("read-back cut off", [=](FakeBlog &b) { b.answerCut(get, 150); });
        readBack("read-back of another kind", [=](FakeBlog &b) { b.answerWith(get, true); });
        const auto answer = [=](const QString &id, const QString &status, const QString &type) {
            return [=](FakeBlog &b) {
                b.answerWith(get,
                    XMLRPCStruct{{u"post_id"_qs, id}, {u"post_title"_qs, u"x"_qs}, {u"post_status"_qs, status},
                        {u"post_type"_qs, type}});
            };
        };
        const QString made = u"103"_qs;
        readBack("read-back without id", answer({}, u"publish"_qs, u"post"_qs));
        readBack("read-back of another post", answer(u"7"_qs, u"publish"_qs, u"post"_qs));
        readBack("read-back from the trash", answer(made, u"trash"_qs, u"post"_qs));
        readBack("read-back of a page", answer(made, u"publish"_qs, u"page"_qs));
    }
    void tellsFailures()
    {
        QFETCH(int, kind);
        QFETCH(QString, failure);
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        ServiceFixture f;
        const PostPtr post = stored(f.blog.addPost(u"Old"_qs, u"text"_qs));
        spoil(f.blog);
        UploadOutcome::Kind outcome{};
        QObject::connect(f.service->syncCategoriesAndPublishPost(post, Upload::Kind(kind)), &PostUpload::ended,
            f.service.get(), [&](const UploadOutcome &ended) { outcome = ended.kind; });
        f.settle();
        QStringList told{u"upload failed: Old"_qs, u"request "_qs + failure.replace(u":"_qs, u" failed:"_qs)};
        if (kind == Upload::NewPost)
            told.prepend(u"note: content Old"_qs);
        QCOMPARE(f.journal(), told);
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
