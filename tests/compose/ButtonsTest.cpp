#include "ComposeFixture.h"

namespace {
const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

struct Shown {
    QString word, publishImage, calendarImage, calendarAlternate;
};
const Shown publish{"Publish", "editor_publish_button", "editor_button_calendar_off", "editor_button_calendar_press"};
const Shown update{
    "Update", "editor_update_button", "editor_button_calendar_published", "editor_button_calendar_published"};
const Shown schedule{
    "Schedule", "editor_schedule_button", "editor_button_calendar_active", "editor_button_calendar_off"};
} // namespace

class ButtonsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showTheTable_data()
    {
        const TestTable<QDateTime, int, int, Shown> row({"date", "status", "type", "shown"});
        const QDateTime later = now.addSecs(1);
        row("new post without a date", QDateTime(), 0, 0, publish);
        row("new page", now, 0, 1, publish);
        row("draft", now.addDays(-1), 1, 0, publish);
        row("note", QDateTime(), 3, 0, publish);
        row("published", now, 2, 0, update);
        row("published page", now.addYears(-1), 2, 1, update);
        row("draft for later", later, 1, 1, schedule);
        row("new post for later", later, 0, 0, schedule);
        row("published for later", later, 2, 0, schedule);
    }

    void showTheTable()
    {
        QFETCH(QDateTime, date);
        QFETCH(int, status);
        QFETCH(int, type);
        QFETCH(Shown, shown);
        ZLWordpressPost post;
        post.createdAt = date;
        post.status = status;
        post.type = type;
        post.localPost = std::make_shared<ZLLocalPostRepresentation>();
        const PostButtons buttons = PostButtons::of(post, PostAction::Publish, now);
        const QString noun = type == ZLWordpressPost::Page ? "Page" : "Post";
        QCOMPARE(buttons.publish.image, shown.publishImage);
        QCOMPARE(buttons.publish.alternateImage, shown.publishImage + "_down");
        QCOMPARE(buttons.publish.toolTip, shown.word + ' ' + noun);
        QCOMPARE(buttons.publish.text, shown.word);
        QCOMPARE(buttons.calendar.image, shown.calendarImage);
        QCOMPARE(buttons.calendar.alternateImage, shown.calendarAlternate);
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
