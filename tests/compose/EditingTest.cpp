#include "ComposeFixture.h"

#include <QSignalSpy>

namespace {
enum Edit { Title, Content, Tokens };

void edit(ComposeFixture &screen, int what)
{
    if (what == Title)
        screen.view.typeTitle("New title");
    else if (what == Content)
        screen.page.type("<p>New text</p>");
    else
        screen.view.typeTokens({"News", "#qt"});
}

QString edited(const ZLDocument &document, int what)
{
    if (what == Title)
        return document.post.title;
    return what == Content ? document.post.content : document.post.taxonomiesArray().join(',');
}

QString expected(int what)
{
    return QStringList{"New title", "<p>New text</p>", "News,#qt"}.at(what);
}
} // namespace

class EditingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void writesToTheFile()
    {
        for (const auto &[what, status, fileStatus] : {std::tuple(Title, 0, "new"), {Title, 1, "modified"},
                 {Content, 0, "new"}, {Content, 2, "modified"}, {Content, 3, "modified"}, {Tokens, 2, "modified"}}) {
            ComposeFixture screen(status);
            edit(screen, what);
            QVERIFY(screen.controller->currentDocument()->hasUnautosavedChanges());
            QCOMPARE(screen.view.saveState, "Saving…");
            Q_EMIT screen.view.didResignMain();
            QCOMPARE(screen.view.saveState, "Saved on this computer");
            const DocumentPtr written = screen.onDisk(screen.post()->localPost);
            QCOMPARE(edited(*written, what), expected(what));
            QCOMPARE(written->fileInfo.status, fileStatus);
            QCOMPARE(screen.post()->title, what == Title ? "New title" : "Title");
            QCOMPARE(screen.rowUpdates.titles, what == Title ? QStringList("New title") : QStringList());
            QCOMPARE(screen.rowUpdates.contents, what == Content ? QStringList("<p>New text</p>") : QStringList());
        }
    }

    void givesABlankPostItsFile()
    {
        for (const Edit what : {Title, Content, Tokens}) {
            ComposeFixture screen;
            screen.page.type(""); // nothing is written yet
            QVERIFY(screen.host.rows.isEmpty());
            QSignalSpy updates(&screen.host.noted, &ZLNotifications::didUpdatePosts);
            edit(screen, what);
            QCOMPARE(screen.host.rows.size(), 1);
            QCOMPARE(updates.size(), 1);
            const LocalPostPtr row = screen.host.rows.first();
            QCOMPARE(screen.rowUpdates.selectedFile, row->localFile);
            QCOMPARE(row->status, int(ZLLocalPostRepresentation::New));
            edit(screen, what);
            screen.settle();
            QCOMPARE(screen.host.rows.size(), 1);
            QCOMPARE(screen.post()->localPost, row);
            QCOMPARE(screen.page.loaded.size(), 1); // the page was left alone
            const DocumentPtr written = screen.onDisk(row);
            QCOMPARE(edited(*written, what), expected(what));
            QCOMPARE(written->fileInfo.status, "new");
            QCOMPARE(written->post.id, "");
        }
    }

    void needsABlogForThat()
    {
        ComposeFixture screen;
        screen.host.account = nullptr;
        for (const int what : {Title, Content, Tokens})
            edit(screen, what);
        QVERIFY(screen.host.rows.isEmpty() && screen.prompts.journal.isEmpty());
    }

    void keepsANewPostWithoutAFile()
    {
        for (const bool isLeft : {false, true}) {
            ComposeFixture screen;
            const QString blog = screen.host.files.blogPath(screen.host.getBlogName());
            writeFile(blog); // in the way of the folder
            screen.page.type("<p>Text</p>");
            screen.page.type("<p>Text.</p>");
            screen.view.typeTitle("Title");
            screen.controller->saveDocuments();
            QCOMPARE(screen.view.saveState, "Not saved");
            screen.press(true);
            QTRY_COMPARE(screen.prompts.journal.size(), 1);
            QVERIFY(screen.host.rows.isEmpty());
            // It waits in memory, also when another post is on the screen.
            if (isLeft)
                screen.controller->newPost();
            QVERIFY(QFile::remove(blog));
            screen.host.documents.saveAll();
            QCOMPARE(screen.host.rows.size(), 1);
            const DocumentPtr written = screen.onDisk(screen.host.rows.first());
            QCOMPARE(written->post.title, "Title");
            QCOMPARE(written->post.content, "<p>Text.</p>");
            QCOMPARE(screen.rowUpdates.selectedFile.isEmpty(), isLeft);
            QCOMPARE(bool(screen.post()->localPost), !isLeft);
            screen.press(true);
            screen.settle();
            QCOMPARE(screen.host.sent.size(), isLeft ? 0 : 1);
        }
    }

    void goesIntoThePostThatWasEdited()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        const LocalPostPtr one = screen.post()->localPost;
        const LocalPostPtr two = screen.host.addPost("2", ZLWordpressPost::Draft, "Two", "<p>2</p>");
        const int ownerOfOne = screen.page.owner;
        screen.controller->loadPost(two);
        screen.page.type("<p>Late words</p>"); // the second post is not there yet
        QTRY_COMPARE(screen.view.titleText, "Two");
        screen.settle();
        QCOMPARE(screen.onDisk(one)->post.content, "<p>Late words</p>");
        Q_EMIT screen.page.setPostContent("<p>Late words.</p>", ownerOfOne); // was on its way
        screen.settle();
        QCOMPARE(screen.onDisk(one)->post.content, "<p>Late words.</p>");
        QCOMPARE(screen.onDisk(one)->fileInfo.status, "modified");
        QCOMPARE(screen.onDisk(two)->post.content, "<p>2</p>");
        QVERIFY(screen.rowUpdates.contents.isEmpty());
        QCOMPARE(screen.controller->currentDocument()->fileURL(), two->localFile);
        const int ownerOfTwo = screen.page.owner;
        screen.controller->newPost();
        QVERIFY(screen.rowUpdates.selectedFile.isEmpty());
        Q_EMIT screen.page.setPostContent("<p>2.</p>", ownerOfTwo);
        screen.settle();
        QCOMPARE(screen.onDisk(two)->post.content, "<p>2.</p>");
        QVERIFY(screen.controller->currentPost()->localPost == nullptr);
    }

    void meetsAVersionOfTheBlog()
    {
        const QString key = "<p>Textx</p>", nothingNew = "<p>Text</p>";
        for (const auto &[late, isLeft] : {std::pair(key, false), {key, true}, {nothingNew, false}}) {
            const bool isConflict = late == key;
            ComposeFixture screen(ZLWordpressPost::Publish);
            const LocalPostPtr row = screen.post()->localPost;
            const int owner = screen.page.owner;
            if (isLeft)
                screen.controller->newPost();
            const PostPtr theirs = (*ZLDocument::open(row->localFile))->wordpressPost();
            theirs->content = theirs->storedContent = "<p>theirs</p>";
            QVERIFY(theirs->saveAtPath(row->localFile.toLocalFile()));
            screen.controller->reloadCurrentPostAfterSyncingEngine(SyncEngine::WordPress);
            Q_EMIT screen.page.setPostContent(late, owner); // was on its way
            screen.settle();
            const QString kept = isConflict ? late : "<p>theirs</p>";
            const DocumentPtr written = screen.onDisk(row);
            QCOMPARE(written->post.content, kept);
            QCOMPARE(written->isInConflict(), isConflict);
            const auto other =
                ZLDocument::open(QUrl::fromLocalFile(PostSync::conflictPath(row->localFile.toLocalFile())));
            QCOMPARE(other ? (*other)->post.content : QString(), isConflict ? "<p>theirs</p>" : QString());
            if (!isLeft)
                QCOMPARE(*screen.page.body, kept);
            QCOMPARE(screen.view.noticeAction, isConflict && !isLeft ? "Choose…" : "");
        }
    }

    void goesIntoTheBlankPostThatWasLeft()
    {
        for (const bool isStillThere : {true, false}) {
            ComposeFixture screen;
            screen.controller->newPost();
            const int owner = screen.page.owner;
            const LocalPostPtr other = screen.host.addPost("2", ZLWordpressPost::Draft, "Two", "<p>2</p>");
            screen.controller->loadPost(other);
            if (!isStillThere)
                QTRY_COMPARE(screen.view.titleText, "Two");
            Q_EMIT screen.page.setPostContent("<p>N</p>", owner);
            QTRY_COMPARE(screen.view.titleText, "Two");
            screen.settle();
            QCOMPARE(screen.host.rows.size(), 2);
            QCOMPARE(screen.onDisk(screen.host.rows.first())->post.content, "<p>N</p>");
            QCOMPARE(screen.onDisk(other)->post.content, "<p>2</p>");
        }
    }

    void waitsForTheLastKeysBeforeTheEnd()
    {
        for (const QString before : {"open", "blank", "no page"}) {
            ComposeFixture screen;
            if (before != "blank")
                QVERIFY(screen.loadNew(ZLWordpressPost::Draft));
            screen.page.holdsAnswers = true;
            bool isDone = false;
            screen.controller->commitEditing().then([&isDone] { isDone = true; });
            screen.settle();
            QVERIFY(!isDone);
            if (before != "no page")
                screen.page.type("<p>last</p>");
            screen.page.answer(before == "no page" ? std::nullopt : screen.page.body);
            QTRY_VERIFY(isDone);
            screen.controller->saveDocuments();
            QCOMPARE(screen.bytesOnDisk(screen.post()->localPost).contains("last"), before != "no page");
        }
    }

    void keepsTheTextWhenTheDiskFails()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        const LocalPostPtr row = screen.post()->localPost;
        const QString file = row->localFile.toLocalFile();
        QVERIFY(QFile::rename(file, file + ".aside"));
        QVERIFY(QDir().mkpath(file + "/in the way"));
        screen.page.type("<p>Kept</p>");
        screen.controller->saveDocuments();
        QCOMPARE(screen.view.saveState, "Not saved");
        QVERIFY(screen.view.notice.contains(file));
        QVERIFY(screen.load(screen.host.addPost("2", ZLWordpressPost::Draft, "Two", "<p>2</p>")));
        QCOMPARE(screen.view.notice, "");
        QVERIFY(screen.load(row));
        QCOMPARE(screen.page.loaded.last(), "<p>Kept</p>");
        QVERIFY(QDir(file).removeRecursively());
        QCOMPARE(screen.onDisk(row)->post.content, "<p>Kept</p>");
        QCOMPARE(screen.view.notice, "");
    }

    void tellsWhetherANewPostIsNeeded()
    {
        for (const auto &[status, title, body, needed] :
            {std::tuple(0, "", "", false), {0, "T", "", true}, {0, "", "<p>x</p>", true}, {1, "", "", true}}) {
            ComposeFixture screen;
            if (status != ZLWordpressPost::New)
                QVERIFY(screen.loadNew(status, {}, {}));
            screen.view.titleText = title;
            screen.page.body = QString(body);
            std::optional<bool> answer;
            screen.controller->canCreateNewPost().then([&answer](bool needed) { answer = needed; });
            QTRY_VERIFY(answer);
            QCOMPARE(*answer, needed);
        }
    }
};

static const RegisteredTest<EditingTest> registered;

#include "EditingTest.moc"
