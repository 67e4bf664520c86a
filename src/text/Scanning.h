#pragma once

#include <QStringView>
#include <algorithm>
#include <bit>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// The small tests and searches that the text passes are made of. They follow the rules of the pattern dialect that
/// the passes are written in: which characters are white space, which end a line, which are the same in another case.
namespace Scanning {
/// Beyond ASCII only the long s and the Kelvin sign fold to a letter.
constexpr char16_t folded(char16_t c)
{
    if (c >= u'A' && c <= u'Z')
        return char16_t(c + (u'a' - u'A'));
    return c < 0x80 ? c : c == 0x017f ? u's' : c == 0x212a ? u'k' : c;
}

inline bool isSpace(char16_t c)
{
    return QChar::isSpace(c);
}

constexpr bool isLineEnd(char16_t c)
{
    return (c >= 0x0a && c <= 0x0d) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

constexpr bool isQuote(char16_t c)
{
    return c == u'\'' || c == u'"';
}

/// Whether `word`, which is in lower case, stands at `at` in any case.
inline bool matches(QStringView text, qsizetype at, std::u16string_view word)
{
    if (text.size() - at < qsizetype(word.size()))
        return false;
    const char16_t *p = text.utf16() + at;
    for (const char16_t c : word) {
        if (folded(*p++) != c)
            return false;
    }
    return true;
}

/// Where the first of the characters stands at or after `from`, or the size of the text. The next one is mostly near,
/// so what counts is to begin at once: that is what this does better than the string's own search.
template <class... Chars>
inline qsizetype indexOfAny(QStringView text, qsizetype from, Chars... wanted)
{
    const char16_t *p = text.utf16();
    const qsizetype size = text.size();
#ifdef __SSE2__
    for (; from + 8 <= size; from += 8) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i *>(p + from));
        __m128i found = _mm_setzero_si128();
        ((found = _mm_or_si128(found, _mm_cmpeq_epi16(eight, _mm_set1_epi16(static_cast<short>(wanted))))), ...);
        if (const auto hits = static_cast<unsigned>(_mm_movemask_epi8(found)))
            return from + std::countr_zero(hits) / 2;
    }
#endif
    while (from < size && ((p[from] != wanted) && ...))
        ++from;
    return std::min(from, size);
}

inline qsizetype indexOf(QStringView text, char16_t c, qsizetype from)
{
    return indexOfAny(text, from, c);
}

inline qsizetype skipSpace(QStringView text, qsizetype at)
{
    while (at < text.size() && isSpace(text.utf16()[at]))
        ++at;
    return at;
}

/// A search for one character that is asked for growing positions: all its answers together cost one walk over the
/// text.
class NextChar {
public:
    NextChar(QStringView text, char16_t c)
        : m_text(text)
        , m_char(c)
    {
    }
    qsizetype from(qsizetype at)
    {
        if (m_found < at)
            m_found = indexOf(m_text, m_char, at);
        return m_found;
    }

private:
    QStringView m_text;
    char16_t m_char;
    qsizetype m_found = -1;
};

/// Tells whether a stretch goes across lines. The beginnings of the stretches must grow; then no character is looked at
/// twice.
class LineEnds {
public:
    explicit LineEnds(QStringView text)
        : m_text(text)
    {
    }
    bool within(qsizetype begin, qsizetype end)
    {
        if (m_found >= begin)
            return m_found < end;
        const char16_t *p = m_text.utf16();
        for (qsizetype at = std::max(begin, m_scanned); at < end; ++at) {
            if ((p[at] <= 0x0d || p[at] >= 0x85) && isLineEnd(p[at])) {
                m_found = at;
                m_scanned = at + 1;
                return true;
            }
        }
        m_scanned = std::max(m_scanned, end);
        return false;
    }

private:
    QStringView m_text;
    qsizetype m_found = -1; ///< the last line end that was met
    qsizetype m_scanned = 0; ///< none between it and here
};
} // namespace Scanning
