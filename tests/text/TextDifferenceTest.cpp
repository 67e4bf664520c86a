#include "text/TextDifference.h"
#include "support/ProcessorTime.h"
#include "support/TestClasses.h"
#include "text/StoredText.h"

namespace {
/// "lines of one|lines of the other" of each region; a comma parts lines.
QStringList shown(const QString &one, const QString &other)
{
    QStringList list;
    for (const TextDifference::Region &region : TextDifference::between(one, other))
        list << region.one.join(u',') + u'|' + region.other.join(u',');
    return list;
}
} // namespace

/// Whether two stored texts are the same, and where they differ.
class TextDifferenceTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void tellsTheSameText_data()
    {
        const TestTable<QString, QString, bool> row({"one", "other", "same"});
        row("nothing", "", " \r\n", true);
        row("white space around", "\n\na\n b ", "a\n b\t", true);
        row("line ends", "a\r\n\r\nb\rc", "a\n\nb\nc", true);
        row("a line end more", "a\n\nb", "a\nb", false);
        row("two lone carriage returns", "a\r\rb", "a\nb", false);
        row("white space within", "a  b", "a b", false);
        row("a link that the blog has made safe", R"(<a href="/" target="_blank">)",
            R"(<a href="/" target="_blank" rel="noopener noreferrer">)", true);
        row("the same, with a rel of its own", R"(<a rel="nofollow" target="_self">)",
            R"(<a rel="nofollow noopener" target="_self">)", true);
        row("another rel", R"(<a rel="nofollow" target="_self">)", R"(<a target="_self">)", false);
        row("other case", "a", "A", false);
    }
    void tellsTheSameText()
    {
        QFETCH(QString, one);
        QFETCH(QString, other);
        QTEST(sameStoredText(one, other), "same");
        QTEST(sameStoredText(other, one), "same");
    }

    void findsWhatDiffers_data()
    {
        const TestTable<QString, QString, QStringList> row({"one", "other", "regions"});
        row("the same", "a\n\nb", "a\r\n\r\nb\n", {});
        row("one paragraph", "<p>a</p><p><b>b</b> &amp; c</p><p>d</p>", "a\n\nB & c\n\nd", {"b & c|B & c"});
        row("added and removed", "a\n\nb\n\nc\n\nd", "b\n\nc\n\nx\n\nd\n\ne", {"a|", "|x", "|e"});
        row("moved", "a\n\nb\n\nc\n\nd", "b\n\nc\n\nd\n\na", {"a|", "|a"});
        row("lines that come again", "a\n\n-\n\nb\n\n-\n\nc", "a\n\n-\n\nx\n\n-\n\nc", {"b|x"});
        row("nothing alike", "a\n\nb", "c", {"a,b|c"});
        row("only the markup", "a\n\n<b>b</b>\n\n<hr>", "a\n\n<i>b</i>\n\n<hr>", {"<b>b</b>|<i>b</i>"});
        row("only how it is cut", "a b", "<p>a b</p>", {"a b|<p>a b</p>"});
    }
    void findsWhatDiffers()
    {
        QFETCH(QString, one);
        QFETCH(QString, other);
        QTEST(shown(one, other), "regions");
    }

    void cutsALineAroundTheDifference()
    {
        const QString words = u"some words "_qs.repeated(20);
        QCOMPARE(TextDifference::excerpt("one two", "one", 60), "one two");
        const QString cut = TextDifference::excerpt(words + "x " + words, words + "y", 60);
        QVERIFY2(cut.startsWith(u'…') && cut.endsWith(u'…') && cut.contains(" x "), qPrintable(cut));
        QCOMPARE(cut.size(), 62);
    }

    void isLinear()
    {
        QString one;
        QString other;
        for (int i = 0; i < 50'000; ++i) {
            one += QString::number(i * 7919 % 50'021) + u"\n\n-\n\n"_qs;
            other += QString::number(i * 12'007 % 50'021) + u"\n\n"_qs;
        }
        const double seconds = processorSeconds([&] { TextDifference::between(one, other); });
        QVERIFY2(seconds < 5, qPrintable(QString::number(seconds)));
    }
};

static const RegisteredTest<TextDifferenceTest> registered;
#include "TextDifferenceTest.moc"
