#include "text/ContentPasses.h"

#include "text/ElementKinds.h"
#include "text/KeptForms.h"
#include "text/MarkupScanner.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"

#include <algorithm>
#include <vector>

using namespace Scanning;

namespace {
constexpr qsizetype extractWindow = 300;

/// Where "<!" stands at or after `at`, or the size of the text. The "!" is much rarer than the "<".
qsizetype commentFrom(QStringView text, qsizetype at)
{
    qsizetype mark = indexOf(text, u'!', at + 1);
    while (mark < text.size() && text[mark - 1] != u'<')
        mark = indexOf(text, u'!', mark + 1);
    return mark < text.size() ? mark - 1 : mark;
}

/// Whether the words on both sides of a tag are two words.
bool partsWords(QStringView tag)
{
    const qsizetype start = tag.startsWith(u'/') ? 1 : 0;
    const auto *end = std::find_if_not(tag.begin() + start, tag.end(), [](QChar c) { return c.isLetterOrNumber(); });
    const QStringView name(tag.begin() + start, end);
    return name.compare(u"br", Qt::CaseInsensitive) == 0 || (ElementKinds::of(name) & ElementKinds::Block);
}

/// Deletes tags as long as one lies in the window of the first characters of what is left. A run of tags that holds one
/// of a block leaves a blank between words.
QString withoutTagsInWindow(const QString &html)
{
    Rewriter out(html);
    qsizetype limit = std::min(extractWindow, html.size());
    qsizetype runStart = 0; // of the tags that stand one behind the other
    qsizetype runEnd = 0;
    bool isParted = false;
    for (qsizetype at = indexOf(html, u'<', 0); at + 1 < limit;) {
        qsizetype next = at + 1;
        if (html[next] != u'>') { // "<>" is no tag
            const qsizetype end = indexOf(QStringView(html).first(limit), u'>', next);
            if (end == limit)
                break;
            next = end + 1;
            if (at != runEnd) {
                runStart = at;
                isParted = false;
            }
            runEnd = next;
            isParted = isParted || partsWords(QStringView(html).sliced(at + 1, end - at - 1));
            const bool isBetweenWords = runStart > 0 && !isSpace(html[runStart - 1].unicode()) && next < html.size()
                && html[next] != u'<' && !isSpace(html[next].unicode());
            out.replace(at, next, isParted && isBetweenWords ? QStringView(u" ") : QStringView());
            limit = std::min(html.size(), limit + next - at);
        }
        at = indexOf(html, u'<', next);
    }
    return out.result();
}
} // namespace

QString ContentPasses::readMoreAnchor()
{
    return QStringLiteral("<a class='readmore' href='#' contentEditable=false draggable=true>Read More</a>");
}

QString ContentPasses::contentReplacingReadMore(const QString &content, KeptForms *kept)
{
    constexpr QStringView fold = u"<!--more-->";
    Rewriter out(content);
    MarkupPlaces markup(content);
    for (qsizetype at = commentFrom(content, 0); at < content.size(); at = commentFrom(content, at + 1)) {
        if (!QStringView(content).sliced(at).startsWith(fold) || markup.tokenAt(at)->start != at)
            continue;
        QString anchor = readMoreAnchor();
        if (kept)
            anchor.insert(anchor.indexOf(u'>'), kept->attributeFor(fold));
        out.replace(at, at + fold.size(), anchor);
    }
    return out.result();
}

bool ContentPasses::isBlockEditorContent(const QString &content)
{
    qsizetype at = commentFrom(content, 0);
    while (at < content.size() && !QStringView(content).sliced(at).startsWith(u"<!-- wp:"))
        at = commentFrom(content, at + 1);
    return at < content.size();
}

/// One step after the other, so that no more than two of the long texts live at a time.
QString ContentPasses::contentForEditor(const QString &stored)
{
    QString content = contentReplacingReadMore(stored);
    content = contentReplacingImageClasses(content);
    if (!isBlockEditorContent(stored))
        content = contentReplacingDoubleSpaceForParagraphs(content);
    return content;
}

/// Players come first: what stands alone on a line is told by the line ends, which the paragraph builder turns into
/// elements.
QString ContentPasses::pieceForPage(const QString &core, bool isBlockEditor, KeptForms *kept)
{
    QString html = postContentWithShortCodeTags(core, kept);
    html = postContentWithVideoURLTags(html, kept);
    if (isPlayer(core))
        return html;
    html = contentReplacingReadMore(html, kept);
    html = contentReplacingImageClasses(html, kept);
    return isBlockEditor ? html : contentReplacingDoubleSpaceForParagraphs(html);
}

QString ContentPasses::replaceOccurrences(const QString &content, const QHash<QString, QString> &replacements)
{
    QStringList keys = replacements.keys();
    keys.removeAll(QString());
    if (keys.isEmpty())
        return content;
    std::sort(keys.begin(), keys.end());
    const auto differ = std::mismatch(keys.first().begin(), keys.first().end(), keys.last().begin(), keys.last().end());
    const QStringView start(keys.first().begin(), differ.first); // all keys begin so
    std::vector<qsizetype> shorter(size_t(keys.size())); // the longest other key that a key begins with, or -1
    const auto longestBefore = [&](QStringView text, qsizetype index) {
        while (index >= 0 && !text.startsWith(keys[index]))
            index = shorter[size_t(index)];
        return index;
    };
    for (qsizetype i = 0; i < keys.size(); ++i)
        shorter[size_t(i)] = longestBefore(keys[i], i - 1);

    const QStringView text(content);
    Rewriter out(content);
    for (qsizetype at = text.indexOf(start); at >= 0 && at < text.size();) {
        const QStringView rest = text.sliced(at);
        // What lies in order between a key and a text that it begins, begins with it, too.
        const auto behind = std::upper_bound(keys.cbegin(), keys.cend(), rest);
        const qsizetype index = longestBefore(rest, behind - keys.cbegin() - 1);
        const qsizetype length = index < 0 ? 0 : keys[index].size();
        if (length > 0)
            out.replace(at, at + length, replacements[keys[index]]);
        at = text.indexOf(start, at + std::max<qsizetype>(length, 1));
    }
    return out.result();
}

QString ContentPasses::removeHTMLFromString(const QString &html)
{
    return withoutTagsInWindow(html)
        .replace(QStringLiteral("<br>"), QStringLiteral(" "))
        .replace(u'\n', u' ')
        .replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
}
