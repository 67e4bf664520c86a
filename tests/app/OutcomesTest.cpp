#include "AppFixture.h"
#include "platform/ZLAtomicFile.h"

#include <QSignalSpy>

namespace {
constexpr int publish = ZLWordpressPost::Publish, draft = ZLWordpressPost::Draft;
constexpr int newPost = Upload::NewPost, publishDraft = Upload::PublishDraft;
constexpr int update = Upload::Update;
} // namespace

class OutcomesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bringRowFileAndListInStep_data()
    {
        const TestTable<int, int, bool, int, int, QString> row; // kind, status, is a page, days ahead, the row, message
        row("new post", newPost, publish, false, 0, 0, "Successfully Published Post");
        row("new page", newPost, publish, true, 0, 2, "Successfully Published Page");
        row("new scheduled post", newPost, publish, false, 365, 8, "Successfully Scheduled Post");
        row("new scheduled page", newPost, publish, true, 365, 8, "Successfully Scheduled Page");
        row("new draft", newPost, draft, false, 0, 1, "Successfully Saved Draft");
        row("draft of the blog", publishDraft, publish, false, 10, 8, "Successfully Published Post");
        row("post", update, publish, false, -1, 0, "Successfully Updated Post");
        row("page", update, publish, true, -1, 2, "Successfully Updated Page");
        row("scheduled", update, publish, false, 9, 8, "Successfully Scheduled Post");
        row("back to draft", update, draft, false, -1, 1, "Successfully Updated Draft.");
    }

    void bringRowFileAndListInStep()
    {
        const auto [kind, status, isPage, daysAhead, rowStatus, message] = testRow<int, int, bool, int, int, QString>();
        AppFixture f;
        if (kind != newPost) {
            f.blog.addPost("Old", "<p>text</p>", isPage ? "page" : "post").status =
                kind == publishDraft ? "draft" : "publish";
            f.blog.addPost("Newer", "<p>x</p>");
        }
        f.start();
        f.defaults->setObjectForKey(kind != newPost, "openBrowserAfterPublish");
        const PostPtr post = kind == newPost ? f.writePost("New", "<p>text</p>") : f.postOf(f.rowTitled("Old"));
        const LocalPostPtr row = post->localPost;
        const QUrl before = row->localFile;
        post->title = "Title & more";
        post->content = "<p>other text</p>";
        post->status = status;
        post->type = isPage ? ZLWordpressPost::Page : ZLWordpressPost::Post;
        post->createdAt = f.clock.present.addDays(daysAhead);
        f.send(post, Upload::Kind(kind));

        const QString id = f.blog.posts.firstKey();
        QCOMPARE(f.blog.posts[id].content, "<p>other text</p>");
        QCOMPARE(row->status, rowStatus);
        QCOMPARE(row->published, status == publish);
        QCOMPARE(f.titlesDelivered(), message);
        QCOMPARE(f.notifications.delivered.first().subtitle, "on Blog");
        QCOMPARE(f.workspace.opened, kind == publishDraft ? QList<QUrl>{QUrl(post->URL)} : QList<QUrl>());
        if (kind != update)
            QCOMPARE(f.rows().first(), row);

        // The file is where the blog's number says, and says what the row says.
        QCOMPARE(row->localFile.toLocalFile(), f.postsFolder("Blog") + "/p" + id + "/post.zalmo");
        QVERIFY(QFileInfo(before.toLocalFile()).dir().exists()); // the folder of its random id stays
        const QString file = f.textOf(id);
        QVERIFY(file.contains("<title>Title &amp; more</title><content>&lt;p&gt;other text&lt;/p&gt;</content>"));
        QVERIFY(file.contains("<id>" + id + "</id><status>" + (status == publish ? "publish" : "draft")));
        QVERIFY(file.contains("<file_info><status></status><app_version>3</app_version></file_info>"));
        QCOMPARE(f.list.updated.first().row, row);
        QCOMPARE(f.list.updated.first().previousLocalURL, before);
        f.app().posts().loadLocalPosts();
        QCOMPARE(f.rowTitled("Title & more")->status, rowStatus);
    }

    void knowsItsOwnUpdateAtTheNextSync_data()
    {
        const TestTable<int, bool, bool, bool, QString, bool> row; // dated, edited here and there, text, conflict
        row("here only", update, true, true, false, "mine", false);
        row("draft made public", publishDraft, true, true, false, "mine", false);
        row("no date in the reply", update, false, true, false, "mine", false);
        row("no date in the reply, here and there", update, false, true, true, "mine", true);
        row("here and there", update, true, true, true, "mine", true);
        row("there only", update, true, false, true, "theirs", false);
    }

    void knowsItsOwnUpdateAtTheNextSync()
    {
        const auto [kind, isDated, isEditedHere, isEditedThere, text, isConflict] =
            testRow<int, bool, bool, bool, QString, bool>();
        AppFixture f;
        const QString id = f.blog.addPost("T", "<p>old</p>").id;
        f.start();
        const PostPtr post = f.postOf(f.rowTitled("T"));
        f.blog.isDated = isDated;
        f.clock.present = f.clock.present.addDays(1); // where it counts, the blog's time does
        post->content = "<p>sent</p>";
        post->localPost.reset(); // the list shows another row by now
        f.send(post, Upload::Kind(kind));

        if (isEditedHere) {
            const DocumentPtr document = *ZLDocument::open(post->localFile);
            document->post.content = "mine";
            document->fileInfo.status = "modified";
            QVERIFY(document->saveDocument());
        }
        if (isEditedThere) {
            f.blog.posts[id].content = "theirs";
            f.blog.posts[id].modified = f.blog.now.addSecs(1);
        }
        f.app().rounds().syncAllBlogs();
        f.waitForRound();
        QVERIFY(f.textOf(id).contains("<content>" + text + "</content>"));
        // The post, what the blog last gave while it has changes, and the blog's other version.
        QCOMPARE(f.postFiles().size(), isConflict ? 3 : isEditedHere ? 2 : 1);
    }

    void staysSilentWhenNotAllowed()
    {
        for (const bool isForAll : {false, true}) {
            AppFixture f;
            f.start();
            f.current().selectedAccount()->preferences->allow_notifications = isForAll;
            f.defaults->setObjectForKey(!isForAll, "notifyPublish");
            f.defaults->setObjectForKey(true, "openBrowserAfterPublish");
            f.send(f.writePost("One", "<p>x</p>"));
            QCOMPARE(f.titlesDelivered(), QString());
            QCOMPARE(f.workspace.opened.size(), 1); // the browser has a setting of its own
        }
    }

    void goesOnToItsOwnBlog_data()
    {
        const TestTable<QString, int> row; // the call whose answer comes after the change
        row("picture, new", "metaWeblog.newMediaObject", newPost);
        row("picture, update", "metaWeblog.newMediaObject", update);
        row("content", "wp.newPost", newPost);
        row("read-back", "wp.getPost", newPost);
    }

    void goesOnToItsOwnBlog()
    {
        const auto [late, kind] = testRow<QString, int>();
        AppFixture f;
        f.start(true);
        const QString picture = f.files.cacheFolder() + "/a.gif";
        writeFile(picture, "GIF89a");
        const PostPtr post = f.writePost("On its way", "<img src=\"file://localhost" + picture + "\" />");
        // A post of the same number is on the other blog.
        post->id = f.other.addPost("Stranger", "<p>theirs</p>").id;
        if (kind == update)
            f.blog.posts[post->id].id = post->id;
        f.sendLate(post, late, Upload::Kind(kind));
        f.other.calls.clear();
        f.current().selectAccount(f.accounts().at(1));
        f.network.release();
        QTRY_COMPARE(f.list.updated.size(), 1);
        QCOMPARE(f.other.calls.size(), 0);
        QCOMPARE(f.blog.posts.last().title, "On its way");
        QCOMPARE(f.postFiles().size(), 1);
        QCOMPARE(f.postFiles("Other"), QStringList());
        QCOMPARE(f.rows().size(), 0); // the rows are those of the current blog
        QCOMPARE(f.prompts.journal, QStringList());
    }

    void removingABlogEndsItsUploads()
    {
        AppFixture f;
        f.start(true);
        f.sendLate(f.writePost("On its way", "<p>x</p>"), "wp.newPost");
        QSignalSpy ended(f.service()->uploads().first(), &Upload::ended);
        f.removeAccount(f.current().selectedAccount());
        QCOMPARE(ended.size(), 1);
        f.network.release();
        f.waitForRound();
        QVERIFY(f.list.updated.isEmpty());
        QCOMPARE(f.postFiles().size(), 1); // what was written stays
        QCOMPARE(f.prompts.journal, QStringList());
    }

    void losesNothingWhenTheMoveFails()
    {
        AppFixture f;
        f.start();
        const PostPtr post = f.writePost("Kept", "<p>text</p>");
        const QString before = post->localPost->localFile.toLocalFile();
        f.sendLate(post, "wp.getPost");
        // A folder stands where the file would go.
        const QString id = f.blog.posts.firstKey();
        QVERIFY(QDir().mkpath(f.postsFolder("Blog") + "/p" + id + "/post.zalmo/in the way"));
        f.network.release();
        QTRY_COMPARE(f.list.updated.size(), 1);
        const QString file = contentsOf(before);
        QVERIFY(file.contains("<title>Kept</title>") && file.contains("<id>" + id + "</id><status>publish</status>"));
        f.app().posts().loadLocalPosts();
        QCOMPARE(f.rowTitled("Kept")->localFile.toLocalFile(), before);
    }

    void createsNewPosts()
    {
        AppFixture f;
        f.start();
        f.current().selectedAccount()->preferences->default_article_type = 1;
        f.current().selectedAccount()->preferences->allow_pingback = false;
        f.app().posts().createNewPost();
        QCOMPARE(f.rows().first()->status, int(ZLLocalPostRepresentation::New));
        const QString file = contentsOf(f.rows().first()->localFile.toLocalFile());
        QVERIFY(file.contains("<status>new</status><type>page</type>"));
        QVERIFY(file.contains("<allow_comments>1</allow_comments><allow_pingback>0</allow_pingback>"));
    }

    void ofADeletion_data()
    {
        // The answer, 1 for a page that is missing and 0 for a good one; what is pressed; the questions; and whether
        // the copy is gone.
        const TestTable<int, QList<int>, int, bool> row;
        row("deleted", 0, {}, 0, true);
        row("gone already: delete the copy", 404, {0}, 1, true);
        row("gone already: return keeps it", 404, {}, 1, false);
        row("refused", 401, {0}, 0, false);
        row("no blog there", 1, {0}, 0, false);
    }

    void ofADeletion()
    {
        const auto [answer, answers, questions, isDeleted] = testRow<int, QList<int>, int, bool>();
        AppFixture f;
        f.blog.addPost("Old", "<p>text</p>");
        f.start();
        if (answer > 1)
            f.blog.answerWithFault("wp.deletePost", answer, "refused");
        else if (answer)
            f.blog.answerWithStatus("wp.deletePost", 404);
        f.prompts.answers = answers;
        const LocalPostPtr row = f.rowTitled("Old");
        const DocumentPtr open = f.documentOf(row->localFile);
        f.service()->deletePost(f.postOf(row));
        f.app().posts().loadLocalPosts(); // other rows stand for the files now
        QTRY_COMPARE(f.list.deleted.size() + f.prompts.journal.size(), questions && isDeleted ? 2 : 1);
        QCOMPARE(f.prompts.journal.filter("ask: Delete the copy").size(), questions);
        QCOMPARE(f.postFiles().isEmpty(), isDeleted);
        QCOMPARE(f.rows().isEmpty(), isDeleted);
    }

    void deletesWithoutSavingFirst()
    {
        AppFixture f;
        f.blog.addPost("Old", "<p>text</p>");
        f.start();
        const QUrl file = f.rowTitled("Old")->localFile;
        QVERIFY(ZLAtomicFile::write(file.toLocalFile(), "damaged"));
        const DocumentPtr open = f.documentOf(file);
        open->post.content = "<p>typed</p>";
        open->updateChangeCount();
        f.app().posts().deletePostAtLocalURL(file);
        QCOMPARE(f.postFiles(), QStringList()); // not even a copy of the damaged one

        QVERIFY(QDir().mkpath(file.toLocalFile() + "/in the way"));
        f.prompts.takeJournal();
        f.app().posts().deletePostAtLocalURL(file);
        QCOMPARE(f.prompts.journal, QStringList("alert: The post could not be deleted from this computer."));
    }
};

static const RegisteredTest<OutcomesTest> registered;

#include "OutcomesTest.moc"
