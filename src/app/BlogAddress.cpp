#include "app/BlogAddress.h"

namespace {

bool isWeb(const QUrl &url)
{
    return (url.scheme() == u"http" || url.scheme() == u"https") && !url.host().isEmpty();
}

QString withoutExtras(const QUrl &url)
{
    return url.toString(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
}

/// What is left of an address when all that may differ is gone.
QString comparable(const QString &text)
{
    const QUrl url(text);
    QString host = url.host().toLower();
    if (host.startsWith(u"www."))
        host.remove(0, 4);
    const int usual = url.scheme() == u"https" ? 443 : 80;
    const int port = url.port(usual);
    QString path = url.path();
    while (path.endsWith(u'/'))
        path.chop(1);
    return host + (port == usual ? QString() : u":%1"_qs.arg(port)) + path;
}

} // namespace

std::optional<BlogAddress> BlogAddress::typed(const QString &text)
{
    const QString trimmed = text.trimmed();
    BlogAddress address;
    address.hasScheme =
        trimmed.startsWith(u"http://", Qt::CaseInsensitive) || trimmed.startsWith(u"https://", Qt::CaseInsensitive);
    if (!address.hasScheme && trimmed.contains(u"://"))
        return std::nullopt;
    const QUrl url(address.hasScheme ? trimmed : u"https://"_qs + trimmed, QUrl::StrictMode);
    if (!url.isValid() || !isWeb(url))
        return std::nullopt;
    address.url = withoutExtras(url);
    address.username = url.userName();
    return address;
}

QString BlogAddress::overHttp(const QString &url)
{
    QUrl plain(url);
    plain.setScheme(u"http"_qs);
    return plain.toString();
}

bool BlogAddress::isSameBlog(const QString &one, const QString &other)
{
    return comparable(one) == comparable(other);
}

bool BlogAddress::isSafer(const QString &one, const QString &other)
{
    return QUrl(one).scheme() == u"https" && QUrl(other).scheme() != u"https";
}

QString BlogAddress::host(const QString &text)
{
    const QUrl url(text);
    return url.port() == -1 ? url.host() : u"%1:%2"_qs.arg(url.host()).arg(url.port());
}

QString BlogAddress::toldOrTyped(const QString &told, const QString &typed, const QList<AccountPtr> &accounts)
{
    const QUrl url(told, QUrl::StrictMode);
    const bool isElsewhere = host(told) != host(typed);
    if (!url.isValid() || !isWeb(url) || isElsewhere || isSafer(typed, told) || accountAt(told, accounts))
        return typed;
    return withoutExtras(url);
}

AccountPtr BlogAddress::accountAt(const QString &url, const QList<AccountPtr> &accounts)
{
    const auto found = std::find_if(
        accounts.begin(), accounts.end(), [&](const AccountPtr &account) { return isSameBlog(account->url, url); });
    return found == accounts.end() ? nullptr : *found;
}
