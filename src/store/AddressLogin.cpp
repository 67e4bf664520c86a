#include "store/AddressLogin.h"

#include <QRegularExpression>
#include <QUrl>

std::optional<AddressLogin> AddressLogin::takenFrom(QString &address)
{
    // By hand, since an address need not have a scheme, and the rest is to stay as it was typed.
    static const QRegularExpression login(
        QStringLiteral("^((?:[a-z][a-z0-9+.-]*:)?//)?([^/?#]*)@"), QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = login.match(address);
    if (!match.hasMatch())
        return std::nullopt;
    address.remove(match.capturedStart(2), match.capturedLength(2) + 1);
    const QString found = match.captured(2);
    const auto decoded = [](const QString &text) { return QUrl::fromPercentEncoding(text.toUtf8()); };
    return AddressLogin{decoded(found.section(u':', 0, 0)), decoded(found.section(u':', 1))};
}
