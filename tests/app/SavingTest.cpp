#include "AppFixture.h"

namespace {

/// A post on the screen whose file cannot be written while a file stands in the place of its folder.
struct UnwritablePost : AppFixture {
    UnwritablePost()
    {
        start();
        (void)writePost("Mine", "<p>x</p>");
        const QUrl file = rows().first()->localFile;
        compose.document = documentOf(file);
        path = file.toLocalFile();
    }
    ~UnwritablePost() { setBroken(false); }
    /// Takes the post's folder away, or puts it back.
    void setBroken(bool broken)
    {
        const QString folder = QFileInfo(path).path(), away = folder + ".away";
        if (broken == QFile::exists(away))
            return;
        if (!broken)
            QVERIFY(QFile::remove(folder));
        QVERIFY(QDir().rename(broken ? folder : away, broken ? away : folder));
        if (broken)
            writeFile(folder);
    }
    void type(const QString &text)
    {
        compose.document->post.content = text;
        compose.document->updateChangeCount();
        app().documentController().saveAll();
    }
    qsizetype alerts() const { return prompts.journal.filter("alert: The post could not be saved").size(); }
    QString path;
};

using Spoil = std::function<void(UnwritablePost &)>;

void breakFile(UnwritablePost &f)
{
    f.setBroken(true);
    f.compose.document->post.title = "Mine";
    f.compose.document->updateChangeCount();
}

void sendPost(UnwritablePost &f)
{
    f.sendLate(f.writePost("On its way", "<p>x</p>"), "wp.newPost");
}

void breakStore(UnwritablePost &f)
{
    f.current().selectedAccount()->blog_name = "Renamed";
    f.runOnStore("DROP TABLE Account"); // something has damaged it
}

} // namespace

class SavingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysAFailureOncePerStreak()
    {
        UnwritablePost f;
        f.setBroken(true);
        f.type("<p>one</p>");
        f.type("<p>two</p>");
        QCOMPARE(f.alerts(), 1);
        QVERIFY(f.prompts.journal.last().contains(f.path));
        f.setBroken(false);
        f.type("<p>three</p>");
        QVERIFY(contentsOf(f.path).contains("three"));
        f.setBroken(true);
        f.type("<p>four</p>");
        QCOMPARE(f.alerts(), 2);
    }

    void asksBeforeQuitting_data()
    {
        const TestTable<Spoil, QList<int>, bool, QString, QString> row; // answers, quits, question, details
        const QString unsaved = "ask: A post could not be saved. Quit anyway?", lost = "would be lost:\n“Mine”";
        const QString onItsWay = "ask: A post is still on its way";
        const QString noStore = "ask: Could not save changes while quitting. Quit anyway? [Quit anyway|Cancel]";
        row("all saved", [](UnwritablePost &) {}, {}, true, {}, {});
        row("unsaved text: quit anyway", breakFile, {0}, true, unsaved, lost);
        row("unsaved text: stay", breakFile, {1}, false, unsaved, lost);
        row("unsaved text: return", breakFile, {}, false, unsaved, lost);
        row("a post on its way: quit anyway", sendPost, {0}, true, onItsWay, "On its way");
        row("a post on its way: return", sendPost, {}, false, onItsWay, "On its way");
        row("no store: quit anyway", breakStore, {0}, true, noStore, {});
        row("no store: return", breakStore, {}, false, noStore, {});
    }

    void asksBeforeQuitting()
    {
        const auto [spoil, answers, quits, question, details] = testRow<Spoil, QList<int>, bool, QString, QString>();
        UnwritablePost f;
        spoil(f);
        f.prompts.takeJournal();
        f.prompts.answers = answers;
        QCOMPARE(QCoro::waitFor(f.app().applicationShouldTerminate()), quits);
        QCOMPARE(f.prompts.journal.filter("ask: ").size(), question.isNull() ? 0 : 1);
        QVERIFY(question.isNull() || f.prompts.journal.filter("ask: ").first().startsWith(question));
        QVERIFY(details.isNull() || f.prompts.details.last().contains(details));

        const int sent = f.network.heldCount();
        f.network.release();
        QTRY_COMPARE(f.list.updated.size(), sent);
        QVERIFY(sent == 0 || QCoro::waitFor(f.app().applicationShouldTerminate())); // it has arrived
    }
};

static const RegisteredTest<SavingTest> registered;

#include "SavingTest.moc"
