#include "text/HTMLEntities.h"

#include "text/ElementKinds.h"
#include "text/HTMLEntityTable.h"
#include "text/Scanning.h"

#include <algorithm>
#include <bit>

using namespace Scanning;

namespace {
constexpr qsizetype shortestEntity = 4; // with ampersand and semicolon
constexpr qsizetype longestEntity = 10;
constexpr quint32 lastCode = 65534;

constexpr size_t slotCount = 1024;

constexpr size_t slotOf(const char16_t *name, size_t length)
{
    quint32 hash = quint32(length);
    for (size_t i = 0; i < length; ++i)
        hash = hash * 131 + name[i];
    return (hash ^ hash >> 10) % slotCount;
}

/// Where each name of the table lies, by its hash; 0 is an empty slot.
constexpr auto nameSlots = [] {
    std::array<unsigned char, slotCount> table{};
    static_assert(entityTable.size() < 255);
    for (size_t i = 0; i < entityTable.size(); ++i) {
        size_t slot = slotOf(entityTable[i].name.data(), entityTable[i].name.size());
        while (table[slot] != 0)
            slot = (slot + 1) % slotCount;
        table[slot] = static_cast<unsigned char>(i + 1);
    }
    return table;
}();

char16_t named(std::u16string_view name)
{
    for (size_t slot = slotOf(name.data(), name.size()); nameSlots[slot] != 0; slot = (slot + 1) % slotCount) {
        const HTMLEntity &entity = entityTable[nameSlots[slot] - 1u];
        if (entity.name == name)
            return entity.code;
    }
    return 0;
}

int digitOf(char16_t c)
{
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    const char16_t letter = folded(c);
    return letter >= u'a' && letter <= u'f' && c < 0x80 ? letter - u'a' + 10 : 99;
}

/// `digits` stands behind the "#".
char16_t numbered(std::u16string_view digits)
{
    const bool hex = !digits.empty() && (digits[0] == u'x' || digits[0] == u'X');
    const quint32 base = hex ? 16 : 10;
    if (hex)
        digits.remove_prefix(1);
    quint32 code = 0;
    for (const char16_t c : digits) {
        const quint32 digit = quint32(digitOf(c));
        if (digit >= base)
            return 0;
        code = code * base + digit; // at most seven digits
    }
    return code <= lastCode ? char16_t(code) : 0;
}

/// The character of the entity whose "&" stands at `at`, and its length; 0 when it is none.
char16_t entityAt(const char16_t *at, const char16_t *end, qsizetype &length)
{
    const char16_t *limit = at + std::min<qsizetype>(end - at, longestEntity);
    const char16_t *semicolon = std::find(at + 1, limit, u';');
    length = semicolon - at + 1;
    if (semicolon == limit || length < shortestEntity)
        return 0;
    const std::u16string_view name(at + 1, size_t(semicolon - at - 1));
    return name[0] == u'#' ? numbered(name.substr(1)) : named(name);
}

/// Decodes `size` units at `text` in place, as what comes out is never longer; gives the new size. A decoded "&" is
/// passed over: nothing is decoded twice.
qsizetype decodeInPlace(char16_t *text, qsizetype size)
{
    const QStringView view(text, size);
    qsizetype at = indexOf(view, u'&', 0);
    char16_t *out = text + at;
    while (at < size) {
        qsizetype length = 0;
        if (const char16_t c = entityAt(text + at, text + size, length)) {
            *out++ = c;
            at += length;
        } else {
            *out++ = text[at++];
        }
        const qsizetype next = indexOf(view, u'&', at);
        out = std::copy(text + at, text + next, out);
        at = next;
    }
    return out - text;
}

constexpr bool isHTMLSpace(char16_t c)
{
    return c == u' ' || c == u'\t' || (isLineEnd(c) && c != 0x0b);
}

/// One walk over the markup that leaves the words.
class PlainText {
public:
    explicit PlainText(const QString &html)
        : m_text(html)
        , m_at(html.utf16() ? reinterpret_cast<const char16_t *>(html.utf16()) : nullptr)
        , m_end(m_at + html.size())
        , m_plain(html.size(), Qt::Uninitialized)
        , m_begin(reinterpret_cast<char16_t *>(m_plain.data()))
        , m_out(m_begin)
    {
    }

