#include "text/StoredText.h"

#include <QRegularExpression>

namespace {
QString essence(QString text)
{
    static const QRegularExpression noopener(
        QStringLiteral(R"( rel="noopener(?: noreferrer)?"| noopener(?: noreferrer)?(?="))"));
    return text.remove(noopener).trimmed().replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}
} // namespace

bool sameStoredText(const QString &one, const QString &other)
{
    return essence(one) == essence(other);
}
