#include "text/ContentPasses.h"

#include "text/LiteralReplacer.h"
#include "text/Rewriter.h"
#include "text/Scanning.h"

using namespace Scanning;

namespace {
/// An image tag with a class that ends in a slash; from the left, the first class that serves.
struct ImageTag {
    qsizetype start = 0;
    qsizetype end = 0;
    QStringView before; ///< between `<img` and the class
    QStringView classes;
    QStringView after; ///< behind the class
    bool plain = true; ///< holds no other tag and no other tag's end
};

/// Finds image tags from left to right. All its searches go forward, so a text costs one walk for each of them.
class ImageTags {
public:
    explicit ImageTags(QStringView text)
        : m_text(text)
        , m_equals(text, u'=')
        , m_lineEnds(text)
        , m_single(text, u'\'')
        , m_double(text, u'"')
    {
    }

    bool next(ImageTag &tag)
    {
        for (qsizetype at = indexOf(m_text, u'<', m_at); at < m_text.size(); at = m_nextTag) {
            m_nextTag = indexOf(m_text, u'<', at + 1);
            if (matches(m_text, at + 1, u"img") && findClass(at, tag)) {
                m_at = tag.end;
                return true;
            }
        }
        m_at = m_text.size();
        return false;
    }

private:
    /// What goes with one kind of quote: the searches must not go back when the other kind is looked at between.
    struct Quote {
        Quote(QStringView text, char16_t c)
            : m_text(text)
            , closing(text, c)
        {
        }
        /// Where "/>" stands at or after `at`.
        qsizetype tagEnd(qsizetype at)
        {
            if (m_tagEnd < at) {
                qsizetype end = indexOf(m_text, u'>', at + 1);
                while (end < m_text.size() && m_text[end - 1] != u'/')
                    end = indexOf(m_text, u'>', end + 1);
                m_tagEnd = end < m_text.size() ? end - 1 : end;
            }
            return m_tagEnd;
        }

        QStringView m_text;
        NextChar closing;
        qsizetype m_tagEnd = -1;
    };

    bool findClass(qsizetype start, ImageTag &tag)
    {
        constexpr qsizetype tagName = 4; // <img
        constexpr qsizetype attribute = 5; // class
        for (qsizetype equals = m_equals.from(start + tagName + attribute);
             equals + 1 < m_text.size() && equals < m_nextTag; equals = m_equals.from(equals + 1)) {
            if (isQuote(m_text[equals + 1].unicode()) && matches(m_text, equals - attribute, u"class")
                && readClass(equals, tag)) {
                tag.start = start;
                tag.before = m_text.sliced(start + tagName, equals - attribute - start - tagName);
                tag.plain = tag.end <= m_nextTag && !tag.before.contains(u"/>") && !tag.classes.contains(u"/>");
                return true;
            }
        }
        return false;
    }

    bool readClass(qsizetype equals, ImageTag &tag)
    {
        Quote &quote = m_text[equals + 1] == u'\'' ? m_single : m_double;
        const qsizetype list = equals + 2;
        const qsizetype closing = quote.closing.from(list);
        const qsizetype slash = quote.tagEnd(closing + 1);
        if (slash == m_text.size() || m_lineEnds.within(list, slash))
            return false;
        const bool twoSlashes = slash > closing + 1 && m_text[slash - 1] == u'/';
        tag.classes = m_text.sliced(list, closing - list);
        tag.after = m_text.sliced(closing + 1, slash - (twoSlashes ? 1 : 0) - closing - 1);
        tag.end = slash + 2;
        return true;
    }

    QStringView m_text;
    NextChar m_equals;
    LineEnds m_lineEnds;
    Quote m_single;
    Quote m_double;
    qsizetype m_at = 0;
    qsizetype m_nextTag = 0;
};

/// The parts of the tag with its class behind all that stood before it; `put` takes them.
template <class Put>
void rewritten(const ImageTag &tag, Put put)
{
    const bool centred = tag.classes.contains(u"aligncenter");
    put(QStringView(u"<img"), tag.before, QStringView(centred ? u" align=\"middle\" class=\"" : u" class=\""),
        tag.classes, QStringView(centred ? u" full\"" : u"\""), tag.after, QStringView(u" />"));
}

QString rewritten(const ImageTag &tag)
{
    QString out;
    rewritten(tag, [&](const auto &...parts) { (out.append(parts), ...); });
    return out;
}

/// Image tags that stand inside one another: what is replaced first counts.
QString tangledReplaced(const QString &content)
{
    std::vector<LiteralReplacer::Replacement> replacements;
    ImageTags tags(content);
    for (ImageTag tag; tags.next(tag);)
        replacements.push_back({content.sliced(tag.start, tag.end - tag.start), rewritten(tag)});
    return LiteralReplacer(replacements).replaced(content);
}
} // namespace

QString ContentPasses::contentReplacingImageClasses(const QString &content)
{
    Rewriter out(content);
    ImageTags tags(content);
    for (ImageTag tag; tags.next(tag);) {
        if (!tag.plain)
            return tangledReplaced(content);
        rewritten(tag, [&](const auto &...parts) { out.replace(tag.start, tag.end, parts...); });
    }
    return out.result();
}
