#include "xmlrpc/ReplyScalars.h"

#include "text/DigitForm.h"

#include <QDate>
#include <QTime>
#include <charconv>
#include <limits>

namespace {
bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
} // namespace

std::string_view ReplyScalars::trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

QString ReplyScalars::string(std::string_view text)
{
    if (text.empty())
        return QStringLiteral("");
    const QString string = QString::fromUtf8(text.data(), qsizetype(text.size()));
    return string.front().isSpace() || string.back().isSpace() ? string.trimmed() : string;
}

qint64 ReplyScalars::integer(std::string_view text)
{
    if (text.size() > 1 && text.front() == '+' && isDigit(text[1]))
        text.remove_prefix(1);
    qint64 number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc::result_out_of_range)
        return number;
    return text.front() == '-' ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
}

double ReplyScalars::number(std::string_view text)
{
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    // Words such as "nan" and "inf" are numbers to the library, but not to a blog.
    if (text.find_first_of("0123456789") > text.find_first_not_of("-."))
        return 0;
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

QDateTime ReplyScalars::date(std::string_view text)
{
    if (!text.empty() && text.back() == 'Z')
        text.remove_suffix(1);
    const bool isExtended = DigitForm::fits(text, "0000-00-00T00:00:00");
    if (!isExtended && !DigitForm::fits(text, "00000000T00:00:00"))
        return {};
    const size_t dash = isExtended ? 1 : 0;
    const auto pair = [text](size_t at) { return DigitForm::number(text, at, 2); };
    const size_t time = 9 + 2 * dash;
    const QDate date(DigitForm::number(text, 0, 4), pair(4 + dash), pair(6 + 2 * dash));
    const QTime moment(pair(time), pair(time + 3), pair(time + 6));
    return date.isValid() && moment.isValid() ? QDateTime(date, moment, Qt::UTC) : QDateTime();
}
