#include "model/PostSync.h"
#include "support/Files.h"
#include "wordpress/ServiceFixture.h"

#include <QCoroTask>

namespace {
/// A blog with one post, which a sync has brought into its file.
struct FileFixture : ServiceFixture {
    explicit FileFixture(const QString &status = u"publish"_qs)
        : id(blog.addPost(u"Old"_qs, u"<p>one</p>"_qs).id)
    {
        onBlog().status = status;
        service->syncBlogPosts();
        settle();
        journal().clear();
        document = open(PostSync::postPath(environment.files.postPathForBlogURL(u"Ada"_qs, id)));
        blog.calls.clear();
    }

    const QString id;
    DocumentPtr document;

    FakeBlog::Post &onBlog() { return blog.posts[id]; }
    DocumentPtr open(const QString &path)
    {
        return QCoro::waitFor(environment.documents.openDocumentWithContentsOfURL(QUrl::fromLocalFile(path))).value();
    }
    PostPtr edited(const QString &text)
    {
        document->post.content = text;
        document->updateChangeCount();
        (void)document->saveDocument();
        return document->wordpressPost();
    }
    int publish(const PostPtr &post, Upload::Kind kind)
    {
        int outcome = -1;
        QObject::connect(service->syncCategoriesAndPublishPost(post, kind), &PostUpload::ended, service.get(),
            [&](const UploadOutcome &ended) { outcome = ended.kind; });
        settle();
        return outcome;
    }
    /// A post of this computer alone, with its file.
    PostPtr newPost()
    {
        const PostPtr post = ServiceFixture::post(u"New"_qs, u"<p>first</p>"_qs);
        const QString path = PostSync::postPath(environment.files.postPathForBlogURL(u"Ada"_qs, post->id));
        (void)post->saveAtPath(path);
        post->localFile = QUrl::fromLocalFile(path);
        return post;
    }
    void changeOnBlog(const std::function<void(FakeBlog::Post &)> &change)
    {
        blog.now = blog.now.addSecs(60);
        change(onBlog());
        onBlog().modified = blog.now;
    }
};
} // namespace

