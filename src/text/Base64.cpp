#include "text/Base64.h"

#include <array>
#include <cstring>

namespace {
constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr qsizetype BytesPerLine = 48; // 64 characters
constexpr qsizetype CharactersPerLine = 64;
constexpr quint8 NoDigit = 0xff;

struct Pair {
    char first;
    char second;
};

// Two characters for each 12 bits: two look-ups for three bytes are faster than four shifts and masks.
constexpr std::array<Pair, 4096> makePairs()
{
    std::array<Pair, 4096> pairs{};
    for (int i = 0; i < 4096; ++i)
        pairs[i] = {Alphabet[i >> 6], Alphabet[i & 63]};
    return pairs;
}
constexpr std::array<Pair, 4096> Pairs = makePairs();

constexpr std::array<quint8, 256> makeDigits()
{
    std::array<quint8, 256> digits{};
    digits.fill(NoDigit);
    for (int i = 0; i < 64; ++i)
        digits[quint8(Alphabet[i])] = quint8(i);
    return digits;
}
constexpr std::array<quint8, 256> Digits = makeDigits();

char *encodeTriple(const char *in, char *out)
{
    const quint32 bits = quint32(quint8(in[0])) << 16 | quint32(quint8(in[1])) << 8 | quint8(in[2]);
    std::memcpy(out, &Pairs[bits >> 12], 2);
    std::memcpy(out + 2, &Pairs[bits & 4095], 2);
    return out + 4;
}

// The last one or two bytes, padded.
char *encodeRest(const char *in, qsizetype length, char *out)
{
    const char padded[3] = {in[0], length == 2 ? in[1] : '\0', '\0'};
    char *end = encodeTriple(padded, out);
    end[-1] = '=';
    if (length == 1)
        end[-2] = '=';
    return end;
}
} // namespace

qsizetype Base64::encodedLength(qsizetype length)
{
    if (length <= 0)
        return 0;
    const qsizetype characters = (length + 2) / 3 * 4;
    return characters + (characters - 1) / CharactersPerLine * 2;
}

QByteArray Base64::encoded(const QByteArray &bytes)
{
    QByteArray out(encodedLength(bytes.size()), Qt::Uninitialized);
    encode(bytes.constData(), bytes.size(), out.data());
    return out;
}

char *Base64::encode(const char *bytes, qsizetype length, char *out)
{
    const char *end = bytes + length;
    while (end - bytes > BytesPerLine) {
        for (int i = 0; i < BytesPerLine; i += 3)
            out = encodeTriple(bytes + i, out);
        bytes += BytesPerLine;
        *out++ = '\r';
        *out++ = '\n';
    }
    for (; end - bytes >= 3; bytes += 3)
        out = encodeTriple(bytes, out);
    return bytes == end ? out : encodeRest(bytes, end - bytes, out);
}

QByteArray Base64::decoded(QByteArrayView text)
{
    QByteArray out(text.size() / 4 * 3 + 3, Qt::Uninitialized);
    char *to = out.data();
    quint32 bits = 0;
    int count = 0;
    for (const char character : text) {
        const quint8 digit = Digits[quint8(character)];
        if (digit == NoDigit)
            continue;
        bits = bits << 6 | digit;
        if (++count < 4)
            continue;
        *to++ = char(bits >> 16);
        *to++ = char(bits >> 8);
        *to++ = char(bits);
        count = 0;
    }
    if (count >= 2)
        *to++ = char(bits >> (count == 2 ? 4 : 10));
    if (count == 3)
        *to++ = char(bits >> 2);
    out.truncate(to - out.constData());
    return out;
}
