#pragma once

#include <QDateTime>
#include <QString>

/// Dates in the form of post files, "2014-10-21 09:30:00 +0000".
namespace PostFileDate {
/// In UTC; empty for an invalid date.
QString description(const QDateTime &date);
/// Invalid for any other form. Any offset is understood; the date given is in UTC.
QDateTime dateWithString(QStringView text);
} // namespace PostFileDate
