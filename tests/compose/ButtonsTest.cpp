#include "ComposeFixture.h"

#include <QRegularExpression>

class ButtonsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showTheTable_data()
    {
        const TestTable<int, int, int, QString> row({"secondsAhead", "status", "type", "shown"});
        const QString publish = "Publish, publish, calendar_off calendar_press";
        const QString update = "Update, update, calendar_published calendar_published";
        const QString schedule = "Schedule, schedule, calendar_active calendar_off";
        row("new page", 0, 0, 1, publish);
        row("draft", -9, 1, 0, publish);
        row("note", 0, 3, 0, publish);
        row("published", 0, 2, 0, update);
        row("published page", -9, 2, 1, update);
        row("draft for later", 1, 1, 1, schedule);
        row("new post for later", 1, 0, 0, schedule);
        row("published for later", 1, 2, 0, schedule);
    }
    void showTheTable()
    {
        QFETCH(int, secondsAhead);
        QFETCH(int, status);
        QFETCH(int, type);
        const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
        ZLWordpressPost post;
        post.createdAt = now.addSecs(secondsAhead);
        post.status = status;
        post.type = type;
        post.localPost = std::make_shared<ZLLocalPostRepresentation>();
        const PostButtons buttons = PostButtons::of(post, PostAction::Publish, now);
        QTEST(QString("%1, %2, %3 %4")
                  .arg(buttons.publish.text, buttons.publish.image, buttons.calendar.image,
                      buttons.calendar.alternateImage)
                  .remove(QRegularExpression("editor_(button_)?|_button")),
            "shown");
        const QString noun = type == ZLWordpressPost::Page ? "Page" : "Post";
        QCOMPARE(buttons.publish.toolTip, buttons.publish.text + ' ' + noun);
        QCOMPARE(buttons.save.toolTip, "Save " + noun);
        QCOMPARE(buttons.remove.toolTip, "Delete " + noun);
    }

    void areThoseOfABlankPost()
    {
        ComposeFixture screen;
        QVERIFY(screen.loadNew(ZLWordpressPost::Publish));
        QVERIFY(!screen.view.buttons.save.enabled);
        screen.controller->newPost();
        QVERIFY(screen.view.buttons.save.enabled);
        QCOMPARE(screen.view.buttons.publish.toolTip, "Publish post");
        QCOMPARE(screen.view.buttons.save.toolTip, "Save post");
        QCOMPARE(screen.view.buttons.remove.toolTip, "Delete post");
        QCOMPARE(screen.view.buttons.calendar.toolTip, "Schedule");
        QCOMPARE(screen.view.buttons.publish.image, "editor_publish_button");
    }
};

static const RegisteredTest<ButtonsTest> registered;

#include "ButtonsTest.moc"
