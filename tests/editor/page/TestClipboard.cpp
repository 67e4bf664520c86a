#include "PageFixture.h"
#include "support/Files.h"

#include <QBuffer>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QSignalSpy>

namespace {
void putOnClipboard(const QString &html, const QString &text = {})
{
    auto *clip = new QMimeData;
    if (!html.isEmpty())
        clip->setHtml(html);
    if (!text.isEmpty())
        clip->setText(text);
    QGuiApplication::clipboard()->setMimeData(clip);
}
} // namespace

/// Copies keep their form within the page; what comes from elsewhere brings no more than text and its mark-up.
class TestClipboard : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_page.start());
        m_page.evaluate(u"window.hits = 0"_qs);
    }

    void hostileMarkupIsInert()
    {
        m_page.load(u"start"_qs);
        m_page.putCursorBehind(u"start"_qs);
        putOnClipboard(u"<b>kept</b> "_qs + contentsOf(BODIES "/hostile-scripts.html"));
        paste();
        QTRY_VERIFY2(m_page.body().contains(u"<b>kept</b>"), qPrintable(m_page.body()));
        QCOMPARE(m_page.evaluate(u"window.hits"_qs).toInt(), 0);
        const QString body = m_page.body();
        for (const QString &trace :
            {u"<script"_qs, u"onerror="_qs, u"onclick="_qs, u"<iframe"_qs, u"javascript:"_qs, u"<form"_qs})
            QVERIFY2(!body.contains(trace), qPrintable(trace));
    }

    void showsTheEndOfWhatIsPasted()
    {
        m_page.load(u"start"_qs);
        m_page.putCursorBehind(u"start"_qs);
        putOnClipboard(u"<p>more</p>"_qs.repeated(100));
        paste();
        QTRY_VERIFY(m_page.evaluate(u"window.scrollY"_qs).toInt() > 1000);
    }

    /// Mark-up that claims to be of the page, beside boxes that are.
    void foreignMarksAreNothing()
    {
        const QString stored = u"<p>start</p>\n<script>one</script>\n<form>two</form>"_qs;
        m_page.load(stored);
        m_page.putCursorBehind(u"start"_qs);
        QString claims;
        for (const QString &number : {u"0"_qs, u"1"_qs, u"2"_qs, u"3"_qs})
            claims +=
                u"<span data-zalmo-inert='%1' data-zalmo-stored='%1' data-zalmo-block='%1'><script>x</script></span>"
                "<a data-zalmo-more href=x>a</a><i data-zalmo-held-onclick='x'>b</i>"_qs.arg(number);
        putOnClipboard(claims);
        paste();
        QTRY_COMPARE(m_page.body(),
            QString(stored).replace(u"start"_qs, u"start"_qs + u"<a href=\"x\">a</a><i>b</i>"_qs.repeated(4)));
    }

    void pastesText_data()
    {
        const TestTable<QString, QString, QString> row; // html, text, body
        row("text", {}, u"a <b> & c"_qs, u"one a &lt;b&gt; &amp; c two"_qs);
        row("markup", u"<span style='color:red' class=x id=y>a <em>b</em></span>"_qs, {}, u"one a <em>b</em> two"_qs);
        row("picture as data", u"a<img src='data:image/png;base64,AAAA'>b"_qs, {}, u"one ab two"_qs);
    }

    void pastesText()
    {
        const auto [html, text, expected] = testRow<QString, QString, QString>();
        m_page.load(u"one two"_qs);
        m_page.putCursorBehind(u"one "_qs);
        m_page.type(u" "_qs);
        m_page.press(Qt::Key_Left);
        putOnClipboard(html, text);
        paste();
        QTRY_COMPARE(m_page.body().remove(u"<span>"_qs).remove(u"</span>"_qs).replace(u"&nbsp;"_qs, u" "_qs), expected);
    }

    void ownCopiesKeepTheirForm_data()
    {
        const QString picture = block(u"image {\"id\":12,\"align\":\"left\"}"_qs,
            u"<figure class=\"wp-block-image alignleft\"><img src=\"http://127.0.0.1/a.png\" alt='x' class=\"wp-image-12\"/></figure>"_qs);
        const QString form = block(u"html"_qs, u"<form><input name=q></form>"_qs);
        const QString first =
            block(u"paragraph {\"align\":\"center\"}"_qs, u"<p class=\"has-text-align-center\">one &amp; a</p>"_qs);
        const QString last = paragraph("end");
        const TestTable<QString, QString> row; // the body, and the part that is moved
        row("picture of a block post", first + u"\n\n"_qs + picture + u"\n\n"_qs + last, picture);
        row("box of a block post", first + u"\n\n"_qs + form + u"\n\n"_qs + last, form);
        row("box of a loose post", u"one\n\n<script>x('&')</script>\n\nend"_qs, u"<script>x('&')</script>"_qs);
        row("element of a loose post", u"one\n\n<p class='a'>t &mdash; u</p>\n\nend"_qs,
            u"<p class='a'>t &mdash; u</p>"_qs);
    }

    void ownCopiesKeepTheirForm()
    {
        const auto [stored, moved] = testRow<QString, QString>();
        m_page.load(stored);
        m_page.evaluate(u"(() => { const shown = [...document.querySelectorAll('#content > *')].slice(-2)[0];"
                        "const r = document.createRange(); r.selectNode(shown); getSelection().removeAllRanges();"
                        "getSelection().addRange(r); })()"_qs);
        m_page.press(Qt::Key_X, Qt::ControlModifier);
        QVERIFY2(!m_page.body().contains(moved), qPrintable(m_page.body()));
        m_page.putCursorBehind(u"end"_qs);
        m_page.press(Qt::Key_Return);
        paste();
        QTRY_VERIFY2(m_page.body().endsWith(moved), qPrintable(m_page.body()));
    }

    void copiesForOthersHaveTheAddressesOfTheContent()
    {
        const QString picture = m_page.copyPicture(u"copied.png"_qs);
        m_page.load(u"one <img src=\"%1\" /> two"_qs.arg(picture));
        m_page.press(Qt::Key_A, Qt::ControlModifier);
        m_page.press(Qt::Key_C, Qt::ControlModifier);
        QTRY_VERIFY(QGuiApplication::clipboard()->mimeData()->html().contains(picture));
    }

    void ownCopiesGoToOtherPosts()
    {
        m_page.load(u"a <input name=q> b"_qs);
        m_page.view->setFocus();
        m_page.press(Qt::Key_A, Qt::ControlModifier);
        m_page.press(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!QGuiApplication::clipboard()->mimeData()->html().contains(u"data-zalmo"_qs));
        m_page.load(u"start"_qs);
        m_page.putCursorBehind(u"start"_qs);
        paste();
        QTRY_VERIFY2(m_page.body().contains(u"<input name=\"q\"> b"), qPrintable(m_page.body()));
        QVERIFY(!m_page.body().contains(u"Form field"_qs));
    }

    void offersPictures()
    {
        QSignalSpy files(&m_page.page, &ComposePage::picturesOffered);
        QSignalSpy images(&m_page.page, &ComposePage::pictureOffered);
        const QUrl file(m_page.copyPicture(u"screen.png"_qs).replace(u"file://localhost"_qs, u"file://"_qs));
        m_page.load(u"start"_qs);
        m_page.putCursorBehind(u"start"_qs);

        QGuiApplication::clipboard()->setImage(QImage(file.toLocalFile()));
        paste();
        QTRY_COMPARE(images.count(), 1);
        QCOMPARE(QImage::fromData(images[0][0].toByteArray(), "PNG").size(), QSize(4, 3));

        QMimeData dragged;
        dragged.setUrls({file});
        QDragEnterEvent enter({200, 60}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_page.view.get(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop({200, 60}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_page.view.get(), &drop);
        QCOMPARE(files.count(), 1);
        QCOMPARE(files[0][0].value<QList<QUrl>>(), QList<QUrl>{file});
        QCOMPARE(m_page.body(), u"start"_qs);
    }

private:
    void paste() { m_page.press(Qt::Key_V, Qt::ControlModifier); }

    PageFixture m_page;
};

static const RegisteredTest<TestClipboard> registered;

#include "TestClipboard.moc"
