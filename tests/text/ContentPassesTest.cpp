#include "text/ContentPasses.h"
#include "support/TestClasses.h"

using namespace ContentPasses;

namespace {
QString repeated(const char16_t *text, int times, const char16_t *end = u"")
{
    return QString::fromUtf16(text).repeated(times) + QString::fromUtf16(end);
}
} // namespace

/// Examples of what comes out; SamePassesTest tries what is odd about each pass.
class ContentPassesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void toEditor_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        row("empty", "", "");
        row("blank line", "one\n\ntwo", "<p>one<br /><br /></p><p>two<br /><br /></p>");
        row("single line end", "a\nb", "<p>a<br>b<br /><br /></p>");
        row("block stays", "<p>x</p>", "\n<p>x</p>");
        row("blank lines around a block", "\n\n<p>x</p>\n\n", "\n<p>x</p>");
        row("nothing but blanks", " ", "<p><br /><br /></p>");
        row("empty paragraph goes", "a\n\n<p> </p>", "<p>a<br /><br /></p>\n");
        row("linked image", "<a href='x'><img src='y' /></a>", "<a href='x'><img src='y' /></a>");
        row("white space in front", "a\n \t\n  b", "<p>a<br /><br /></p><p>b<br /><br /></p>");
        row("bare image", " <img src='y' />", " <img src='y' />");
        row("link with words", "<a href='x'>w</a>", "<p><a href='x'>w</a><br /><br /></p>");
        row("fold", "a<!--more-->b",
            "<p>a<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>b<br /><br /></p>");
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
        row("a tag in a tag", "<img class='a' <img class='b'/> <img class='b'/>",
            "<img  class=\"a\" <img class='b' /> <img  class=\"b\" />");
    }

    void imageClasses()
    {
        QFETCH(QString, text);
        QTEST(contentReplacingImageClasses(text), "expected");
    }

    void toPage_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        row("shortcode", "a [vimeo 12] b", "a <div draggable='true' class='vimeo'>[vimeo 12]</div> b");
        row("shortcode in other case", "[YouTube=x]", "<div draggable='true' class='embed'>[YouTube=x]</div>");
        row("shortcode in a shortcode", "[youtube [youtube x]",
            "<div draggable='true' class='youtube'>[youtube [youtube x]</div>");
        row("known shortcode in a shortcode", "[youtube [vimeo x][vimeo x]",
            "<div draggable='true' class='youtube'>[youtube <div draggable='true' class='vimeo'>[vimeo x]</div></div>"
            "<div draggable='true' class='vimeo'>[vimeo x]</div>");
        row("address alone", "http://www.youtube.com/watch?v=a",
            "<div draggable='true' class='youtube'>[youtube=http://www.youtube.com/watch?v=a&w=640&h=360]</div>");
        row("address in a sentence", "see https://www.youtube.com/watch?v=a now",
            "see<div draggable='true' class='youtube'>[youtube= https://www.youtube.com/watch?v=a "
            "&w=640&h=360]</div>now");
        row("addresses that share a blank", "x http://www.youtube.com/watch?v=a http://www.youtube.com/watch?v=b y",
            "x<div draggable='true' class='youtube'>[youtube= http://www.youtube.com/watch?v=a &w=640&h=360]</div>"
            "http://www.youtube.com/watch?v=b y");
        row("heading", "<h3 id='a'>x</h3>",
            "<div class='heading-container'><img class='heading-box h3-selector'>"
            "<h3 class='headingAlreadyInsideContainer' id='a'>x</h3 class='headingAlreadyInsideContainer'></div>");
        row("level in the words", "<h2>Top h1 story</h2>",
            "<div class='heading-container'><img class='heading-box h1-selector'>"
            "<h2>Top h1 class='headingAlreadyInsideContainer' story</h2></div>");
        row("heading in capitals", "< H2 >x< / H2 >",
            "<div class='heading-container'><img class='heading-box h2-selector'>"
            "< H2 class='headingAlreadyInsideContainer' >x< / H2 class='headingAlreadyInsideContainer' ></div>");
        row("heading of the page", "<h2 class = ' headingAlreadyInsideContainer\">a</h2>",
            "<h2 class = ' headingAlreadyInsideContainer\">a</h2>");
    }

    void toPage()
    {
        QFETCH(QString, text);
        const QString page = postContentWithHeadings(postContentWithVideoURLTags(postContentWithShortCodeTags(text)));
        QTEST(page, "expected");
        QCOMPARE(postContentWithHeadings(page), page); // a second time changes nothing
    }

    void toBlog_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        row("container", "a<div draggable='true' class='youtube'>[youtube=x]</div>b", "a[youtube=x]b");
        row("embed with tags", "<div class=\"embed\"><iframe src='x'></iframe></div>", "<iframe src='x'></iframe>");
        row("begins at the first division", "<div id='a'>b</div><div class='embed'>c</div>", "c");
        row("placeholder", "<img src='a' data-youtube = \"abc\" alt='b'>", "[youtube=abc]");
    }

    void toBlog()
    {
        QFETCH(QString, text);
        QTEST(replaceEditorTags(text), "expected");
    }

    void addresses()
    {
        const QString content = u"<img src='http://h/a.png'><a href='http://h/b.JPG?x=1'>"
                                "<img alt='' src=\"https://h/c.png\"></a><a href='http://h/page.html'>"
                                "<a class='x' href = 'http://h/d.jpeg' >"_qs;
        const QString http = u"http://"_qs;
        QCOMPARE(imageSources(content, http), QStringList{u"http://h/a.png"_qs});
        QCOMPARE(linkedPictures(content, http), (QStringList{u"http://h/b.JPG?x=1"_qs, u"http://h/d.jpeg"_qs}));
    }

    void replaceOccurrences_data()
    {
        addColumns<QString, QStringList, QString>({"content", "pairs", "expected"});
        const auto row = [](const char *name, const char *content, const char *pairs, const char *expected) {
            QTest::newRow(name) << QString::fromLatin1(content) << QString::fromLatin1(pairs).split(u' ')
                                << QString::fromLatin1(expected);
        };
        row("apart", "ab cd ab", "ab=1 cd=2", "1 2 1");
        row("one begins another", "abc ab", "ab=1 abc=2", "2 1");
        row("one inside another", "abc b", "b=1 abc=2", "2 1");
        row("a value holds a key", "abc", "abc=xbx b=1", "x1x");
        row("a value makes a key with its neighbour", "a123", "123=b ab=1", "1");
        row("a shorter key is made", "zzz1234", "1234=b zb=!", "zz!");
        row("one length, one overlaps", "abc", "ab=1 bc=2", "1c");
        row("nothing of it", "xyz", "ab=1 cd=2", "xyz");
        row("to nothing", "abab", "ab=", "");
    }

    void replaceOccurrences()
    {
        QFETCH(QString, content);
        QFETCH(QStringList, pairs);
        QHash<QString, QString> replacements;
        for (const QString &pair : pairs)
            replacements.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
        QTEST(ContentPasses::replaceOccurrences(content, replacements), "expected");
    }

    void extract_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        const QString words = u"0123456789"_qs.repeated(29);
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
    void hostile_data()
    {
        const TestTable<QString> row({"body"});
        constexpr int many = 300000;
        row("unclosed", repeated(u"<img <a <h2 <div [youtube ", many / 10, u"= ' \" > ] </h"));
        row("unclosed with attributes", repeated(u"<img class='a src='<a href=\"", many / 10));
        row("blanks", u'\n' + repeated(u" ", many));
        row("blanks behind a tag", u"<p"_qs + repeated(u" ", many) + u"<p>"_qs + repeated(u" ", many));
        row("blanks behind brackets", repeated(u"<  ", many) + repeated(u" ", many));
        row("unclosed headings", repeated(u"<h2>", many));
        row("line ends", repeated(u"\n", many) + repeated(u"\r", many));
        row("quotes", u"<img "_qs + repeated(u"class='class=\"", many / 10));
        row("divisions", repeated(u"<div class='embed'>", many / 10));
        row("schemes", repeated(u" http://www.youtube.com/watch?v", many / 10));
        row("lone surrogates", repeated(u"<img class='\xd800' [youtube \xdc00 <p>\xdbff", many / 10));
    }

    void hostile()
    {
        QFETCH(QString, body);
        const QString kept = body;
        postContentWithHeadings(postContentWithVideoURLTags(postContentWithShortCodeTags(contentForEditor(body))));
        replaceEditorTags(body);
        imageSources(body, QString());
        linkedPictures(body, QString());
        removeHTMLFromString(body);
        QCOMPARE(body, kept);
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
        QString tangled;
        for (int i = 0; i < 5000; ++i)
            tangled += u"<img class='a%1' <img class='b%1'/>\n"_qs.arg(i);
        QCOMPARE(contentReplacingImageClasses(tangled).count(u" />"_qs), 5000);
        QString ofAllLengths = u"<h2><h3>a</h3> <h3>a</h3>"_qs;
        for (int i = 0; i < 1500; ++i)
            ofAllLengths += u"<h3>%1</h3>\n"_qs.arg(QString(), i, u'x');
        QCOMPARE(postContentWithHeadings(ofAllLengths).count(u"</div>"_qs), 1503);
    }
};

static const RegisteredTest<ContentPassesTest> registered;
#include "ContentPassesTest.moc"
