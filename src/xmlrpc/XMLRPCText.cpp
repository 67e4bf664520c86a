#include "xmlrpc/XMLRPCText.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr int EntityLength = 5;

// The loops over a block have no branches and stay with units of 16 bits, so that the compiler makes vector code of
// them.
constexpr qsizetype CountedBlock = 8192; // the sum of its extra bytes fits into 16 bits
constexpr qsizetype CopiedBlock = 8;

quint16 isEscaped(char16_t unit)
{
    return quint16(quint16(unit == u'&') | quint16(unit == u'<') | quint16(unit == u'>'));
}

/// What a document cannot hold in any form: a blog would refuse the whole call.
quint16 isForbidden(char16_t unit)
{
    return quint16(quint16(unit < 0x20) & quint16(unit != u'\n') & quint16(unit != u'\t') & quint16(unit != u'\r'));
}

// Bytes beyond one for each unit.
quint16 extraBytes(const char16_t *block, qsizetype size)
{
    quint16 extra = 0;
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = block[i];
        extra += quint16(quint16(unit >= 0x80) + quint16(unit >= 0x800) + isEscaped(unit) * (EntityLength - 1));
    }
    return extra;
}

bool isPlain(const char16_t *block)
{
    quint16 special = 0;
    for (qsizetype i = 0; i < CopiedBlock; ++i)
        special |= quint16(quint16(block[i] >= 0x80) | isEscaped(block[i]) | isForbidden(block[i]));
    return special == 0;
}

bool isPair(const char16_t *at, const char16_t *end)
{
    return QChar::isHighSurrogate(*at) && at + 1 != end && QChar::isLowSurrogate(at[1]);
}

char *writeEntity(char16_t unit, char *out)
{
    std::memcpy(out, unit == u'&' ? "&#38;" : unit == u'<' ? "&#60;" : "&#62;", EntityLength);
    return out + EntityLength;
}

// The UTF-8 of a character beyond ASCII that has so many bytes behind the first.
template <int Behind>
char *write(char32_t character, char *out)
{
    constexpr int Lead = 0xff00 >> (Behind + 1) & 0xff;
    *out++ = char(Lead | character >> 6 * Behind);
    for (int left = Behind; left-- > 0;)
        *out++ = char(0x80 | (character >> 6 * left & 0x3f));
    return out;
}

// Leaves `at` on the last unit of the character.
char *writeCharacter(const char16_t *&at, const char16_t *end, char *out)
{
    const char16_t unit = *at;
    if (isEscaped(unit))
        return writeEntity(unit, out);
    if (isForbidden(unit))
        return out;
    if (unit < 0x80) {
        *out++ = char(unit);
        return out;
    }
    if (unit < 0x800)
        return write<1>(unit, out);
    if (isPair(at, end))
        return write<3>(QChar::surrogateToUcs4(unit, *++at), out);
    const bool isBroken = QChar::isSurrogate(unit) || unit >= 0xfffe;
    return write<2>(isBroken ? char16_t(QChar::ReplacementCharacter) : unit, out);
}
} // namespace

qsizetype XMLRPCText::escapedUtf8Room(QStringView text)
{
    qsizetype room = text.size();
    for (qsizetype at = 0; at < text.size(); at += CountedBlock)
        room += extraBytes(text.utf16() + at, std::min(CountedBlock, text.size() - at));
    return room;
}

char *XMLRPCText::writeEscapedUtf8(QStringView text, char *out)
{
    const char16_t *at = text.utf16();
    const char16_t *const end = at + text.size();
    while (at != end) {
        if (end - at >= CopiedBlock && isPlain(at)) {
            for (qsizetype i = 0; i < CopiedBlock; ++i)
                out[i] = char(at[i]);
            at += CopiedBlock;
            out += CopiedBlock;
            continue;
        }
        for (const char16_t *const stop = at + std::min<qsizetype>(CopiedBlock, end - at); at < stop; ++at)
            out = writeCharacter(at, end, out);
    }
    return out;
}
