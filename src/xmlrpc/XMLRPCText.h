#pragma once

#include <QByteArray>
#include <QString>

/// The texts of a document: what the encoder writes for them, and the literal replacements.
namespace XMLRPCText {
/// "&", ">" and "<" as numeric entities; everything else stays, quotes and control characters among it.
QString escapedString(QStringView text);
/// Takes back eight entities, in a fixed order. Wider than escapedString(), since other programs escape otherwise.
QString unescapedString(QString text);

/// Room for escapedString() in UTF-8: its length, and two bytes more for each character beyond the basic plane.
qsizetype escapedUtf8Room(QStringView text);
/// Writes escapedString() in UTF-8 to `out`, which has escapedUtf8Room() bytes; gives the end.
/// Half of a surrogate pair becomes U+FFFD.
char *writeEscapedUtf8(QStringView text, char *out);
} // namespace XMLRPCText
