#pragma once

#include <QByteArray>

/// Base64 in lines, as blogs take it; QByteArray writes none.
namespace Base64 {
/// Length of encoded() for `length` bytes.
qsizetype encodedLength(qsizetype length);
/// Standard alphabet with padding; CR LF after every 64 characters, but not after the last line.
QByteArray encoded(const QByteArray &bytes);
/// Writes the same to `out`, which has room for encodedLength() bytes; gives the end.
char *encode(const char *bytes, qsizetype length, char *out);
} // namespace Base64
