#include "model/PostFileDate.h"

#include "text/DigitForm.h"

QString PostFileDate::description(const QDateTime &date)
{
    if (!date.isValid())
        return {};
    return date.toUTC().toString(u"yyyy-MM-dd HH:mm:ss") + QLatin1String(" +0000");
}

QDateTime PostFileDate::dateWithString(QStringView text)
{
    const std::u16string_view units(text.utf16(), size_t(text.size()));
    const bool isWest = DigitForm::fits(units, "0000-00-00 00:00:00 -0000");
    if (!isWest && !DigitForm::fits(units, "0000-00-00 00:00:00 +0000"))
        return {};
    const auto pair = [units](size_t at) { return DigitForm::number(units, at, 2); };
    const QDate day(DigitForm::number(units, 0, 4), pair(5), pair(8));
    const QTime time(pair(11), pair(14), pair(17));
    if (!day.isValid() || !time.isValid())
        return {};
    const int offset = (pair(21) * 60 + pair(23)) * 60;
    return QDateTime(day, time, Qt::UTC).addSecs(isWest ? offset : -offset);
}
