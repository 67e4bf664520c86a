#pragma once

#include <QByteArray>

namespace Base64 {
/// Length of encoded() for `length` bytes.
qsizetype encodedLength(qsizetype length);
/// Standard alphabet with padding; CR LF after every 64 characters, but not after the last line.
QByteArray encoded(const QByteArray &bytes);
/// Writes the same to `out`, which has room for encodedLength() bytes; gives the end.
char *encode(const char *bytes, qsizetype length, char *out);
/// Ignores every character outside the alphabet; a single leftover character is dropped.
QByteArray decoded(QByteArrayView text);
} // namespace Base64
