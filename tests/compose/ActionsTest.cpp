#include "ComposeFixture.h"

#include "compose/PostAction.h"

namespace {
using Row = ZLLocalPostRepresentation;
constexpr PostActions newPost = PostAction::Publish | PostAction::Save | PostAction::Delete;
constexpr PostActions published = PostAction::Publish | PostAction::MoveToDrafts | PostAction::Delete;
constexpr PostActions keptCopy = PostAction::PublishAsNew | PostAction::Delete;
constexpr PostActions none = PostAction::None;

/// What pressing it led to.
QString deed(ComposeFixture &screen)
{
    screen.settle();
    QStringList deeds = screen.prompts.takeJournal();
    for (const auto &upload : screen.host.sent)
        deeds.append(QString("sent %1").arg(upload->kind()));
    if (!screen.view.deleteQuestion.isEmpty())
        deeds.append("asked for deletion");
    return deeds.join(',');
}
} // namespace

/// What may be done with a post, by whichever road.
class ActionsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void followTheState_data()
    {
        const TestTable<int, int, PostActions, PostActions> row({"rowStatus", "status", "ofRow", "ofPost"});
        row("new", Row::New, 0, newPost, newPost);
        row("draft", Row::Draft, 1, newPost, newPost);
        row("draft, changed here", Row::Modified, 1, newPost, newPost);
        row("published", Row::Published, 2, published, published);
        row("page", Row::PublishedPage, 2, published, published);
        row("scheduled", Row::Scheduled, 2, published, published);
        row("published, changed here", Row::Modified, 2, published, published);
        row("note", Row::EvernoteNote, 3, newPost, newPost);
        row("kept copy", Row::ConflictSolved, 0, keptCopy, keptCopy);
        row("kept copy of old, with the blog's id", Row::ConflictSolved, 2, keptCopy, keptCopy);
    }

    void followTheState()
    {
        QFETCH(int, rowStatus);
        QFETCH(int, status);
        QFETCH(PostActions, ofPost);
        ZLWordpressPost post;
        post.status = status;
        post.localPost = std::make_shared<Row>();
        post.localPost->status = rowStatus;
        post.localPost->published = status == ZLWordpressPost::Publish;
        QTEST(actionsOfRow(*post.localPost), "ofRow");
        QCOMPARE(actionsOfPost(post, nullptr), ofPost | PostAction::Edit);
        const PostButtons buttons = PostButtons::of(post, ofPost, {});
        QCOMPARE(buttons.save.enabled, ofPost.testFlag(PostAction::Save));
        QCOMPARE(buttons.publish.enabled, ofPost.testFlag(PostAction::Publish));
        QCOMPARE(buttons.remove.enabled, ofPost.testFlag(PostAction::Delete));
    }

    void areTheSameByEveryRoad_data()
    {
        const TestTable<QString, PostAction, QString> row({"post", "action", "deed"});
        const auto all = [&row](const char *name, const QString &post, const QStringList &deeds) {
            const QList<PostAction> actions{PostAction::Publish, PostAction::Save, PostAction::MoveToDrafts,
                PostAction::Delete, PostAction::Revert, PostAction::PublishAsNew};
            for (int index = 0; index < actions.size(); ++index)
                row(qPrintable(QString("%1, %2").arg(name).arg(index)), post, actions.at(index), deeds.value(index));
        };
        const QString moving = "ask: Move this post to the drafts? [Move to Drafts|Cancel],sent 1";
        const QString question = "conflict: Title | Blog's";
        all("draft", "draft", {"sent 2", "sent 1", "", "asked for deletion"});
        all("published", "published", {"sent 1", "", moving, "asked for deletion"});
        all("kept copy", "copy", {"", "", "", "asked for deletion", "", "sent 0"});
        all("conflict", "conflict", {question, "", question, question, question});
        all("no blog", "no blog", {});
    }

    void areTheSameByEveryRoad()
    {
        QFETCH(QString, post);
        QFETCH(PostAction, action);
        ComposeFixture screen;
        const bool isCopy = post == "copy";
        const LocalPostPtr row = screen.host.addPost("41",
            post == "draft" ? 1
                : isCopy    ? 0
                            : 2,
            "Title", "<p>Text</p>");
        if (post == "conflict")
            screen.host.putConflictBeside(row, "Blog's", "<p>Theirs</p>");
        QVERIFY(screen.load(isCopy ? screen.host.addKeptCopy(row) : row));
        screen.settle();
        screen.prompts.takeJournal();
        if (post == "no blog")
            screen.host.account = nullptr;
        screen.controller->doActionForCurrentPost(action);
        QTEST(deed(screen), "deed");
        // The menu's road loads the post first and asks about a conflict once.
        screen.host.sent.clear();
        screen.view.deleteQuestion.clear();
        if (post == "no blog" || isCopy)
            return;
        screen.controller->newPost();
        screen.controller->loadPost(row, action);
        const QString expected = post == "conflict" ? QString("conflict: Title | Blog's") : QTest::currentDataTag();
        if (post == "conflict")
            QCOMPARE(deed(screen), expected);
        else
            QTEST(deed(screen), "deed");
    }

    void waitForTheEndOfAnUpload()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        const PostActions before = screen.controller->actions();
        screen.press(true);
        QVERIFY(screen.sends(1));
        QCOMPARE(screen.controller->actions(), none);
        QVERIFY(!screen.view.buttons.publish.enabled);
        screen.host.sent.first()->end({.kind = UploadOutcome::Failed});
        QCOMPARE(screen.controller->actions(), before); // a draft as before, for button and menu alike
        QVERIFY(screen.view.buttons.save.enabled);
        screen.press(true);
        QVERIFY(screen.sends(2));
        screen.host.sent.last()->end({.kind = UploadOutcome::Updated});
        QCOMPARE(screen.controller->actions(), none); // its file does not know yet
        Q_EMIT screen.host.noted.didUpdatePost(screen.post(), {screen.post(), screen.post()->localPost});
        QCOMPARE(screen.controller->actions(), before);
    }
};

static const RegisteredTest<ActionsTest> registered;

#include "ActionsTest.moc"
