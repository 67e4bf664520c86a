#include "ReferencePasses.h"

#include "text/ContentPasses.h"
#include "text/HTMLEntities.h"
#include "text/HTMLEntityTable.h"

#include <QRegularExpression>
#include <algorithm>

namespace {
const QString blocks =
    QStringLiteral("(?:table|thead|tfoot|caption|col|colgroup|tbody|tr|td|th|div|dl|dd|dt|ul|ol|li|pre|"
                   "form|map|area|blockquote|address|math|style|p|h[1-6]|hr|fieldset|noscript|legend|"
                   "section|article|aside|hgroup|header|footer|nav|figure|details|menu|summary)");

/// A bare dot is spelled out: in the dialect of the patterns it stops at every line end.
QRegularExpression pattern(QString text)
{
    static const QRegularExpression bareDot(QStringLiteral(R"re((?<!\\)\.(?=[*]))re"));
    text.replace(bareDot, QStringLiteral(R"re([^\n\x0b\f\r\x85\x{2028}\x{2029}])re"));
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
    static const QRegularExpression expression = pattern(QStringLiteral("(<%1[^>]*>)").arg(blocks));
    return content.replace(expression, QStringLiteral("\n\\1"));
}

QString addExtraLinesAfterBlocks(QString content)
{
    static const QRegularExpression expression = pattern(QStringLiteral("(</%1>)").arg(blocks));
    return content.replace(expression, QStringLiteral("\\1\n\n"));
}

QString trimWhitespaceBetweenLineBreaks(QString content)
{
    static const QRegularExpression expression = pattern(QStringLiteral(R"re(\n\s*?\n)re"));
    return content.replace(expression, QStringLiteral("\n\n"));
}

bool shouldAddParagraphForContent(const QString &chunk)
{
    static const QRegularExpression block = pattern(QStringLiteral(R"re(^\s*?</?%1[^>]*>)re").arg(blocks));
    static const QRegularExpression image = pattern(QStringLiteral(R"re(^\s*?(<a[\S\s]*?>)?\s*?<img)re"));
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
    static const QRegularExpression expression =
        pattern(QStringLiteral(R"re(<img([^<]*?)class=(['"])(.*?)\2(.*?)//?>)re"));
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        QString tag = QStringLiteral("<img") + match.captured(1);
        QString classes = match.captured(3);
        if (classes.contains(QStringLiteral("aligncenter"))) {
            classes += QStringLiteral(" full");
            tag += QStringLiteral(" align=\"middle\"");
        }
        return QString(tag + QStringLiteral(" class=\"") + classes + u'"' + match.captured(4) + QStringLiteral(" />"));
    });
}

Replacements shortCodeTags(const QString &content)
{
    static const QRegularExpression expression = pattern(QStringLiteral(R"re(\[(youtube|vimeo)(.*?)\])re"));
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        return QString(QStringLiteral("<div draggable='true' class='")
            + ContentPasses::classForShortCodeTag(match.captured(1)) + QStringLiteral("'>") + match.captured()
            + QStringLiteral("</div>"));
    });
}

Replacements videoURLTags(const QString &content)
{
    static const QRegularExpression expression =
        pattern(QStringLiteral(R"re((^|\s)https?:\/\/www\.youtube\.com\/watch\?v=(.*?)(\z|\s))re"));
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        return QString(QStringLiteral("<div draggable='true' class='youtube'>[youtube=") + match.captured()
            + QStringLiteral("&w=640&h=360]</div>"));
    });
}

Replacements headings(const QString &content)
{
    static const QRegularExpression expression =
        pattern(QStringLiteral(R"re(<\s*?(h1|h2|h3|h4|h5|h6).*?>(.*?)<(\s*?)\/(\s*?)(h1|h2|h3|h4|h5|h6)\s*?>)re"));
    static const QRegularExpression inside =
        pattern(QStringLiteral(R"re(class(\s*?)=(\s*?)["'](\s*?)headingAlreadyInsideContainer(\s*?)['"])re"));
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        QString text = match.captured();
        if (inside.match(text).hasMatch())
            return QString();
        int level = 1;
        while (level <= 6 && !text.contains(QStringLiteral("h%1").arg(level))
            && !text.contains(QStringLiteral("H%1").arg(level)))
            ++level;
        if (level > 6)
            level = 1;
        for (const QString &letter : {QStringLiteral("h"), QStringLiteral("H")}) {
            const QString name = letter + QString::number(level);
            text.replace(name, name + QStringLiteral(" class='headingAlreadyInsideContainer'"));
        }
        return QStringLiteral("<div class='heading-container'><img class='heading-box h%1-selector'>").arg(level) + text
            + QStringLiteral("</div>");
    });
}

