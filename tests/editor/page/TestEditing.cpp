#include "PageFixture.h"
#include "editor/PageColumn.h"
#include "support/TestClasses.h"

#include <QSignalSpy>
#include <QTest>

namespace {
/// A cursor, and what is typed there: \n is Enter, \b Backspace, \v Shift and Enter, \x7f Delete.
void typeKeys(PageFixture &page, const QString &keys)
{
    for (const QChar key : keys) {
        if (key == u'\n')
            page.press(Qt::Key_Return);
        else if (key == u'\v')
            page.press(Qt::Key_Return, Qt::ShiftModifier);
        else if (key == u'\b')
            page.press(Qt::Key_Backspace);
        else if (key == u'\x7f')
            page.press(Qt::Key_Delete);
        else
            page.type(key);
    }
}
} // namespace

/// Typing, keys and commands, and what they make of the blog's form.
class TestEditing : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_page.start()); }

    void types_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("behind"); // where the cursor is; empty: in the empty editor
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *stored, const char *behind, const char *keys,
                             const char *expected) {
            QTest::newRow(name) << QString::fromUtf8(stored) << QString::fromUtf8(behind) << QString::fromUtf8(keys)
                                << QString::fromUtf8(expected);
        };
        row("new post", "", "", "Hello", "Hello");
        row("new paragraphs", "", "", "One\nTwo & <b>\n\nThree", "One\n\nTwo &amp; &lt;b&gt;\n\nThree");
        row("new line breaks", "", "", "a\vb", "a\nb");
        row("all deleted again", "", "", "x\b", "");

        row("split text", "one two\n\nthree  &mdash;\n", "one", "\n", "one\n\ntwo\n\nthree  &mdash;\n");
        row("split at the end", "one\n\nthree", "one", "\nnew", "one\n\nnew\n\nthree");
        row("new last", "one\n\ntwo\n", "two", "\nnew", "one\n\ntwo\n\nnew\n");
        row("join text", "one\n\ntwo\n\n<!-- x -->three", "one", "\x7f", "onetwo\n\n<!-- x -->three");
        row("delete text", "a\n\nb\n\nc &copy;", "b", "\b\b", "a\n\nc &copy;");
        row("empty text", "a\n\nb\n\nc &copy;", "b", "\b", "a\n\nc &copy;");
        row("split an element", "<p>one two</p>\n<p>x<br/>y</p>", "one", "\n",
            "<p>one</p>\n<p>two</p>\n<p>x<br/>y</p>");
        row("join elements", "<p class='a'>one</p>\n<p>two</p>\n<p>x<br/>y</p>", "one", "\x7f",
            "<p class='a'>onetwo</p>\n<p>x<br/>y</p>");
        row("heading and paragraph", "<h2>Head</h2>\ntext\n\nmore", "Head", "\x7f", "<h2>Headtext</h2>\n\nmore");
        row("behind a heading", "<h2>Head</h2>\n\nmore", "Head", "\nnew", "<h2>Head</h2>\n\nnew\n\nmore");
        row("list item", "<ul>\n<li>a</li>\n<li class=x>b</li>\n</ul>\n\nend", "a", "\nc",
            "<ul>\n<li>a</li>\n<li>c</li><li class=x>b</li>\n</ul>\n\nend");
        row("out of a list", "<ul><li>a</li></ul>", "a", "\n\nb", "<ul><li>a</li></ul>\n\nb");

        row("split a block", "<!-- wp:paragraph -->\n<p>one two</p>\n<!-- /wp:paragraph -->\n\n<!-- wp:spacer /-->",
            "one", "\n",
            "<!-- wp:paragraph -->\n<p>one</p>\n<!-- /wp:paragraph -->\n\n<!-- wp:paragraph -->\n<p>two</p>\n"
            "<!-- /wp:paragraph -->\n\n<!-- wp:spacer /-->");
        row("delete a block",
            "<!-- wp:paragraph -->\n<p>one</p>\n<!-- /wp:paragraph -->\n\n<!-- wp:paragraph -->\n<p>b</p>\n"
            "<!-- /wp:paragraph -->\n",
            "b", "\b\b", "<!-- wp:paragraph -->\n<p>one</p>\n<!-- /wp:paragraph -->\n");
        row("item of a list block",
            "<!-- wp:list -->\n<ul><!-- wp:list-item -->\n<li>a</li>\n<!-- /wp:list-item --></ul>\n<!-- /wp:list -->",
            "a", "\nb",
            "<!-- wp:list -->\n<ul><!-- wp:list-item -->\n<li>a</li>\n<!-- /wp:list-item -->\n\n<!-- wp:list-item -->\n"
            "<li>b</li>\n<!-- /wp:list-item --></ul>\n<!-- /wp:list -->");
        row("paragraph in a group",
            "<!-- wp:group -->\n<div class=\"wp-block-group\"><!-- wp:paragraph -->\n<p>a</p>\n<!-- /wp:paragraph "
            "--></div>\n"
            "<!-- /wp:group -->",
            "a", "\nb",
            "<!-- wp:group -->\n<div class=\"wp-block-group\"><!-- wp:paragraph -->\n<p>a</p>\n<!-- /wp:paragraph "
            "-->\n\n"
            "<!-- wp:paragraph -->\n<p>b</p>\n<!-- /wp:paragraph --></div>\n<!-- /wp:group -->");
    }

    void types()
    {
        QFETCH(QString, stored);
        QFETCH(QString, behind);
        QFETCH(QString, keys);
        QFETCH(QString, expected);
        m_page.load(stored);
        if (behind.isEmpty())
            m_page.page.focus();
        else
            m_page.putCursorBehind(behind);
        m_page.body();
        typeKeys(m_page, keys);
        TRY_BODY(expected);
        QTRY_COMPARE(m_page.reports.isEmpty() ? stored : m_page.reports.last(), expected);
    }

    void callsComeBehindTheKeys()
    {
        for (int round = 0; round < 20; ++round) {
            m_page.load({});
            m_page.typeOn(u"first "_qs);
            m_page.page.execCommand(u"Bold"_qs);
            m_page.type({});
            m_page.typeOn(u"last"_qs);
            m_page.page.hidePopupWindows(); // as a click on the title does
            QCOMPARE(m_page.body(), u"first <b>last</b>"_qs);
        }
    }

    void undoesByKeyboard()
    {
        const QString stored = QStringLiteral("one &amp; two\n\n<p class='x'>three</p>");
        m_page.load(stored);
        m_page.putCursorBehind(QStringLiteral("one"));
        typeKeys(m_page, QStringLiteral("\nabc"));
        TRY_BODY(QStringLiteral("one\n\nabc &amp; two\n\n<p class='x'>three</p>"));
        for (int n = 0; n < 4 && m_page.body() != stored; ++n)
            m_page.press(Qt::Key_Z, Qt::ControlModifier);
        TRY_BODY(stored);
    }

    void doesNotUndoIntoTheLastPost()
    {
        m_page.load(QStringLiteral("first"));
        m_page.putCursorBehind(QStringLiteral("first"));
        m_page.type(QStringLiteral(" post"));
        m_page.load(QStringLiteral("second"));
        m_page.putCursorBehind(QStringLiteral("second"));
        m_page.press(Qt::Key_Z, Qt::ControlModifier, 3);
        QCOMPARE(m_page.body(), QStringLiteral("second"));
    }

    void commands_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("expected");
        const auto block = [](const QString &text) {
            return QStringLiteral("<!-- wp:paragraph -->\n<p>%1</p>\n<!-- /wp:paragraph -->").arg(text);
        };
        const QString plain = QStringLiteral("the word here\n\nrest &copy;");
        const auto row = [](const char *name, const QString &stored, const QString &expected) {
            QTest::newRow(name) << stored << QString::fromLatin1(name).section(u' ', 0, 0) << expected;
        };
        row("Bold", plain, QStringLiteral("the <b>word</b> here\n\nrest &copy;"));
        row("Italic", plain, QStringLiteral("the <i>word</i> here\n\nrest &copy;"));
        row("Underline", plain, QStringLiteral("the <u>word</u> here\n\nrest &copy;"));
        row("Strikethrough", plain, QStringLiteral("the <strike>word</strike> here\n\nrest &copy;"));
        row("InsertUnorderedList", plain, QStringLiteral("<ul><li>the word here</li></ul>\n\nrest &copy;"));
        row("InsertOrderedList", plain, QStringLiteral("<ol><li>the word here</li></ol>\n\nrest &copy;"));
        row("Bold of a block", block(QStringLiteral("the word")), block(QStringLiteral("the <b>word</b>")));
        row("Bold undone", QStringLiteral("a <strong>word</strong> b"), QStringLiteral("a word b"));
        row("InsertOrderedList of a block", block(QStringLiteral("word")),
            QStringLiteral("<!-- wp:list {\"ordered\":true} -->\n<ol><!-- wp:list-item -->\n<li>word</li>\n"
                           "<!-- /wp:list-item --></ol>\n<!-- /wp:list -->"));
        row("InsertUnorderedList undone", QStringLiteral("<ul><li>word</li></ul>"), QStringLiteral("word"));
    }

    void commands()
    {
        QFETCH(QString, stored);
        QFETCH(QString, command);
        QFETCH(QString, expected);
        m_page.load(stored);
        m_page.select(QStringLiteral("word"));
        m_page.page.execCommand(command);
        TRY_BODY(expected);
    }

    void links()
    {
        m_page.load(QStringLiteral("a word here"));
        m_page.select(QStringLiteral("word"));
        m_page.page.addLinkMarkToCurrentSelection();
        QCOMPARE(m_page.body(), QStringLiteral("a word here"));
        m_page.evaluate(QStringLiteral("getSelection().removeAllRanges()")); // the sheet has the focus now
        m_page.page.addLinkToSelection(
            QStringLiteral("http://x.example/?a='1'&b=\"<2>\""), QStringLiteral("It's \"so\""), true);
        const QString link = QStringLiteral("a <a href=\"http://x.example/?a='1'&amp;b=&quot;<2>&quot;\" title=\"It's "
                                            "&quot;so&quot;\" target=\"_blank\">word</a> "
                                            "here");
        QCOMPARE(m_page.body(), link);

        m_page.putCursorBehind(QStringLiteral("wor"));
        m_page.page.addLinkMarkToCurrentSelection();
        m_page.page.removeLinkMarkForCurrentSelection();
        QCOMPARE(m_page.body(), link);
        m_page.page.addLinkMarkToCurrentSelection();
        m_page.page.addLinkToSelection(QStringLiteral("http://y.example/"), QString(), false);
        QCOMPARE(m_page.body(), QStringLiteral("a <a href=\"http://y.example/\" target=\"_self\">word</a> here"));

        const QString before = m_page.body();
        m_page.page.addLinkToSelection(QStringLiteral("javascript:alert(1)"), QString(), false);
        QCOMPARE(m_page.body(), before);
    }

    void linkAtCursorShowsItsAddress()
    {
        m_page.load(QStringLiteral("a <a href=\"http://x.example/\" title=\"tip\" target=\"_blank\">word</a> here"));
        QSignalSpy opened(&m_page.page, &ComposePage::openAddLink);
        m_page.evaluate(QStringLiteral(
            "document.querySelector('#content a').dispatchEvent(new MouseEvent('dblclick', {bubbles: true}))"));
        QTRY_COMPARE(opened.count(), 1);
        QCOMPARE(opened[0], QVariantList({QStringLiteral("http://x.example/"), QStringLiteral("tip"), true}));
    }

    void addsImages_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<ImageInfo>("image");
        QTest::addColumn<QString>("expected");
        const QUrl picture(QStringLiteral("http://x.example/a%27b.png"));
        const QString nasty = QStringLiteral("it's \"x\"><img src=x onerror=window.hits++> & ');window.hits++;//");
        const QString nastyAttribute =
            QStringLiteral("it's &quot;x&quot;><img src=x onerror=window.hits++> &amp; ');window.hits++;//");
        const QString nastyText =
            QStringLiteral("it's \"x\"&gt;&lt;img src=x onerror=window.hits++&gt; &amp; ');window.hits++;//");
        QTest::newRow("plain") << QStringLiteral("one\n\ntwo")
                               << ImageInfo{picture, picture, QStringLiteral("alt"), QString(), QString(), QUrl()}
                               << QStringLiteral(
                                      "one\n\n<a href=\"http://x.example/a%27b.png\" target=\"_blank\"><img "
                                      "src=\"http://x.example/a%27b.png\" alt=\"alt\" class=\"aligncenter full\" "
                                      "/></a>\n\ntwo");
        QTest::newRow("no link, featured")
            << QStringLiteral("one") << ImageInfo{picture, QUrl(), QString(), QString(), QStringLiteral("tip"), picture}
            << QStringLiteral(
                   "one\n\n<img src=\"http://x.example/a%27b.png\" alt=\"\" title=\"tip\" class=\"aligncenter full\" "
                   "data-zalmo-featured-image=\"true\" />");
        QTest::newRow("texts that look like markup")
            << QStringLiteral("one") << ImageInfo{picture, QUrl(), nasty, nasty, nasty, QUrl()}
            << QStringLiteral(
                   "one\n\n<figure class=\"wp-caption aligncenter\"><img src=\"http://x.example/a%27b.png\" "
                   "alt=\"%1\" title=\"%1\" /><figcaption class=\"wp-caption-text\">%2</figcaption></figure>")
                   .arg(nastyAttribute, nastyText);
        QTest::newRow("block") << QStringLiteral("<!-- wp:paragraph -->\n<p>one</p>\n<!-- /wp:paragraph -->")
                               << ImageInfo{picture, QUrl(), QString(), QStringLiteral("A 'caption'"), QString(),
                                      QUrl()}
                               << QStringLiteral(
                                      "<!-- wp:paragraph -->\n<p>one</p>\n<!-- /wp:paragraph -->\n\n"
                                      "<!-- wp:image {\"align\":\"center\"} -->\n<figure class=\"wp-block-image "
                                      "aligncenter\"><img src=\"http://x.example/a%27b.png\" alt=\"\" />"
                                      "<figcaption class=\"wp-element-caption\">A 'caption'</figcaption></figure>\n"
                                      "<!-- /wp:image -->");
    }

    void addsImages()
    {
        QFETCH(QString, stored);
        QFETCH(ImageInfo, image);
        QFETCH(QString, expected);
        m_page.evaluate(QStringLiteral("window.hits = 0"));
        m_page.load(stored);
        m_page.putCursorBehind(QStringLiteral("one"));
        m_page.page.addImage(image);
        TRY_BODY(expected);
        QTRY_COMPARE(m_page.reports.isEmpty() ? QString() : m_page.reports.last(), expected);
        QCOMPARE(m_page.evaluate(QStringLiteral("window.hits")).toInt(), 0);
        m_page.type(QStringLiteral("text"));
        QTRY_VERIFY(m_page.body().contains(u"text"));
    }

    void reportsTheSelection()
    {
        m_page.load(QStringLiteral("a <strong>bold <em>word</em></strong> and <a href='x'>link</a>"));
        QString text;
        SelectionStyle style;
        QObject context;
        connect(&m_page.page, &ComposePage::selectionChanged, &context, [&](const QString &t, const SelectionStyle &s) {
            text = t;
            style = s;
        });
        m_page.select(QStringLiteral("word"));
        QTRY_COMPARE(text, QStringLiteral("word"));
        QVERIFY(style.bold && style.italic && !style.link && !style.underline);
        m_page.putCursorBehind(QStringLiteral("lin"));
        QTRY_VERIFY(text.isEmpty() && style.link && !style.bold);
    }

    void reportsStyleAtTheCursor()
    {
        m_page.load(QStringLiteral("word"));
        m_page.putCursorBehind(QStringLiteral("word"));
        bool bold = false;
        QObject context;
        connect(&m_page.page, &ComposePage::selectionChanged, &context,
            [&bold](const QString &, const SelectionStyle &style) { bold = style.bold; });
        m_page.page.execCommand(QStringLiteral("Bold"));
        QTRY_VERIFY(bold);
        m_page.type(QStringLiteral("x"));
        TRY_BODY(QStringLiteral("word<b>x</b>"));
    }

    void imageGoesWhereTheCursorWas()
    {
        m_page.load(QStringLiteral("one\n\ntwo"));
        m_page.putCursorBehind(QStringLiteral("one"));
        m_page.page.hidePopupWindows(); // as for the panel that chooses the picture
        m_page.page.addImage({QUrl(QStringLiteral("http://x.example/p.png")), QUrl(), {}, {}, {}, {}});
        TRY_BODY(
            QStringLiteral("one\n\n<img src=\"http://x.example/p.png\" alt=\"\" class=\"aligncenter full\" />\n\ntwo"));
    }

    void typesBehindABox_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected");
        QTest::newRow("alone") << "<script>x</script>"
                               << "<script>x</script>\n\ntext";
        QTest::newRow("in a paragraph") << "<p>a <input name=q></p>"
                                        << "<p>a <input name=q>text</p>";
        QTest::newRow("block")
            << "<!-- wp:latest-posts /-->"
            << "<!-- wp:latest-posts /-->\n\n<!-- wp:paragraph -->\n<p>text</p>\n<!-- /wp:paragraph -->";
    }

    void typesBehindABox()
    {
        QFETCH(QString, stored);
        QFETCH(QString, expected);
        m_page.load(stored);
        m_page.page.focus();
        m_page.body();
        m_page.press(Qt::Key_End, Qt::ControlModifier);
        m_page.type(QStringLiteral("text"));
        TRY_BODY(expected);
    }

    void tabLeavesThePage()
    {
        m_page.load(QStringLiteral("word"));
        m_page.putCursorBehind(QStringLiteral("word"));
        QSignalSpy left(&m_page.page, &ComposePage::focusTitleRequested);
        QSignalSpy leftForward(&m_page.page, &ComposePage::focusTokensRequested);
        m_page.press(Qt::Key_Tab);
        QTRY_COMPARE(leftForward.size(), 1);
        m_page.press(Qt::Key_Tab, Qt::ShiftModifier);
        QTRY_COMPARE(left.count(), 1);
        QCOMPARE(m_page.body(), QStringLiteral("word"));
    }

    void textIsWhereTheTitleExpectsIt_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("stored");
        QTest::newRow("narrow") << 514 << QStringLiteral("word");
        QTest::newRow("wide") << 1500 << QStringLiteral("word");
        QTest::newRow("with a scroll bar") << 900 << QStringLiteral("<p>word</p>").repeated(200);
    }

    void textIsWhereTheTitleExpectsIt()
    {
        QFETCH(int, width);
        QFETCH(QString, stored);
        m_page.load(stored);
        const QSize before = m_page.view->size();
        m_page.view->resize(width, 700);
        const QString left =
            QStringLiteral("Math.round(document.querySelector('#content > p').getBoundingClientRect().left)");
        QTRY_COMPARE(m_page.evaluate(left).toInt(), PageColumn::margin(width));
        m_page.view->resize(before);
    }

private:
    PageFixture m_page;
};

static const RegisteredTest<TestEditing> registered;

#include "TestEditing.moc"
