#include "text/ContentPasses.h"

#include "text/AttributeTags.h"
#include "text/LiteralReplacer.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"

#include <algorithm>

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

/// The path of an address, as it stands there.
QStringView pathOf(QStringView address)
{
    const qsizetype query = std::min(indexOf(address, u'?', 0), indexOf(address, u'#', 0));
    address = address.first(query);
    const qsizetype host = address.indexOf(u"://");
    return host < 0 ? address : address.sliced(indexOf(address, u'/', host + 3));
}

bool isPicture(QStringView address)
{
    const QStringView path = pathOf(address);
    for (const QStringView extension : {u".png", u".jpg", u".jpeg"}) {
        if (path.endsWith(extension, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

/// Deletes tags as long as one lies in the window of the first characters of what is left.
QString withoutTagsInWindow(const QString &html)
{
    Rewriter out(html);
    qsizetype limit = std::min(extractWindow, html.size());
    for (qsizetype at = indexOf(html, u'<', 0); at + 1 < limit;) {
        qsizetype next = at + 1;
        if (html[next] != u'>') { // "<>" is no tag
            const qsizetype end = indexOf(QStringView(html).first(limit), u'>', next);
            if (end == limit)
                break;
            next = end + 1;
            out.replace(at, next);
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

QString ContentPasses::contentReplacingReadMore(const QString &content)
{
    constexpr QStringView fold = u"<!--more-->";
    Rewriter out(content);
    for (qsizetype at = commentFrom(content, 0); at < content.size(); at = commentFrom(content, at + 1)) {
        if (QStringView(content).sliced(at).startsWith(fold))
            out.replace(at, at + fold.size(), readMoreAnchor());
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

QString ContentPasses::contentForEditor(const QString &stored)
{
    return contentForEditor(stored, isBlockEditorContent(stored));
}

/// One step after the other, so that no more than two of the long texts live at a time.
QString ContentPasses::contentForEditor(const QString &stored, bool isBlockEditor)
{
    QString content = contentReplacingReadMore(stored);
    content = contentReplacingImageClasses(content);
    if (!isBlockEditor)
        content = contentReplacingDoubleSpaceForParagraphs(content);
    return content;
}

QStringList ContentPasses::imageSources(const QString &content, const QString &prefix)
{
    QStringList sources;
    AttributeTags tags(content, u"img", u"src");
    for (AttributeTag tag; tags.next(tag);) {
        if (tag.value.startsWith(prefix))
            sources.append(tag.value.toString());
    }
    return sources;
}

QStringList ContentPasses::linkedPictures(const QString &content, const QString &prefix)
{
    QStringList pictures;
    AttributeTags tags(content, u"a", u"href");
    for (AttributeTag tag; tags.next(tag);) {
        if (tag.value.startsWith(prefix) && isPicture(tag.value))
            pictures.append(tag.value.toString());
    }
    return pictures;
}

QString ContentPasses::replaceOccurrences(const QString &content, const QHash<QString, QString> &replacements)
{
    std::vector<LiteralReplacer::Replacement> ordered;
    for (auto it = replacements.cbegin(); it != replacements.cend(); ++it)
        ordered.push_back({it.key(), it.value()});
    // a table has no order of its own, so that keys of one length go by their characters
    std::sort(ordered.begin(), ordered.end(), [](const auto &a, const auto &b) { return a.key < b.key; });
    return LiteralReplacer(ordered).replaced(content);
}

QString ContentPasses::removeHTMLFromString(const QString &html)
{
    return withoutTagsInWindow(html)
        .replace(QStringLiteral("<br>"), QStringLiteral(" "))
        .replace(u'\n', u' ')
        .replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
}
