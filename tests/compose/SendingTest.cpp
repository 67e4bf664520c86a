#include "ComposeFixture.h"

/// What saving and publishing send.
class SendingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsThePost_data()
    {
        const TestTable<PostAction, int, int, int, int, QString, bool> row(
            {"action", "status", "daysAhead", "kind", "statusSent", "heading", "keepsDate"});
        const PostAction save = PostAction::Save;
        const PostAction publish = PostAction::Publish;
        row("save new", save, 0, 0, 0, 1, "Saving Draft", false);
        row("save draft", save, 1, 0, 1, 1, "Updating Draft", true);
        row("save draft of tomorrow", save, 1, 1, 1, 1, "Updating Draft", true);
        row("move to drafts", PostAction::MoveToDrafts, 2, 0, 1, 1, "Moving to Drafts", true);
        row("save note", save, 3, 0, 0, 1, "Saving Draft", false);
        row("publish new", publish, 0, 0, 0, 0, "Publishing Article", false);
        row("publish draft, which reads as an update", publish, 1, 0, 2, 2, "Updating Article", false);
        row("publish draft of tomorrow", publish, 1, 1, 2, 2, "Scheduling Article", true);
        row("publish published", publish, 2, 0, 1, 2, "Updating Article", true);
        row("publish scheduled", publish, 2, 9, 1, 2, "Scheduling Article", true);
        row("publish note", publish, 3, 0, 0, 3, "Publishing Article", false);
    }

    void sendsThePost()
    {
        QFETCH(PostAction, action);
        QFETCH(int, status);
        QFETCH(int, daysAhead);
        QFETCH(bool, keepsDate);
        ComposeFixture screen(status);
        const ZLWordpressPost before = *screen.post();
        QDateTime date = screen.post()->createdAt;
        if (daysAhead > 0)
            screen.post()->createdAt = date = screen.host.clock.present.addDays(daysAhead);
        screen.view.typeTokens({"News", "#qt"});
        screen.view.typeTitle("Changed");
        screen.controller->doActionForCurrentPost(action);
        QVERIFY(screen.sends(1));
        const ZLWordpressPost &sent = screen.host.sent.first()->asSent;
        QTEST(int(screen.host.sent.first()->kind()), "kind");
        QTEST(screen.view.heading, "heading");
        QVERIFY(screen.view.isLoading);
        QTEST(sent.status, "statusSent");
        QCOMPARE(sent.title, "Changed");
        QCOMPARE(sent.content, "<p>Text</p>");
        QCOMPARE(sent.taxonomiesArray(), QStringList({"News", "#qt"}));
        QCOMPARE(sent.createdAt, keepsDate ? date : screen.host.clock.present);
        QCOMPARE(screen.post()->status, before.status); // the screen changes with the outcome only
    }

    void sendsABlankPostThatWasJustTyped()
    {
        ComposeFixture screen;
        screen.view.typeTitle("Typed");
        screen.page.type("<p>Words</p>");
        screen.press(false);
        QVERIFY(screen.sends(1));
        const ZLWordpressPost &sent = screen.host.sent.first()->asSent;
        QCOMPARE(sent.title, "Typed");
        QCOMPARE(sent.content, "<p>Words</p>");
        QCOMPARE(sent.id.size(), 8);
        QCOMPARE(sent.localPost, screen.post()->localPost);
        QCOMPARE(screen.host.rows.size(), 1);
        const DocumentPtr written = screen.onDisk(screen.host.rows.first());
        QCOMPARE(written->post.title, "Typed");
        QCOMPARE(written->post.content, "<p>Words</p>");
        QCOMPARE(written->post.id, sent.id);
    }

    void aFailedTryLeavesNoTrace()
    {
        for (const int status : {ZLWordpressPost::New, ZLWordpressPost::Draft}) {
            const bool isNew = status == ZLWordpressPost::New;
            ComposeFixture screen(status);
            for (const bool publish : {false, true, false, true}) {
                screen.host.sent.clear();
                screen.press(publish);
                QVERIFY(screen.sends(1));
                QCOMPARE(screen.host.sent.first()->kind(),
                    isNew         ? Upload::NewPost
                        : publish ? Upload::PublishDraft
                                  : Upload::Update);
                screen.host.sent.first()->end({.kind = UploadOutcome::Failed});
                QCOMPARE(screen.view.saveState, "Not sent to the blog");
            }
        }
    }

    void sendsTheStoredTitleBack()
    {
        ComposeFixture screen(ZLWordpressPost::Publish, " A &amp; B ");
        QVERIFY(screen.view.titleText != " A &amp; B "); // the reader decodes and trims
        screen.press(true);
        QVERIFY(screen.sends(1));
        QCOMPARE(screen.host.sent.first()->asSent.title, " A &amp; B ");
        QCOMPARE(screen.host.sent.first()->asSent.storedContent, "<p>Text</p>");
    }

    void asksAboutAMissingTitle_data()
    {
        const TestTable<int, bool, int, bool, bool> row({"status", "warns", "answer", "asked", "sent"});
        row("ok", 0, true, 0, true, true);
        row("cancel", 1, true, 1, true, false);
        row("blanks", 0, true, 1, true, false);
        row("window closed", 0, true, -1, true, false);
        row("no warning wanted", 0, false, 1, false, true);
        row("published already", 2, true, 1, false, true);
    }

    void asksAboutAMissingTitle()
    {
        QFETCH(int, status);
        QFETCH(bool, warns);
        QFETCH(int, answer);
        QFETCH(bool, asked);
        ComposeFixture screen;
        if (warns)
            screen.host.settings = QStringList{"warnUntitled"};
        screen.prompts.answers = {answer};
        QVERIFY(screen.loadNew(status, {}));
        if (QTest::currentDataTag() == QByteArray("blanks"))
            screen.view.typeTitle("  ");
        screen.press(true);
        screen.settle();
        QTEST(screen.host.sent.size() == 1, "sent");
        if (!screen.host.sent.isEmpty())
            QCOMPARE(screen.host.sent.first()->asSent.content, "<p>Text</p>");
        const QStringList question{"ask: Do you want to publish an untitled article? [Ok|Cancel]"};
        QCOMPARE(screen.prompts.journal, asked ? question : QStringList());
    }

    void asksBeforeAPostIsUnpublished()
    {
        ComposeFixture screen(ZLWordpressPost::Publish);
        screen.prompts.answers = {1};
        screen.controller->doActionForCurrentPost(PostAction::MoveToDrafts);
        screen.settle();
        QCOMPARE(screen.prompts.journal.size(), 1);
        QVERIFY(screen.host.sent.isEmpty());
    }

    void leavesAPendingPostPending()
    {
        for (const bool publish : {false, true}) {
            ComposeFixture screen(ZLWordpressPost::Draft);
            screen.post()->blogStatus = "pending";
            screen.press(publish);
            QVERIFY(screen.sends(1));
            QCOMPARE(screen.host.sent.first()->asSent.blogStatus, publish ? "" : "pending");
        }
    }

    void makesAPostOfAKeptCopy()
    {
        ComposeFixture screen;
        const LocalPostPtr original = screen.host.addPost("41", ZLWordpressPost::Publish, "Title", "<p>Text</p>");
        const LocalPostPtr copy = screen.host.addKeptCopy(original);
        const QUrl before = copy->localFile;
        QVERIFY(screen.load(copy));
        QCOMPARE(screen.view.noticeAction, "Publish as a New Post");
        screen.page.type("<p>My version</p>");
        Q_EMIT screen.view.didPressedNoticeAction();
        QVERIFY(screen.sends(1));
        const ZLWordpressPost &sent = screen.host.sent.first()->asSent;
        QCOMPARE(screen.host.sent.first()->kind(), Upload::NewPost);
        QCOMPARE(sent.content, "<p>My version</p>");
        QVERIFY(sent.id != "41" && sent.id.size() == 8);
        QVERIFY(!QFile::exists(before.toLocalFile()));
        QCOMPARE(screen.onDisk(original)->post.content, "<p>Text</p>");
        QCOMPARE(screen.rowUpdates.selectedFile, sent.localPost->localFile);
        QCOMPARE(screen.onDisk(sent.localPost)->post.content, "<p>My version</p>");
    }
};

static const RegisteredTest<SendingTest> registered;

#include "SendingTest.moc"
