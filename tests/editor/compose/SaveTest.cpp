#include "ComposeFixture.h"
#include "support/TestClasses.h"

class SaveTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsThePost_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("heading");
        QTest::newRow("new") << 0 << 0 << "Saving Draft";
        QTest::newRow("draft") << 1 << 1 << "Updating Draft";
        QTest::newRow("published") << 2 << 1 << "Moving to Drafts";
        QTest::newRow("note") << 3 << 0 << "Saving Draft";
    }

    void sendsThePost()
    {
        QFETCH(int, status);
        ComposeFixture screen;
        QVERIFY(screen.loadNew(status));
        screen.view.tokenTexts = QStringList{"News", "#qt"};
        screen.view.titleText = "Changed";
        screen.controller->didPressedSaveButton();
        QVERIFY(screen.sends(1));
        const ZLWordpressPost &sent = screen.host.sent.first().asSent;
        QTEST(screen.host.sent.first().kind, "kind");
        QTEST(screen.view.heading, "heading");
        QCOMPARE(sent.status, int(ZLWordpressPost::Draft));
        QCOMPARE(sent.title, "Changed");
        QCOMPARE(sent.content, "<p>Text</p>");
        QCOMPARE(sent.taxonomiesArray(), QStringList({"News", "#qt"}));
        QCOMPARE(sent.createdAt, screen.host.clock.present); // a save redates the post
        QVERIFY(screen.view.isLoading);
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

    void staysNewUntilTheBlogHasIt()
    {
        ComposeFixture screen;
        QVERIFY(screen.loadNew(ZLWordpressPost::New));
        screen.controller->didPressedSaveButton();
        QVERIFY(screen.sends(1));
        Q_EMIT screen.host.noted.didFailToUploadPost(screen.post());
        QCOMPARE(screen.post()->status, int(ZLWordpressPost::Draft));
        screen.controller->didPressedSaveButton();
        QVERIFY(screen.sends(2));
        QCOMPARE(screen.host.sent[1].kind, int(ZLWordpressService::NewPost));
        Q_EMIT screen.host.noted.didFailToUploadPost(screen.post());
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(3));
        QCOMPARE(screen.host.sent[2].kind, int(ZLWordpressService::NewPost));
        QCOMPARE(screen.host.sent[2].asSent.status, int(ZLWordpressPost::New));
    }
};

static const RegisteredTest<SaveTest> registered;

#include "SaveTest.moc"
