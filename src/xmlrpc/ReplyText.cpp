#include "xmlrpc/ReplyText.h"

#include "text/XMLBytes.h"

#include <QString>
#include <QStringDecoder>
#include <algorithm>
#include <cstring>

namespace {
// Number of bytes at `at` that XML forbids.
qsizetype forbiddenLength(const char *at, const char *end)
{
    if (!XMLBytes::isAllowed(quint8(*at)))
        return 1;
    const bool isNoncharacter = end - at >= 3 && std::memcmp(at, "\xef\xbf", 2) == 0 && quint8(at[2]) >= 0xbe;
    return isNoncharacter ? 3 : 0;
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
    const char *run = m_bytes.constData(); // of what stays
    QByteArray cleaned;
    for (const char *at = run; at != end;) {
        const qsizetype length = forbiddenLength(at, end);
        if (length > 0)
            cleaned.append(run, at - run);
        at += std::max<qsizetype>(length, 1);
        if (length > 0)
            run = at;
    }
    if (run == m_bytes.constData())
        return false;
    *this = ReplyText(cleaned.append(run, end - run));
    return true;
}