/// Uploads of posts that have files: what the file knows of the blog's version, and of a first publish.
class PostFileUploadTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsOnlyWhatChanged()
    {
        FileFixture f;
        FakeBlog::Post expected = f.onBlog();
        expected.date = f.onBlog().date = expected.date.addSecs(-17);
        QCOMPARE(f.publish(f.edited(u"<p>two</p>"_qs), Upload::Update), int(UploadOutcome::Updated));
        const XMLRPCStruct &content = f.blog.last(u"wp.editPost"_qs).parameters[4].structure();
        QStringList keys;
        for (const auto &member : content.members())
            keys.append(member.first);
        QCOMPARE(keys, (QStringList{u"post_content"_qs, u"if_not_modified_since"_qs}));
        expected.content = u"<p>two</p>"_qs;
        expected.modified = f.blog.now;
        QVERIFY(f.onBlog() == expected);
    }

    void leavesAStatusOfTheBlogsOwn()
    {
        const auto update = Upload::Update, publish = Upload::PublishDraft;
        for (const auto &[status, kind, after] : {std::tuple(u"private"_qs, update, u"private"_qs),
                 {u"pending"_qs, update, u"pending"_qs}, {u"pending"_qs, publish, u"publish"_qs}}) {
            for (const bool isKnown : {true, false}) {
                FileFixture f(status);
                const PostPtr post = f.edited(u"<p>two</p>"_qs);
                if (!isKnown)
                    post->synced.reset();
                if (kind == publish)
                    post->status = ZLWordpressPost::Publish;
                QCOMPARE(f.publish(post, kind), int(UploadOutcome::Updated));
                QCOMPARE(f.onBlog().status, after);
                QCOMPARE(f.onBlog().content, u"<p>two</p>"_qs);
                QCOMPARE(f.blog.posts.size(), 1);
            }
        }
    }

    void meetsANewerVersionOnTheBlog_data()
    {
        const TestTable<int, QString, std::function<void(FileFixture &)>> row({"outcome", "after", "change"});
        const QString one = u"<p>one</p>"_qs, mine = u"<p>mine</p>"_qs, theirs = u"<p>theirs</p>"_qs;
        const QDateTime tomorrow = QDateTime::currentDateTimeUtc().addDays(1);
        const int conflict = UploadOutcome::ConflictFound, updated = UploadOutcome::Updated;
        row("another text", conflict, theirs,
            [=](FileFixture &f) { f.changeOnBlog([&](auto &post) { post.content = theirs; }); });
        row("another title", conflict, one,
            [](FileFixture &f) { f.changeOnBlog([](auto &post) { post.title = u"New"_qs; }); });
        row("nothing that the writer sees", updated, mine, [](FileFixture &f) { f.changeOnBlog([](auto &) {}); });
        row("this very update, whose answer was lost", updated, mine,
            [=](FileFixture &f) { f.changeOnBlog([&](auto &post) { post.content = mine; }); });
        row("in the trash", UploadOutcome::Failed, one,
            [](FileFixture &f) { f.changeOnBlog([](auto &post) { post.status = u"trash"_qs; }); });
        row("scheduled: not looked at", updated, mine, [=](FileFixture &f) {
            f.changeOnBlog([&](auto &post) { post.date = tomorrow; });
            f.service->syncBlogPosts();
            f.settle();
            f.changeOnBlog([&](auto &post) { post.content = theirs; });
        });
        row("scheduled here", conflict, theirs, [=](FileFixture &f) {
            f.changeOnBlog([&](auto &post) { post.content = theirs; });
            f.document->post.createdAt = tomorrow;
        });
    }
    void meetsANewerVersionOnTheBlog()
    {
        QFETCH(std::function<void(FileFixture &)>, change);
        QFETCH(int, outcome);
        QFETCH(QString, after);
        FileFixture f;
        change(f);
        const PostPtr post = f.edited(u"<p>mine</p>"_qs);
        QCOMPARE(f.publish(post, Upload::Update), outcome);
        QCOMPARE(f.onBlog().content, after);
        const bool isConflict = outcome == UploadOutcome::ConflictFound;
        QCOMPARE(f.document->isInConflict(), isConflict);
        if (!isConflict)
            return;
        QCOMPARE(f.journal(), (QStringList{u"upload failed: Old"_qs, u"conflict: Old"_qs}));
        const DocumentPtr other = f.open(PostSync::conflictPath(f.document->fileURL().toLocalFile()));
        QCOMPARE(other->storedContent(), after);
        QCOMPARE(f.document->storedContent(), u"<p>mine</p>"_qs);
    }

    void looksOnTheBlogAfterAFirstPublishWithoutAnswer_data()
    {
        const TestTable<bool, std::function<void(FakeBlog &)>> row({"hasRestarted", "spoil"});
        const auto lost = [](FakeBlog &b) { b.answerCut(u"wp.newPost"_qs, 60); };
        row("it is there", false, lost);
        row("it is there, after a restart", true, lost);
        row("it is not there", true,
            [](FakeBlog &b) { b.breakConnection(u"wp.newPost"_qs, QNetworkReply::RemoteHostClosedError); });
        row("the copy could not be read", true, [](FakeBlog &b) { b.answerCut(u"wp.getPost"_qs, 60); });
    }
    void looksOnTheBlogAfterAFirstPublishWithoutAnswer()
    {
        QFETCH(bool, hasRestarted);
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        FileFixture f;
        const PostPtr post = f.newPost();
        spoil(f.blog);
        f.publish(post, Upload::NewPost);
        QCOMPARE(f.journal().filter(u"failed"_qs).size(), 2);

        PostPtr again = post;
        if (hasRestarted) {
            again = f.open(post->localFile.toLocalFile())->wordpressPost();
            QVERIFY(again->firstPublishBegan.isValid());
        }
        again->content = u"<p>second</p>"_qs;
        QCOMPARE(f.publish(again, Upload::NewPost), int(UploadOutcome::Published));
        QCOMPARE(f.blog.posts.size(), 2);
        QCOMPARE(f.blog.posts.last().content, u"<p>second</p>"_qs);
        QCOMPARE(f.delegate.remote->content, u"<p>second</p>"_qs);
        QVERIFY(!again->firstPublishBegan.isValid());
    }

    void forgetsAFirstPublishThatWasRefused()
    {
        FileFixture f;
        const PostPtr post = f.newPost();
        f.blog.answerWithFault(u"wp.newPost"_qs, 500, u"no"_qs);
        f.publish(post, Upload::NewPost);
        QVERIFY(!f.open(post->localFile.toLocalFile())->wordpressPost()->firstPublishBegan.isValid());
        f.publish(post, Upload::NewPost);
        QCOMPARE(f.blog.count(u"wp.getPosts"_qs), 0);
    }

    void keepsTheSentTextWhereTheBlogMadeAnother()
    {
        const QString sent = u"<p>a</p>\n<p>b</p>"_qs;
        // the same with other line ends, with white space around it, and cleaned of what the user may not write
        for (const QString &stored : {u"<p>a</p>\r\n<p>b</p>"_qs, u'\n' + sent + u' ', u"<p>a</p>"_qs}) {
            ServiceFixture f;
            f.blog.answerLate(u"wp.newPost"_qs);
            std::optional<UploadOutcome> outcome;
            QObject::connect(f.service->syncCategoriesAndPublishPost(f.post(u"T"_qs, sent), Upload::NewPost),
                &PostUpload::ended, f.service.get(), [&](const UploadOutcome &ended) { outcome = ended; });
            QTRY_COMPARE(f.environment.network.heldCount(), 1);
            f.blog.posts.first().content = stored;
            f.environment.network.release();
            QTRY_VERIFY(outcome);
            QCOMPARE(outcome->remote->content, sent); // line ends and outer white space do not come through the wire
            QCOMPARE(outcome->remote->storedContent, sent);
            const bool isOther = !stored.contains(u'b');
            QCOMPARE(outcome->blogVersion ? outcome->blogVersion->content : QString(), isOther ? stored : QString());
        }
    }
};

static const RegisteredTest<PostFileUploadTest> registered;
#include "PostFileUploadTest.moc"
