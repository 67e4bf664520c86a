#include "text/ContentPasses.h"

#include "text/Rewriter.h"
#include "text/Scanning.h"

#include <QHash>
#include <algorithm>
#include <limits>

using namespace Scanning;

// Shortcodes of videos get a container that the page can style and drag.
//
// A shortcode ends at its first bracket, so one that holds the beginnings of others ("[youtube [youtube x]") can only
// hold them at its own end. Each of these is wrapped as well if it is a whole shortcode elsewhere, as happens when all
// occurrences are replaced in turn, the longest first.

namespace {
constexpr QStringView tail = u"</div>";

/// The length of "[youtube" or "[vimeo" at `at`, or 0.
qsizetype openingAt(QStringView text, qsizetype at)
{
    if (matches(text, at + 1, u"youtube"))
        return 8;
    return matches(text, at + 1, u"vimeo") ? 6 : 0;
}

struct ShortCode {
    qsizetype start = 0;
    qsizetype end = 0;
    qsizetype opening = 0;
    bool plain = true; ///< begins no other shortcode inside
};

class ShortCodes {
public:
    explicit ShortCodes(QStringView text)
        : m_text(text)
        , m_bracket(text, u']')
        , m_lineEnds(text)
    {
    }
    bool next(ShortCode &code)
    {
        for (qsizetype at = indexOf(m_text, u'[', m_at); at < m_text.size(); at = indexOf(m_text, u'[', at + 1)) {
            code.opening = openingAt(m_text, at);
            if (code.opening == 0)
                continue;
            const qsizetype bracket = m_bracket.from(at + code.opening);
            if (bracket == m_text.size())
                break;
            if (m_lineEnds.within(at + code.opening, bracket))
                continue;
            code.start = at;
            code.end = m_at = bracket + 1;
            code.plain = indexOf(m_text.first(bracket), u'[', at + 1) == bracket;
            return true;
        }
        m_at = m_text.size();
        return false;
    }

private:
    QStringView m_text;
    NextChar m_bracket;
    LineEnds m_lineEnds;
    qsizetype m_at = 0;
};

QString containerFor(QStringView code, qsizetype opening)
{
    return QStringLiteral("<div draggable='true' class='%1'>")
        .arg(ContentPasses::classForShortCodeTag(code.sliced(1, opening - 1).toString()));
}

/// Wraps shortcodes in which others begin.
class TangledShortCodes {
public:
    explicit TangledShortCodes(const QString &content)
        : m_content(content)
    {
        ShortCodes codes(content);
        for (ShortCode code; codes.next(code);) {
            m_codes.append(code);
            m_shortest = std::min(m_shortest, code.end - code.start);
        }
    }

    QString wrapped()
    {
        Rewriter out(m_content);
        for (const ShortCode &code : std::as_const(m_codes)) {
            const QStringView text = view(code);
            if (code.plain || text.size() == m_shortest)
                out.replace(code.start, code.end, containerFor(text, code.opening), text, tail);
            else
                out.replace(code.start, code.end, wrappedInside(code));
        }
        return out.result();
    }

private:
    QString wrappedInside(const ShortCode &code)
    {
        if (m_known.isEmpty()) {
            for (const ShortCode &one : std::as_const(m_codes))
                m_known.insert(hash(one.start, one.end), view(one));
        }
        const QStringView text = view(code);
        const auto done = m_wrapped.constFind(text);
        return done != m_wrapped.constEnd() ? *done : *m_wrapped.insert(text, wrapped(code));
    }

    QStringView view(const ShortCode &code) const
    {
        return QStringView(m_content).sliced(code.start, code.end - code.start);
    }

    static quint64 step(quint64 hash, QChar c) { return hash * 0x9e3779b97f4a7c15 + c.unicode() + 1; }

    /// From the end to the beginning, so that one walk gives the hashes of all endings.
    quint64 hash(qsizetype start, qsizetype end) const
    {
        quint64 result = 0;
        while (end > start)
            result = step(result, m_content[--end]);
        return result;
    }

    bool isKnown(quint64 hash, QStringView code) const
    {
        for (auto it = m_known.constFind(hash); it != m_known.constEnd() && it.key() == hash; ++it) {
            if (*it == code)
                return true;
        }
        return false;
    }

    QString wrapped(const ShortCode &code) const
    {
        QList<qsizetype> starts; // of the whole shortcodes in this one, from the end
        quint64 ending = 0;
        for (qsizetype at = code.end - 1; at >= code.start; --at) {
            ending = step(ending, m_content[at]);
            if (m_content[at] == u'[' && code.end - at >= m_shortest && openingAt(m_content, at) > 0
                && isKnown(ending, QStringView(m_content).sliced(at, code.end - at)))
                starts.append(at);
        }
        QString out;
        for (qsizetype i = starts.size() - 1; i >= 0; --i) {
            const QStringView inner = QStringView(m_content).sliced(starts[i], code.end - starts[i]);
            const qsizetype own = i > 0 ? starts[i - 1] - starts[i] : inner.size();
            out += containerFor(inner, openingAt(inner, 0));
            out += inner.first(own);
        }
        for (qsizetype i = 0; i < starts.size(); ++i)
            out += tail;
        return out;
    }

    QString m_content;
    QList<ShortCode> m_codes;
    QMultiHash<quint64, QStringView> m_known;
    qsizetype m_shortest = std::numeric_limits<qsizetype>::max(); ///< of those known
    QHash<QStringView, QString> m_wrapped;
};
} // namespace

QString ContentPasses::classForShortCodeTag(const QString &tag)
{
    if (tag == u"youtube" || tag == u"vimeo")
        return tag;
    return QStringLiteral("embed");
}

QString ContentPasses::postContentWithShortCodeTags(const QString &content)
{
    Rewriter out(content);
    ShortCodes codes(content);
    for (ShortCode code; codes.next(code);) {
        if (!code.plain)
            return TangledShortCodes(content).wrapped();
        const QStringView text = QStringView(content).sliced(code.start, code.end - code.start);
        out.replace(code.start, code.end, containerFor(text, code.opening), text, tail);
    }
    return out.result();
}
