#include "ComposeFixture.h"

#include <QSignalSpy>

class UploadGuardsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void refuseAnEmptyPost()
    {
        for (const bool publish : {false, true}) {
            ComposeFixture screen;
            screen.view.typeTitle("");
            screen.press(publish);
            QTRY_COMPARE(screen.prompts.journal, QStringList("alert: Nothing here. Post title and content are empty."));
            QVERIFY(screen.host.sent.isEmpty());
            QVERIFY(screen.host.rows.isEmpty());
        }
    }

    void needANetworkAndAPassword()
    {
        for (const bool publish : {false, true}) {
            ComposeFixture screen(ZLWordpressPost::Draft);
            screen.host.isOnline = false;
            screen.press(publish);
            QTRY_COMPARE(screen.prompts.journal, QStringList("alert: You're offline"));
            QVERIFY(screen.host.sent.isEmpty());
            QVERIFY(!screen.view.isLoading);
            screen.host.isOnline = true;
            screen.host.hasPassword = false; // the login sheet comes
            screen.press(publish);
            screen.settle();
            QVERIFY(screen.host.sent.isEmpty());
            screen.host.hasPassword = true;
            screen.press(publish);
            QVERIFY(screen.sends(1));
        }
    }

    void ignoreASecondPress()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.page.holdsAnswers = true;
        for (int press = 0; press < 3; ++press) {
            screen.press(false);
            screen.press(true);
        }
        QTRY_COMPARE(screen.page.held.size(), 1);
        screen.page.answer(QString("<p>Text</p>"));
        QVERIFY(screen.sends(1));
        screen.settle();
        QCOMPARE(screen.host.sent.size(), 1);
        QVERIFY(screen.page.held.isEmpty());
    }

    void ignoreAPressDuringTheUpload()
    {
        ComposeFixture screen(ZLWordpressPost::New);
        screen.press(false);
        QVERIFY(screen.sends(1));
        screen.press(false);
        screen.press(true);
        screen.pressDelete();
        screen.view.media = QUrl::fromLocalFile(screen.host.folder.filePath("gone.png"));
        screen.controller->insertMedia();
        screen.controller->execCommand("Bold");
        screen.controller->addLinkToCurrentSelection();
        screen.settle();
        QCOMPARE(screen.page.calls, QStringList());
        QCOMPARE(screen.prompts.journal, QStringList());
        QCOMPARE(screen.host.sent.size(), 1); // no second post on the blog
        QCOMPARE(screen.view.heading, "Saving Draft");
        QCOMPARE(screen.view.deleteQuestion, "");
    }

    void dropAnAnswerForAnotherPost()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.page.holdsAnswers = true;
        screen.press(true);
        QTRY_COMPARE(screen.page.held.size(), 1);
        QVERIFY(screen.load(screen.host.addPost("2", ZLWordpressPost::Draft, "Two", "<p>2</p>")));
        screen.page.answer(QString("<p>Text of the first</p>"));
        screen.settle();
        QVERIFY(screen.host.sent.isEmpty());
        QVERIFY(!screen.post()->content.contains("first"));
        screen.page.holdsAnswers = false;
        screen.press(true); // the flow before is over
        QVERIFY(screen.sends(1));
        QCOMPARE(screen.host.sent.first()->asSent.content, "<p>2</p>");
    }

    void sayWhenThePageGivesNoAnswer()
    {
        ComposeFixture screen(ZLWordpressPost::Publish);
        screen.page.body = std::nullopt;
        QSignalSpy pressed(&screen.host.noted, &ZLNotifications::didPressPublishButton);
        screen.press(true);
        QCOMPARE(pressed.size(), 1);
        QTRY_COMPARE(screen.prompts.journal, QStringList("alert: The editor is not ready."));
        QVERIFY(screen.host.sent.isEmpty());
    }

    void outliveTheScreen()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.page.holdsAnswers = true;
        screen.press(true);
        screen.controller->canCreateNewPost();
        screen.controller->loadPost(screen.host.rows.first());
        QTRY_VERIFY(!screen.page.held.isEmpty());
        screen.controller.reset();
        while (!screen.page.held.isEmpty())
            screen.page.answer(QString("<p>Late</p>"));
        screen.settle();
        QVERIFY(screen.host.sent.isEmpty());
    }
};

static const RegisteredTest<UploadGuardsTest> registered;

#include "UploadGuardsTest.moc"
