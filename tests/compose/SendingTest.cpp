#include "ComposeFixture.h"

/// What saving and publishing send.
class SendingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsThePost_data()
    {
        const TestTable<bool, int, int, int, int, QString, bool> row(
            {"publish", "status", "daysAhead", "kind", "statusSent", "heading", "keepsDate"});
        row("save new", false, 0, 0, 0, 1, "Saving Draft", false);
        row("save draft", false, 1, 0, 1, 1, "Updating Draft", false);
        row("save published", false, 2, 0, 1, 1, "Moving to Drafts", false);
        row("save note", false, 3, 0, 0, 1, "Saving Draft", false);
        row("publish new", true, 0, 0, 0, 0, "Publishing Article", false);
        row("publish draft, which reads as an update", true, 1, 0, 2, 2, "Updating Article", false);
        row("publish draft of tomorrow", true, 1, 1, 2, 2, "Scheduling Article", true);
        row("publish published", true, 2, 0, 1, 2, "Updating Article", true);
        row("publish scheduled", true, 2, 9, 1, 2, "Scheduling Article", true);
        row("publish note", true, 3, 0, 0, 3, "Publishing Article", false);
    }

    void sendsThePost()
    {
        QFETCH(bool, publish);
        QFETCH(int, status);
        QFETCH(int, daysAhead);
        QFETCH(bool, keepsDate);
        ComposeFixture screen(status);
        QDateTime date = screen.post()->createdAt;
        if (daysAhead > 0)
            screen.post()->createdAt = date = screen.host.clock.present.addDays(daysAhead);
        screen.view.tokenTexts = QStringList{"News", "#qt"};
        screen.view.titleText = "Changed";
        screen.press(publish);
        QVERIFY(screen.sends(1));
        const ZLWordpressPost &sent = screen.host.sent.first().asSent;
        QTEST(screen.host.sent.first().kind, "kind");
        QTEST(screen.view.heading, "heading");
        QVERIFY(screen.view.isLoading);
        QTEST(sent.status, "statusSent");
        QCOMPARE(sent.title, "Changed");
        QCOMPARE(sent.content, "<p>Text</p>");
        QCOMPARE(sent.taxonomiesArray(), QStringList({"News", "#qt"}));
        QCOMPARE(sent.createdAt, keepsDate ? date : screen.host.clock.present);
    }

    void sendsABlankPostThatWasJustTyped()
    {
        ComposeFixture screen;
        screen.view.typeTitle("Typed");
        screen.page.type("<p>Words</p>");
        screen.controller->didPressedSaveButton(); // its document is not open yet
        QVERIFY(screen.sends(1));
        const FakeComposeHost::Sent &sent = screen.host.sent.first();
        QCOMPARE(sent.asSent.title, "Typed");
        QCOMPARE(sent.asSent.content, "<p>Words</p>");
        QCOMPARE(sent.asSent.id.size(), 8);
        QCOMPARE(sent.post, screen.post());
        QCOMPARE(screen.host.rows.size(), 1);
        const DocumentPtr written = screen.onDisk(screen.host.rows.first());
        QCOMPARE(written->post.title, "Typed");
        QCOMPARE(written->post.content, "<p>Words</p>");
        QCOMPARE(written->postInfo.id, sent.asSent.id);
    }

    void aFailedTryLeavesNoTrace_data()
    {
        const TestTable<int, int, int> row({"status", "kindOfSave", "kindOfPublish"});
        row("new", ZLWordpressPost::New, ZLWordpressService::NewPost, ZLWordpressService::NewPost);
        row("draft", ZLWordpressPost::Draft, ZLWordpressService::Update, ZLWordpressService::PublishDraft);
        row("published", ZLWordpressPost::Publish, ZLWordpressService::Update, ZLWordpressService::Update);
    }

    void aFailedTryLeavesNoTrace()
    {
        QFETCH(int, status);
        ComposeFixture screen(status);
        for (int round = 0; round < 2; ++round) {
            for (const bool publish : {false, true}) {
                screen.host.sent.clear();
                screen.press(publish);
                QVERIFY(screen.sends(1));
                QTEST(screen.host.sent.first().kind, publish ? "kindOfPublish" : "kindOfSave");
                Q_EMIT screen.host.noted.didFailToUploadPost(screen.post());
            }
        }
    }

    void sendsTheStoredTitleBack()
    {
        ComposeFixture screen(ZLWordpressPost::Publish, " A &amp; B ");
        QVERIFY(screen.view.titleText != " A &amp; B "); // the reader decodes and trims
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        QCOMPARE(screen.host.sent.first().asSent.title, " A &amp; B ");
        QCOMPARE(screen.host.sent.first().asSent.storedContent, "<p>Text</p>");
    }

    void asksAboutAMissingTitle_data()
    {
        const TestTable<int, bool, int, bool, bool> row({"status", "warns", "answer", "asked", "sent"});
        row("ok", 0, true, 0, true, true);
        row("cancel", 1, true, 1, true, false);
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
        screen.controller->didPressedPublishButton();
        screen.settle();
        QTEST(screen.host.sent.size() == 1, "sent");
        if (!screen.host.sent.isEmpty())
            QCOMPARE(screen.host.sent.first().asSent.content, "<p>Text</p>");
        const QStringList question{"ask: Do you want to publish an untitled article? [Ok|Cancel]"};
        QCOMPARE(screen.prompts.journal, asked ? question : QStringList());
    }

    void saysSoFirst()
    {
        ComposeFixture screen;
        screen.controller->addLinkToCurrentSelection(); // a sheet owns the screen
        int said = 0;
        QObject::connect(&screen.host.noted, &ZLNotifications::didPressPublishButton, [&said] { ++said; });
        screen.controller->didPressedPublishButton();
        QCOMPARE(said, 1);
        QVERIFY(screen.prompts.journal.isEmpty());
    }
};

static const RegisteredTest<SendingTest> registered;

#include "SendingTest.moc"
