#include "ComposeFixture.h"
#include "support/TestClasses.h"

class PublishTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsThePost_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("daysAhead");
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("statusSent");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<bool>("keepsDate");
        QTest::newRow("new") << 0 << 0 << 0 << 0 << "Publishing Article" << false;
        QTest::newRow("draft reads as an update") << 1 << 0 << 2 << 2 << "Updating Article" << false;
        QTest::newRow("published") << 2 << 0 << 1 << 2 << "Updating Article" << true;
        QTest::newRow("scheduled") << 2 << 9 << 1 << 2 << "Scheduling Article" << true;
        QTest::newRow("note") << 3 << 0 << 0 << 3 << "Publishing Article" << false;
    }

    void sendsThePost()
    {
        QFETCH(int, status);
        QFETCH(int, daysAhead);
        QFETCH(bool, keepsDate);
        ComposeFixture screen;
        QVERIFY(screen.loadNew(status));
        QDateTime date = screen.post()->createdAt;
        if (daysAhead > 0)
            screen.post()->createdAt = date = screen.host.clock.present.addDays(daysAhead);
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        const ZLWordpressPost &sent = screen.host.sent.first().asSent;
        QTEST(screen.host.sent.first().kind, "kind");
        QTEST(sent.status, "statusSent");
        QTEST(screen.view.heading, "heading");
        QCOMPARE(sent.createdAt, keepsDate ? date : screen.host.clock.present);
        QCOMPARE(sent.title, "Title");
    }

    void sendsTheStoredTitleBack()
    {
        ComposeFixture screen;
        QVERIFY(screen.loadNew(ZLWordpressPost::Publish, " A &amp; B "));
        QVERIFY(screen.view.titleText != " A &amp; B "); // the reader decodes and trims
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        QCOMPARE(screen.host.sent.first().asSent.title, " A &amp; B ");
        QCOMPARE(screen.host.sent.first().asSent.storedContent, "<p>Text</p>");
    }

    void asksAboutAMissingTitle_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("warns");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("sent");
        QTest::newRow("ok") << 0 << true << 0 << true << true;
        QTest::newRow("cancel") << 1 << true << 1 << true << false;
        QTest::newRow("window closed") << 0 << true << -1 << true << false;
        QTest::newRow("no warning wanted") << 0 << false << 1 << false << true;
        QTest::newRow("published already") << 2 << true << 1 << false << true;
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
        if (QTest::qWaitFor([&screen] { return !screen.host.sent.isEmpty(); }, 200))
            QCOMPARE(screen.host.sent.first().asSent.content, "<p>Text</p>");
        QTEST(screen.host.sent.size() == 1, "sent");
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

static const RegisteredTest<PublishTest> registered;

#include "PublishTest.moc"
