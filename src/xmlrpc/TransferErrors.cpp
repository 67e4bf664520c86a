#include "xmlrpc/TransferErrors.h"

#include <QNetworkReply>

namespace {
// The numbers are those of the platform that the error domain comes from; callers tell some of them apart.
enum Code {
    Unknown = -1,
    TimedOut = -1001,
    UnsupportedAddress = -1002,
    CannotFindHost = -1003,
    CannotConnectToHost = -1004,
    ConnectionLost = -1005,
    TooManyRedirects = -1007,
    NotConnected = -1009,
    TooLarge = -1103,
    NoSecureConnection = -1200,
};

ZLError network(Code code, const QString &description)
{
    return {QStringLiteral("NSURLErrorDomain"), code, description};
}

Code codeOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return CannotFindHost;
    case QNetworkReply::TimeoutError:
        return TimedOut;
    case QNetworkReply::ConnectionRefusedError:
        return CannotConnectToHost;
    case QNetworkReply::RemoteHostClosedError:
        return ConnectionLost;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError: // an unreachable network or host
        return NotConnected;
    case QNetworkReply::SslHandshakeFailedError:
        return NoSecureConnection;
    case QNetworkReply::ProtocolUnknownError:
        return UnsupportedAddress;
    default:
        return Unknown;
    }
}
} // namespace

ZLError TransferErrors::ofReply(const QNetworkReply &reply)
{
    return network(codeOf(reply.error()), reply.errorString());
}

ZLError TransferErrors::ofStatus(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QString reason = reply.attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString().simplified();
    const QString code = QString::number(status);
    return {QStringLiteral("HTTP"), status,
        reason.isEmpty() ? QStringLiteral("The blog answered with HTTP status %1.").arg(code)
                         : QStringLiteral("The blog answered with HTTP status %1 (%2).").arg(code, reason)};
}

ZLError TransferErrors::timedOut()
{
    return network(TimedOut, QStringLiteral("The request timed out."));
}

ZLError TransferErrors::unsupported(const QUrl &url)
{
    return network(
        UnsupportedAddress, QStringLiteral("This is not the address of a blog: %1").arg(url.toDisplayString()));
}

ZLError TransferErrors::tooLarge(qint64 limit)
{
    return network(TooLarge, QStringLiteral("The blog's reply is too large: it has more than %1 MB.").arg(limit >> 20));
}

ZLError TransferErrors::tooManyRedirects(const QUrl &url)
{
    return network(TooManyRedirects, QStringLiteral("The address redirects too often: %1").arg(url.toDisplayString()));
}

ZLError TransferErrors::insecureRedirect(const QUrl &target)
{
    return network(NoSecureConnection,
        QStringLiteral("The blog redirects from a secure address to an insecure one: %1")
            .arg(target.toDisplayString()));
}
