#include "text/BodyPieces.h"
#include "support/ProcessorTime.h"
#include "support/TestClasses.h"

#include <QRandomGenerator>

namespace {
/// "lead{core}tail" of each piece.
QStringList shown(const QString &body)
{
    QStringList list;
    for (const BodyPiece &piece : BodyPieces::split(body))
        list << piece.lead + u'{' + piece.core + u'}' + piece.tail;
    return list;
}
} // namespace

/// A stored body cut into its top-level pieces.
class BodyPiecesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cuts_data()
    {
        const TestTable<QString, QStringList> row({"body", "expected"});
        row("nothing", "", {});
        row("white space", " \n\n", {" \n\n{}"});
        row("blank lines", "one\ntwo\n \nthree\n\n\n", {"{one\ntwo}\n \n", "{three}\n\n\n"});
        row("leading space", "\n\n one", {"\n\n {one}"});
        row("elements", "<p>a</p>\n<P class=x>b</P><div>c<div>d</div></div>",
            {"{<p>a</p>}\n", "{<P class=x>b</P>}", "{<div>c<div>d</div></div>}"});
        row("text and elements", "a\n\nb<h2>c</h2>\nd", {"{a}\n\n", "{b}", "{<h2>c</h2>}\n", "{d}"});
        row("a paragraph ends at a block", "<p>a<p>b\n\n<ul><li>c</ul>", {"{<p>a}", "{<p>b}\n\n", "{<ul><li>c</ul>}"});
        row("an inline element keeps its blank lines", "a <b>b\n\nc</b> d\n\ne", {"{a <b>b\n\nc</b> d}\n\n", "{e}"});
        row("an open inline element does not", "a <b>b\n\nc", {"{a <b>b}\n\n", "{c}"});
        row("a frame in a paragraph", "<p>a <iframe></iframe> b</p>", {"{<p>a <iframe></iframe> b</p>}"});
        row("players on their lines", "a\n [vimeo 1]\r\nb\nhttp://www.youtube.com/watch?v=c\n\nd [vimeo 2]\n[vimeo 3]",
            {"{a}\n ", "{[vimeo 1]}\r\n", "{b}\n", "{http://www.youtube.com/watch?v=c}\n\n", "{d [vimeo 2]}\n",
                "{[vimeo 3]}"});
        row("a player in an element", "<i>\n[vimeo 1]\n</i>", {"{<i>\n[vimeo 1]\n</i>}"});
        row("raw text", "<script>\n\n</div><p></script>\n\nx", {"{<script>\n\n</div><p></script>}\n\n", "{x}"});
        row("comment with a blank line", "a<!-- x\n\n<p> -->b\n\nc", {"{a<!-- x\n\n<p> -->b}\n\n", "{c}"});
        row("quoted brackets", "<p title=\"a>b\n\n</p>\">c</p>d", {"{<p title=\"a>b\n\n</p>\">c</p>}", "{d}"});
        row("unclosed element", "<div>a\n\nb", {"{<div>a\n\nb}"});
        row("blocks", "<!-- wp:paragraph -->\n<p>a</p>\n<!-- /wp:paragraph -->\n\n<!-- wp:more /-->\n",
            {"<!-- wp:paragraph -->\n{<p>a</p>}\n<!-- /wp:paragraph -->\n\n", "{<!-- wp:more /-->}\n"});
        row("nested blocks", "<!-- wp:a -->x<!-- wp:b {\"c\":1} -->y<!-- wp:c /-->z<!-- /wp:b --><!-- /wp:a -->t",
            {"<!-- wp:a -->{x<!-- wp:b {\"c\":1} -->y<!-- wp:c /-->z<!-- /wp:b -->}<!-- /wp:a -->", "{t}"});
        row("text between blocks", "<!-- wp:a -->\n<!-- /wp:a -->\na\n\nb<!-- wp:a /-->",
            {"<!-- wp:a -->\n{}<!-- /wp:a -->\n", "{a}\n\n", "{b}", "{<!-- wp:a /-->}"});
        row("a block without an end", "<!-- wp:a -->\n<p>x</p>\n", {"<!-- wp:a -->\n{<p>x</p>}\n"});
    }
    void cuts()
    {
        QFETCH(QString, body);
        QTEST(shown(body), "expected");
    }

    void joinsToTheBodyWhateverItHolds()
    {
        const QStringList fragments{"<p>", "</p>", "\n", "\n\n", " ", "text", "<b>", "</b>", "<!-- wp:x -->",
            "<!-- /wp:x -->", "<!-- wp:y /-->", "<!--more-->", "<!--", "-->", "<div a=\"1>", "\"", "'", "</div>", "<",
            ">", "=", "<script>", "</script>", "<hr/>", "<li>", "<pre>", "</pre>", "\r\n", "\t", QString(QChar(0)),
            "é—👩", "\n[vimeo 1]", "\nhttp://www.youtube.com/watch?v=a\n"};
        QRandomGenerator random(20240301);
        for (int round = 0; round < 20'000; ++round) {
            QString body;
            for (int n = random.bounded(24); n > 0; --n)
                body += fragments[random.bounded(int(fragments.size()))];
            QString joined;
            for (const BodyPiece &piece : BodyPieces::split(body)) {
                QVERIFY2(!piece.stored().isEmpty(), qPrintable(body));
                joined += piece.stored();
            }
            QCOMPARE(joined, body);
        }
    }

    void tellsWhatIsTooLarge_data()
    {
        const TestTable<QString, bool> row({"body", "isTooLarge"});
        row("nothing", "", false);
        row("a megabyte of blanks", QString(1'000'000, u' '), false);
        row("a long list without end tags", u"<ul>"_qs + u"<li>a"_qs.repeated(5'000), false);
        row("paragraphs", u"<p>Some <b>words</b></p>\n"_qs.repeated(10'000), false);
        row("many characters", QString(4'000'000, u'a'), true);
        row("many tags", u"<br>"_qs.repeated(200'000), true);
        row("nested", u"<div>"_qs.repeated(1'000) + u"</div>"_qs.repeated(1'000), true);
        row("unclosed", u"<p><B>a</p>"_qs.repeated(1'000), true);
        row("hidden by stray ends", u"<b></i>"_qs.repeated(1'000), true);
    }
    void tellsWhatIsTooLarge()
    {
        QFETCH(QString, body);
        QTEST(BodyPieces::isTooLarge(body), "isTooLarge");
    }

    void isLinear_data()
    {
        const TestTable<QString> row({"unit"});
        for (const char *unit : {"<p>", "<div>", "<b>\n\n", "<!-- wp:a -->", "<!--", "<a '", "<a b=\"", "<script>",
                 "</b>", "<b></b>\n\n", "\n ", "<", "<table><p>", " ", "\t", "\n", "\n\n\t", "[vimeo 1]\n",
                 "<i>\n\n</i>", "<p>a</p>\n\n", "</"})
            row(unit, unit);
    }
    void isLinear()
    {
        QFETCH(QString, unit);
        const QString body = unit.repeated(1'000'000 / unit.size());
        const double seconds = processorSeconds([&] {
            BodyPieces::split(body);
            BodyPieces::isTooLarge(body);
        });
        QVERIFY2(seconds < 5, qPrintable(QString::number(seconds)));
    }
};

static const RegisteredTest<BodyPiecesTest> registered;
#include "BodyPiecesTest.moc"
