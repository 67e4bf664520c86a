#pragma once

#include <QDateTime>
#include <QString>
#include <string_view>

/// The texts of a reply's scalars, in UTF-8, read as values.
namespace ReplyScalars {
/// Without the ASCII white space at both ends.
std::string_view trimmed(std::string_view text);
/// Without white space of any script at both ends. Never null.
QString string(std::string_view text);
/// Leading integer, held within 64 bits; 0 for rubbish.
qint64 integer(std::string_view text);
/// Leading number; 0 for rubbish.
double number(std::string_view text);
/// "20240301T10:00:00", else "2024-03-01T10:00:00", in UTC, with or without a trailing "Z". Invalid otherwise.
QDateTime date(std::string_view text);
} // namespace ReplyScalars
