#include "support/TestClasses.h"
#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"
#include "text/HTMLEntityTable.h"

#include <QRandomGenerator>
#include <QRegularExpression>

// The passes as their patterns say it, by a pattern engine and step by step: slow, but plainly right.
namespace {
QRegularExpression pattern(const QString &text)
{
    const QString blocks = u"(?:table|thead|tfoot|caption|col|colgroup|tbody|tr|td|th|div|dl|dd|dt|ul|ol|li|pre|"
                           "form|map|area|blockquote|address|math|style|p|h[1-6]|hr|fieldset|noscript|legend|"
                           "section|article|aside|hgroup|header|footer|nav|figure|details|menu|summary)"_qs;
    return QRegularExpression(QString(text).replace(u"%1"_qs, blocks),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

QString paragraphs(const QString &content)
{
    static const QRegularExpression opening = pattern(u"(<%1[^>]*>)"_qs);
    static const QRegularExpression closing = pattern(u"(</%1>)"_qs);
    static const QRegularExpression blankLine = pattern(uR"re(\n\s*?\n)re"_qs);
    static const QRegularExpression noText = pattern(uR"re(^\s*?(?:</?%1[^>]*>|(<a[\S\s]*?>)?\s*?<img))re"_qs);
    static const QRegularExpression leading = pattern(uR"re(^\s*)re"_qs);
    static const QRegularExpression empty = pattern(uR"re(<p[^<\s\S]*?>\s*?</p>)re"_qs);
    QString lines = content;
    lines.replace(opening, u"\n\\1"_qs).replace(closing, u"\\1\n\n"_qs).replace(blankLine, u"\n\n"_qs);
    QString result;
    for (QString chunk : lines.split(u"\n\n"_qs)) {
        const bool isText = !chunk.isEmpty() && !noText.match(chunk).hasMatch();
        result += isText ? u"<p>"_qs + chunk.replace(leading, {}).replace(u"\n"_qs, u"<br>"_qs) + u"</p>"_qs : chunk;
    }
    return result.replace(empty, {});
}

QString entitiesDecoded(const QString &text)
{
    static const QRegularExpression entity(u"&(?:#([xX][0-9a-fA-F]+|[0-9]+)|([a-zA-Z0-9]+));"_qs);
    QString result;
    qsizetype kept = 0;
    for (auto it = entity.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString digits = match.captured(1);
        const bool isHex = digits.startsWith(u'x', Qt::CaseInsensitive);
        uint code = isHex ? digits.mid(1).toUInt(nullptr, 16) : digits.toUInt();
        for (const HTMLEntity &known : entityTable)
            if (match.captured(2) == QStringView(known.name))
                code = known.code;
        if (match.capturedLength() < 4 || match.capturedLength() > 10 || code < 1 || code > 65534)
            continue;
        result += text.mid(kept, match.capturedStart() - kept) + QChar(code);
        kept = match.capturedEnd();
    }
    return result + text.mid(kept);
}

QString plainText(const QString &html)
{
    static const QString spaces = u" \t\n\r\u0085\f\u2028\u2029"_qs;
    static const QRegularExpression token(
        uR"re((<!--.*?(?:-->|\z))|<(/\p{L}*)?[^>]*(?:>|\z)|([%1]+)|[^<%1]+)re"_qs.arg(spaces),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression goesOn(
        u"^/(a|b|i|q|span|em|strong|cite|abbr|acronym|label)\\z"_qs, QRegularExpression::CaseInsensitiveOption);
    QString result;
    for (auto it = token.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const bool closes = match.hasCaptured(2) && !goesOn.match(match.captured(2)).hasMatch();
        if (closes || match.hasCaptured(3)) {
            if (!result.isEmpty() && match.capturedEnd() < html.size())
                result += u' ';
        } else if (!match.captured().startsWith(u'<')) {
            result += match.captured();
        }
    }
    return entitiesDecoded(result);
}

QByteArray shown(const QString &text)
{
    return text.toUtf8().toPercentEncoding(" <>/='\"[]&;:#?!\\|");
}

using Pass = QString (*)(const QString &);
} // namespace

/// The scanners against the patterns that they stand for, on many small bodies made of what the patterns look for.
class SamePassesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agreesWithTheReference_data()
    {
        const TestTable<Pass, Pass, QStringList> row({"pass", "reference", "fragments"});
        const QStringList common{" ", "\n", "\r", "\t", "\u00a0", "\u2028", "\v", "\u0085", ">", "<", "/", "/>", "'",
            "\"", "=", "x", "word", "ſ", "\U0001F600"};
        const QStringList tags{"<p>", "</p>", "<p class='a'>", "<P>", "<p >", "</p", "<div", "</div>", "</DIV >",
            "<BLOCKquote>", "<bloc\u212aquote>", "<h", "1>", "<param>", "<a href='x'>", "<a", "<img src='y' />", "<img",
            "\n\n", "</a>", "</summary>", "\n \n", "<hr />", "one", "<!-- x -->"};
        const QStringList words{"<b>", "</b>", "</p>", "<p", "</ ", "<!--", "-->", "  ", "eight words or", "&", "&amp;",
            "amp;", "lt;", "&lt;", "&#", "65;", "&#x41;", "#X4g;", "&nbsp;", "&thetasym;", "&bogus;", ";", "&#65534;",
            "&#65535;", "&#x0;", "&#59;"};
        row("paragraphs", ContentPasses::contentReplacingDoubleSpaceForParagraphs, paragraphs, common + tags + tags);
        row("plain text", HTMLEntities::stringByConvertingHTMLToPlainText, plainText, common + words + words);
    }

    void agreesWithTheReference()
    {
        QFETCH(Pass, pass);
        QFETCH(Pass, reference);
        QFETCH(QStringList, fragments);
        QRandomGenerator random(20141021);
        QStringList recent; // fragments come back soon, so that equal matches are met
        const int rounds = 6000;
        int changed = 0;
        for (int round = 0; round < rounds; ++round) {
            QString body;
            for (int n = random.bounded(1, round % 3 == 0 ? 41 : 13); n > 0; --n) {
                const QStringList &from = random.bounded(3) == 0 && !recent.isEmpty() ? recent : fragments;
                recent.prepend(QString(from[random.bounded(int(from.size()))]));
                recent = recent.first(qMin(recent.size(), 5));
                body += recent.first();
            }
            const QString result = pass(body);
            const QString expected = reference(body);
            changed += result != body;
            QVERIFY2(result == expected, shown(body) + "\nfound    " + shown(result) + "\nexpected " + shown(expected));
        }
        QVERIFY2(changed > rounds / 50, "the bodies hardly ever hold a match");
    }
};

static const RegisteredTest<SamePassesTest> registered;
#include "SamePassesTest.moc"