Replacements embedTags(const QString &content)
{
    static const QRegularExpression expression =
        pattern(QStringLiteral(R"re(<div\s[\s\S]*?class=['"](embed|youtube|vimeo|videolog)['"]>(.*?)</div>)re"));
    return collected(expression, content, [](const QRegularExpressionMatch &match) {
        return match.captured(2).isNull() ? QStringLiteral("") : match.captured(2);
    });
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
    static const QRegularExpression expression = pattern(QStringLiteral(R"re(<p[^<\s\S]*?>\s*?</p>)re"));
    return content.replace(expression, QString());
}

QString paragraphs(const QString &content)
{
    static const QRegularExpression leading = pattern(QStringLiteral(R"re(^\s*)re"));
    const QString lines = trimWhitespaceBetweenLineBreaks(addExtraLinesAfterBlocks(addExtraLineBeforeBlocks(content)));
    QString result;
    for (QString chunk : lines.split(QStringLiteral("\n\n"))) {
        if (!shouldAddParagraphForContent(chunk)) {
            result += chunk;
            continue;
        }
        chunk.replace(leading, QString()).replace(QStringLiteral("\n"), QStringLiteral("<br>"));
        result += QStringLiteral("<p>") + chunk + QStringLiteral("<br /><br /></p>");
    }
    return removeEmptyParagraphs(result);
}

QString replaceYouTubeTags(QString content)
{
    static const QRegularExpression expression =
        pattern(QStringLiteral(R"re((<img\s[\s\S]*?data-youtube\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re"));
    return content.replace(expression, QStringLiteral("[youtube=\\2]"));
}

QStringList imageSources(const QString &content)
{
    static const QRegularExpression expression =
        pattern(QStringLiteral(R"re((<img\s[\s\S]*?src\s*?=\s*?['"](.*?)['"][\s\S]*?>)+?)re"));
    return captured(expression, content);
}

QString removeHTMLFromString(QString html)
{
    static const QRegularExpression tag = pattern(QStringLiteral("<[^>]+>"));
    for (;;) {
        QString window = html.left(300);
        if (!window.isEmpty() && window.back().isHighSurrogate())
            window.back() = u'x'; // the engine takes no half characters
        const QRegularExpressionMatch match = tag.match(window);
        if (!match.hasMatch())
            break;
        html.remove(match.capturedStart(), match.capturedLength());
    }
    return html.replace(QStringLiteral("<br>"), QStringLiteral(" "))
        .replace(QStringLiteral("\n"), QStringLiteral(" "))
        .replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
}

QString linkified(QString text)
{
    // \w and \b spelled out, as engines differ about marks
    const QString word = QStringLiteral(R"(\p{L}\p{M}\p{Nd}\p{Nl}\p{Pc}\x{200c}\x{200d})");
    static const QRegularExpression expression = pattern(QStringLiteral(
        R"re((?<!=")(?<![%1])((http|https):\/\/[%1\-_]+(\.[%1\-_]+)+([%1\-\.,@?^=%&amp;:/~\+#]*[%1\-\@?^=%&amp;/~\+#])?))re")
                                                             .replace(QStringLiteral("%1"), word));
    return text.replace(expression, QStringLiteral("<a href=\"\\1\" class=\"linkified\">\\1</a>"));
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
            static const QRegularExpression digits(QStringLiteral("^#(?:[xX][0-9a-fA-F]+|[0-9]+)\\z"));
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
        static const QRegularExpression silent(QStringLiteral("^</?(a|span|strong|em)>\\z"));
        replacements.append({tag, silent.match(tag).hasMatch() ? QStringLiteral("") : QStringLiteral(" ")});
        at = html.indexOf(u'<', end);
    }
    return HTMLEntities::stringByRemovingNewLinesAndWhitespace(longestFirst(replacements, html));
}

QString plainText(const QString &html)
{
    static const QString spaces = QStringLiteral(" \t\n\r\u0085\f\u2028\u2029");
    static const QRegularExpression token(
        QStringLiteral(R"re((<!--.*?(?:-->|\z))|<(/\p{L}*)?[^>]*(?:>|\z)|([%1]+)|[^<%1]+)re").arg(spaces),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression goesOn(QStringLiteral("^/(a|b|i|q|span|em|strong|cite|abbr|acronym|label)\\z"),
        QRegularExpression::CaseInsensitiveOption);
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
