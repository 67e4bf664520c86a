#include "PageFixture.h"
#include "editor/EditorScheme.h"
#include "support/Files.h"

#include <QClipboard>
#include <QCoroTask>
#include <QDirIterator>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <csignal>

/// What a body or the clipboard holds never runs, and a page that dies comes back.
class TestSafety : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_page.start());
        m_page.evaluate(u"window.hits = 0"_qs);
    }

    void hostileBodiesAreInert_data()
    {
        QTest::addColumn<QString>("stored");
        QDirIterator files(BODIES, {u"hostile-*.html"_qs});
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(files.fileName())) << QString(contentsOf(path));
        }
    }

    void hostileBodiesAreInert()
    {
        QFETCH(QString, stored);
        m_page.load(stored);
        QTest::mouseClick(m_page.view->focusProxy(), Qt::LeftButton, {}, {200, 60});
        m_page.evaluate(u"for (const e of document.querySelectorAll('#content *')) {"
                        "  e.dispatchEvent(new Event('error')); e.dispatchEvent(new MouseEvent('click', "
                        "{bubbles: true, cancelable: true})); }"_qs);
        QCOMPARE(m_page.evaluate(u"new Promise(r => 0), window.hits"_qs).toInt(), 0);
        QCOMPARE(m_page
                     .evaluate(
                         u"document.querySelectorAll('#content :is(script, iframe, form, input, object, embed, style, "
                         "link, meta, base, svg, math, video, template, [onerror], [onclick], [autofocus])').length"_qs)
                     .toInt(),
            0);
        QCOMPARE(m_page.body(), stored);
        QVERIFY(!m_page.reports.contains(u"owned"_qs));
        QCOMPARE(m_page.view->url().adjusted(QUrl::RemoveFragment), EditorScheme::pageUrl());
    }

    void hostileClipboardIsInert()
    {
        m_page.load(u"start"_qs);
        m_page.putCursorBehind(u"start"_qs);
        auto *clip = new QMimeData;
        clip->setHtml(u"<b>kept</b> "_qs + contentsOf(BODIES "/hostile-scripts.html"));
        QGuiApplication::clipboard()->setMimeData(clip);
        m_page.press(Qt::Key_V, Qt::ControlModifier);
        QTRY_VERIFY2(m_page.body().contains(u"<b>kept</b>"), qPrintable(m_page.body()));
        QCOMPARE(m_page.evaluate(u"window.hits"_qs).toInt(), 0);
        const QString body = m_page.body();
        for (const QString &trace :
            {u"<script"_qs, u"onerror="_qs, u"onclick="_qs, u"<iframe"_qs, u"javascript:"_qs, u"<form"_qs})
            QVERIFY2(!body.contains(trace), qPrintable(trace));
    }

    void pastesText_data()
    {
        const TestTable<QString, QString, QString> row({"html", "text", "expected"});
        row("text", {}, u"a <b> & c"_qs, u"one a &lt;b&gt; &amp; c two"_qs);
        row("markup", u"<span style='color:red' class=x id=y>a <em>b</em></span>"_qs, {}, u"one a <em>b</em> two"_qs);
    }

    void pastesText()
    {
        QFETCH(QString, html);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        m_page.load(u"one two"_qs);
        m_page.putCursorBehind(u"one "_qs);
        m_page.type(u" "_qs);
        m_page.press(Qt::Key_Left);
        auto *clip = new QMimeData;
        if (html.isEmpty())
            clip->setText(text);
        else
            clip->setHtml(html);
        QGuiApplication::clipboard()->setMimeData(clip);
        m_page.press(Qt::Key_V, Qt::ControlModifier);
        QTRY_COMPARE(m_page.body().remove(u"<span>"_qs).remove(u"</span>"_qs).replace(u"&nbsp;"_qs, u" "_qs), expected);
    }

    void servesNoFileButAllowedPictures()
    {
        const QString allowed = m_page.copyPicture(u"in cache.png"_qs);
        const QString outside = m_page.home.filePath(u"outside.png"_qs);
        QVERIFY(QFile::copy(m_page.files.cacheFolder() + u"/in cache.png"_qs, outside));
        const QString climbing = QString(allowed).replace(u"in%20cache"_qs, u"..%2f..%2foutside"_qs);
        m_page.load(u"<img src='%1'><img src='file://localhost%2'><img src='%3'><img src='file:///etc/passwd'>"
                    "<img src='zalmo://media/etc/hostname'>"_qs.arg(allowed, outside, climbing));
        QTRY_COMPARE(
            m_page.evaluate(u"[...document.images].map(i => i.complete && i.naturalWidth).join()"_qs).toString(),
            u"4,0,0,0,0"_qs);
    }

    void doesNotNavigate()
    {
        m_page.load(u"a <a href=\"https://example.com/\" target=_blank>link</a>"_qs);
        m_page.evaluate(u"document.querySelector('#content a').click(); location.href = 'https://example.com/';"
                        "location.reload(); window.open('https://example.com/')"_qs);
        QCOMPARE(m_page.body(), u"a <a href=\"https://example.com/\" target=_blank>link</a>"_qs);
        QCOMPARE(m_page.view->url().adjusted(QUrl::RemoveFragment), EditorScheme::pageUrl());
    }

    void returnsAfterACrash()
    {
        m_page.load(u"before"_qs);
        QSignalSpy crashed(&m_page.page, &ComposePage::crashed);
        const QFuture<EditorCalls::Answer> inFlight = m_page.page.calls().call(u"getBodyContent"_qs);
        ::kill(pid_t(m_page.view->page()->renderProcessPid()), SIGKILL);
        QTRY_COMPARE_WITH_TIMEOUT(crashed.count(), 1, 20'000);
        QVERIFY(inFlight.isFinished());
        m_page.load(u"after"_qs);
        QCOMPARE(m_page.body(), u"after"_qs);
    }

    void keepsContentLoadedBeforeReady()
    {
        PageFixture other;
        other.beginToLoad(u"older"_qs);
        other.beginToLoad(u"newer"_qs);
        QVERIFY(other.start());
        QCOMPARE(other.body(), u"newer"_qs);
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

static const RegisteredTest<TestSafety> registered;

#include "TestSafety.moc"
