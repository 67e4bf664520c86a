#include "text/ContentPasses.h"

#include "text/AttributeTags.h"
#include "text/LiteralReplacer.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"

using namespace Scanning;

// The page's containers of embeds and placeholders of videos back to what the blog stores.
//
// A match goes from the first division to the end of the first container, so it may hold others that end there with it.
// Replacing the longest first takes it whole.

namespace {
/// From the first division that has one of the four classes in or behind it to that container's end.
struct Embed {
    qsizetype start = 0;
    qsizetype end = 0;
    QStringView content;
    bool plain = true; ///< what stays cannot begin a division, alone or with what stands before or behind
};

class Embeds {
public:
    explicit Embeds(QStringView text)
        : m_text(text)
        , m_equals(text, u'=')
        , m_lineEnds(text)
        , m_closing(ClosingSearch{text})
    {
    }

    bool next(Embed &embed)
    {
        for (qsizetype at = indexOf(m_text, u'<', m_at); at < m_text.size(); at = indexOf(m_text, u'<', at + 1)) {
            if (!matches(m_text, at + 1, u"div") || at + 4 >= m_text.size() || !isSpace(m_text[at + 4].unicode()))
                continue;
            if (!findContainer(at + 5, embed))
                break; // nor is there one behind a later tag
            embed.start = at;
            embed.plain = !mayBeginDivision(embed.content) && !endsInTagStart(m_text.sliced(m_at, at - m_at));
            m_at = embed.end;
            return true;
        }
        m_at = m_text.size();
        return false;
    }

private:
    static constexpr qsizetype closingTag = 6; // </div>

    struct ClosingSearch {
        QStringView text;
        qsizetype operator()(qsizetype at) const
        {
            at = indexOf(text, u'<', at);
            while (at < text.size() && !matches(text, at + 1, u"/div>"))
                at = indexOf(text, u'<', at + 1);
            return at;
        }
    };

    static bool mayBeginDivision(QStringView content)
    {
        for (qsizetype at = indexOf(content, u'<', 0); at < content.size(); at = indexOf(content, u'<', at + 1)) {
            if (at + 1 == content.size() || folded(content[at + 1].unicode()) == u'd')
                return true;
        }
        return false;
    }

    static bool endsInTagStart(QStringView text)
    {
        for (const std::u16string_view start : {u"<", u"<d", u"<di", u"<div"}) {
            if (matches(text, std::max<qsizetype>(text.size() - qsizetype(start.size()), 0), start))
                return true;
        }
        return false;
    }

    bool findContainer(qsizetype from, Embed &embed)
    {
        constexpr qsizetype attribute = 5; // class
        for (qsizetype equals = m_equals.from(from + attribute); equals < m_text.size();
             equals = m_equals.from(equals + 1)) {
            if (!matches(m_text, equals - attribute, u"class"))
                continue;
            const qsizetype begin = contentBehind(equals + 1);
            if (begin < 0)
                continue;
            const qsizetype closing = m_closing.from(begin);
            if (closing < m_text.size() && !m_lineEnds.within(begin, closing)) {
                embed.content = m_text.sliced(begin, closing - begin);
                embed.end = closing + closingTag;
                return true;
            }
        }
        return false;
    }

    /// Behind the quoted class at `at` and the tag's end, or -1.
    qsizetype contentBehind(qsizetype at) const
    {
        if (at >= m_text.size() || !isQuote(m_text[at].unicode()))
            return -1;
        for (const std::u16string_view name : {u"embed", u"youtube", u"vimeo", u"videolog"}) {
            const qsizetype quote = at + 1 + qsizetype(name.size());
            if (matches(m_text, at + 1, name) && quote + 1 < m_text.size() && isQuote(m_text[quote].unicode())
                && m_text[quote + 1] == u'>')
                return quote + 2;
        }
        return -1;
    }

    QStringView m_text;
    NextChar m_equals;
    LineEnds m_lineEnds;
    Forward<ClosingSearch> m_closing;
    qsizetype m_at = 0;
};

/// Containers out of which new ones could come: what is replaced first counts.
QString tangledReplaced(const QString &content)
{
    std::vector<LiteralReplacer::Replacement> replacements;
    Embeds embeds(content);
    for (Embed embed; embeds.next(embed);)
        replacements.push_back({content.sliced(embed.start, embed.end - embed.start), embed.content.toString()});
    return LiteralReplacer(replacements).replaced(content);
}
} // namespace

QString ContentPasses::replaceEmbedTags(const QString &content)
{
    Rewriter out(content);
    Embeds embeds(content);
    for (Embed embed; embeds.next(embed);) {
        if (!embed.plain)
            return tangledReplaced(content);
        out.replace(embed.start, embed.end, embed.content);
    }
    return out.result();
}

QString ContentPasses::replaceYouTubeTags(const QString &content)
{
    Rewriter out(content);
    AttributeTags tags(content, u"img", u"data-youtube");
    for (AttributeTag tag; tags.next(tag);)
        out.replace(tag.start, tag.end, QStringView(u"[youtube="), tag.value, QChar(u']'));
    return out.result();
}

QString ContentPasses::replaceEditorTags(const QString &content)
{
    return replaceEmbedTags(replaceYouTubeTags(content));
}
