#include "ReferencePasses.h"

#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"
#include "text/HTMLEntityTable.h"

#include <QRegularExpression>
#include <algorithm>

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

template <class Value>
ReferencePasses::Replacements collected(const QRegularExpression &expression, const QString &content, Value value)
{
    ReferencePasses::Replacements result;
    for (auto it = expression.globalMatch(content); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString key = match.captured();
        const bool known = std::any_of(result.cbegin(), result.cend(), [&](const auto &one) { return one.key == key; });
        const QString replacement = value(match);
        if (!known && !replacement.isNull())
            result.append({key, replacement});
    }
    return result;
}

QStringList captured(const QRegularExpression &expression, const QString &content)
{
    QStringList result;
    for (auto it = expression.globalMatch(content); it.hasNext();)
        result.append(it.next().captured(2));
    return result;
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

QString inOrder(const ReferencePasses::Replacements &replacements, QString content)
{
    for (const auto &one : replacements)
        content.replace(one.key, one.value);
    return content;
}
} // namespace

namespace ReferencePasses {
Replacements imageClasses(const QString &content)
{
    static const QRegularExpression expression = pattern(uR"re(<img([^<]*?)class=(['"])(.*?)\2(.*?)//?>)re"_qs);
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        QString tag = u"<img"_qs + match.captured(1);
        QString classes = match.captured(3);
        if (classes.contains(u"aligncenter"_qs)) {
            classes += u" full"_qs;
            tag += u" align=\"middle\""_qs;
        }
        return QString(tag + u" class=\""_qs + classes + u'"' + match.captured(4) + u" />"_qs);
    });
}

Replacements shortCodeTags(const QString &content)
{
    static const QRegularExpression expression = pattern(uR"re(\[(youtube|vimeo)(.*?)\])re"_qs);
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        return QString(u"<div draggable='true' class='"_qs + ContentPasses::classForShortCodeTag(match.captured(1))
            + u"'>"_qs + match.captured() + u"</div>"_qs);
    });
}

Replacements videoURLTags(const QString &content)
{
    static const QRegularExpression expression =
        pattern(uR"re((^|\s)https?:\/\/www\.youtube\.com\/watch\?v=(.*?)(\z|\s))re"_qs);
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        return QString(
            u"<div draggable='true' class='youtube'>[youtube="_qs + match.captured() + u"&w=640&h=360]</div>"_qs);
    });
}

Replacements headings(const QString &content)
{
    static const QRegularExpression expression =
        pattern(uR"re(<\s*?(h1|h2|h3|h4|h5|h6).*?>(.*?)<(\s*?)\/(\s*?)(h1|h2|h3|h4|h5|h6)\s*?>)re"_qs);
    static const QRegularExpression inside =
        pattern(uR"re(class(\s*?)=(\s*?)["'](\s*?)headingAlreadyInsideContainer(\s*?)['"])re"_qs);
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        QString text = match.captured();
        if (inside.match(text).hasMatch())
            return QString();
        int level = 1;
        while (level <= 6 && !text.contains(u"h%1"_qs.arg(level)) && !text.contains(u"H%1"_qs.arg(level)))
            ++level;
        if (level > 6)
            level = 1;
        for (const QString &letter : {u"h"_qs, u"H"_qs}) {
            const QString name = letter + QString::number(level);
            text.replace(name, name + u" class='headingAlreadyInsideContainer'"_qs);
        }
        return u"<div class='heading-container'><img class='heading-box h%1-selector'>"_qs.arg(level) + text
            + u"</div>"_qs;
    });
}

