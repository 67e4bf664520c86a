#include "PageFixture.h"
#include "editor/EditorScheme.h"
#include "support/TestClasses.h"
#include "wordpress/ContentConversion.h"

#include <QClipboard>
#include <QCoroTask>
#include <QDirIterator>
#include <QGuiApplication>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <csignal>

namespace {
QString readBody(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
} // namespace

/// What a body or the clipboard holds never runs, and a page that dies comes back.
class TestSafety : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_page.start());
        m_page.evaluate(QStringLiteral("window.hits = 0"));
    }

    void hostileBodiesAreInert_data()
    {
        QTest::addColumn<QString>("stored");
        QDirIterator files(QStringLiteral(BODIES), {QStringLiteral("hostile-*.html")});
        while (files.hasNext()) {
            const QString path = files.next();
            QTest::newRow(qPrintable(files.fileName())) << readBody(path);
        }
    }

    void hostileBodiesAreInert()
    {
        QFETCH(QString, stored);
        m_page.load(stored);
        QTest::mouseClick(m_page.view->focusProxy(), Qt::LeftButton, {}, {200, 60});
        m_page.evaluate(QStringLiteral("for (const e of document.querySelectorAll('#content *')) {"
                                       "  e.dispatchEvent(new Event('error')); e.dispatchEvent(new MouseEvent('click', "
                                       "{bubbles: true, cancelable: true})); }"));
        QCOMPARE(m_page.evaluate(QStringLiteral("new Promise(r => 0), window.hits")).toInt(), 0);
        QCOMPARE(m_page
                     .evaluate(QStringLiteral(
                         "document.querySelectorAll('#content :is(script, iframe, form, input, object, embed, style, "
                         "link, meta, base, svg, math, video, template, [onerror], [onclick], [autofocus])').length"))
                     .toInt(),
            0);
        QVERIFY2(m_page.body() == stored, difference(m_page.body(), stored).constData());
        QVERIFY(!m_page.reports.contains(QStringLiteral("owned")));
        QCOMPARE(m_page.view->url().adjusted(QUrl::RemoveFragment), EditorScheme::pageUrl());
    }

    void hostileClipboardIsInert()
    {
        m_page.load(QStringLiteral("start"));
        m_page.putCursorBehind(QStringLiteral("start"));
        auto *clip = new QMimeData;
        clip->setHtml(QStringLiteral("<b>kept</b> ") + readBody(QStringLiteral(BODIES "/hostile-scripts.html")));
        QGuiApplication::clipboard()->setMimeData(clip);
        m_page.press(Qt::Key_V, Qt::ControlModifier);
        QTRY_VERIFY2(m_page.body().contains(u"<b>kept</b>"), qPrintable(m_page.body()));
        QCOMPARE(m_page.evaluate(QStringLiteral("window.hits")).toInt(), 0);
        const QString body = m_page.body();
        for (const QString &trace : {QStringLiteral("<script"), QStringLiteral("onerror="), QStringLiteral("onclick="),
                 QStringLiteral("<iframe"), QStringLiteral("javascript:"), QStringLiteral("<form")})
            QVERIFY2(!body.contains(trace), qPrintable(trace));
    }

    void pastesText_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("text") << QString() << QStringLiteral("a <b> & c")
                              << QStringLiteral("one a &lt;b&gt; &amp; c two");
        QTest::newRow("markup") << QStringLiteral("<span style='color:red' class=x id=y>a <em>b</em></span>")
                                << QString() << QStringLiteral("one a <em>b</em> two");
    }

    void pastesText()
    {
        QFETCH(QString, html);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        m_page.load(QStringLiteral("one two"));
        m_page.putCursorBehind(QStringLiteral("one "));
        m_page.type(QStringLiteral(" "));
        m_page.press(Qt::Key_Left);
        auto *clip = new QMimeData;
        if (html.isEmpty())
            clip->setText(text);
        else
            clip->setHtml(html);
        QGuiApplication::clipboard()->setMimeData(clip);
        m_page.press(Qt::Key_V, Qt::ControlModifier);
        QTRY_COMPARE(m_page.body()
                         .remove(QStringLiteral("<span>"))
                         .remove(QStringLiteral("</span>"))
                         .replace(QStringLiteral("&nbsp;"), QStringLiteral(" ")),
            expected);
    }

    void servesNoFileButAllowedPictures()
    {
        const QString allowed = m_page.copyPicture(QStringLiteral("in cache.png"));
        const QString outside = m_page.home.filePath(QStringLiteral("outside.png"));
        QVERIFY(QFile::copy(m_page.files.cacheFolder() + QStringLiteral("/in cache.png"), outside));
        const QString climbing =
            QString(allowed).replace(QStringLiteral("in%20cache"), QStringLiteral("..%2f..%2foutside"));
        m_page.load(
            QStringLiteral("<img src='%1'><img src='file://localhost%2'><img src='%3'><img src='file:///etc/passwd'>"
                           "<img src='zalmo://media/etc/hostname'>")
                .arg(allowed, outside, climbing));
        QTRY_COMPARE(
            m_page.evaluate(QStringLiteral("[...document.images].map(i => i.complete && i.naturalWidth).join()"))
                .toString(),
            QStringLiteral("4,0,0,0,0"));
    }

    void doesNotNavigate()
    {
        m_page.load(QStringLiteral("a <a href=\"https://example.com/\" target=_blank>link</a>"));
        m_page.evaluate(
            QStringLiteral("document.querySelector('#content a').click(); location.href = 'https://example.com/';"
                           "location.reload(); window.open('https://example.com/')"));
        QCOMPARE(m_page.body(), QStringLiteral("a <a href=\"https://example.com/\" target=_blank>link</a>"));
        QCOMPARE(m_page.view->url().adjusted(QUrl::RemoveFragment), EditorScheme::pageUrl());
    }

    void returnsAfterACrash()
    {
        m_page.load(QStringLiteral("before"));
        QSignalSpy crashed(&m_page.page, &ComposePage::crashed);
        const QFuture<EditorCalls::Answer> inFlight = m_page.page.calls().call(QStringLiteral("getBodyContent"));
        ::kill(pid_t(m_page.view->page()->renderProcessPid()), SIGKILL);
        QTRY_COMPARE_WITH_TIMEOUT(crashed.count(), 1, 20'000);
        QVERIFY(inFlight.isFinished());
        m_page.load(QStringLiteral("after"));
        QCOMPARE(m_page.body(), QStringLiteral("after"));
    }

    void survivesAnEndlessBody()
    {
        const QString endless = QStringLiteral("<!-- wp:html -->\nfor (;;);\n<!-- /wp:html -->");
        m_page.page.loadHTMLContent(ContentConversion::postContentForZalmoEditor(endless, m_page.files), 1);
        QSignalSpy crashed(&m_page.page, &ComposePage::crashed);
        QTRY_COMPARE_WITH_TIMEOUT(crashed.count(), 1, 30'000);
        m_page.load(endless); // as the compose screen does then
        QCOMPARE(m_page.body(), endless);
    }

    void keepsContentLoadedBeforeReady()
    {
        PageFixture other;
        other.page.loadHTMLContent(
            ContentConversion::postContentForZalmoEditor(QStringLiteral("older"), other.files), 1);
        other.page.loadHTMLContent(
            ContentConversion::postContentForZalmoEditor(QStringLiteral("newer"), other.files), 1);
        QVERIFY(other.start());
        QTRY_COMPARE(other.body(), QStringLiteral("newer"));
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
        m_page.load(QStringLiteral("first"));
        m_page.putCursorBehind(QStringLiteral("first"));
        QMap<int, QString> reports;
        connect(&m_page.page, &ComposePage::setPostContent, this,
            [&reports](const QString &html, int owner) { reports[owner] = html; });
        m_page.type(QStringLiteral("X"));
        m_page.page.loadHTMLContent(
            ContentConversion::postContentForZalmoEditor(QStringLiteral("second"), m_page.files), 2);
        QCOMPARE(m_page.body(), QStringLiteral("second")); // the answer waits for the content
        QCOMPARE(reports, (QMap<int, QString>{{1, QStringLiteral("firstX")}}));
        m_page.putCursorBehind(QStringLiteral("second"));
        m_page.type(QStringLiteral("Y"));
        QTRY_COMPARE(reports.value(2), QStringLiteral("secondY"));
        disconnect(&m_page.page, &ComposePage::setPostContent, this, nullptr);
    }

private:
    PageFixture m_page;
};

static const RegisteredTest<TestSafety> registered;

#include "TestSafety.moc"
