#include "ComposeFixture.h"

class LoadingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showsThePost()
    {
        ComposeFixture screen;
        const LocalPostPtr row = screen.host.addPost("41", ZLWordpressPost::Draft, "A & B", "<p>Text</p>");
        const DocumentPtr document = *ZLDocument::open(row->localFile);
        document->post.taxonomies = {{"News", {}, 0}, {"qt", {}, 1}, {"odd", {}, 7}};
        document->updateChangeCount();
        QVERIFY(document->saveDocument());
        QVERIFY(screen.load(row));
        QCOMPARE(screen.view.titleText, "A & B");
        QCOMPARE(screen.page.loaded.last(), "<p>Text</p>");
        QCOMPARE(screen.view.tokenTexts, QStringList({"News", "#qt", "odd"}));
        QCOMPARE(screen.post()->createdAt, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 0), Qt::UTC));
        QCOMPARE(screen.view.buttons.publish.toolTip, "Publish Post");
        QVERIFY(screen.load(screen.host.addPost("42", ZLWordpressPost::New, "", "")));
        QCOMPARE(screen.page.loaded.last(), "");
        QCOMPARE(screen.view.tokenTexts, QStringList());
    }

    void leavesTheFileAsItIs()
    {
        ComposeFixture screen;
        const LocalPostPtr row = screen.host.addPost("41", ZLWordpressPost::Publish, "T", "<p>a &amp;lt; b</p>\n\n");
        const QByteArray before = screen.bytesOnDisk(row);
        QVERIFY(screen.load(row));
        screen.page.type(screen.controller->currentDocument()->storedContent()); // a report that changes nothing
        QVERIFY(!screen.controller->currentDocument()->hasUnautosavedChanges());
        QVERIFY(screen.load(screen.host.addPost("42", ZLWordpressPost::New, "", "")));
        screen.page.type("");
        screen.page.type("<p><br></p>");
        QVERIFY(!screen.controller->currentDocument()->hasUnautosavedChanges());
        QCOMPARE(screen.bytesOnDisk(row), before);
        QVERIFY(screen.rowUpdates.contents.isEmpty());
    }

    void isWonByTheLast()
    {
        ComposeFixture screen;
        const LocalPostPtr one = screen.host.addPost("1", ZLWordpressPost::Draft, "One", "<p>1</p>");
        const LocalPostPtr two = screen.host.addPost("2", ZLWordpressPost::Draft, "Two", "<p>2</p>");
        screen.controller->loadPost(one);
        QVERIFY(screen.load(two));
        screen.settle();
        QCOMPARE(screen.view.titleText, "Two");
        QVERIFY(!screen.page.loaded.contains("<p>1</p>"));
        screen.controller->loadPost(one);
        screen.controller->newPost();
        screen.settle();
        QCOMPARE(screen.view.titleText, "");
        QVERIFY(!screen.controller->currentDocument());
    }

    void keepsThePostBeforeWhenTheFileIsGone()
    {
        ComposeFixture screen(ZLWordpressPost::Draft, "Here");
        const LocalPostPtr here = screen.post()->localPost;
        auto gone = std::make_shared<ZLLocalPostRepresentation>();
        gone->localFile = QUrl::fromLocalFile(screen.host.folder.filePath("none/post.zalmo"));
        screen.controller->loadPost(gone);
        screen.settle();
        QCOMPARE(screen.view.titleText, "Here");
        screen.view.typeTitle("Here 2");
        screen.settle();
        QCOMPARE(screen.onDisk(here)->post.title, "Here 2");
        QVERIFY(screen.rowUpdates.titles.isEmpty()); // the selected row is that of the other post
    }

    void runsTheAction_data()
    {
        const TestTable<PostAction, QString> row({"action", "done"});
        row("publish", PostAction::Publish, "sent 2");
        row("delete", PostAction::Delete, "Deleting Post \"Title\"");
        row("save", PostAction::Save, "sent 1");
        row("none", PostAction::None, "");
    }

    void runsTheAction()
    {
        QFETCH(PostAction, action);
        ComposeFixture screen;
        const LocalPostPtr row = screen.host.addPost("41", ZLWordpressPost::Draft, "Title", "<p>Text</p>");
        screen.controller->loadPost(row, action);
        const auto done = [&screen] {
            return screen.host.sent.isEmpty() ? screen.view.deleteQuestion
                                              : QString("sent %1").arg(screen.host.sent.first()->kind());
        };
        screen.settle();
        QTRY_COMPARE(screen.post()->localPost, row);
        QTEST(done(), "done");
    }

    void saysWhatIsSpecial_data()
    {
        const TestTable<int, QString, bool, QString> row({"status", "blogStatus", "tokens", "notice"});
        row("post", 2, QString(), true, "");
        row("private", 2, "private", true, "stays so");
        row("pending", 1, "pending", true, "\"Save\" leaves it waiting");
        row("page", 2, "page", false, "");
    }

    void saysWhatIsSpecial()
    {
        QFETCH(int, status);
        QFETCH(QString, blogStatus);
        QFETCH(QString, notice);
        ComposeFixture screen;
        const bool isPage = blogStatus == "page";
        const LocalPostPtr row = screen.host.addPost("41", status, "Title", "<p>Text</p>", isPage ? 1 : 0);
        const DocumentPtr document = *ZLDocument::open(row->localFile);
        document->post.blogStatus = isPage ? QString() : blogStatus;
        document->updateChangeCount();
        QVERIFY(document->saveDocument());
        QVERIFY(screen.load(row));
        QVERIFY(screen.view.notice.contains(notice));
        QCOMPARE(screen.view.notice.isEmpty(), notice.isEmpty());
        QTEST(screen.view.areTokensShown, "tokens");
    }

    void goesBackToTheBlogsVersion_data()
    {
        const TestTable<int, QString> row({"answer", "content"});
        row("revert", 0, "<p>Text</p>");
        row("cancel", 1, "<p>Mine</p>");
    }

    void goesBackToTheBlogsVersion()
    {
        QFETCH(int, answer);
        QFETCH(QString, content);
        ComposeFixture screen(ZLWordpressPost::Publish);
        QVERIFY(!screen.controller->actions().testFlag(PostAction::Revert));
        screen.page.type("<p>Mine</p>");
        screen.controller->saveDocuments();
        QVERIFY(screen.controller->actions().testFlag(PostAction::Revert));
        screen.prompts.answers = {answer};
        screen.controller->doActionForCurrentPost(PostAction::Revert);
        screen.settle();
        QCOMPARE(screen.onDisk(screen.post()->localPost)->post.content, content);
        QCOMPARE(screen.page.loaded.size(), answer == 0 ? 3 : 2);
        QCOMPARE(screen.controller->actions().testFlag(PostAction::Revert), answer == 1);
        if (answer == 0) // so that it can be undone
            QVERIFY(screen.page.loading == ComposePage::Loading::SamePost);
    }

    void takesTheBlogsVersion_data()
    {
        const TestTable<QString, int, QString> row({"typed", "answer", "content"});
        row("nothing typed", QString(), -1, "<p>theirs</p>");
        row("a last key, given up", "<p>Textx</p>", 0, "<p>theirs</p>");
        row("a last key, kept", "<p>Textx</p>", 1, "<p>Textx</p>");
    }

    void takesTheBlogsVersion()
    {
        QFETCH(QString, typed);
        QFETCH(int, answer);
        ComposeFixture screen(ZLWordpressPost::Publish);
        const auto theirs = std::make_shared<ZLWordpressPost>(*screen.post());
        theirs->content = theirs->storedContent = "<p>theirs</p>";
        screen.press(true);
        QVERIFY(screen.sends(1));
        screen.host.sent.first()->end(
            {.kind = UploadOutcome::Published, .remote = screen.post(), .blogVersion = theirs});
        Q_EMIT screen.host.noted.didUpdatePost(screen.post(), {screen.post(), screen.post()->localPost});
        QCOMPARE(screen.view.noticeAction, "Take the Blog's Version");
        screen.page.holdsAnswers = true;
        if (answer >= 0)
            screen.prompts.answers = {answer};
        Q_EMIT screen.view.didPressedNoticeAction();
        if (!typed.isNull())
            screen.page.type(typed); // is on its way still
        while (!screen.page.held.isEmpty()) {
            screen.page.answer(typed);
            screen.settle();
        }
        QCOMPARE(screen.prompts.journal.size(), typed.isNull() ? 0 : 1);
        QTEST(screen.onDisk(screen.post()->localPost)->post.content, "content");
        QTEST(*screen.page.body, "content");
    }

    void goesBlank()
    {
        ComposeFixture screen;
        screen.host.account->preferences->allow_comments = false;
        screen.host.account->preferences->default_article_type = 1;
        QVERIFY(screen.loadNew(ZLWordpressPost::Publish));
        screen.controller->updatePreferencesForNewPost();
        QVERIFY(screen.post()->type == ZLWordpressPost::Post); // only a post that no server has seen follows them
        screen.controller->newPost();
        QCOMPARE(screen.view.titleText, "");
        QCOMPARE(screen.page.loaded.last(), "");
        QVERIFY(!screen.controller->currentDocument());
        QCOMPARE(screen.post()->type, int(ZLWordpressPost::Page));
        QVERIFY(!screen.post()->allowComments);
        QVERIFY(screen.post()->allowPingback);
        screen.host.account = nullptr;
        Q_EMIT screen.host.noted.didChangeBlog();
        QVERIFY(!screen.view.actionsEnabled);
    }

    void readsThePostAgainAfterASync_data()
    {
        const TestTable<int, int, bool> row({"status", "engine", "reads"});
        row("draft, WordPress", 1, 0, true);
        row("published, WordPress", 2, 0, true);
        row("new", 0, 0, false);
        row("draft, Evernote", 1, 1, false);
        row("note, Evernote", 3, 1, true);
        row("note, WordPress", 3, 0, false);
    }

    void readsThePostAgainAfterASync()
    {
        QFETCH(int, status);
        QFETCH(int, engine);
        ComposeFixture screen(status);
        const PostPtr before = screen.post();
        screen.controller->reloadCurrentPostAfterSyncingEngine(SyncEngine(engine));
        screen.settle();
        QTEST(screen.post() != before, "reads");
    }

    void leavesTheScreenAloneWhenASyncBroughtNothing_data()
    {
        const TestTable<QString, bool> row({"written", "shows"});
        row("nothing", "", false);
        row("content", "<p>From the blog</p>", true);
    }

    void leavesTheScreenAloneWhenASyncBroughtNothing()
    {
        QFETCH(QString, written);
        QFETCH(bool, shows);
        ComposeFixture screen(ZLWordpressPost::Publish);
        const LocalPostPtr row = screen.post()->localPost;
        screen.view.typeTitle("Better");
        screen.page.type("<p>Text, longer</p>");
        screen.controller->saveDocuments();
        if (!written.isEmpty()) {
            const DocumentPtr synced = *ZLDocument::open(row->localFile);
            synced->post.content = written;
            synced->updateChangeCount();
            QVERIFY(synced->saveDocument());
        }
        screen.view.typedToken = "half typ";
        screen.controller->reloadCurrentPostAfterSyncingEngine(SyncEngine::WordPress);
        if (!shows)
            screen.page.type("<p>Text, longer still</p>"); // in the midst of it
        screen.settle();
        QCOMPARE(screen.page.loaded.size(), shows ? 3 : 2);
        QCOMPARE(screen.view.typedToken, "half typ");
        QCOMPARE(screen.view.titleText, "Better");
        if (!shows)
            QCOMPARE(screen.onDisk(row)->post.content, "<p>Text, longer still</p>");
    }

    void letsTheChosenPostWinOverASync()
    {
        ComposeFixture screen(ZLWordpressPost::Publish);
        screen.view.typedToken = "half typ";
        screen.controller->loadPost(screen.host.addPost("2", ZLWordpressPost::Draft, "Two", "<p>2</p>"));
        screen.controller->reloadCurrentPostAfterSyncingEngine(SyncEngine::WordPress); // still the first
        screen.settle();
        QCOMPARE(screen.view.titleText, "Two");
        QCOMPARE(screen.post()->title, "Two");
        QCOMPARE(screen.view.typedToken, "");
    }

    void bringsTheContentBackAfterACrash()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.page.type("<p>Text, and more</p>");
        Q_EMIT screen.page.crashed();
        QCOMPARE(screen.page.loaded.last(), "<p>Text, and more</p>");
    }

    void followsTheRebuiltList()
    {
        ComposeFixture screen(ZLWordpressPost::New);
        const LocalPostPtr rebuilt = std::make_shared<ZLLocalPostRepresentation>(*screen.post()->localPost);
        screen.host.rows = {rebuilt};
        Q_EMIT screen.host.noted.didUpdatePosts();
        QCOMPARE(screen.post()->localPost, rebuilt);
        screen.pressDelete();
        Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(1);
        QVERIFY(screen.host.rows.isEmpty());
    }
};

static const RegisteredTest<LoadingTest> registered;

#include "LoadingTest.moc"
