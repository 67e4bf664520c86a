#include "model/PostFileDate.h"

#include <QTimeZone>

namespace {
constexpr QStringView form = u"0000-00-00 00:00:00 +0000";

bool hasForm(QStringView text)
{
    if (text.size() != form.size())
        return false;
    for (qsizetype at = 0; at < form.size(); ++at) {
        const QChar wanted = form[at];
        const QChar found = text[at];
        const bool isDigit = found >= u'0' && found <= u'9';
        const bool isSign = wanted == u'+' && found == u'-';
        if (wanted == u'0' ? !isDigit : found != wanted && !isSign)
            return false;
    }
    return true;
}

int number(QStringView text, qsizetype from, qsizetype length)
{
    int value = 0;
    for (const QChar digit : text.mid(from, length))
        value = value * 10 + digit.digitValue();
    return value;
}
} // namespace

QString PostFileDate::description(const QDateTime &date)
{
    if (!date.isValid())
        return {};
    return date.toUTC().toString(u"yyyy-MM-dd HH:mm:ss") + QLatin1String(" +0000");
}

QDateTime PostFileDate::dateWithString(QStringView text)
{
    if (!hasForm(text))
        return {};
    const QDate day(number(text, 0, 4), number(text, 5, 2), number(text, 8, 2));
    const QTime time(number(text, 11, 2), number(text, 14, 2), number(text, 17, 2));
    if (!day.isValid() || !time.isValid())
        return {};
    const int offset = (number(text, 21, 2) * 60 + number(text, 23, 2)) * 60;
    return QDateTime(day, time, Qt::UTC).addSecs(text[20] == u'-' ? offset : -offset);
}
