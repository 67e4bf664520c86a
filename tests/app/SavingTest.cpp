#include "ConnectedBlog.h"

#include <QCoroTask>

namespace {

/// A post on the screen whose file cannot be written: a folder of its name stands in the way of the temporary file.
struct UnwritablePost : AppFixture {
    UnwritablePost()
    {
        launchWithBlog();
        (void)writePost(u"Mine"_qs, u"<p>x</p>"_qs);
        const QUrl file = rows().first()->localFile;
        compose.document = QCoro::waitFor(app().documentController().openDocumentWithContentsOfURL(file)).value();
        path = file.toLocalFile();
    }
    /// Takes the post's folder away, or puts it back.
    void setBroken(bool broken)
    {
        const QString folder = QFileInfo(path).path();
        if (broken) {
            QVERIFY(QDir().rename(folder, folder + u".away"_qs));
            writeFile(folder);
        } else {
            QVERIFY(QFile::remove(folder));
            QVERIFY(QDir().rename(folder + u".away"_qs, folder));
        }
    }
    void type(const QString &text)
    {
        compose.document->post.content = text;
        compose.document->updateChangeCount();
        app().documentController().saveAll();
    }
    qsizetype alerts() const { return prompts.journal.filter(u"alert: The post could not be saved"_qs).size(); }
    QString path;
};

} // namespace

class SavingTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysAFailureOncePerStreak()
    {
        UnwritablePost fixture;
        fixture.setBroken(true);
        fixture.type(u"<p>one</p>"_qs);
        fixture.type(u"<p>two</p>"_qs);
        QCOMPARE(fixture.alerts(), 1);
        QVERIFY(fixture.prompts.journal.last().contains(fixture.path));
        fixture.setBroken(false);
        fixture.type(u"<p>three</p>"_qs);
        QVERIFY(contentsOf(fixture.path).contains("three"));
        fixture.setBroken(true);
        fixture.type(u"<p>four</p>"_qs);
        QCOMPARE(fixture.alerts(), 2);
        fixture.setBroken(false);
    }

    void asksBeforeQuittingWithUnsavedText_data()
    {
        const TestTable<bool, QList<int>, bool> row({"isBroken", "answers", "quits"}); // no answer: the default button
        row("all saved", false, {}, true);
        row("quit anyway", true, {0}, true);
        row("stay", true, {1}, false);
        row("return", true, {}, false);
    }

    void asksBeforeQuittingWithUnsavedText()
    {
        QFETCH(bool, isBroken);
        QFETCH(QList<int>, answers);
        UnwritablePost fixture;
        if (isBroken)
            fixture.setBroken(true);
        fixture.compose.document->post.title = u"Mine"_qs;
        fixture.compose.document->updateChangeCount();
        fixture.prompts.answers = answers;
        QTEST(QCoro::waitFor(fixture.app().applicationShouldTerminate()), "quits");
        QCOMPARE(fixture.prompts.journal.filter(u"Quit anyway?"_qs).size(), isBroken ? 1 : 0);
        QCOMPARE(fixture.prompts.details.filter(u"would be lost:\n“Mine”"_qs).size(), isBroken ? 1 : 0);
        if (isBroken)
            fixture.setBroken(false);
    }

    void asksBeforeQuittingWhileAPostIsOnItsWay_data()
    {
        const TestTable<QList<int>, bool> row({"answers", "quits"}); // no answer: the default button
        row("quit anyway", {0}, true);
        row("return", {}, false);
    }

    void asksBeforeQuittingWhileAPostIsOnItsWay()
    {
        QFETCH(QList<int>, answers);
        ConnectedBlog fixture;
        fixture.start();
        const PostPtr post = fixture.writePost(u"On its way"_qs, u"<p>x</p>"_qs);
        fixture.sendLate(post, u"wp.newPost"_qs);
        fixture.prompts.answers = answers;
        QTEST(QCoro::waitFor(fixture.app().applicationShouldTerminate()), "quits");
        QCOMPARE(fixture.prompts.journal.filter(u"ask: A post is still on its way"_qs).size(), 1);
        QVERIFY(fixture.prompts.details.last().contains(u"On its way"));
        fixture.network.release();
        QTRY_COMPARE(fixture.list.updated.size(), 1);
        fixture.prompts.takeJournal();
        QVERIFY(QCoro::waitFor(fixture.app().applicationShouldTerminate()));
        QCOMPARE(fixture.prompts.journal, QStringList());
    }

    void asksBeforeQuittingWithoutTheStore_data()
    {
        const TestTable<QList<int>, bool> row({"answers", "quits"}); // no answer: the default button
        row("quit anyway", {0}, true);
        row("cancel", {1}, false);
        row("return", {}, false);
    }

    void asksBeforeQuittingWithoutTheStore()
    {
        QFETCH(QList<int>, answers);
        AppFixture fixture;
        fixture.launchWithBlog();
        QTRY_VERIFY(!fixture.list.isSyncing);
        fixture.app().currentBlog().selectedAccount()->blog_name = u"Renamed"_qs;
        fixture.runOnStore(u"DROP TABLE Account"_qs); // something has damaged it
        fixture.prompts.answers = answers;
        QTEST(QCoro::waitFor(fixture.app().applicationShouldTerminate()), "quits");
        QVERIFY(fixture.prompts.journal.last().startsWith(
            u"ask: Could not save changes while quitting. Quit anyway? [Quit anyway|Cancel]"));
    }
};

static const RegisteredTest<SavingTest> registered;

#include "SavingTest.moc"
