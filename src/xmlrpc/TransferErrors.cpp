#include "xmlrpc/TransferErrors.h"

#include <QNetworkReply>

namespace {
// The numbers are those of the platform that the error domain comes from; callers tell some of them apart.
enum Code {
    TimedOut = -1001,
    UnsupportedAddress = -1002,
    CannotFindHost = -1003,
    CannotConnectToHost = -1004,
    ConnectionLost = -1005,
    TooManyRedirects = -1007,
    NotConnected = -1009,
    RedirectToOtherHost = -1010,
    CannotParseResponse = -1017,
    CannotBeSentAgain = -1021,
    TooLarge = -1103,
    NoSecureConnection = -1200,
};

const QString NetworkDomain = QStringLiteral("NSURLErrorDomain");
const QString StatusDomain = QStringLiteral("HTTP");
constexpr int FirstServerError = 500;

ZLError network(Code code, const QString &description)
{
    return {NetworkDomain, code, description};
}

Code codeOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::HostNotFoundError:
        return CannotFindHost;
    case QNetworkReply::TimeoutError:
        return TimedOut;
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return CannotConnectToHost;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError: // an unreachable network or host
        return NotConnected;
    case QNetworkReply::SslHandshakeFailedError:
        return NoSecureConnection;
    case QNetworkReply::ProtocolUnknownError:
        return UnsupportedAddress;
    case QNetworkReply::ContentReSendError:
        return CannotBeSentAgain;
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::UnknownContentError: // packed in a way that cannot be unpacked
        return CannotParseResponse;
    default:
        return ConnectionLost;
    }
}

QString wordsFor(Code code)
{
    switch (code) {
    case CannotFindHost:
        return QStringLiteral("%1 cannot be found. Please check the address and your connection to the Internet.");
    case CannotConnectToHost:
        return QStringLiteral(
            "%1 does not take the connection. Please try again later, or check the address and your proxy.");
    case NotConnected:
        return QStringLiteral("%1 cannot be reached. Please check your connection to the Internet.");
    case NoSecureConnection:
        return QStringLiteral("There is no secure connection to %1. Its certificate may have run out or be another's: "
                              "please check the date of this computer, or ask those who run %1.");
    case CannotBeSentAgain:
        return QStringLiteral("%1 closed the connection without an answer. What was sent may have arrived, so it was "
                              "not sent a second time.");
    case CannotParseResponse:
        return QStringLiteral("The answer of %1 could not be read. Please try again later; if that does not help, one "
                              "of its plug-ins may be in the way.");
    default:
        return QStringLiteral("The connection to %1 broke off before its whole answer was here. Please try again.");
    }
}

QString wordsForStatus(int status)
{
    switch (status) {
    case 401:
    case 407:
        return QStringLiteral("%1 wants a login of its own in front of the blog, which Zalmo does not give");
    case 403:
        return QStringLiteral("%1 lets nobody in here. A firewall or a security plug-in may block XML-RPC");
    case 404:
    case 410:
        return QStringLiteral("%1 has nothing at this address. Please check it");
    case 405:
        return QStringLiteral("%1 does not take calls at this address. XML-RPC may be turned off there");
    case 413:
        return QStringLiteral("%1 does not take anything as large as this");
    case 429:
        return QStringLiteral("%1 takes no more calls for now. Please try again in some minutes");
    case 502:
    case 503:
    case 504:
        return QStringLiteral("%1 is down or too busy. Please try again later");
    default:
        return status < FirstServerError ? QStringLiteral("%1 refuses the call")
                                         : QStringLiteral("%1 had an error of its own. Please try again later");
    }
}
} // namespace

ZLError TransferErrors::ofReply(const QNetworkReply &reply)
{
    const Code code = codeOf(reply.error());
    if (code == TimedOut)
        return timedOut();
    return code == UnsupportedAddress ? unsupported(reply.url())
                                      : network(code, wordsFor(code).arg(reply.url().host()));
}

ZLError TransferErrors::ofStatus(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QString words = wordsForStatus(status) + QStringLiteral(" (HTTP status %2).");
    return {StatusDomain, status, words.arg(reply.url().host()).arg(status)};
}

ZLError TransferErrors::timedOut()
{
    return network(TimedOut, QStringLiteral("The request timed out."));
}

ZLError TransferErrors::unsupported(const QUrl &url)
{
    return network(UnsupportedAddress,
        QStringLiteral("This is no address on the web: %1").arg(url.toDisplayString(QUrl::RemoveUserInfo)));
}

ZLError TransferErrors::tooLarge(const QUrl &url, qint64 limit)
{
    return network(TooLarge,
        QStringLiteral("The answer of %1 is too large: it has more than %2 MB.").arg(url.host()).arg(limit >> 20));
}

ZLError TransferErrors::unreadable(const QUrl &url)
{
    return network(CannotParseResponse, wordsFor(CannotParseResponse).arg(url.host()));
}

ZLError TransferErrors::tooManyRedirects(const QUrl &url)
{
    return network(TooManyRedirects,
        QStringLiteral("%1 sends the call from one address to the next without an end. Please check the address.")
            .arg(url.host()));
}

ZLError TransferErrors::insecureRedirect(const QUrl &target)
{
    return network(NoSecureConnection,
        QStringLiteral("%1 leads from its secure address to one that is not. Your password was not sent there.")
            .arg(target.host()));
}

ZLError TransferErrors::redirectToOtherHost(const QUrl &from, const QUrl &target)
{
    return network(RedirectToOtherHost,
        QStringLiteral("%1 leads to another host, %2. Your password was not sent there. If the blog has moved, connect "
                       "it with its new address.")
            .arg(from.host(),
                target.host() + (target.port() == -1 ? QString() : u':' + QString::number(target.port()))));
}

bool TransferErrors::mayHaveHappened(const ZLError &error)
{
    if (error.domain == StatusDomain)
        return error.code >= FirstServerError;
    if (error.domain != NetworkDomain)
        return false;
    switch (error.code) {
    case TimedOut:
    case ConnectionLost:
    case CannotParseResponse:
    case CannotBeSentAgain:
    case TooLarge:
        return true;
    default:
        return false;
    }
}

bool TransferErrors::isSilence(const ZLError &error)
{
    const QList<int> codes{TimedOut, CannotConnectToHost, ConnectionLost, NotConnected, NoSecureConnection};
    return error.domain == NetworkDomain && codes.contains(error.code);
}

bool TransferErrors::isUnreadable(const ZLError &error)
{
    return error.domain == NetworkDomain && error.code == CannotParseResponse;
}
