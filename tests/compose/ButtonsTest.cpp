#include "ComposeFixture.h"

namespace {
const QDateTime now(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);

struct Shown {
    QString word, publishImage, calendarImage, calendarAlternate;
    bool canSave;
};
const Shown publish{
    "Publish", "editor_publish_button", "editor_button_calendar_off", "editor_button_calendar_press", true};
const Shown update{
    "Update", "editor_update_button", "editor_button_calendar_published", "editor_button_calendar_published", false};
const Shown schedule{
    "Schedule", "editor_schedule_button", "editor_button_calendar_active", "editor_button_calendar_off", true};

void check(const FakeComposeView &view, const Shown &shown, const QString &noun)
{
    QCOMPARE(view.publish.image, shown.publishImage);
    QCOMPARE(view.publish.alternateImage, shown.publishImage + "_down");
    QCOMPARE(view.publish.toolTip, shown.word + ' ' + noun);
    QCOMPARE(view.publish.text, shown.word);
    QCOMPARE(view.calendar.image, shown.calendarImage);
    QCOMPARE(view.calendar.alternateImage, shown.calendarAlternate);
    QCOMPARE(view.save.enabled, shown.canSave);
    QCOMPARE(view.save.alpha, shown.canSave ? 1.0 : 0.5);
    QCOMPARE(view.save.toolTip, "Save " + noun);
    QCOMPARE(view.deleteToolTip, "Delete " + noun);
    QVERIFY(view.publish.enabled);
}
} // namespace

class ButtonsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showTheTable_data()
    {
        const TestTable<QDateTime, int, int, Shown> row({"date", "status", "type", "shown"});
        Shown scheduledOnBlog = schedule;
        scheduledOnBlog.canSave = false;
        const QDateTime later = now.addSecs(1);
        row("new post without a date", QDateTime(), 0, 0, publish);
        row("new page", now, 0, 1, publish);
        row("draft", now.addDays(-1), 1, 0, publish);
        row("note", QDateTime(), 3, 0, publish);
        row("published", now, 2, 0, update);
        row("published page", now.addYears(-1), 2, 1, update);
        row("draft for later", later, 1, 1, schedule);
        row("new post for later", later, 0, 0, schedule);
        row("published for later", later, 2, 0, scheduledOnBlog);
    }

    void showTheTable()
    {
        QFETCH(QDateTime, date);
        QFETCH(int, status);
        QFETCH(int, type);
        QFETCH(Shown, shown);
        FakeComposeView view;
        ZLWordpressPost post;
        post.createdAt = date;
        post.status = status;
        post.type = type;
        ComposeButtons(view).setActionButtonsForPost(post, now);
        check(view, shown, type == ZLWordpressPost::Page ? "Page" : "Post");
    }

    void areOffForASolvedConflict()
    {
        FakeComposeView view;
        ZLWordpressPost post;
        post.localPost = std::make_shared<ZLLocalPostRepresentation>();
        post.localPost->status = ZLLocalPostRepresentation::ConflictSolved;
        ComposeButtons(view).setActionButtonsForPost(post, now);
        for (const ComposeView::Button &button : {view.save, view.publish}) {
            QVERIFY(!button.enabled);
            QCOMPARE(button.alpha, 0.5);
        }
    }

    void areThoseOfABlankPost()
    {
        ComposeFixture screen;
        QCOMPARE(screen.view.publish.toolTip, "Publish post");
        QCOMPARE(screen.view.save.toolTip, "Save post");
        QCOMPARE(screen.view.deleteToolTip, "Delete post");
        QCOMPARE(screen.view.calendar.toolTip, "Schedule");
        QVERIFY(screen.loadNew(ZLWordpressPost::Publish));
        QVERIFY(!screen.view.save.enabled);
        screen.controller->cleanEditorForNewPost();
        QVERIFY(screen.view.save.enabled);
        QCOMPARE(screen.view.publish.image, "editor_publish_button");
        QCOMPARE(screen.view.calendar.image, "editor_button_calendar_off");
        // This road leaves the calendar's other image as it was.
        QCOMPARE(screen.view.calendar.alternateImage, "editor_button_calendar_published");
    }
};

static const RegisteredTest<ButtonsTest> registered;

#include "ButtonsTest.moc"
