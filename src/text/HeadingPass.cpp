#include "text/ContentPasses.h"

#include "text/LiteralReplacer.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"

#include <QSet>

using namespace Scanning;

// Headings get a container that the editor decorates.

namespace {
/// The end of "h1" to "h6" behind white space at `at`, or -1.
qsizetype levelEnd(QStringView text, qsizetype at)
{
    at = skipSpace(text, at);
    if (at + 1 >= text.size() || folded(text[at].unicode()) != u'h')
        return -1;
    return text[at + 1] >= u'1' && text[at + 1] <= u'6' ? at + 2 : -1;
}

/// The end of the closing tag whose "<" stands at `at`, or -1.
qsizetype closingEnd(QStringView text, qsizetype at)
{
    const qsizetype slash = skipSpace(text, at + 1);
    if (slash == text.size() || text[slash] != u'/')
        return -1;
    const qsizetype level = levelEnd(text, slash + 1);
    if (level < 0)
        return -1;
    const qsizetype end = skipSpace(text, level);
    return end < text.size() && text[end] == u'>' ? end + 1 : -1;
}

struct Heading {
    qsizetype start = 0;
    qsizetype end = 0;
    bool plain = true; ///< no other heading begins inside
};

/// Finds headings from left to right; from the level to the closing tag they stand on one line.
class Headings {
public:
    explicit Headings(QStringView text)
        : m_text(text)
        , m_tagEnd(text, u'>')
        , m_lineEnds(text)
        , m_closing(ClosingSearch{this})
    {
    }

    bool next(Heading &heading)
    {
        for (qsizetype at = indexOf(m_text, u'<', m_at); at < m_text.size(); at = indexOf(m_text, u'<', at + 1)) {
            const qsizetype level = levelEnd(m_text, at + 1);
            if (level < 0)
                continue;
            const qsizetype closing = m_closing.from(m_tagEnd.from(level) + 1);
            if (closing >= m_text.size())
                break; // nor does a later one close
            if (m_lineEnds.within(level, closing))
                continue;
            heading.start = at;
            heading.end = m_at = closingEnd(m_text, closing);
            heading.plain = !holdsLevel(at + 1, closing);
            return true;
        }
        m_at = m_text.size();
        return false;
    }

private:
    qsizetype closingFrom(qsizetype at) const
    {
        for (at = indexOf(m_text, u'<', at); at < m_text.size(); at = indexOf(m_text, u'<', at + 1)) {
            if (closingEnd(m_text, at) >= 0)
                break;
        }
        return at;
    }

    bool holdsLevel(qsizetype from, qsizetype to) const
    {
        for (qsizetype at = indexOf(m_text, u'<', from); at < to; at = indexOf(m_text, u'<', at + 1)) {
            if (levelEnd(m_text, at + 1) >= 0)
                return true;
        }
        return false;
    }

    struct ClosingSearch {
        const Headings *headings;
        qsizetype operator()(qsizetype at) const { return headings->closingFrom(at); }
    };

    QStringView m_text;
    NextChar m_tagEnd;
    LineEnds m_lineEnds;
    Forward<ClosingSearch> m_closing;
    qsizetype m_at = 0;
};

/// Whether the heading holds class='headingAlreadyInsideContainer', with any quotes and white space.
bool isInsideContainer(QStringView heading)
{
    constexpr std::u16string_view mark = u"headingalreadyinsidecontainer";
    for (qsizetype equals = indexOf(heading, u'=', 0); equals < heading.size();
         equals = indexOf(heading, u'=', equals + 1)) {
        qsizetype nameEnd = equals;
        while (nameEnd > 0 && isSpace(heading[nameEnd - 1].unicode()))
            --nameEnd;
        if (nameEnd < 5 || !matches(heading, nameEnd - 5, u"class"))
            continue;
        const qsizetype quote = skipSpace(heading, equals + 1);
        if (quote == heading.size() || !isQuote(heading[quote].unicode()))
            continue;
        const qsizetype value = skipSpace(heading, quote + 1);
        if (!matches(heading, value, mark))
            continue;
        const qsizetype closing = skipSpace(heading, value + qsizetype(mark.size()));
        if (closing < heading.size() && isQuote(heading[closing].unicode()))
            return true;
    }
    return false;
}

/// The first level from 1 to 6 whose "h1" stands anywhere in the heading. In its words as well: "<h2>Top h1 story</h2>"
/// counts as level 1, though the tag's own level is meant. The page knows these containers, so that it stays.
int levelOf(QStringView heading)
{
    int level = 7;
    for (qsizetype i = 0; i + 1 < heading.size(); ++i) {
        const int digit = heading[i + 1].unicode() - u'0';
        if ((heading[i] == u'h' || heading[i] == u'H') && digit >= 1 && digit < level && digit <= 6)
            level = digit;
    }
    return level == 7 ? 1 : level;
}

QString inContainer(QStringView heading)
{
    const char16_t digit = char16_t(u'0' + levelOf(heading));
    TextBuffer out(heading.size() + 192);
    out.append(QStringView(u"<div class='heading-container'><img class='heading-box h"));
    out.append(QChar(digit));
    out.append(QStringView(u"-selector'>"));
    qsizetype kept = 0;
    for (qsizetype at = indexOf(heading, digit, 0); at < heading.size(); at = indexOf(heading, digit, at + 1)) {
        if (at == 0 || (heading[at - 1] != u'h' && heading[at - 1] != u'H'))
            continue;
        out.append(heading.sliced(kept, at + 1 - kept));
        out.append(QStringView(u" class='headingAlreadyInsideContainer'")); // the closing tag gets it, too
        kept = at + 1;
    }
    out.append(heading.sliced(kept));
    out.append(QStringView(u"</div>"));
    return out.take();
}

/// Headings that begin inside one another: what is replaced first counts.
QString tangledReplaced(const QString &content)
{
    std::vector<LiteralReplacer::Replacement> replacements;
    QSet<QStringView> seen;
    Headings headings(content);
    for (Heading heading; headings.next(heading);) {
        const QStringView text = QStringView(content).sliced(heading.start, heading.end - heading.start);
        if (seen.contains(text) || isInsideContainer(text))
            continue;
        seen.insert(text);
        replacements.push_back({text.toString(), inContainer(text)});
    }
    return LiteralReplacer(replacements).replaced(content);
}
} // namespace

QString ContentPasses::postContentWithHeadings(const QString &content)
{
    Rewriter out(content);
    Headings headings(content);
    for (Heading heading; headings.next(heading);) {
        if (!heading.plain)
            return tangledReplaced(content);
        const QStringView text = QStringView(content).sliced(heading.start, heading.end - heading.start);
        if (!isInsideContainer(text))
            out.replace(heading.start, heading.end, inContainer(text));
    }
    return out.result();
}
