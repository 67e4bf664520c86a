#pragma once

#include <QStringView>

/// The texts of a document: "&", ">" and "<" as numeric entities; the control characters that XML forbids are left out;
/// everything else stays, quotes among it.
namespace XMLRPCText {
/// Room for the text, escaped and in UTF-8: its length, and two bytes more for each character beyond the basic plane.
qsizetype escapedUtf8Room(QStringView text);
/// Writes the text, escaped and in UTF-8, to `out`, which has escapedUtf8Room() bytes; gives the end.
/// Half of a surrogate pair, U+FFFE and U+FFFF become U+FFFD.
char *writeEscapedUtf8(QStringView text, char *out);
} // namespace XMLRPCText
