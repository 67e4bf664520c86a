#include "text/ContentPasses.h"

#include "text/KeptForms.h"
#include "text/MarkupScanner.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"

using namespace Scanning;

// Shortcodes and addresses of players become embeds, which the page can style and drag.

namespace {
/// The length of "[youtube" or "[vimeo" at `at`, or 0.
qsizetype openingAt(QStringView text, qsizetype at)
{
    if (matches(text, at, u"[youtube"))
        return 8;
    return matches(text, at, u"[vimeo") ? 6 : 0;
}

/// The end of the scheme and host of a player's page at `at`, or -1.
qsizetype playerHostEnd(QStringView text, qsizetype at)
{
    constexpr std::u16string_view site = u"://www.youtube.com/watch?v=";
    const qsizetype scheme = at + (matches(text, at, u"https") ? 5 : 4);
    return matches(text, at, u"http") && matches(text, scheme, site) ? scheme + qsizetype(site.size()) : -1;
}

/// Whether an address may go on with this; markup ends it.
bool isAddress(QChar c)
{
    return !isSpace(c.unicode()) && c != u'<' && c != u'>' && !isQuote(c.unicode());
}

bool isShortCode(QStringView text)
{
    const qsizetype opening = openingAt(text, 0);
    if (opening == 0 || indexOf(text, u']', opening) != text.size() - 1)
        return false;
    return !LineEnds(text).within(opening, text.size());
}

bool isPlayerAddress(QStringView text)
{
    const qsizetype host = playerHostEnd(text, 0);
    return host >= 0 && std::all_of(text.begin() + host, text.end(), isAddress);
}

/// An embed: its element, its class, and how the stored text is kept. What is alone in its piece stands by itself;
/// elsewhere a division would end the paragraph that it is in.
struct Embed {
    QStringView text;
    QString start;
    QStringView end;

    Embed(QStringView content, QStringView stored, const QString &kind, KeptForms *kept)
        : text(stored)
        , end(stored.size() == content.size() || !kept ? QStringView(u"</div>") : QStringView(u"</span>"))
    {
        start = QStringLiteral("<%1 draggable='true' class='%2'%3>")
                    .arg(end.sliced(2, end.size() - 3), kind, kept ? kept->attributeFor(stored) : QString());
    }
};
} // namespace

QString ContentPasses::classForShortCodeTag(const QString &tag)
{
    if (tag == u"youtube" || tag == u"vimeo")
        return tag;
    return QStringLiteral("embed");
}

bool ContentPasses::isPlayer(QStringView text)
{
    return isShortCode(text) || isPlayerAddress(text);
}

QString ContentPasses::postContentWithShortCodeTags(const QString &content, KeptForms *kept)
{
    const QStringView text(content);
    Rewriter out(content);
    NextChar bracket(text, u']');
    LineEnds lineEnds(text);
    MarkupPlaces markup(text);
    for (qsizetype at = indexOf(text, u'[', 0); at < text.size(); at = indexOf(text, u'[', at + 1)) {
        const qsizetype opening = openingAt(text, at);
        if (opening == 0)
            continue;
        const qsizetype closing = bracket.from(at + opening);
        if (closing == text.size())
            break;
        if (lineEnds.within(at + opening, closing) || markup.tokenAt(at))
            continue;
        const QString tag = text.sliced(at + 1, opening - 1).toString();
        const Embed embed(text, text.sliced(at, closing + 1 - at), classForShortCodeTag(tag), kept);
        out.replace(at, closing + 1, embed.start, embed.text, embed.end);
        at = closing;
    }
    return out.result();
}

QString ContentPasses::postContentWithVideoURLTags(const QString &content, KeptForms *kept)
{
    const QStringView text(content);
    Rewriter out(content);
    MarkupPlaces markup(text);
    for (qsizetype colon = indexOf(text, u':', 0); colon < text.size(); colon = indexOf(text, u':', colon + 1)) {
        qsizetype lineStart = colon;
        while (lineStart > 0 && text[lineStart - 1].isLetter())
            --lineStart;
        const qsizetype start = lineStart;
        if (playerHostEnd(text, start) < 0)
            continue;
        const qsizetype end = [&] {
            qsizetype at = colon;
            while (at < text.size() && isAddress(text[at]))
                ++at;
            return at;
        }();
        const auto isBlank = [&](qsizetype at) { return isSpace(text[at].unicode()) && text[at] != u'\n'; };
        while (lineStart > 0 && isBlank(lineStart - 1))
            --lineStart;
        qsizetype lineEnd = end;
        while (lineEnd < text.size() && isBlank(lineEnd))
            ++lineEnd;
        const bool isAlone =
            (lineStart == 0 || text[lineStart - 1] == u'\n') && (lineEnd == text.size() || text[lineEnd] == u'\n');
        if (isAlone && !markup.tokenAt(start)) {
            const QStringView address = text.sliced(start, end - start);
            const Embed embed(text, address, QStringLiteral("youtube"), kept);
            out.replace(
                start, end, embed.start, QStringView(u"[youtube="), address, QStringView(u"&w=640&h=360]"), embed.end);
        }
        colon = lineEnd;
    }
    return out.result();
}
