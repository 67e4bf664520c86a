#include "text/Base64.h"

#include <array>
#include <cstring>

namespace {
constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr qsizetype BytesPerLine = 48; // 64 characters
constexpr qsizetype CharactersPerLine = 64;

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
