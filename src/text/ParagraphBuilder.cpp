#include "text/ContentPasses.h"

#include "text/MarkupScanner.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"

using namespace Scanning;

// The blog's loose text to blocks: blank lines part paragraphs, block tags stand by themselves.

namespace {
/// `<a`, anything, `>`, perhaps white space, `<img`: anywhere behind `at`, where the `<a` stands.
bool linkLeadsToImage(QStringView chunk, qsizetype at)
{
    const qsizetype inside = at + 2;
    for (qsizetype image = indexOf(chunk, u'<', inside); image < chunk.size();
         image = indexOf(chunk, u'<', image + 1)) {
        if (!matches(chunk, image + 1, u"img"))
            continue;
        qsizetype before = image;
        while (before > inside && isSpace(chunk[before - 1].unicode()))
            --before;
        if (before > inside && chunk[before - 1] == u'>')
            return true;
    }
    return false;
}

bool needsParagraph(QStringView chunk)
{
    if (chunk.isEmpty())
        return false;
    const qsizetype at = skipSpace(chunk, 0);
    if (at == chunk.size() || chunk[at] != u'<')
        return true;
    const qsizetype name = at + 1 < chunk.size() && chunk[at + 1] == u'/' ? at + 2 : at + 1;
    if (ElementKinds::endsParagraphAt(chunk, name) && indexOf(chunk, u'>', name) < chunk.size())
        return false;
    if (matches(chunk, at, u"<img"))
        return false;
    return !matches(chunk, at, u"<a") || !linkLeadsToImage(chunk, at);
}

/// Two line ends with nothing but white space between.
struct BlankLine {
    qsizetype start;
    qsizetype end;
};

BlankLine blankLineFrom(QStringView text, qsizetype at)
{
    for (at = indexOf(text, u'\n', at); at < text.size();) {
        qsizetype next = at + 1;
        while (next < text.size() && text[next] != u'\n' && isSpace(text[next].unicode()))
            ++next;
        if (next < text.size() && text[next] == u'\n')
            return {at, next + 1};
        at = indexOf(text, u'\n', next);
    }
    return {text.size(), text.size()};
}

void appendParagraph(TextBuffer &out, QStringView chunk)
{
    out.append(QStringView(u"<p>"));
    qsizetype at = skipSpace(chunk, 0);
    for (qsizetype end = indexOf(chunk, u'\n', at); end < chunk.size(); end = indexOf(chunk, u'\n', at)) {
        out.append(chunk.sliced(at, end - at));
        out.append(QStringView(u"<br>"));
        at = end + 1;
    }
    out.append(chunk.sliced(at));
    out.append(QStringView(u"</p>"));
}

/// The chunks of a stretch; a blank line parts them, whatever white space is in it.
void appendChunks(TextBuffer &out, QStringView text)
{
    BlankLine line{0, 0};
    for (qsizetype at = 0; at < text.size(); at = line.end) {
        line = blankLineFrom(text, at);
        const QStringView chunk = text.sliced(at, line.start - at);
        if (needsParagraph(chunk))
            appendParagraph(out, chunk);
        else
            out.append(chunk);
    }
}

/// The end of the element at `at` in which white space says something (`pre`, a script), or -1 when there is none.
qsizetype spacedElementEnd(QStringView text, qsizetype at)
{
    // Their names begin like few others.
    constexpr QStringView secondInitials = u"rectfmoRECTFMO";
    if (at + 2 >= text.size() || !secondInitials.contains(text[at + 2]))
        return -1;
    qsizetype nameEnd = at + 1;
    while (nameEnd < text.size() && text[nameEnd].isLetter())
        ++nameEnd;
    if (!(ElementKinds::of(text.sliced(at + 1, nameEnd - at - 1)) & ElementKinds::KeepsSpace))
        return -1;
    const std::optional<MarkupToken> tag = MarkupScanner(text, at).next();
    if (!tag || tag->start != at || !(tag->kinds() & ElementKinds::KeepsSpace))
        return -1;
    if (tag->kinds() & ElementKinds::RawText)
        return tag->end;
    const qsizetype closing =
        text.indexOf(QString(QStringLiteral("</") + tag->name.toString()), tag->end, Qt::CaseInsensitive);
    return closing < 0 ? text.size() : std::min(indexOf(text, u'>', closing) + 1, text.size());
}
} // namespace

/// Slashes are rarer than what opens a tag, so that the search goes by the closing ones.
QString ContentPasses::removeEmptyParagraphs(const QString &content)
{
    constexpr qsizetype opening = 3; // <p>
    const QStringView text(content);
    Rewriter out(content);
    for (qsizetype at = indexOf(text, u'/', 0); at < text.size(); at = indexOf(text, u'/', at + 1)) {
        if (at == 0 || text[at - 1] != u'<' || !matches(text, at + 1, u"p>"))
            continue;
        qsizetype inside = at - 1;
        while (inside > 0 && isSpace(text[inside - 1].unicode()))
            --inside;
        if (inside >= opening && matches(text, inside - opening, u"<p>"))
            out.replace(inside - opening, at + opening);
    }
    return out.result();
}

/// A line end stands in front of each opening block tag and two behind each closing one. A chunk ends there in any
/// case, so that the text with its line ends is needed from one closing tag to the next only. Elements in which white
/// space says something stay as they are.
QString ContentPasses::contentReplacingDoubleSpaceForParagraphs(const QString &content)
{
    const QStringView text(content);
    TextBuffer out(content.size() + content.size() / 4);
    TextBuffer lines(0);
    NextChar tagEnd(content, u'>');
    qsizetype kept = 0;
    const auto finishLines = [&](qsizetype to) {
        lines.append(text.sliced(kept, to - kept));
        appendChunks(out, lines.text());
        lines.clear();
        kept = to;
    };
    qsizetype opened = 0; // what stands before belongs to an opening tag
    for (qsizetype at = indexOf(content, u'<', 0); at + 1 < content.size(); at = indexOf(content, u'<', at + 1)) {
        if (const qsizetype end = spacedElementEnd(text, at); end > at) {
            finishLines(at);
            out.append(text.sliced(at, end - at));
            kept = end;
            at = end - 1;
        } else if (content[at + 1] == u'/') {
            const qsizetype end = ElementKinds::endOfParagraphEnder(content, at + 2);
            if (end < 0)
                continue;
            finishLines(end);
        } else if (at >= opened && ElementKinds::endsParagraphAt(content, at + 1)) {
            const qsizetype end = tagEnd.from(at + 1);
            if (end == content.size())
                continue;
            opened = end;
            lines.append(text.sliced(kept, at - kept));
            lines.append(QChar(u'\n'));
            kept = at;
        }
    }
    finishLines(text.size());
    return removeEmptyParagraphs(out.take());
}
