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

    void saysWhatIsSpecial()
    {
        for (const auto &[status, type, blogStatus, notice] :
            {std::tuple(2, 0, QString(), QString()), {2, 0, "private", "stays so"},
                {1, 0, "pending", "\"Save\" leaves it waiting"}, {2, 1, QString(), QString()}}) {
            ComposeFixture screen;
            const LocalPostPtr row = screen.host.addPost("41", status, "Title", "<p>Text</p>", type);
            const DocumentPtr document = *ZLDocument::open(row->localFile);
            document->post.blogStatus = blogStatus;
            document->updateChangeCount();
            QVERIFY(document->saveDocument());
            QVERIFY(screen.load(row));
            QVERIFY(screen.view.notice.contains(notice));
            QCOMPARE(screen.view.notice.isEmpty(), notice.isEmpty());
            QCOMPARE(screen.view.areTokensShown, type == ZLWordpressPost::Post);
        }
    }

    void goesBackToTheBlogsVersion()
    {
        for (const bool isCancelled : {false, true}) {
            ComposeFixture screen(ZLWordpressPost::Publish);
            QVERIFY(!screen.controller->actions().testFlag(PostAction::Revert));
            screen.page.type("<p>Mine</p>");
            screen.controller->saveDocuments();
            QVERIFY(screen.controller->actions().testFlag(PostAction::Revert));
            screen.prompts.answers = {isCancelled};
            screen.controller->doActionForCurrentPost(PostAction::Revert);
            screen.settle();
            QCOMPARE(
                screen.onDisk(screen.post()->localPost)->post.content, isCancelled ? "<p>Mine</p>" : "<p>Text</p>");
            QCOMPARE(screen.page.loaded.size(), isCancelled ? 2 : 3);
            QCOMPARE(screen.controller->actions().testFlag(PostAction::Revert), isCancelled);
            if (!isCancelled) // so that it can be undone
                QVERIFY(screen.page.loading == ComposePage::Loading::SamePost);
        }
    }

    void takesTheBlogsVersion()
    {
        // nothing typed; a last key that is given up; one that is kept
        const QString late = "<p>Textx</p>", blogs = "<p>theirs</p>";
        for (const auto &[typed, answer, content] :
            {std::tuple(QString(), -1, blogs), {late, 0, blogs}, {late, 1, late}}) {
            ComposeFixture screen(ZLWordpressPost::Publish);
            const auto theirs = std::make_shared<ZLWordpressPost>(*screen.post());
            theirs->content = theirs->storedContent = blogs;
            screen.press(true);
            QVERIFY(screen.sends(1));
            screen.host.sent.first()->end(
                {.kind = UploadOutcome::Published, .remote = screen.post(), .blogVersion = theirs});
            Q_EMIT screen.host.noted.didUpdatePost(screen.post(), {screen.post(), screen.post()->localPost});
            QCOMPARE(screen.page.loaded.last(), "<p>Text</p>");
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
            QCOMPARE(screen.onDisk(screen.post()->localPost)->post.content, content);
            QCOMPARE(*screen.page.body, content);
        }
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

    void readsThePostAgainAfterASync()
    {
        const SyncEngine blog = SyncEngine::WordPress, notes = SyncEngine::Evernote;
        for (const auto &[status, engine, reads] : {std::tuple(1, blog, true), {2, blog, true}, {0, blog, false},
                 {1, notes, false}, {3, notes, true}, {3, blog, false}}) {
            ComposeFixture screen(status);
            const PostPtr before = screen.post();
            screen.controller->reloadCurrentPostAfterSyncingEngine(engine);
            screen.settle();
            QVERIFY2((screen.post() != before) == reads, qPrintable(QString::number(status)));
        }
    }

    void leavesTheScreenAloneWhenASyncBroughtNothing()
    {
        for (const bool shows : {false, true}) {
            ComposeFixture screen(ZLWordpressPost::Publish);
            const LocalPostPtr row = screen.post()->localPost;
            screen.view.typeTitle("Better");
            screen.page.type("<p>Text, longer</p>");
            screen.controller->saveDocuments();
            if (shows) {
                const DocumentPtr synced = *ZLDocument::open(row->localFile);
                synced->post.content = "<p>From the blog</p>";
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
