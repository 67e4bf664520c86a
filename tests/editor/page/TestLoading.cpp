#include "PageFixture.h"

#include <QCoroTask>
#include <QMetaEnum>
#include <QSignalSpy>
#include <csignal>

/// How a content comes into the page, the first time and again, and what happens when it is too much or the page dies.
class TestLoading : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_page.start()); }

    void theSamePostAgainKeepsCursorAndUndo()
    {
        const QString stored = u"<p>one</p>\n<p>two &copy;</p>"_qs;
        m_page.load(stored);
        m_page.putCursorBehind(u"two"_qs);
        m_page.type(u"X"_qs);
        const QString changed = QString(stored).replace(u"two"_qs, u"twoX"_qs);
        m_page.page.hidePopupWindows(); // as publishing does,
        m_page.view->setEnabled(false); // while the overlay covers it
        m_page.loadAgain(changed);
        m_page.view->setEnabled(true);
        m_page.view->setFocus();
        m_page.type(u"Y"_qs);
        QCOMPARE(m_page.body(), QString(changed).replace(u"twoX"_qs, u"twoXY"_qs));
        for (int n = 0; n < 4 && m_page.body() != stored; ++n)
            m_page.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_page.body(), stored);
    }

    void whatTheBlogChangedComesAround_data()
    {
        const TestTable<QString, QString> row; // before and after
        row("changed before", "<p>one</p>\n\n<p>the place</p>", "<p>one more</p>\n\n<p>the place</p>");
        row("changed behind", "the place\n\ntwo\n\nthree", "the place\n\n2\n\nthree &copy;");
        row("added", "<h2>a</h2>\n\nthe place\n\nend", "new\n\n<h2>a</h2>\n\nnew\n\nthe place\n\nnew\n\nend\n");
        row("taken away", "a\n\nb\n\nthe place\n\n<script>x</script>\n\nc", "b\n\nthe place");
        row("changed there", "the place\n\ntwo", "the place &copy;\n\ntwo");
        row("nothing as before", "<p>the place</p>", "<p>the place <b>of all</b></p>");
        row("block", paragraph("the place") + "\n\n<!-- wp:spacer /-->",
            paragraph("the place") + "\n\n" + paragraph("b"));
    }

    void whatTheBlogChangedComesAround()
    {
        const auto [stored, now] = testRow<QString, QString>();
        m_page.load(stored);
        m_page.putCursorBehind(u"the place"_qs);
        m_page.loadAgain(now);
        QCOMPARE(m_page.body(), now);
        m_page.type(u"X"_qs);
        QCOMPARE(m_page.body(), QString(now).replace(u"the place"_qs, u"the placeX"_qs));
    }

    void keepsTheOrderBehindAListThatWasTyped() // the browser wraps such a list, and what follows, into one element
    {
        m_page.load({});
        m_page.type(u"p"_qs);
        m_page.press(Qt::Key_Return);
        m_page.page.execCommand(u"InsertUnorderedList"_qs);
        m_page.type(u"one"_qs);
        for (const QString &text : {QString(), u"link here"_qs, u"second"_qs, u"third"_qs}) {
            m_page.press(Qt::Key_Return);
            m_page.type(text);
        }
        const QString now = m_page.body().replace(u"here"_qs, u"<b>here</b>"_qs);
        m_page.loadAgain(now);
        QCOMPARE(m_page.evaluate(u"document.getElementById('content').textContent"_qs).toString().remove(u'\n'),
            u"ponelink heresecondthird"_qs);
        QCOMPARE(m_page.body(), now);
    }

    void spacesOfTheBrowserStayPlain()
    {
        m_page.load({});
        m_page.type(u"a "_qs);
        m_page.page.execCommand(u"Italic"_qs);
        m_page.type(u"it"_qs);
        m_page.page.execCommand(u"Italic"_qs);
        m_page.type(u" plain"_qs);
        m_page.loadAgain(m_page.body());
        m_page.type(u"X"_qs);
        QCOMPARE(m_page.body(), u"a <i>it</i> plainX"_qs);
    }

    void hugeBodiesShow_data()
    {
        const TestTable<QString> table({"stored"});
        const auto row = [&table](const char *name, const QString &unit, int count, const QString &end = {}) {
            table(name, u"<p>first</p>\n"_qs + unit.repeated(count) + end);
        };
        row("blanks", u" "_qs, 1'000'000, u"end"_qs);
        row("tabs", u"\t"_qs, 1'000'000, u"end"_qs);
        row("line ends", u"\n"_qs, 1'000'000, u"end"_qs);
        row("blanks between words", u"word "_qs + u" "_qs.repeated(80'000), 3);
        row("nested elements", u"<div>"_qs, 100'000);
        row("unclosed tags", u"<b>x"_qs, 200'000);
        QString kinds;
        for (int n = 0; n < 40'000; ++n)
            kinds += u"<b class=a%1>x"_qs.arg(n);
        row("unclosed tags, each another", kinds, 1);
        row("paragraphs", u"<p>Some words of a paragraph that is as long as one.</p>\n\n"_qs, 90'000);
        row("paragraphs within bounds", u"<p>Some words of a paragraph that is as long as one.</p>\n\n"_qs, 15'000);
    }

    void hugeBodiesShow()
    {
        QFETCH(QString, stored);
        m_page.beginToLoad(stored);
        QTRY_COMPARE_WITH_TIMEOUT(m_page.body().size(), stored.size(), 20'000);
        m_page.load(u"next"_qs);
        QCOMPARE(m_page.body(), u"next"_qs);
    }

    void whatHangsThePageShowsAsItsSource()
    {
        QSignalSpy crashed(&m_page.page, &ComposePage::crashed);
        const QString stored = u"<p>one</p>\n<script>two</script>"_qs;
        m_page.evaluate(u"Element.prototype.getBoundingClientRect = () => { for (;;); }"_qs);
        m_page.beginToLoad(stored);
        QTRY_COMPARE_WITH_TIMEOUT(crashed.count(), 1, 30'000);
        QCOMPARE(m_page.body(), stored);
        QCOMPARE(m_page.evaluate(u"document.querySelector('.whole > code').textContent"_qs).toString(), stored);
        m_page.press(Qt::Key_A, Qt::ControlModifier);
        m_page.type(u"x"_qs); // a box that cannot be edited
        QCOMPARE(m_page.body(), stored);
        m_page.load(u"next"_qs);
        m_page.putCursorBehind(u"next"_qs);
        m_page.type(u"X"_qs);
        QCOMPARE(m_page.body(), u"nextX"_qs);
    }

    void returnsAfterACrash()
    {
        m_page.load(u"before"_qs);
        QSignalSpy crashed(&m_page.page, &ComposePage::crashed);
        const QFuture<EditorCalls::Answer> inFlight = m_page.page.calls().call(EditorCalls::Function::getBodyContent);
        m_page.page.execCommand(u"Bold"_qs);
        m_page.typeOn(u"lost"_qs);
        ::kill(pid_t(m_page.view->page()->renderProcessPid()), SIGKILL);
        QTRY_COMPARE_WITH_TIMEOUT(crashed.count(), 1, 20'000);
        QVERIFY(inFlight.isFinished());
        m_page.load(u"after"_qs);
        m_page.putCursorBehind(u"after"_qs);
        m_page.type(u"X"_qs);
        QCOMPARE(m_page.body(), u"afterX"_qs);
    }

    void keepsContentLoadedBeforeReady()
    {
        PageFixture other;
        other.beginToLoad(u"older"_qs);
        other.beginToLoad(u"newer"_qs);
        QVERIFY(other.start());
        QCOMPARE(other.body(), u"newer"_qs);
    }

    void hasEveryFunctionOfTheContract()
    {
        const auto names = QMetaEnum::fromType<EditorCalls::Function>();
        for (int n = 0; n < names.keyCount(); ++n) {
            const QString name = QString::fromLatin1(names.key(n));
            QCOMPARE(m_page.evaluate(u"typeof window."_qs + name).toString(), u"function"_qs);
        }
    }

    void answersNothingWithoutAPage()
    {
        ZLEditorPage page;
        QVERIFY(!QCoro::waitFor(page.getBodyContent()).has_value());

        auto waiting = std::make_unique<PageFixture>();
        QVERIFY(waiting->start());
        auto task = waiting->page.getBodyContent();
        waiting.reset();
        QVERIFY(!QCoro::waitFor(std::move(task)).has_value());
    }

    void givesTheLastReportToItsPost()
    {
        m_page.load(u"first"_qs);
        m_page.putCursorBehind(u"first"_qs);
        QMap<int, QString> reports;
        connect(&m_page.page, &ComposePage::setPostContent, this,
            [&reports](const QString &html, int owner) { reports[owner] = html; });
        m_page.type(u"X"_qs);
        m_page.beginToLoad(u"second"_qs, 2);
        QCOMPARE(m_page.body(), u"second"_qs); // the answer waits for the content
        QCOMPARE(reports, (QMap<int, QString>{{1, u"firstX"_qs}}));
        m_page.putCursorBehind(u"second"_qs);
        m_page.type(u"Y"_qs);
        QTRY_COMPARE(reports.value(2), u"secondY"_qs);
        disconnect(&m_page.page, &ComposePage::setPostContent, this, nullptr);
    }

private:
    PageFixture m_page;
};

static const RegisteredTest<TestLoading> registered;

#include "TestLoading.moc"