    QString converted()
    {
        while (m_at < m_end) {
            const char16_t c = *m_at;
            if (c == u'<')
                skipTag();
            else if (isHTMLSpace(c) && (c != u' ' || m_out == m_begin))
                skipSpace();
            else
                copyWords();
        }
        m_plain.truncate(decodeInPlace(m_begin, m_out - m_begin));
        return m_plain;
    }

private:
    /// All that words may not go on over; a single blank they may.
    static bool stops(char16_t c)
    {
        if (c > u'<')
            return c == 0x85 || c == 0x2028 || c == 0x2029;
        return c == u'<' || (c != u' ' && isHTMLSpace(c));
    }

    /// Words with single blanks between them. `previous` lives for one stretch only: a blank before it was dealt with.
    void copyWords()
    {
        char16_t previous = 0;
        while (m_at < m_end && !stops(*m_at) && (*m_at != u' ' || previous != u' ')) {
            *m_out++ = previous = *m_at++;
            previous = copyEights(previous);
        }
        if (previous != u' ')
            return;
        // the blank stands for the whole run, and for nothing at the end
        skipRun();
        if (m_at == m_end)
            --m_out;
    }

    /// As many of the next characters as go without a decision, eight at a time; gives the last one copied. What comes
    /// out is never ahead of what goes in, so there is room for eight.
    char16_t copyEights(char16_t previous)
    {
#ifdef __SSE2__
        const auto load = [](const char16_t *at) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(at)); };
        const auto all = [](int c) { return _mm_set1_epi16(static_cast<short>(c)); };
        while (m_end - m_at >= 8) {
            const __m128i text = load(m_at);
            const __m128i blank = _mm_cmpeq_epi16(text, all(' '));
            const __m128i blankBefore = _mm_cmpeq_epi16(load(m_at - 1), all(' '));
            // tab to carriage return: nothing is left of the distance above four
            const __m128i control =
                _mm_cmpeq_epi16(_mm_subs_epu16(_mm_sub_epi16(text, all('\t')), all(4)), _mm_setzero_si128());
            const __m128i separator = _mm_cmpeq_epi16(_mm_and_si128(text, all(0xfffe)), all(0x2028));
            const __m128i others = _mm_or_si128(_mm_cmpeq_epi16(text, all('<')), _mm_cmpeq_epi16(text, all(0x85)));
            const __m128i stop =
                _mm_or_si128(_mm_or_si128(_mm_and_si128(blank, blankBefore), others), _mm_or_si128(control, separator));
            const auto hits = static_cast<unsigned>(_mm_movemask_epi8(stop));
            _mm_storeu_si128(reinterpret_cast<__m128i *>(m_out), text);
            const int count = hits == 0 ? 8 : std::countr_zero(hits) / 2;
            m_at += count;
            m_out += count;
            if (count > 0)
                previous = m_at[-1];
            if (hits != 0)
                break;
        }
#endif
        return previous;
    }

    void skipRun()
    {
        while (m_at < m_end && isHTMLSpace(*m_at))
            ++m_at;
    }

    void skipSpace()
    {
        skipRun();
        appendBlank();
    }

    /// Never at the beginning or for what stands at the end.
    void appendBlank()
    {
        if (m_out != m_begin && m_at < m_end)
            *m_out++ = u' ';
    }

    void skipTag()
    {
        ++m_at;
        const QStringView rest(m_at, m_end - m_at);
        if (rest.startsWith(u"!--")) {
            const qsizetype end = rest.indexOf(u"-->", 3);
            m_at = end < 0 ? m_end : m_at + end + 3;
            return;
        }
        const bool parts = rest.startsWith(u'/') && partsWords(rest.sliced(1));
        m_at += indexOf(rest, u'>', 0);
        if (m_at < m_end)
            ++m_at;
        if (parts)
            appendBlank();
    }

    static bool partsWords(QStringView name)
    {
        qsizetype length = 0;
        while (length < name.size() && name[length].isLetter())
            ++length;
        return !(ElementKinds::of(name.first(length)) & ElementKinds::WithinWords);
    }

    QString m_text;
    const char16_t *m_at;
    const char16_t *m_end;
    QString m_plain;
    char16_t *m_begin;
    char16_t *m_out;
};
} // namespace

QString HTMLEntities::stringByDecodingHTMLEntities(const QString &text)
{
    if (!text.contains(u'&'))
        return text;
    QString decoded = text;
    decoded.truncate(decodeInPlace(reinterpret_cast<char16_t *>(decoded.data()), decoded.size()));
    return decoded;
}

QString HTMLEntities::stringByConvertingHTMLToPlainText(const QString &html)
{
    return PlainText(html).converted();
}
