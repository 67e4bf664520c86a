#include "text/BodyPieces.h"
#include "support/ProcessorTime.h"
#include "support/TestClasses.h"

#include <QRandomGenerator>
#include <QTest>

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
        QTest::addColumn<QString>("body");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const char *name, const char *body, QStringList expected) {
            QTest::newRow(name) << QString::fromUtf8(body) << expected;
        };
        row("nothing", "", {});
        row("white space", " \n\n", {u" \n\n{}"_qs});
        row("blank lines", "one\ntwo\n \nthree\n\n\n", {u"{one\ntwo}\n \n"_qs, u"{three}\n\n\n"_qs});
        row("leading space", "\n\n one", {u"\n\n {one}"_qs});
        row("elements", "<p>a</p>\n<P class=x>b</P><div>c<div>d</div></div>",
            {u"{<p>a</p>}\n"_qs, u"{<P class=x>b</P>}"_qs, u"{<div>c<div>d</div></div>}"_qs});
        row("text and elements", "a\n\nb<h2>c</h2>\nd", {u"{a}\n\n"_qs, u"{b}"_qs, u"{<h2>c</h2>}\n"_qs, u"{d}"_qs});
        row("a paragraph ends at a block", "<p>a<p>b\n\n<ul><li>c</ul>",
            {u"{<p>a}"_qs, u"{<p>b}\n\n"_qs, u"{<ul><li>c</ul>}"_qs});
        row("an inline element keeps its blank lines", "a <b>b\n\nc</b> d\n\ne",
            {u"{a <b>b\n\nc</b> d}\n\n"_qs, u"{e}"_qs});
        row("an open inline element does not", "a <b>b\n\nc", {u"{a <b>b}\n\n"_qs, u"{c}"_qs});
        row("raw text", "<script>\n\n</div><p></script>\n\nx", {u"{<script>\n\n</div><p></script>}\n\n"_qs, u"{x}"_qs});
        row("comment with a blank line", "a<!-- x\n\n<p> -->b\n\nc", {u"{a<!-- x\n\n<p> -->b}\n\n"_qs, u"{c}"_qs});
        row("quoted brackets", "<p title=\"a>b\n\n</p>\">c</p>d", {u"{<p title=\"a>b\n\n</p>\">c</p>}"_qs, u"{d}"_qs});
        row("unclosed element", "<div>a\n\nb", {u"{<div>a\n\nb}"_qs});
        row("blocks", "<!-- wp:paragraph -->\n<p>a</p>\n<!-- /wp:paragraph -->\n\n<!-- wp:more /-->\n",
            {u"<!-- wp:paragraph -->\n{<p>a</p>}\n<!-- /wp:paragraph -->\n\n"_qs, u"{<!-- wp:more /-->}\n"_qs});
        row("nested blocks", "<!-- wp:a -->x<!-- wp:b {\"c\":1} -->y<!-- wp:c /-->z<!-- /wp:b --><!-- /wp:a -->t",
            {u"<!-- wp:a -->{x<!-- wp:b {\"c\":1} -->y<!-- wp:c /-->z<!-- /wp:b -->}<!-- /wp:a -->"_qs, u"{t}"_qs});
        row("text between blocks", "<!-- wp:a -->\n<!-- /wp:a -->\na\n\nb<!-- wp:a /-->",
            {u"<!-- wp:a -->\n{}<!-- /wp:a -->\n"_qs, u"{a}\n\n"_qs, u"{b}"_qs, u"{<!-- wp:a /-->}"_qs});
        row("a block without an end", "<!-- wp:a -->\n<p>x</p>\n", {u"<!-- wp:a -->\n{<p>x</p>}\n"_qs});
    }
    void cuts()
    {
        QFETCH(QString, body);
        QFETCH(QStringList, expected);
        QCOMPARE(shown(body), expected);
    }

    void joinsToTheBodyWhateverItHolds()
    {
        const QStringList fragments{u"<p>"_qs, u"</p>"_qs, u"\n"_qs, u"\n\n"_qs, u" "_qs, u"text"_qs, u"<b>"_qs,
            u"</b>"_qs, u"<!-- wp:x -->"_qs, u"<!-- /wp:x -->"_qs, u"<!-- wp:y /-->"_qs, u"<!--more-->"_qs, u"<!--"_qs,
            u"-->"_qs, u"<div a=\"1>"_qs, u"\""_qs, u"'"_qs, u"</div>"_qs, u"<"_qs, u">"_qs, u"="_qs, u"<script>"_qs,
            u"</script>"_qs, u"<hr/>"_qs, u"<li>"_qs, u"<pre>"_qs, u"</pre>"_qs, u"\r\n"_qs, u"\t"_qs,
            QString(QChar(0)), u"é—👩"_qs};
        QRandomGenerator random(20240301);
        for (int round = 0; round < 20'000; ++round) {
            QString body;
            for (int n = random.bounded(24); n > 0; --n)
                body += fragments[random.bounded(int(fragments.size()))];
            QString joined;
            for (const BodyPiece &piece : BodyPieces::split(body)) {
                QCOMPARE(piece.lead + piece.core + piece.tail, piece.stored);
                QVERIFY2(!piece.stored.isEmpty(), qPrintable(body));
                joined += piece.stored;
            }
            QCOMPARE(joined, body);
        }
    }

    void isLinear_data()
    {
        QTest::addColumn<QString>("unit");
        for (const char *unit : {"<p>", "<div>", "<b>\n\n", "<!-- wp:a -->", "<!--", "<a '", "<a b=\"", "<script>",
                 "</b>", "<b></b>\n\n", "\n ", "<", "<table><p>"})
            QTest::newRow(unit) << QString::fromLatin1(unit);
    }
    void isLinear()
    {
        QFETCH(QString, unit);
        const QString body = unit.repeated(400'000 / unit.size());
        const double seconds = processorSeconds([&] { BodyPieces::split(body); });
        QVERIFY2(seconds < 10, qPrintable(QString::number(seconds)));
    }
};

static const RegisteredTest<BodyPiecesTest> registered;
#include "BodyPiecesTest.moc"
