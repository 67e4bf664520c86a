#include "PageFixture.h"
#include "editor/PageColumn.h"

#include <QAction>
#include <QCoroTask>
#include <QLineEdit>
#include <QSignalSpy>

namespace {
/// A cursor, and what is typed there: \n is Enter, \b Backspace, \v Shift and Enter, \x7f Delete, \r Home, * a list.
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
        else if (key == u'\r')
            page.press(Qt::Key_Home);
        else if (key == u'\t')
            page.press(Qt::Key_Tab);
        else if (key == u'*')
            page.page.execCommand(u"InsertUnorderedList"_qs);
        else
            page.type(key);
    }
}

QString item(const QString &text)
{
    return block("list-item", "<li>" + text + "</li>");
}

QString list(const QString &items)
{
    return block("list", "<ul>" + items + "</ul>");
}

QString orderedList(const QString &items)
{
    return block("list {\"ordered\":true}", "<ol>" + items + "</ol>");
}

QString group(const QString &blocks)
{
    return block("group", "<div class=\"g\">" + blocks + "</div>");
}
} // namespace

/// Typing, keys and commands, and what they make of the blog's form.
class TestEditing : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_page.start()); }

    void types_data()
    {
        const TestTable<QString, QString, QString, QString> row; // stored, behind what, keys, body
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
        row("list in an empty paragraph", "p1", "p1", "\n*one\ntwo\n\tsub",
            "p1\n\n<ul><li>one</li><li>two<ul><li>sub</li></ul></li></ul>");
        row("list in the middle of a paragraph", "p1\n\none word", "one", "*X", "p1\n\n<ul><li>oneX word</li></ul>");
        row("list at the beginning", "p1\n\none", "one", "\r*X", "p1\n\n<ul><li>Xone</li></ul>");
        row("list left at once", "p1", "p1", "\n*\nz", "p1\n\nz");
        row("text behind a list", "", "", "A\n*one\n\nz\nend", "A\n\n<ul><li>one</li></ul>\n\nz\n\nend");
        row("out of a list", "<ul><li>a</li></ul>", "a", "\n\nb", "<ul><li>a</li></ul>\n\nb");

        const QString one = paragraph("one"), two = paragraph("two"), spacer = "\n\n<!-- wp:spacer /-->";
        row("split a block", paragraph("one two") + spacer, "one", "\n", one + "\n\n" + two + spacer);
        row("delete a block", one + "\n\n" + paragraph("b") + "\n", "b", "\b\b", one + "\n");
        row("item of a list block", list(item("a")), "a", "\nb", list(item("a") + "\n\n" + item("b")));
        row("in preformatted text", "<pre>\n\n\ta\n\n\tb</pre>\n\nend", "a", "1", "<pre>\n\n\ta1\n\n\tb</pre>\n\nend");
        row("beside stray end tags", "<p></i>one </b> two</p></div>", "one", "1", "<p></i>one1 </b> two</p></div>");
        row("over a stray end tag", "one</em></b> two", "one", "\x7f\x7f", "one</em></b>wo");
        row("beside marks that nobody sees", u"a\ufeff\u200bb &amp; c"_qs, "c", "1", u"a\ufeff\u200bb &amp; c1"_qs);
        const QString dropCap = "paragraph {\"dropCap\":true}";
        row("paragraph before one in a group", group(block(dropCap, "<p>ab</p>")), "a", "\n",
            group(block(dropCap, "<p>a</p>") + "\n\n" + paragraph("b")));
        row("paragraph in a group", group(paragraph("a")), "a", "\nb", group(paragraph("a") + "\n\n" + paragraph("b")));
    }

    void types()
    {
        const auto [stored, behind, keys, expected] = testRow<QString, QString, QString, QString>();
        m_page.load(stored);
        if (behind.isEmpty())
            m_page.page.focus();
        else
            m_page.putCursorBehind(behind);
        m_page.body();
        typeKeys(m_page, keys);
        QCOMPARE(m_page.body(), expected);
        QTRY_COMPARE(m_page.reports.isEmpty() ? stored : m_page.reports.last(), expected);
    }

    void callsAndKeysKeepTheirOrder()
    {
        for (int round = 0; round < 20; ++round) {
            m_page.load({});
            for (const char *text : {"one", " two", " three", " four"}) {
                m_page.typeOn(QLatin1String(text));
                m_page.page.execCommand(u"Bold"_qs);
            }
            m_page.typeOn(u" five"_qs);
            m_page.page.hidePopupWindows(); // as a click on the title does
            QCOMPARE(m_page.body(), u"one<b> two</b> three<b> four</b> five"_qs);
        }
    }

    void clicksAndKeysKeepTheirOrder()
    {
        m_page.load(u"word"_qs);
        m_page.putCursorBehind(u"word"_qs);
        const QString top = u"document.querySelector('#content > p').getBoundingClientRect().top"_qs;
        const QPoint start(PageColumn::margin(m_page.view->width()) + 1, m_page.evaluate(top).toInt() + 10);
        m_page.page.execCommand(u"Bold"_qs);
        m_page.typeOn(u"x"_qs);
        QTest::mouseClick(m_page.view->focusProxy(), Qt::LeftButton, {}, start);
        m_page.typeOn(u"0"_qs);
        QCOMPARE(m_page.body(), u"0word<b>x</b>"_qs);
    }

    void undoesByKeyboard()
    {
        const QString stored = u"one &amp; two\n\n<p class='x'>three</p>"_qs;
        m_page.load(stored);
        m_page.putCursorBehind(u"one"_qs);
        typeKeys(m_page, u"\nabc"_qs);
        QCOMPARE(m_page.body(), u"one\n\nabc &amp; two\n\n<p class='x'>three</p>"_qs);
        for (int n = 0; n < 4 && m_page.body() != stored; ++n)
            m_page.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_page.body(), stored);
    }

    void doesNotUndoIntoTheLastPost()
    {
        m_page.load(u"first"_qs);
        m_page.putCursorBehind(u"first"_qs);
        m_page.type(u" post"_qs);
        m_page.load(u"second"_qs);
        m_page.putCursorBehind(u"second"_qs);
        m_page.press(Qt::Key_Z, Qt::ControlModifier, 3);
        QCOMPARE(m_page.body(), u"second"_qs);
    }

    void commands_data()
    {
        const TestTable<QString, QString> row; // what is stored, and what the command makes of it
        const QString plain = "the word here\n\nrest &copy;", rest = "\n\nrest &copy;", word = item("word");
        row("Bold", plain, "the <b>word</b> here" + rest);
        row("Italic", plain, "the <i>word</i> here" + rest);
        row("Underline", plain, "the <u>word</u> here" + rest);
        row("Strikethrough", plain, "the <strike>word</strike> here" + rest);
        row("InsertUnorderedList", plain, "<ul><li>the word here</li></ul>" + rest);
        row("InsertOrderedList", plain, "<ol><li>the word here</li></ol>" + rest);
        row("Bold of a block", paragraph("the word"), paragraph("the <b>word</b>"));
        row("Bold undone", "a <strong>word</strong> b", "a word b");
        row("InsertOrderedList of a block", paragraph("word"), orderedList(word));
        row("InsertUnorderedList in a group", group(paragraph("word")), group(list(word)));
        row("InsertOrderedList of a list in a group", group(list(word)), group(orderedList(word)));
        row("InsertUnorderedList undone", "<ul><li>word</li></ul>", "word");
    }

    void commands()
    {
        const auto [stored, expected] = testRow<QString, QString>();
        m_page.load(stored);
        m_page.select("word");
        m_page.page.execCommand(QString(QTest::currentDataTag()).section(' ', 0, 0));
        QCOMPARE(m_page.body(), expected);
    }

    void tabChangesTheLevelInAList_data()
    {
        const TestTable<QString, QString> row; // out and in
        row("loose", "<ul><li>a</li><li>b</li><li>c</li></ul>", "<ul><li>a<ul><li>b</li></ul></li><li>c</li></ul>");
        row("block", list(item("a") + "\n\n" + item("b")), list(item("a" + list(item("b")))));
    }

    void tabChangesTheLevelInAList()
    {
        const auto [stored, in] = testRow<QString, QString>();
        m_page.load(stored);
        m_page.putCursorBehind(u"b"_qs);
        m_page.press(Qt::Key_Tab);
        QCOMPARE(m_page.body(), in);
        m_page.press(Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(m_page.body(), stored);

        m_page.load(in); // stored so, and then changed
        m_page.putCursorBehind(u"b"_qs);
        m_page.press(Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(m_page.body(), stored);

        m_page.putCursorBehind(u"a"_qs);
        m_page.press(Qt::Key_Tab); // the first item has none to go under
        QCOMPARE(m_page.body(), stored);
    }

    void links()
    {
        m_page.load(u"a word here"_qs);
        m_page.select(u"word"_qs);
        const auto mark = [this] {
            return QCoro::waitFor(m_page.page.addLinkMarkToCurrentSelection()).value_or(PageLink());
        };
        QCOMPARE(mark().text, u"word"_qs);
        QCOMPARE(m_page.body(), u"a word here"_qs);
        m_page.evaluate(u"getSelection().removeAllRanges()"_qs); // the sheet has the focus now
        m_page.page.addLinkToSelection(u"http://x.example/?a='1'&b=\"<2>\""_qs, u"It's \"so\""_qs, true);
        const QString link = u"a <a href=\"http://x.example/?a='1'&amp;b=&quot;<2>&quot;\" title=\"It's "
                             "&quot;so&quot;\" target=\"_blank\">word</a> "
                             "here"_qs;
        QCOMPARE(m_page.body(), link);

        m_page.putCursorBehind(u"wor"_qs);
        const PageLink shown = mark();
        QVERIFY(shown.isLink && shown.newWindow);
        QCOMPARE(shown.url, u"http://x.example/?a='1'&b=\"<2>\""_qs);
        QCOMPARE(shown.tooltip, u"It's \"so\""_qs);
        QCOMPARE(shown.text, u"word"_qs);
        m_page.page.removeLinkMarkForCurrentSelection();
        QCOMPARE(m_page.body(), link);
        mark();
        m_page.page.addLinkToSelection(u"http://y.example/"_qs, QString(), false);
        QCOMPARE(m_page.body(), u"a <a href=\"http://y.example/\" target=\"_self\">word</a> here"_qs);

        const QString before = m_page.body();
        mark();
        m_page.page.addLinkToSelection(u"java\nscript:alert(1)"_qs, QString(), false);
        QCOMPARE(m_page.body(), before);
        mark();
        m_page.page.removeLink();
        QCOMPARE(m_page.body(), u"a word here"_qs);
    }

    void doneOnAnUnchangedLinkChangesNothing()
    {
        const QString stored = u"a <a href='/about'>word</a> here <a href='#' class=readmore>More &amp; more</a>"_qs;
        m_page.load(stored);
        for (const QString &text : {u"word"_qs, u"More & more"_qs}) {
            m_page.putCursorBehind(text);
            const PageLink link = QCoro::waitFor(m_page.page.addLinkMarkToCurrentSelection()).value_or(PageLink());
            QVERIFY(link.isLink);
            m_page.page.addLinkToSelection(link.url, link.tooltip, link.newWindow);
            QCOMPARE(m_page.body(), stored);
        }
    }

    void linksDoNotHitAnotherText()
    {
        for (const bool isSamePost : {false, true}) {
            m_page.load(u"a word here\n\nrest"_qs);
            m_page.select(u"word"_qs);
            m_page.page.addLinkMarkToCurrentSelection();
            const QString other = u"another text\n\nrest"_qs;
            isSamePost ? m_page.loadAgain(other) : m_page.load(other);
            m_page.page.addLinkToSelection(u"http://x.example/"_qs, QString(), false);
            QCOMPARE(m_page.body(), other);
        }
    }

    void linkAtCursorShowsItsAddress()
    {
        m_page.load(u"a <a href=\"http://x.example/\" title=\"tip\" target=\"_blank\">word</a> here"_qs);
        QSignalSpy opened(&m_page.page, &ComposePage::openAddLink);
        m_page.evaluate(
            u"document.querySelector('#content a').dispatchEvent(new MouseEvent('dblclick', {bubbles: true}))"_qs);
        QTRY_COMPARE(opened.count(), 1);
        QCOMPARE(opened[0], QVariantList({u"http://x.example/"_qs, u"tip"_qs, true}));
    }

    void addsImages_data()
    {
        const QUrl picture(u"http://x.example/a%27b.png"_qs);
        const QString nasty = u"it's \"x\"><img src=x onerror=window.hits++> & ');window.hits++;//"_qs;
        const QString nastyAttribute =
            u"it's &quot;x&quot;><img src=x onerror=window.hits++> &amp; ');window.hits++;//"_qs;
        const QString nastyText = u"it's \"x\"&gt;&lt;img src=x onerror=window.hits++&gt; &amp; ');window.hits++;//"_qs;
        const TestTable<QString, ImageInfo, QString> row; // stored, picture, body
        row("plain", "one\n\ntwo", {picture, picture, "alt", {}, {}, {}},
            "one\n\n<a href=\"http://x.example/a%27b.png\" target=\"_blank\"><img src=\"http://x.example/a%27b.png\" "
            "alt=\"alt\" class=\"aligncenter full\" /></a>\n\ntwo");
        row("no link, featured", "one", {picture, {}, {}, {}, "tip", picture},
            "one\n\n<img src=\"http://x.example/a%27b.png\" alt=\"\" title=\"tip\" class=\"aligncenter full\" "
            "data-zalmo-featured-image=\"true\" />");
        row("texts that look like markup", "one", {picture, {}, nasty, nasty, nasty, {}},
            u"one\n\n<figure class=\"wp-caption aligncenter\"><img src=\"http://x.example/a%27b.png\" "
            "alt=\"%1\" title=\"%1\" /><figcaption class=\"wp-caption-text\">%2</figcaption></figure>"_qs.arg(
                nastyAttribute, nastyText));
        row("block", paragraph("one"), {picture, {}, {}, "A 'caption'", {}, {}},
            paragraph("one") + "\n\n"
                + block("image {\"align\":\"center\"}",
                    "<figure class=\"wp-block-image aligncenter\"><img src=\"http://x.example/a%27b.png\" alt=\"\" />"
                    "<figcaption class=\"wp-element-caption\">A 'caption'</figcaption></figure>"));
    }

    void addsImages()
    {
        const auto [stored, image, expected] = testRow<QString, ImageInfo, QString>();
        m_page.evaluate(u"window.hits = 0"_qs);
        m_page.load(stored);
        m_page.putCursorBehind(u"one"_qs);
        m_page.page.hidePopupWindows(); // as for the panel that chooses the picture
        m_page.page.addImage(image);
        QTRY_COMPARE(m_page.body(), expected); // the page asks for the link's target first
        QTRY_COMPARE(m_page.reports.isEmpty() ? QString() : m_page.reports.last(), expected);
        QCOMPARE(m_page.evaluate(u"window.hits"_qs).toInt(), 0);
        m_page.type(u"text"_qs);
        QVERIFY(m_page.body().contains(u"text"));
    }

    void reportsTheSelection()
    {
        m_page.load(u"a <strong>bold <em>word</em></strong> and <a href='x'>link</a>"_qs);
        QString text;
        SelectionStyle style;
        QObject context;
        connect(&m_page.page, &ComposePage::selectionChanged, &context, [&](const QString &t, const SelectionStyle &s) {
            text = t;
            style = s;
        });
        m_page.select(u"word"_qs);
        QTRY_COMPARE(text, u"word"_qs);
        QVERIFY(style.bold && style.italic && !style.link && !style.underline);
        m_page.putCursorBehind(u"lin"_qs);
        QTRY_VERIFY(text.isEmpty() && style.link && !style.bold && !style.underline);
        m_page.page.execCommand(u"Bold"_qs);
        QTRY_VERIFY(style.bold); // of what is typed next
    }

    void showsTheLevelOfTheHeadingAtTheCursor()
    {
        const QString stored = u"<h2>Top h1 story</h2>\n\ntext"_qs;
        const QString badge =
            u"document.getElementById('level').hidden ? '' : document.getElementById('level').textContent"_qs;
        m_page.load(stored);
        m_page.putCursorBehind(u"Top"_qs);
        QTRY_COMPARE(m_page.evaluate(badge).toString(), u"H2"_qs);
        m_page.type(u"X"_qs);
        QCOMPARE(m_page.body(), u"<h2>TopX h1 story</h2>\n\ntext"_qs);
        m_page.putCursorBehind(u"text"_qs);
        QTRY_COMPARE(m_page.evaluate(badge).toString(), QString());
    }

    void keysOfTheProgramReachIt()
    {
        QAction link(m_page.view.get());
        link.setShortcut(QKeySequence(u"Ctrl+K"_qs));
        m_page.view->addAction(&link);
        QSignalSpy triggered(&link, &QAction::triggered);
        const QString stored = u"a word here"_qs;
        m_page.load(stored);
        m_page.select(u"word"_qs);
        m_page.view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.view.get()));
        m_page.press(Qt::Key_K, Qt::ControlModifier);
        QCOMPARE(triggered.count(), 1);
        QCOMPARE(m_page.body(), stored);
    }

    void undoShowsWhatItChanges()
    {
        m_page.load(u"<p>first</p>\n"_qs + u"<p>more</p>\n"_qs.repeated(200));
        m_page.putCursorBehind(u"first"_qs);
        m_page.type(u" word"_qs);
        m_page.evaluate(u"window.scrollTo(0, 4000)"_qs);
        m_page.view->page()->triggerAction(QWebEnginePage::Undo);
        QTRY_VERIFY(m_page.evaluate(u"window.scrollY"_qs).toInt() < 300);
    }

    void typesBehindABox_data()
    {
        const TestTable<QString, QString> row;
        row("alone", "<script>x</script>", "<script>x</script>\n\ntext");
        row("in a paragraph", "<p>a <input name=q></p>", "<p>a <input name=q>text</p>");
        row("block", "<!-- wp:latest-posts /-->", "<!-- wp:latest-posts /-->\n\n" + paragraph("text"));
    }

    void typesBehindABox()
    {
        const auto [stored, expected] = testRow<QString, QString>();
        m_page.load(stored);
        m_page.page.focus();
        m_page.body();
        m_page.press(Qt::Key_End, Qt::ControlModifier);
        m_page.type(u"text"_qs);
        QCOMPARE(m_page.body(), expected);
    }

    void tabLeavesThePage()
    {
        m_page.load(u"word"_qs);
        m_page.putCursorBehind(u"word"_qs);
        QSignalSpy left(&m_page.page, &ComposePage::focusTitleRequested);
        QSignalSpy leftForward(&m_page.page, &ComposePage::focusTokensRequested);
        m_page.press(Qt::Key_Tab);
        QTRY_COMPARE(leftForward.size(), 1);
        m_page.press(Qt::Key_Tab, Qt::ShiftModifier);
        QTRY_COMPARE(left.count(), 1);

        QLineEdit tokens(m_page.view.get());
        tokens.show();
        connect(&m_page.page, &ComposePage::focusTokensRequested, &tokens, [&tokens] { tokens.setFocus(); });
        m_page.view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.view.get()));
        m_page.typeOn(u"1"_qs);
        QTest::keyClick(m_page.view->focusProxy(), Qt::Key_Tab);
        m_page.typeOn(u"one, two"_qs); // faster than the page
        QTRY_COMPARE(tokens.text(), u"one, two"_qs);
        QCOMPARE(m_page.body(), u"word1"_qs);
    }

private:
    PageFixture m_page;
};

static const RegisteredTest<TestEditing> registered;

#include "TestEditing.moc"
