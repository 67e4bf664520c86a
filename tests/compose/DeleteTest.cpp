#include "ComposeFixture.h"

class DeleteTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksFirst()
    {
        for (const bool isNew : {true, false}) {
            ComposeFixture screen(isNew ? 0 : 2, "Title", "<p>x</p>", isNew ? 0 : 1);
            screen.pressDelete();
            QCOMPARE(screen.view.deleteQuestion, isNew ? "Deleting Post \"Title\"" : "Deleting Page \"Title\"");
            QVERIFY(screen.view.deleteText.contains(isNew ? "on this computer only" : "trash"));
            Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(0);
            QCOMPARE(screen.host.rows.size(), 1);
        }
    }

    void deletes_data()
    {
        const TestTable<int, int, bool, QString> row({"status", "rowStatus", "online", "deleted"});
        row("new", 0, 3, true, "here");
        row("new, offline", 0, 3, false, "here");
        row("solved conflict", 2, 6, false, "here");
        row("draft", 1, 1, true, "blog");
        row("published, changed here", 2, 4, true, "blog");
        row("draft, offline", 1, 1, false, "nowhere");
    }

    void deletes()
    {
        QFETCH(int, status);
        QFETCH(int, rowStatus);
        QFETCH(bool, online);
        QFETCH(QString, deleted);
        ComposeFixture screen(status);
        const LocalPostPtr row = screen.post()->localPost;
        row->status = rowStatus;
        screen.host.isOnline = online;
        int said = 0;
        QObject::connect(&screen.host.noted, &ZLNotifications::didDeletePost, [&said] { ++said; });
        screen.pressDelete();
        Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(1);
        QCOMPARE(screen.host.deletedOnBlog.size(), deleted == "blog" ? 1 : 0);
        QCOMPARE(screen.host.deletedFiles, deleted == "here" ? QList<QUrl>{row->localFile} : QList<QUrl>());
        QCOMPARE(screen.host.rows.isEmpty(), deleted == "here");
        QCOMPARE(screen.view.titleText, deleted == "here" ? "" : "Title");
        QCOMPARE(said, deleted == "nowhere" ? 0 : 1);
        QCOMPARE(screen.prompts.journal,
            deleted == "nowhere"
                ? QStringList("alert: No internet connection! You have to be connected to delete an online post.")
                : QStringList());
    }

    void asksTheBlogOnce()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        const QUrl file = screen.post()->localPost->localFile;
        const auto deleteAgain = [&screen] {
            screen.view.deleteQuestion.clear();
            screen.pressDelete();
            return !screen.view.deleteQuestion.isEmpty();
        };
        screen.host.hasPassword = false; // the login sheet comes
        QVERIFY(deleteAgain());
        Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(1);
        screen.host.hasPassword = true;
        QVERIFY(deleteAgain());
        Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(1);
        QVERIFY(!deleteAgain());
        screen.press(true);
        Q_EMIT screen.host.noted.deletionDidEnd(QUrl::fromLocalFile("/other/post.zalmo"));
        QVERIFY(!deleteAgain());
        QCOMPARE(screen.view.saveState, "Deleting…");
        Q_EMIT screen.host.noted.deletionDidEnd(file); // refused, since the post is still here
        QCOMPARE(screen.view.saveState, "");
        QVERIFY(deleteAgain());
        QVERIFY(screen.host.sent.isEmpty());
    }

    void isAboutThePostOfTheQuestion()
    {
        ComposeFixture screen(ZLWordpressPost::New);
        screen.pressDelete();
        QVERIFY(screen.load(screen.host.addPost("2", ZLWordpressPost::New, "Two", "<p>2</p>")));
        QCOMPARE(screen.view.deleteQuestion, "");
        Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(1);
        QCOMPARE(screen.host.rows.size(), 2);
    }
};

static const RegisteredTest<DeleteTest> registered;

#include "DeleteTest.moc"
