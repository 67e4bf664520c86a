#pragma once

#include <QByteArray>

/// What XML allows among the bytes of a text in UTF-8.
namespace XMLBytes {
/// Whether a document may hold this character, written out or as a numeric reference.
constexpr bool isAllowed(char32_t character)
{
    if (character < 0x20)
        return character == '\t' || character == '\n' || character == '\r';
    return character < 0xD800 || (character > 0xDFFF && character < 0xFFFE)
        || (character > 0xFFFF && character <= 0x10FFFF);
}

/// Whether the bytes begin with the mark of UTF-16.
bool isUtf16(const QByteArray &data);
/// The bytes with every one replaced by a blank, or "?" within broken UTF-8, that keeps a parser from reading on.
/// The length stays the same.
QByteArray legal(const QByteArray &data);
/// Length of the UTF-8 character at the beginning of the bytes; 0 when there is none, or one that XML forbids.
int lengthOfCharacter(QByteArrayView bytes);
} // namespace XMLBytes
