#include "ConnectedBlog.h"

#include <QSignalSpy>
#include <QThreadPool>

namespace {

/// Two blogs without posts; the first is current.
struct SecondBlog : ConnectedBlog {
    SecondBlog()
    {
        seedAccount(u"Other"_qs, other.url());
        start();
    }
};

constexpr int publish = ZLWordpressPost::Publish, draft = ZLWordpressPost::Draft;
constexpr int post = ZLWordpressPost::Post, page = ZLWordpressPost::Page;

bool has(const QByteArray &file, const QString &text)
{
    return QString::fromUtf8(file).contains(text);
}

} // namespace

class OutcomesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void publishes_data()
    {
        const TestTable<int, int, int, int, QString> row({"status", "type", "daysAhead", "rowStatus", "message"});
        row("post", publish, post, 0, 0, u"Successfully Published Post"_qs);
        row("page", publish, page, 0, 2, u"Successfully Published Page"_qs);
        row("scheduled post", publish, post, 365, 8, u"Successfully Scheduled Post"_qs);
        row("scheduled page", publish, page, 365, 8, u"Successfully Scheduled Page"_qs);
        row("draft", draft, post, 0, 1, u"Successfully Saved Draft"_qs);
    }

    void publishes()
    {
        QFETCH(int, status);
        QFETCH(int, type);
        QFETCH(int, daysAhead);
        ConnectedBlog fixture;
        fixture.start();
        const PostPtr post = fixture.writePost(u"Title & more"_qs, u"<p>text</p>"_qs);
        post->status = status;
        post->type = type;
        post->createdAt = fixture.clock.present.addDays(daysAhead);
        const LocalPostPtr row = post->localPost;
        const QUrl before = row->localFile;
        fixture.send(post, Upload::NewPost);

        const QString id = fixture.blog.posts.firstKey();
        QTEST(row->status, "rowStatus");
        QCOMPARE(row->published, status == ZLWordpressPost::Publish);
        QTEST(fixture.titlesDelivered(), "message");
        QCOMPARE(fixture.notifications.delivered.first().subtitle, u"on Blog"_qs);
        QCOMPARE(fixture.notifications.delivered.first().URL.isEmpty(), status == ZLWordpressPost::Draft);
        QVERIFY(fixture.workspace.opened.isEmpty());

        // The file has moved to the blog's number, and says what the row says.
        QCOMPARE(fixture.postFiles(u"Blog"_qs), QStringList{u"p%1/post.zalmo"_qs.arg(id)});
        QVERIFY(QFileInfo(before.toLocalFile()).dir().exists()); // the folder of its random id stays
        const QByteArray file = fixture.read(u"Blog"_qs, u"p%1/post.zalmo"_qs.arg(id));
        QVERIFY(has(file, u"<title>Title &amp; more</title><content>&lt;p&gt;text&lt;/p&gt;</content>"_qs));
        QVERIFY(has(file,
            u"<engine>wordpress</engine><id>%1</id><status>%2</status>"_qs.arg(
                id, status == ZLWordpressPost::Publish ? u"publish"_qs : u"draft"_qs)));
        QVERIFY(has(file, u"<file_info><status></status><app_version>3</app_version></file_info>"_qs));
        const FakePostList::Update &update = fixture.list.updated.first();
        QCOMPARE(update.row, row);
        QCOMPARE(update.previousLocalURL, before);
        QCOMPARE(update.post->id, id);
        QCOMPARE(fixture.rows(), QList<LocalPostPtr>{row});
    }

    void publishesADraftOfTheBlog()
    {
        ConnectedBlog fixture;
        fixture.blog.addPost(u"Other"_qs, u"<p>x</p>"_qs);
        FakeBlog::Post &draft = fixture.blog.addPost(u"Draft"_qs, u"<p>text</p>"_qs);
        draft.status = u"draft"_qs;
        const QString id = draft.id;
        fixture.start();
        fixture.defaults->setObjectForKey(true, u"openBrowserAfterPublish"_qs);

        const LocalPostPtr row = fixture.rowTitled(u"Draft"_qs);
        const PostPtr post = fixture.postOf(row);
        post->status = ZLWordpressPost::Publish;
        post->content = u"<p>new text</p>"_qs;
        post->createdAt = fixture.clock.present.addDays(10);
        fixture.send(post, Upload::PublishDraft);
        QCOMPARE(row->status, int(ZLLocalPostRepresentation::Scheduled));
        QCOMPARE(fixture.titlesDelivered(), u"Successfully Published Post"_qs);
        QCOMPARE(fixture.workspace.opened, QList<QUrl>{QUrl(post->URL)});
        QCOMPARE(fixture.rows().first(), row);
        const QByteArray file = fixture.read(u"Blog"_qs, u"p%1/post.zalmo"_qs.arg(id));
        QVERIFY(has(file, u"<status>publish</status>"_qs));
        QVERIFY(has(file, u"new text"_qs));
        fixture.app().posts().loadLocalPosts();
        QCOMPARE(fixture.rowTitled(u"Draft"_qs)->status, int(ZLLocalPostRepresentation::Scheduled));
    }

    void updates_data()
    {
        const TestTable<int, int, int, int, QString> row({"status", "type", "daysAhead", "rowStatus", "message"});
        row("post", publish, post, -1, 0, u"Successfully Updated Post"_qs);
        row("page", publish, page, -1, 2, u"Successfully Updated Page"_qs);
        row("scheduled", publish, post, 9, 8, u"Successfully Scheduled Post"_qs);
        row("back to draft", draft, post, -1, 1, u"Successfully Updated Draft."_qs);
    }

    void updates()
    {
        QFETCH(int, status);
        QFETCH(int, type);
        QFETCH(int, daysAhead);
        ConnectedBlog fixture;
        const bool isPage = type == ZLWordpressPost::Page;
        const QString id = fixture.blog.addPost(u"Old"_qs, u"<p>text</p>"_qs, isPage ? u"page"_qs : u"post"_qs).id;
        fixture.start();
        fixture.defaults->setObjectForKey(true, u"openBrowserAfterPublish"_qs);
        const LocalPostPtr row = fixture.rowTitled(u"Old"_qs);
        const PostPtr post = fixture.postOf(row);
        post->title = u"New"_qs;
        post->content = u"<p>other text</p>"_qs;
        post->status = status;
        post->createdAt = fixture.clock.present.addDays(daysAhead);
        fixture.send(post, Upload::Update);

        QCOMPARE(fixture.blog.posts[id].content, u"<p>other text</p>"_qs);
        QTEST(row->status, "rowStatus");
        QCOMPARE(row->published, status == ZLWordpressPost::Publish);
        QTEST(fixture.titlesDelivered(), "message");
        QVERIFY(fixture.workspace.opened.isEmpty()); // not after an update
        const QByteArray file = fixture.read(u"Blog"_qs, u"p%1/post.zalmo"_qs.arg(id));
        QVERIFY(has(file, u"<title>New</title><content>&lt;p&gt;other text&lt;/p&gt;</content>"_qs));
        QVERIFY(has(file, u"<file_info><status></status>"_qs));
    }

    void knowsItsOwnUpdateAtTheNextSync_data()
    {
        const TestTable<int, bool, bool, bool, QString, bool> row(
            {"kind", "isDated", "isEditedHere", "isEditedThere", "text", "isConflict"});
        const int update = Upload::Update;
        row("here only", update, true, true, false, u"mine"_qs, false);
        row("draft made public", Upload::PublishDraft, true, true, false, u"mine"_qs, false);
        row("no date in the reply", update, false, true, false, u"mine"_qs, false);
        row("no date in the reply, here and there", update, false, true, true, u"mine"_qs, true);
        row("here and there", update, true, true, true, u"mine"_qs, true);
        row("there only", update, true, false, true, u"theirs"_qs, false);
    }

    void knowsItsOwnUpdateAtTheNextSync()
    {
        QFETCH(int, kind);
        QFETCH(bool, isDated);
        QFETCH(bool, isEditedHere);
        QFETCH(bool, isEditedThere);
        QFETCH(bool, isConflict);
        ConnectedBlog fixture;
        const QString id = fixture.blog.addPost(u"T"_qs, u"<p>old</p>"_qs).id;
        fixture.start();
        const PostPtr post = fixture.postOf(fixture.rowTitled(u"T"_qs));
        fixture.blog.isDated = isDated;
        fixture.clock.present = fixture.clock.present.addDays(1); // where it counts, the blog's time does
        post->content = u"<p>sent</p>"_qs;
        fixture.send(post, Upload::Kind(kind));

        if (isEditedHere) {
            const DocumentPtr document = *ZLDocument::open(post->localPost->localFile);
            document->post.content = u"mine"_qs;
            document->fileInfo.status = u"modified"_qs;
            QVERIFY(document->saveDocument());
        }
        if (isEditedThere) {
            fixture.blog.posts[id].content = u"theirs"_qs;
            fixture.blog.posts[id].modified = fixture.blog.now.addSecs(1);
        }
        fixture.app().rounds().syncAllBlogs();
        QTRY_VERIFY(!fixture.list.isSyncing);
        QFETCH(QString, text);
        QVERIFY(has(fixture.read(u"Blog"_qs, u"p%1/post.zalmo"_qs.arg(id)), u"<content>%1</content>"_qs.arg(text)));
        // The post, what the blog last gave while it has changes, and the blog's other version.
        QCOMPARE(fixture.postFiles(u"Blog"_qs).size(), isConflict ? 3 : isEditedHere ? 2 : 1);
    }

    void staysSilentWhenNotAllowed()
    {
        ConnectedBlog fixture;
        fixture.start();
        fixture.app().currentBlog().selectedAccount()->preferences->allow_notifications = false;
        fixture.defaults->setObjectForKey(true, u"openBrowserAfterPublish"_qs);
        PostPtr post = fixture.writePost(u"One"_qs, u"<p>x</p>"_qs);
        post->status = ZLWordpressPost::Publish;
        fixture.send(post, Upload::NewPost);
        QCOMPARE(fixture.titlesDelivered(), QString());
        QCOMPARE(fixture.workspace.opened.size(), 1); // the browser has a setting of its own

        fixture.app().currentBlog().selectedAccount()->preferences->allow_notifications = true;
        fixture.defaults->setObjectForKey(false, u"notifyPublish"_qs);
        post = fixture.writePost(u"Two"_qs, u"<p>x</p>"_qs);
        post->status = ZLWordpressPost::Publish;
        fixture.send(post, Upload::NewPost);
        QCOMPARE(fixture.titlesDelivered(), QString());
    }

    void comesHomeToItsOwnBlog()
    {
        SecondBlog fixture;
        const PostPtr post = fixture.writePost(u"On its way"_qs, u"<p>x</p>"_qs);
        fixture.sendLate(post, u"wp.newPost"_qs);
        fixture.app().currentBlog().selectorDidChange(2);
        fixture.network.release();
        QTRY_COMPARE(fixture.list.updated.size(), 1);
        QCOMPARE(fixture.postFiles(u"Blog"_qs), QStringList{u"p%1/post.zalmo"_qs.arg(fixture.blog.posts.firstKey())});
        QCOMPARE(fixture.postFiles(u"Other"_qs), QStringList());
        QCOMPARE(fixture.rows().size(), 0); // the rows are those of the current blog
    }

    void goesOnToItsOwnBlog_data()
    {
        QTest::addColumn<QString>("late"); // the call whose answer comes after the change
        QTest::addColumn<int>("kind");
        const QString picture = u"metaWeblog.newMediaObject"_qs;
        QTest::newRow("picture, new") << picture << 0;
        QTest::newRow("picture, update") << picture << 1;
        QTest::newRow("content") << u"wp.newPost"_qs << 0;
        QTest::newRow("read-back") << u"wp.getPost"_qs << 0;
    }

    void goesOnToItsOwnBlog()
    {
        QFETCH(QString, late);
        QFETCH(int, kind);
        SecondBlog fixture;
        const QString picture = fixture.files.cacheFolder() + u"/a.gif"_qs;
        writeFile(picture, "GIF89a");
        const PostPtr post = fixture.writePost(u"On its way"_qs, u"<img src=\"file://localhost%1\" />"_qs.arg(picture));
        // A post of the same number is on the other blog.
        post->id = fixture.other.addPost(u"Stranger"_qs, u"<p>theirs</p>"_qs).id;
        if (kind == Upload::Update)
            fixture.blog.posts[post->id].id = post->id;
        fixture.sendLate(post, late, Upload::Kind(kind));
        fixture.other.calls.clear();
        fixture.app().currentBlog().selectAccount(fixture.accounts().at(1));
        fixture.network.release();
        QTRY_COMPARE(fixture.list.updated.size(), 1);
        QCOMPARE(fixture.other.calls.size(), 0);
        QCOMPARE(fixture.blog.posts.last().title, u"On its way"_qs);
        QCOMPARE(fixture.postFiles(u"Blog"_qs).size(), 1);
        QCOMPARE(fixture.postFiles(u"Other"_qs), QStringList());
        QCOMPARE(fixture.prompts.journal, QStringList());
    }

    void takesAnOutcomeWithoutARow()
    {
        ConnectedBlog fixture;
        const QString id = fixture.blog.addPost(u"Old"_qs, u"<p>text</p>"_qs).id;
        fixture.start();
        const PostPtr post = fixture.postOf(fixture.rowTitled(u"Old"_qs));
        post->localPost.reset();
        post->createdAt = fixture.clock.present.addDays(-1);
        post->content = u"<p>other text</p>"_qs;
        fixture.send(post, Upload::Update);
        QCOMPARE(fixture.titlesDelivered(), u"Successfully Updated Post"_qs);
        QVERIFY(has(fixture.read(u"Blog"_qs, u"p%1/post.zalmo"_qs.arg(id)), u"other text"_qs));
    }

    void cancelReachesTheServiceOfTheEarlierBlog()
    {
        SecondBlog fixture;
        const PostPtr post = fixture.writePost(u"On its way"_qs, u"<p>x</p>"_qs);
        fixture.sendLate(post, u"wp.newPost"_qs);
        fixture.app().currentBlog().selectorDidChange(2);
        for (const ServicePtr &service : fixture.app().services().services())
            service->cancelUploadOfPost(post);
        fixture.network.release();
        fixture.app().rounds().refreshCurrentBlog();
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.blog.count(u"wp.getPost"_qs), 0);
    }

    void removingABlogEndsItsUploads()
    {
        SecondBlog fixture;
        const PostPtr post = fixture.writePost(u"On its way"_qs, u"<p>x</p>"_qs);
        fixture.sendLate(post, u"wp.newPost"_qs);
        QSignalSpy ended(fixture.service()->uploads().first(), &Upload::ended);
        fixture.removeAccount(fixture.app().currentBlog().selectedAccount());
        QCOMPARE(ended.size(), 1);
        fixture.network.release();
        QTRY_VERIFY(!fixture.list.isSyncing);
        QVERIFY(fixture.list.updated.isEmpty());
        QCOMPARE(fixture.postFiles(u"Blog"_qs).size(), 1); // what was written stays
        QCOMPARE(fixture.prompts.journal, QStringList());
    }

    void losesNothingWhenTheMoveFails()
    {
        ConnectedBlog fixture;
        fixture.start();
        const PostPtr post = fixture.writePost(u"Kept"_qs, u"<p>text</p>"_qs);
        const QString before = post->localPost->localFile.toLocalFile();
        fixture.sendLate(post, u"wp.getPost"_qs);
        // A folder stands where the file would go.
        const QString id = fixture.blog.posts.firstKey();
        QVERIFY(QDir().mkpath(fixture.postsFolder(u"Blog"_qs) + u"/p%1/post.zalmo/in the way"_qs.arg(id)));
        fixture.network.release();
        QTRY_COMPARE(fixture.list.updated.size(), 1);
        const QByteArray bytes = contentsOf(before);
        QVERIFY(has(bytes, u"<title>Kept</title>"_qs) && has(bytes, u"<id>%1</id><status>publish</status>"_qs.arg(id)));
        fixture.app().posts().loadLocalPosts();
        QCOMPARE(fixture.rowTitled(u"Kept"_qs)->localFile.toLocalFile(), before);
    }

    void listIsRebuiltMeanwhile()
    {
        ConnectedBlog fixture;
        fixture.start();
        const PostPtr post = fixture.writePost(u"Sent"_qs, u"<p>text</p>"_qs);
        fixture.sendLate(post, u"wp.getPost"_qs);
        // A round fetches the very post whose outcome is still on its way.
        fixture.app().rounds().refreshCurrentBlog();
        QTRY_VERIFY(!fixture.list.isSyncing);
        fixture.network.release();
        QTRY_COMPARE(fixture.list.updated.size(), 1);
        QCOMPARE(fixture.rows(), QList<LocalPostPtr>{post->localPost});
        QCOMPARE(fixture.postFiles(u"Blog"_qs).size(), 1);
    }

    void createsNewPosts()
    {
        ConnectedBlog fixture;
        fixture.start();
        fixture.app().currentBlog().selectedAccount()->preferences->default_article_type = 1;
        fixture.app().currentBlog().selectedAccount()->preferences->allow_pingback = false;
        fixture.app().posts().createNewPost();
        const LocalPostPtr row = fixture.rows().first();
        QCOMPARE(row->status, int(ZLLocalPostRepresentation::New));
        const QByteArray file = fixture.read(u"Blog"_qs, fixture.postFiles(u"Blog"_qs).value(0));
        QVERIFY(has(file, u"<status>new</status><type>page</type>"_qs));
        QVERIFY(has(file, u"<allow_comments>1</allow_comments><allow_pingback>0</allow_pingback>"_qs));
        const QString folder = QFileInfo(row->localFile.toLocalFile()).dir().dirName();
        QCOMPARE(folder.size(), 9); // "p" and 8 characters
    }
};

static const RegisteredTest<OutcomesTest> registered;

#include "OutcomesTest.moc"
