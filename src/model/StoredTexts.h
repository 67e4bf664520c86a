#pragma once

#include <QByteArray>
#include <QString>

/// The title and content of a post file exactly as they were stored: entities decoded once and nothing else done, where
/// an XML parser would turn line ends into "\n" and refuse control characters.
struct StoredTexts {
    QString title;
    QString content;

    /// `original` is the file; `legal` the same bytes, place by place, with those replaced that XML forbids.
    static StoredTexts fromData(const QByteArray &original, const QByteArray &legal);
};

namespace XMLBytes {
/// The bytes with every one replaced by a blank, or "?" within broken UTF-8, that keeps a parser from reading on.
/// The length stays the same.
QByteArray legal(const QByteArray &data);
/// Length of the UTF-8 character at the beginning of the bytes; 0 when there is none, or one that XML forbids.
int lengthOfCharacter(QByteArrayView bytes);
} // namespace XMLBytes
