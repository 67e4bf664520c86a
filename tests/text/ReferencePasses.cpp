#include "ReferencePasses.h"

#include "text/HTMLEntityTable.h"

#include <QRegularExpression>

namespace {
const QString blocks = u"(?:table|thead|tfoot|caption|col|colgroup|tbody|tr|td|th|div|dl|dd|dt|ul|ol|li|pre|"
                       "form|map|area|blockquote|address|math|style|p|h[1-6]|hr|fieldset|noscript|legend|"
                       "section|article|aside|hgroup|header|footer|nav|figure|details|menu|summary)"_qs;

/// A bare dot is spelled out: in the dialect of the patterns it stops at every line end.
QRegularExpression pattern(QString text)
{
    static const QRegularExpression bareDot(uR"re((?<!\\)\.(?=[*]))re"_qs);
    text.replace(bareDot, uR"re([^\n\x0b\f\r\x85\x{2028}\x{2029}])re"_qs);
    QRegularExpression expression(
        text, QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    if (!expression.isValid())
        qFatal("bad pattern %s", qPrintable(text));
    return expression;
}

// the steps of the paragraph builder

QString addExtraLineBeforeBlocks(QString content)
{
    static const QRegularExpression expression = pattern(u"(<%1[^>]*>)"_qs.arg(blocks));
    return content.replace(expression, u"\n\\1"_qs);
}

QString addExtraLinesAfterBlocks(QString content)
{
    static const QRegularExpression expression = pattern(u"(</%1>)"_qs.arg(blocks));
    return content.replace(expression, u"\\1\n\n"_qs);
}

QString trimWhitespaceBetweenLineBreaks(QString content)
{
    static const QRegularExpression expression = pattern(uR"re(\n\s*?\n)re"_qs);
    return content.replace(expression, u"\n\n"_qs);
}

bool shouldAddParagraphForContent(const QString &chunk)
{
    static const QRegularExpression block = pattern(uR"re(^\s*?</?%1[^>]*>)re"_qs.arg(blocks));
    static const QRegularExpression image = pattern(uR"re(^\s*?(<a[\S\s]*?>)?\s*?<img)re"_qs);
    return !chunk.isEmpty() && !block.match(chunk).hasMatch() && !image.match(chunk).hasMatch();
}
} // namespace

namespace ReferencePasses {
QString removeEmptyParagraphs(QString content)
{
    static const QRegularExpression expression = pattern(uR"re(<p[^<\s\S]*?>\s*?</p>)re"_qs);
    return content.replace(expression, QString());
}

QString paragraphs(const QString &content)
{
    static const QRegularExpression leading = pattern(uR"re(^\s*)re"_qs);
    const QString lines = trimWhitespaceBetweenLineBreaks(addExtraLinesAfterBlocks(addExtraLineBeforeBlocks(content)));
    QString result;
    for (QString chunk : lines.split(u"\n\n"_qs)) {
        if (!shouldAddParagraphForContent(chunk)) {
            result += chunk;
            continue;
        }
        chunk.replace(leading, QString()).replace(u"\n"_qs, u"<br>"_qs);
        result += u"<p>"_qs + chunk + u"</p>"_qs;
    }
    return removeEmptyParagraphs(result);
}

QString entitiesDecoded(const QString &text)
{
    QString result = text;
    for (qsizetype at = text.lastIndexOf(u'&'); at >= 0; at = at > 0 ? text.lastIndexOf(u'&', at - 1) : -1) {
        const qsizetype semicolon = text.indexOf(u';', at);
        const qsizetype length = semicolon - at + 1;
        if (semicolon < 0 || length < 4 || length > 10)
            continue;
        const QString name = text.sliced(at + 1, length - 2);
        if (name.startsWith(u'#')) {
            const bool hex = name.size() > 1 && name[1].toLower() == u'x';
            static const QRegularExpression digits(u"^#(?:[xX][0-9a-fA-F]+|[0-9]+)\\z"_qs);
            const uint code =
                digits.match(name).hasMatch() ? name.sliced(hex ? 2 : 1).toUInt(nullptr, hex ? 16 : 10) : 0;
            if (code >= 1 && code <= 65534)
                result.replace(at, length, QChar(code));
            continue;
        }
        for (const HTMLEntity &entity : entityTable) {
            if (name == QStringView(entity.name)) {
                result.replace(at, length, QChar(entity.code));
                break;
            }
        }
    }
    return result;
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
} // namespace ReferencePasses
