#include "ComposeFixture.h"

#include "model/PostSync.h"

namespace {
struct ConflictFixture : ComposeFixture {
    explicit ConflictFixture(const QString &content = "<p>Mine</p>")
    {
        row = host.addPost("41", ZLWordpressPost::Publish, "Mine", content);
        host.putConflictBeside(row, "Theirs", "<p>Theirs</p>");
    }
    bool open()
    {
        const bool came = load(row);
        settle();
        return came;
    }
    bool isThere(const QString &name) const
    {
        return QFile::exists(QFileInfo(row->localFile.toLocalFile()).dir().filePath(name));
    }

    LocalPostPtr row;
};
const QStringList asked{"conflict: Mine | Theirs"};
} // namespace

class ConflictTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksWheneverItIsOpened()
    {
        ConflictFixture screen;
        for (int round = 0; round < 2; ++round) {
            QVERIFY(screen.open());
            QCOMPARE(screen.prompts.takeJournal(), asked);
            QCOMPARE(screen.view.noticeAction, "Choose…");
            screen.controller->newPost();
        }
        QCOMPARE(screen.view.notice, "");
        QVERIFY(screen.open());
        screen.prompts.takeJournal();
        Q_EMIT screen.view.didPressedNoticeAction();
        screen.settle();
        QCOMPARE(screen.prompts.takeJournal(), asked);
    }

    void staysOneWhateverIsTyped()
    {
        ConflictFixture screen;
        QVERIFY(screen.open());
        screen.page.type("<p>Mine, longer</p>");
        screen.view.typeTitle("Mine too");
        screen.view.typeTokens({"News"});
        QCOMPARE(screen.onDisk(screen.row)->fileInfo.status, "conflict");
        screen.prompts.takeJournal();
        for (const bool publish : {true, false}) {
            screen.press(publish);
            screen.settle();
        }
        screen.controller->doActionForCurrentPost(PostAction::Delete);
        screen.settle();
        QCOMPARE(screen.prompts.takeJournal().first(), "conflict: Mine too | Theirs");
        QVERIFY(screen.host.sent.isEmpty());
        QCOMPARE(screen.view.deleteQuestion, "");
    }

    void doesWhatTheWriterChose_data()
    {
        const TestTable<ConflictAnswer, QString, QString, QString, bool> row(
            {"answer", "title", "status", "copy", "shows"});
        row("mine", ConflictAnswer::ChooseLocal, "Mine", "modified", QString(), false);
        row("theirs", ConflictAnswer::ChooseRemote, "Theirs", "", QString(), true);
        row("mine, and a copy", ConflictAnswer::KeepBothLocal, "Mine", "modified", "[conflicted] Theirs", false);
        row("theirs, and a copy", ConflictAnswer::KeepBothRemote, "Theirs", "", "[conflicted] Mine", true);
        row("not now", ConflictAnswer::NotNow, "Mine", "conflict", QString(), false);
    }

    void doesWhatTheWriterChose()
    {
        QFETCH(ConflictAnswer, answer);
        QFETCH(QString, copy);
        QFETCH(bool, shows);
        ConflictFixture screen;
        screen.prompts.conflictAnswers = {answer};
        QVERIFY(screen.open());
        const bool isAnswered = answer != ConflictAnswer::NotNow;
        const DocumentPtr written = screen.onDisk(screen.row);
        QTEST(written->post.title, "title");
        QTEST(QString(written->fileInfo.status), "status");
        QTEST(screen.view.titleText, "title");
        QCOMPARE(screen.page.loaded.last(), shows ? "<p>Theirs</p>" : "<p>Mine</p>");
        QCOMPARE(screen.page.loaded.size(), shows ? 3 : 2); // the cursor stays in a text that is shown already
        QCOMPARE(screen.isThere(PostSync::conflictName), !isAnswered);
        QCOMPARE(screen.view.notice.isEmpty(), isAnswered);
        QCOMPARE(screen.isThere(PostSync::conflictSolvedName), !copy.isNull());
        if (!copy.isNull()) {
            const QString file = QFileInfo(screen.row->localFile.toLocalFile()).dir().filePath("conflict-solved.zalmo");
            QCOMPARE((*ZLDocument::open(QUrl::fromLocalFile(file)))->post.title, copy);
        }
        screen.press(true);
        screen.settle();
        QCOMPARE(screen.host.sent.size(), isAnswered ? 1 : 0); // from then on it is a post like others
    }

    void keepsTheLastWords()
    {
        ConflictFixture screen;
        QVERIFY(screen.open());
        screen.page.holdsAnswers = true;
        screen.prompts.conflictAnswers = {ConflictAnswer::KeepBothRemote};
        screen.press(true);
        QTRY_COMPARE(screen.page.held.size(), 1);
        QVERIFY(!screen.isThere(PostSync::conflictSolvedName));
        screen.page.type("<p>Mine, to the last word</p>");
        screen.page.answer(screen.page.body);
        QTRY_COMPARE(screen.view.titleText, "Theirs");
        const QString copy = QFileInfo(screen.row->localFile.toLocalFile()).dir().filePath("conflict-solved.zalmo");
        QCOMPARE((*ZLDocument::open(QUrl::fromLocalFile(copy)))->post.content, "<p>Mine, to the last word</p>");
    }

    void isAboutThePostOfTheQuestion()
    {
        ConflictFixture screen;
        QVERIFY(screen.open());
        const LocalPostPtr other = screen.host.addPost("2", ZLWordpressPost::Draft, "Two", "<p>2</p>");
        screen.prompts.conflictAnswers = {ConflictAnswer::ChooseRemote};
        screen.prompts.whileAsking = [&screen] { screen.controller->newPost(); };
        screen.press(true);
        screen.settle();
        QCOMPARE(screen.onDisk(screen.row)->post.title, "Mine");
        QVERIFY(screen.isThere(PostSync::conflictName));
        QCOMPARE(screen.onDisk(other)->post.title, "Two");
    }

    void opensWhenTheBlogRefusesAnUpdate()
    {
        ComposeFixture screen(ZLWordpressPost::Publish, "Mine");
        screen.press(true);
        QVERIFY(screen.sends(1));
        screen.host.putConflictBeside(screen.post()->localPost, "Theirs", "<p>Theirs</p>");
        screen.host.sent.first()->end({.kind = UploadOutcome::ConflictFound});
        QTRY_COMPARE(screen.prompts.journal, asked);
    }
};

static const RegisteredTest<ConflictTest> registered;

#include "ConflictTest.moc"
