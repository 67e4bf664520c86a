#include "text/ContentPasses.h"
#include "TextRows.h"
#include "support/TestClasses.h"

using namespace ContentPasses;

namespace {
const QString anchor =
    QStringLiteral("<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>");

QString repeated(const char16_t *text, int times, const char16_t *end = u"")
{
    return QString::fromUtf16(text).repeated(times) + QString::fromUtf16(end);
}
} // namespace

class ContentPassesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void toEditor_data()
    {
        addTextColumns();
        row("empty", u"", u"");
        row("blank line", u"one\n\ntwo", u"<p>one<br /><br /></p><p>two<br /><br /></p>");
        row("single line end", u"a\nb", u"<p>a<br>b<br /><br /></p>");
        row("block stays", u"<p>x</p>", u"\n<p>x</p>");
        row("blank lines around a block", u"\n\n<p>x</p>\n\n", u"\n<p>x</p>");
        row("nothing but blanks", u" ", u"<p><br /><br /></p>");
        row("empty paragraph goes", u"a\n\n<p> </p>", u"<p>a<br /><br /></p>\n");
        row("linked image", u"<a href='x'><img src='y' /></a>", u"<a href='x'><img src='y' /></a>");
        row("white space in front", u"a\n \t\n  b", u"<p>a<br /><br /></p><p>b<br /><br /></p>");
        row("bare image", u" <img src='y' />", u" <img src='y' />");
        row("link with words", u"<a href='x'>w</a>", u"<p><a href='x'>w</a><br /><br /></p>");
        row("fold", u"a<!--more-->b",
            u"<p>a<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>b<br /><br /></p>");
        row("block editor", u"<!-- wp:paragraph -->\n<p>a</p>\n\n<!-- /wp:paragraph -->",
            u"<!-- wp:paragraph -->\n<p>a</p>\n\n<!-- /wp:paragraph -->");
    }

    void toEditor()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(contentForEditor(text), expected);
    }

    void imageClasses_data()
    {
        addTextColumns();
        row("class moves behind", u"<img src='a' class='b c' alt='d'/>", u"<img src='a'  class=\"b c\" alt='d' />");
        row("centred", u"<img class=\"aligncenter\" src=\"a\" />",
            u"<img  align=\"middle\" class=\"aligncenter full\" src=\"a\"  />");
        row("centred counts in lower case only", u"<img class='AlignCenter'/>", u"<img  class=\"AlignCenter\" />");
        row("two slashes", u"<IMG class='a'//>", u"<img  class=\"a\" />");
        row("no slash", u"<img class='a'>", u"<img class='a'>");
        row("no class", u"<img src='a' />", u"<img src='a' />");
        row("the other quote inside", u"<img class='a\"b' />", u"<img  class=\"a\"b\"  />");
        row("line end in the tag", u"<img\nclass='a'\n/>", u"<img\nclass='a'\n/>");
        row("equal tags", u"<img class='a'/><img class='a'/>", u"<img  class=\"a\" /><img  class=\"a\" />");
        row("a tag in a tag", u"<img class='a' <img class='b'/> <img class='b'/>",
            u"<img  class=\"a\" <img class='b' /> <img  class=\"b\" />");
    }

    void imageClasses()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(contentReplacingImageClasses(text), expected);
    }

    void toPage_data()
    {
        addTextColumns();
        row("shortcode", u"a [vimeo 12] b", u"a <div draggable='true' class='vimeo'>[vimeo 12]</div> b");
        row("shortcode in other case", u"[YouTube=x]", u"<div draggable='true' class='embed'>[YouTube=x]</div>");
        row("shortcode across lines", u"[youtube\n]", u"[youtube\n]");
        row("shortcode in a shortcode", u"[youtube [youtube x]",
            u"<div draggable='true' class='youtube'>[youtube [youtube x]</div>");
        row("known shortcode in a shortcode", u"[youtube [vimeo x][vimeo x]",
            u"<div draggable='true' class='youtube'>[youtube <div draggable='true' class='vimeo'>[vimeo x]</div></div>"
            u"<div draggable='true' class='vimeo'>[vimeo x]</div>");
        row("address alone", u"http://www.youtube.com/watch?v=a",
            u"<div draggable='true' class='youtube'>[youtube=http://www.youtube.com/watch?v=a&w=640&h=360]</div>");
        row("address in a sentence", u"see https://www.youtube.com/watch?v=a now",
            u"see<div draggable='true' class='youtube'>[youtube= https://www.youtube.com/watch?v=a "
            u"&w=640&h=360]</div>now");
        row("address behind a tag", u"<p>http://www.youtube.com/watch?v=a </p>",
            u"<p>http://www.youtube.com/watch?v=a </p>");
        row("addresses that share a blank", u"x http://www.youtube.com/watch?v=a http://www.youtube.com/watch?v=b y",
            u"x<div draggable='true' class='youtube'>[youtube= http://www.youtube.com/watch?v=a &w=640&h=360]</div>"
            u"http://www.youtube.com/watch?v=b y");
        row("heading", u"<h3 id='a'>x</h3>",
            u"<div class='heading-container'><img class='heading-box h3-selector'>"
            u"<h3 class='headingAlreadyInsideContainer' id='a'>x</h3 class='headingAlreadyInsideContainer'></div>");
        row("level in the words", u"<h2>Top h1 story</h2>",
            u"<div class='heading-container'><img class='heading-box h1-selector'>"
            u"<h2>Top h1 class='headingAlreadyInsideContainer' story</h2></div>");
        row("heading in capitals", u"< H2 >x< / H2 >",
            u"<div class='heading-container'><img class='heading-box h2-selector'>"
            u"< H2 class='headingAlreadyInsideContainer' >x< / H2 class='headingAlreadyInsideContainer' ></div>");
        row("heading across lines", u"<h2>a\nb</h2>", u"<h2>a\nb</h2>");
        row("heading of the page", u"<h2 class = ' headingAlreadyInsideContainer\">a</h2>",
            u"<h2 class = ' headingAlreadyInsideContainer\">a</h2>");
    }

    void toPage()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        const QString page = postContentWithHeadings(postContentWithVideoURLTags(postContentWithShortCodeTags(text)));
        QCOMPARE(page, expected);
        QCOMPARE(postContentWithHeadings(page), page); // a second time changes nothing
    }

    void toBlog_data()
    {
        addTextColumns();
        row("container", u"a<div draggable='true' class='youtube'>[youtube=x]</div>b", u"a[youtube=x]b");
        row("embed with tags", u"<div class=\"embed\"><iframe src='x'></iframe></div>", u"<iframe src='x'></iframe>");
        row("other container", u"<div class='other'>a</div>", u"<div class='other'>a</div>");
        row("across lines", u"<div class='embed'>a\n</div>", u"<div class='embed'>a\n</div>");
        row("begins at the first division", u"<div id='a'>b</div><div class='embed'>c</div>", u"c");
        row("placeholder", u"<img src='a' data-youtube = \"abc\" alt='b'>", u"[youtube=abc]");
    }

    void toBlog()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(replaceEditorTags(text), expected);
    }

    void addresses()
    {
        const QString content = QStringLiteral("<img src='http://h/a.png'><a href='http://h/b.JPG?x=1'>"
                                               "<img alt='' src=\"https://h/c.png\"></a><a href='http://h/page.html'>"
                                               "<a class='x' href = 'http://h/d.jpeg' >");
        const QString http = QStringLiteral("http://");
        QCOMPARE(imageSources(content, http), QStringList{QStringLiteral("http://h/a.png")});
        QCOMPARE(linkedPictures(content, http),
            (QStringList{QStringLiteral("http://h/b.JPG?x=1"), QStringLiteral("http://h/d.jpeg")}));
    }

    void replaceOccurrences_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QStringList>("pairs");
        QTest::addColumn<QString>("expected");
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
        QFETCH(QString, expected);
        QHash<QString, QString> replacements;
        for (const QString &pair : pairs)
            replacements.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
        QCOMPARE(ContentPasses::replaceOccurrences(content, replacements), expected);
    }

    void extract_data()
    {
        addTextColumns();
        const QString words = QStringLiteral("0123456789").repeated(29);
        row("tags go", u"<p>a<b>b</b></p>\nc&nbsp;d", u"ab c d");
        row("tag in the window", words + QStringLiteral("<b>1234567<br>"), words + QStringLiteral("1234567 "));
        row("tag behind the window", words + QStringLiteral("12345678<b>"), words + QStringLiteral("12345678<b>"));
        row("window slides", repeated(u"<i>", 1000) + words, words);
        row("no tag", u"a<>b", u"a<>b");
    }

    void extract()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(removeHTMLFromString(text), expected);
    }

    /// Bodies on which the patterns themselves would look at the rest of the text from thousands of places. Here only
    /// that they come out unchanged, or as expected, before the test's time is up: a square of 300,000 would not.
    void hostile_data()
    {
        QTest::addColumn<QString>("body");
        const auto row = [](const char *name, const QString &body) { QTest::newRow(name) << body; };
        constexpr int many = 300000;
        row("unclosed", repeated(u"<img <a <h2 <div [youtube ", many / 10, u"= ' \" > ] </h"));
        row("unclosed with attributes", repeated(u"<img class='a src='<a href=\"", many / 10));
        row("blanks", u'\n' + repeated(u" ", many));
        row("blanks behind a tag",
            QStringLiteral("<p") + repeated(u" ", many) + QStringLiteral("<p>") + repeated(u" ", many));
        row("blanks behind brackets", repeated(u"<  ", many) + repeated(u" ", many));
        row("unclosed headings", repeated(u"<h2>", many));
        row("line ends", repeated(u"\n", many) + repeated(u"\r", many));
        row("quotes", QStringLiteral("<img ") + repeated(u"class='class=\"", many / 10));
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
            content += QStringLiteral("<img class='a%1'/>").arg(i);
            nested += QStringLiteral("[youtube [youtube %1]").arg(i);
        }
        QCOMPARE(contentReplacingImageClasses(content).count(QStringLiteral("/>")), 20000);
        QCOMPARE(postContentWithShortCodeTags(nested).count(QStringLiteral("</div>")), 20000);
        QString tangled;
        for (int i = 0; i < 5000; ++i)
            tangled += QStringLiteral("<img class='a%1' <img class='b%1'/>\n").arg(i);
        QCOMPARE(contentReplacingImageClasses(tangled).count(QStringLiteral(" />")), 5000);
        QString ofAllLengths = QStringLiteral("<h2><h3>a</h3> <h3>a</h3>");
        for (int i = 0; i < 1500; ++i)
            ofAllLengths += QStringLiteral("<h3>%1</h3>\n").arg(QString(), i, u'x');
        QCOMPARE(postContentWithHeadings(ofAllLengths).count(QStringLiteral("</div>")), 1503);
    }
};

static const RegisteredTest<ContentPassesTest> registered;
#include "ContentPassesTest.moc"
