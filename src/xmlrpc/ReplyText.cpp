#include "xmlrpc/ReplyText.h"

#include "text/XMLBytes.h"

#include <QString>
#include <QStringDecoder>
#include <algorithm>
#include <cstring>

namespace {
constexpr qsizetype BlockSize = 64;
constexpr quint8 LeadOfNoncharacters = 0xef; // of U+FFFE and U+FFFF, and of much else

// Number of bytes at `at` that XML forbids.
qsizetype forbiddenLength(const char *at, const char *end)
{
    if (!XMLBytes::isAllowed(quint8(*at)))
        return 1;
    const bool isNoncharacter = end - at >= 3 && std::memcmp(at, "\xef\xbf", 2) == 0 && quint8(at[2]) >= 0xbe;
    return isNoncharacter ? 3 : 0;
}

// No branches and no wider types in the loop, so that the compiler tests a whole vector of bytes at a time.
bool isSuspicious(const char *block)
{
    quint8 found = 0;
    for (qsizetype i = 0; i < BlockSize; ++i) {
        const quint8 byte = quint8(block[i]);
        const quint8 isControl = byte < 0x20;
        const quint8 isSpace = quint8(quint8(byte == '\t') | quint8(byte == '\n') | quint8(byte == '\r'));
        found |= quint8((isControl ^ isSpace) | quint8(byte == LeadOfNoncharacters));
    }
    return found != 0;
}

const char *findForbidden(const char *at, const char *end)
{
    while (at != end) {
        const bool wholeBlock = end - at >= BlockSize;
        if (wholeBlock && !isSuspicious(at)) {
            at += BlockSize;
            continue;
        }
        for (const char *stop = wholeBlock ? at + BlockSize : end; at != stop; ++at) {
            if (forbiddenLength(at, end) > 0)
                return at;
        }
    }
    return end;
}

QByteArray withoutForbidden(const QByteArray &utf8, const char *bad)
{
    const char *const end = utf8.constData() + utf8.size();
    QByteArray cleaned(utf8.size(), Qt::Uninitialized);
    char *out = cleaned.data();
    const char *run = utf8.constData();
    for (; bad != end; bad = findForbidden(run, end)) {
        out = std::copy(run, bad, out);
        run = bad + forbiddenLength(bad, end);
    }
    out = std::copy(run, end, out);
    cleaned.truncate(out - cleaned.constData());
    return cleaned;
}

qsizetype characterLength(char lead)
{
    const quint8 byte = quint8(lead);
    return byte < 0xc0 ? 1 : byte < 0xe0 ? 2 : byte < 0xf0 ? 3 : 4;
}

bool isSpaceOrMark(QByteArrayView utf8)
{
    if (utf8.size() == 1)
        return quint8(utf8[0]) < 0x80 && QChar::isSpace(quint8(utf8[0]));
    const QString character = QString::fromUtf8(utf8);
    return utf8 == QByteArrayView("\xef\xbb\xbf") || (character.size() == 1 && character[0].isSpace());
}

// White space of any script, and byte order marks, which some editors leave in a blog's PHP files.
qsizetype leadingSpace(QByteArrayView utf8)
{
    qsizetype at = 0;
    while (at < utf8.size()) {
        const qsizetype length = std::min(characterLength(utf8[at]), utf8.size() - at);
        if (!isSpaceOrMark(utf8.sliced(at, length)))
            break;
        at += length;
    }
    return at;
}

bool isUtf8ByName(const QByteArray &charset)
{
    return charset.isEmpty() || qstricmp(charset.constData(), "utf-8") == 0
        || qstricmp(charset.constData(), "utf8") == 0 || qstricmp(charset.constData(), "us-ascii") == 0;
}

// Text of other encodings is hardly ever valid UTF-8 by chance, while hosts name a wrong one. But for those that write
// other characters with the bytes of ASCII: UTF-16 and UTF-32 need NUL for that, those of Japan and China the escape.
bool isUtf8ByLooks(const QByteArray &data)
{
    return !data.contains('\0') && !data.contains('\x1b') && data.isValidUtf8();
}
} // namespace

std::optional<ReplyText> ReplyText::fromData(const QByteArray &data, const QByteArray &charset)
{
    if (isUtf8ByName(charset) || isUtf8ByLooks(data))
        return ReplyText(data);
    QStringDecoder decoder(charset.constData());
    if (!decoder.isValid())
        return std::nullopt;
    const QString decoded = decoder(data);
    return decoder.hasError() ? std::nullopt : std::optional(ReplyText(decoded.toUtf8()));
}

ReplyText::ReplyText(const QByteArray &utf8)
    : m_bytes(utf8)
    , m_start(leadingSpace(utf8))
{
}

bool ReplyText::dropForbidden()
{
    const char *const end = m_bytes.constData() + m_bytes.size();
    const char *const bad = findForbidden(m_bytes.constData(), end);
    if (bad == end)
        return false;
    *this = ReplyText(withoutForbidden(m_bytes, bad));
    return true;
}