Replacements embedTags(const QString &content)
{
    static const QRegularExpression expression =
        pattern(uR"re(<div\s[\s\S]*?class=['"](embed|youtube|vimeo|videolog)['"]>(.*?)</div>)re"_qs);
    return collected(expression, content,
        [](const QRegularExpressionMatch &match) { return match.captured(2).isNull() ? u""_qs : match.captured(2); });
}

QString longestFirst(Replacements replacements, QString content)
{
    std::stable_sort(replacements.begin(), replacements.end(),
        [](const auto &a, const auto &b) { return a.key.size() > b.key.size(); });
    return inOrder(replacements, content);
}

bool isResultOf(const Replacements &replacements, const QString &content, const QString &result)
{
    constexpr qsizetype mostPermuted = 6;
    if (inOrder(replacements, content) == result || longestFirst(replacements, content) == result)
        return true;
    Replacements order = replacements;
    if (replacements.size() > mostPermuted) {
        order.move(order.size() - 1, 0);
        if (inOrder(order, content) == result)
            return true;
        order.move(0, 1);
        return inOrder(order, content) == result;
    }
    const auto before = [](const auto &a, const auto &b) { return a.key < b.key; };
    std::sort(order.begin(), order.end(), before);
    do {
        if (inOrder(order, content) == result)
            return true;
    } while (std::next_permutation(order.begin(), order.end(), before));
    return false;
}

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
        result += u"<p>"_qs + chunk + u"<br /><br /></p>"_qs;
    }
    return removeEmptyParagraphs(result);
}

QString replaceYouTubeTags(QString content)
{
    static const QRegularExpression expression =
        pattern(uR"re((<img\s[\s\S]*?data-youtube\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re"_qs);
    return content.replace(expression, u"[youtube=\\2]"_qs);
}

QStringList imageSources(const QString &content)
{
    static const QRegularExpression expression =
        pattern(uR"re((<img\s[\s\S]*?src\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re"_qs);
    return captured(expression, content);
}

QString removeHTMLFromString(QString html)
{
    static const QRegularExpression tag = pattern(u"<[^>]+>"_qs);
    for (;;) {
        QString window = html.left(300);
        if (!window.isEmpty() && window.back().isHighSurrogate())
            window.back() = u'x'; // the engine takes no half characters
        const QRegularExpressionMatch match = tag.match(window);
        if (!match.hasMatch())
            break;
        html.remove(match.capturedStart(), match.capturedLength());
    }
    return html.replace(u"<br>"_qs, u" "_qs).replace(u"\n"_qs, u" "_qs).replace(u"&nbsp;"_qs, u" "_qs);
}

QString linkified(QString text)
{
    // \w and \b spelled out, as engines differ about marks
    const QString word = uR"(\p{L}\p{M}\p{Nd}\p{Nl}\p{Pc}\x{200c}\x{200d})"_qs;
    static const QRegularExpression expression = pattern(
        uR"re((?<!=")(?<![%1])((http|https):\/\/[%1\-_]+(\.[%1\-_]+)+([%1\-\.,@?^=%&amp;:/~\+#]*[%1\-\@?^=%&amp;/~\+#])?))re"_qs
            .replace(u"%1"_qs, word));
    return text.replace(expression, u"<a href=\"\\1\" class=\"linkified\">\\1</a>"_qs);
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
        for (const HTMLEntity &entity : longEntityTable) {
            if (name == QStringView(entity.name)) {
                result.replace(at, length, QChar(entity.code));
                break;
            }
        }
    }
    return result;
}

QString strippedTags(const QString &html)
{
    if (!html.contains(u'<'))
        return html;
    Replacements replacements;
    for (qsizetype at = html.indexOf(u'<'); at >= 0;) {
        const qsizetype end = html.indexOf(u'>', at);
        if (end < 0)
            break;
        const QString tag = html.sliced(at, end + 1 - at);
        static const QRegularExpression silent(u"^</?(a|span|strong|em)>\\z"_qs);
        replacements.append({tag, silent.match(tag).hasMatch() ? u""_qs : u" "_qs});
        at = html.indexOf(u'<', end);
    }
    return HTMLEntities::stringByRemovingNewLinesAndWhitespace(longestFirst(replacements, html));
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
