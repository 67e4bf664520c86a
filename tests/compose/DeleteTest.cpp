#include "ComposeFixture.h"

#include <QSignalSpy>

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

    void deletes()
    {
        const QString here = "here", onBlog = "blog", nowhere = "nowhere";
        for (const auto &[status, rowStatus, online, deleted] :
            {std::tuple(0, 3, true, here), {0, 3, false, here}, {2, 6, false, here}, // the last solved a conflict
                {1, 1, true, onBlog}, {2, 4, true, onBlog}, {1, 1, false, nowhere}}) {
            ComposeFixture screen(status);
            const LocalPostPtr row = screen.post()->localPost;
            row->status = rowStatus;
            screen.host.isOnline = online;
            QSignalSpy said(&screen.host.noted, &ZLNotifications::didDeletePost);
            screen.pressDelete();
            Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(1);
            QCOMPARE(screen.host.deletedOnBlog.size(), deleted == onBlog ? 1 : 0);
            QCOMPARE(screen.host.deletedFiles, deleted == here ? QList<QUrl>{row->localFile} : QList<QUrl>());
            QCOMPARE(screen.host.rows.isEmpty(), deleted == here);
            QCOMPARE(screen.view.titleText, deleted == here ? "" : "Title");
            QCOMPARE(said.size(), deleted == nowhere ? 0 : 1);
            QCOMPARE(screen.prompts.journal.join(""),
                deleted == nowhere ? "alert: No internet connection! You have to be connected to delete an online post."
                                   : "");
        }
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
        QVERIFY(screen.view.isLoading); // what is typed now would go with the post
        Q_EMIT screen.host.noted.deletionDidEnd(file); // refused, since the post is still here
        QVERIFY(!screen.view.isLoading);
        QVERIFY(deleteAgain());
        QVERIFY(screen.host.sent.isEmpty());
    }

    void coversThePostUntilTheLoginIsSettled()
    {
        for (const bool hasNewLogin : {false, true}) {
            ComposeFixture screen(ZLWordpressPost::Draft);
            screen.host.hasNewLogin = hasNewLogin;
            screen.pressDelete();
            Q_EMIT screen.view.alertViewDidDismissWithButtonIndex(1);
            Q_EMIT screen.host.noted.deletionDidEnd(screen.post()->localPost->localFile, true);
            screen.settle();
            QCOMPARE(screen.host.deletedOnBlog.size(), hasNewLogin ? 2 : 1);
            QCOMPARE(screen.view.isLoading, hasNewLogin);
        }
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
