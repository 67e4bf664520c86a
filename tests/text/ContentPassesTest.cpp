#include "text/ContentPasses.h"
#include "support/TestClasses.h"
#include "text/KeptForms.h"

using namespace ContentPasses;

static QString repeated(const char16_t *text, int times, const char16_t *end = u"")
{
    return QString::fromUtf16(text).repeated(times) + QString::fromUtf16(end);
}

/// Examples of what comes out; SamePassesTest tries what is odd about some of them.
class ContentPassesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void toEditor_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        row("empty", "", "");
        row("blank line", "one\n\ntwo", "<p>one</p><p>two</p>");
        row("single line end", "a\nb", "<p>a<br>b</p>");
        row("blank lines around a block", "\n\n<p>x</p>\n\n", "\n<p>x</p>");
        row("nothing but blanks", " ", "");
        row("empty paragraph goes", "a\n\n<p> </p>", "<p>a</p>\n");
        row("linked image", "<a href='x'><img src='y' /></a>", "<a href='x'><img src='y' /></a>");
        row("white space in front", "a\n \t\n  b", "<p>a</p><p>b</p>");
        row("link with words", "<a href='x'>w</a>", "<p><a href='x'>w</a></p>");
        row("fold", "a<!--more-->b",
            "<p>a<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>b</p>");
        row("no fold in a script or a value", "<script><!--more--></script><a title='<!--more-->'>a</a>",
            "<script><!--more--></script><p><a title='<!--more-->'>a</a></p>");
        row("preformatted text stays", "a\n\n<pre>\n\n\tb\n \nc</pre>\nd", "<p>a</p><pre>\n\n\tb\n \nc</pre><p>d</p>");
        row("and a script", "<div>a <SCRIPT>b\n\nc</SCRIPT></div>", "\n<div>a <SCRIPT>b\n\nc</SCRIPT></div>");
        row("preformatted text without an end", "<pre>\n\na\n\nb", "<pre>\n\na\n\nb");
        row("block editor", "<!-- wp:paragraph -->\n<p>a</p>\n\n<!-- /wp:paragraph -->",
            "<!-- wp:paragraph -->\n<p>a</p>\n\n<!-- /wp:paragraph -->");
    }

    void toEditor()
    {
        QFETCH(QString, text);
        QTEST(contentForEditor(text), "expected");
    }

    void imageClasses_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        row("class moves behind", "<img src='a' class='b c' alt='d'/>", "<img src='a'  class=\"b c\" alt='d' />");
        row("centred", "<img class=\"aligncenter\" src=\"a\" />",
            "<img  align=\"middle\" class=\"aligncenter full\" src=\"a\"  />");
        row("centred counts in lower case only", "<img class='AlignCenter'/>", "<img  class=\"AlignCenter\" />");
        row("two slashes", "<img class='a'//>", "<img  class=\"a\" />");
        for (const char *same : {"<img class='a'>", "<img class=a />", "<img data-class='a' />",
                 "<img alt='class=\"a\"' />", "<image class='a'/>", "<!-- <img class='a'/> -->",
                 "<img src='a'> class='b' <br/>", "<img class='a\"'/>"})
            row(same, same, same);
    }

    void imageClasses()
    {
        QFETCH(QString, text);
        QTEST(contentReplacingImageClasses(text), "expected");
    }

    void players_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        const QString start = u"<div draggable='true' class='youtube'>[youtube="_qs;
        const QString a = u"http://www.youtube.com/watch?v=a"_qs;
        row("shortcode", "a [vimeo 12] b", "a <div draggable='true' class='vimeo'>[vimeo 12]</div> b");
        row("shortcode in other case", "[YouTube=x]", "<div draggable='true' class='embed'>[YouTube=x]</div>");
        row("shortcode in a shortcode", "[youtube [vimeo x][vimeo x]",
            "<div draggable='true' class='youtube'>[youtube [vimeo x]</div>"
            "<div draggable='true' class='vimeo'>[vimeo x]</div>");
        row("shortcode across lines", "[youtube\nx]", "[youtube\nx]");
        row("shortcode in a value", "<a title='[youtube x]'>b</a>", "<a title='[youtube x]'>b</a>");
        row("address alone", a, start + a + u"&w=640&h=360]</div>"_qs);
        row("address on its line", u"one\r\n "_qs + a + u" \r\ntwo"_qs,
            u"one\r\n "_qs + start + a + u"&w=640&h=360]</div> \r\ntwo"_qs);
        for (const QString &same : {u"see "_qs + a + u" now"_qs, u"see\n"_qs + a + u" now"_qs, u"x "_qs + a, u'x' + a,
                 u"<p>"_qs + a + u"</p>"_qs, u"<!--\n"_qs + a + u"\n-->"_qs, u"http://www.youtube.com/embed/a"_qs})
            row(qPrintable(same), same, same);
    }

    void players()
    {
        QFETCH(QString, text);
        QTEST(postContentWithVideoURLTags(postContentWithShortCodeTags(text)), "expected");
    }

    /// What becomes something else for the page leads it to the stored text. What is not alone in its piece must be
    /// able to stand in a paragraph.
    void keepsStoredTexts_data()
    {
        const TestTable<QString, QString, QStringList> row({"core", "html", "kept"});
        row("fold", "a<!--more-->",
            "<p>a<a class='readmore' href='#' contentEditable=false draggable=true data-zalmo-stored='#-0'>Read "
            "More</a></p>",
            {"<!--more-->"});
        row("shortcode alone", "[vimeo 1&amp;2]",
            "<div draggable='true' class='vimeo' data-zalmo-stored='#-0'>[vimeo 1&amp;2]</div>", {"[vimeo 1&amp;2]"});
        row("shortcodes in a sentence", "a [vimeo 1]\n[vimeo 2]",
            "<p>a <span draggable='true' class='vimeo' data-zalmo-stored='#-0'>[vimeo 1]</span><br>"
            "<span draggable='true' class='vimeo' data-zalmo-stored='#-1'>[vimeo 2]</span></p>",
            {"[vimeo 1]", "[vimeo 2]"});
        row("address", "<div>\nhttp://www.youtube.com/watch?v=a\n</div>",
            "\n<div>\n<span draggable='true' class='youtube' data-zalmo-stored='#-0'>"
            "[youtube=http://www.youtube.com/watch?v=a&w=640&h=360]</span>\n</div>",
            {"http://www.youtube.com/watch?v=a"});
        row("picture", "<img class='a' src='b'/>", "<img  class=\"a\" src='b' data-zalmo-stored='#-0' />",
            {"<img class='a' src='b'/>"});
    }

    void keepsStoredTexts()
    {
        QFETCH(QString, core);
        KeptForms kept;
        QString html = pieceForPage(core, false, &kept);
        QCOMPARE(kept.mark().size(), 20);
        QTEST(html.replace(kept.mark(), u"#"_qs), "html");
        QTEST(kept.texts(), "kept");
    }

    void addresses()
    {
        const QString content = u"<img src='http://h/a.png'><a href='http://h/b.JPG?x=1'>"
                                "<img alt='' src=\"https://h/c.png\"></a><a href='http://h/page.html'>http://h/a.png"
                                "<a class='x' href = 'http://h/d.jpeg' ><!-- <img src='http://h/a.png'> -->"
                                "<img data-src='http://h/a.png'><IMG title='>' SRC=http://h/e.png/>"_qs;
        const QString http = u"http://"_qs;
        QCOMPARE(imageSources(content, http),
            (QStringList{u"http://h/a.png"_qs, u"http://h/a.png"_qs, u"http://h/e.png/"_qs}));
        QCOMPARE(linkedPictures(content, http), (QStringList{u"http://h/b.JPG?x=1"_qs, u"http://h/d.jpeg"_qs}));
        const QString swapped = replacePictureAddresses(content,
            {{u"http://h/a.png"_qs, u"A"_qs}, {u"http://h/d.jpeg"_qs, u"D"_qs}, {u"http://h/page.html"_qs, u"P"_qs}});
        QCOMPARE(swapped, QString(content).replace(u"http://h/d.jpeg"_qs, u"D"_qs).replace(0, 26, u"<img src='A'>"_qs));
    }

    void replaceOccurrences()
    {
        const auto replaced = [](const char *content, const QHash<QString, QString> &replacements) {
            return ContentPasses::replaceOccurrences(content, replacements);
        };
        QCOMPARE(replaced("ab cd ab", {{"ab", "1"}, {"cd", "2"}}), "1 2 1");
        QCOMPARE(replaced("abc ab", {{"ab", "1"}, {"abc", "2"}}), "2 1"); // one begins another
        QCOMPARE(replaced("abc b", {{"b", "1"}, {"abc", "2"}}), "2 1");
        QCOMPARE(replaced("abcab", {{"a", "1"}, {"ab", "2"}, {"abcd", "3"}}), "2c2");
        QCOMPARE(replaced("abc", {{"abc", "xbx"}, {"b", "1"}}), "xbx"); // a value is not read again
        QCOMPARE(replaced("abc", {{"ab", "1"}, {"bc", "2"}}), "1c");
        QCOMPARE(replaced("abab", {{"ab", ""}}), "");
    }

    void extract_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        const QString words = u"0123456789"_qs.repeated(29);
        row("blocks part words", "<p>p1</p><ul><li class='x'>x</li><li>y<ul><li>z</LI></ul></li></ul>\n\n<h2>end</h2>",
            "p1 x y z  end");
        row("line breaks part words", "a<br />b<br><u>c</u>", "a b c");
        row("nothing but tags", "<p><img src=x></p><hr>", "");
        row("tags go", "<p>a<b>b</b></p>\nc&nbsp;d", "ab c d");
        row("tag in the window", words + u"<b>1234567<br>"_qs, words + u"1234567 "_qs);
        row("tag behind the window", words + u"12345678<b>"_qs, words + u"12345678<b>"_qs);
        row("window slides", repeated(u"<i>", 1000) + words, words);
    }

    void extract()
    {
        QFETCH(QString, text);
        QTEST(removeHTMLFromString(text), "expected");
    }

    /// Bodies on which the patterns themselves would look at the rest of the text from thousands of places. Here only
    /// that they come out unchanged, or as expected, before the test's time is up: a square of 300,000 would not.
    void hostile()
    {
        constexpr int many = 300000;
        for (const QString &body : {repeated(u"<img <a <h2 <div [youtube ", many / 10, u"= ' \" > ] </h"),
                 repeated(u"<img class='a src='<a href=\"", many / 10), u'\n' + repeated(u" ", many),
                 u"<p"_qs + repeated(u" ", many) + u"<p>"_qs + repeated(u" ", many), repeated(u"<  ", many),
                 repeated(u"<pre <pre> <textarea", many / 20), repeated(u"\n", many) + repeated(u"\r", many),
                 u"<img "_qs + repeated(u"class='class=\"", many / 10),
                 repeated(u"\n   http://www.youtube.com/watch?v=", many / 10),
                 repeated(u"<img class='\xd800' [youtube \xdc00 <p>\xdbff", many / 10)}) {
            const QString kept = body;
            KeptForms forms;
            contentForEditor(body);
            pieceForPage(body, false, &forms);
            replacePictureAddresses(body, {{u"a"_qs, u"b"_qs}});
            imageSources(body, QString());
            linkedPictures(body, QString());
            removeHTMLFromString(body);
            QCOMPARE(body, kept);
        }
    }

    void manyMatches()
    {
        QString content;
        QString nested;
        for (int i = 0; i < 20000; ++i) {
            content += u"<img class='a%1'/>"_qs.arg(i);
            nested += u"[youtube [youtube %1]"_qs.arg(i);
        }
        QCOMPARE(contentReplacingImageClasses(content).count(u"/>"_qs), 20000);
        QCOMPARE(postContentWithShortCodeTags(nested).count(u"</div>"_qs), 20000);
    }
};

static const RegisteredTest<ContentPassesTest> registered;
#include "ContentPassesTest.moc"
