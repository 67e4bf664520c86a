#include "text/XMLBytes.h"

bool XMLBytes::isUtf16(const QByteArray &data)
{
    return data.startsWith("\xFF\xFE") || data.startsWith("\xFE\xFF");
}

QByteArray XMLBytes::legal(const QByteArray &data)
{
    if (isUtf16(data))
        return data;
    QByteArray legal = data;
    for (qsizetype at = 0; at < data.size();) {
        const int length = lengthOfCharacter(QByteArrayView(data).sliced(at));
        if (length == 0)
            legal[at] = uchar(data[at]) < 0x80 ? ' ' : '?';
        at += qMax(length, 1);
    }
    return legal;
}

int XMLBytes::lengthOfCharacter(QByteArrayView text)
{
    const uchar *bytes = reinterpret_cast<const uchar *>(text.data());
    const auto continues = [&](int at) { return at < text.size() && (bytes[at] & 0xC0) == 0x80; };
    if (text.isEmpty())
        return 0;
    const uchar lead = bytes[0];
    if (lead < 0x80)
        return isAllowed(lead) ? 1 : 0;
    if (lead >= 0xC2 && lead <= 0xDF)
        return continues(1) ? 2 : 0;
    if ((lead & 0xF0) == 0xE0) {
        if (!continues(1) || !continues(2))
            return 0;
        const uint code = uint(lead & 0x0F) << 12 | uint(bytes[1] & 0x3F) << 6 | (bytes[2] & 0x3F);
        return code >= 0x800 && isAllowed(code) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if (!continues(1) || !continues(2) || !continues(3))
            return 0;
        const uint code = uint(lead & 0x07) << 18 | uint(bytes[1] & 0x3F) << 12;
        return code >= 0x10000 && isAllowed(code) ? 4 : 0;
    }
    return 0;
}
