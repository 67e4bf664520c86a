#include "app/FaviconLookup.h"

#include "platform/ZLAtomicFile.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace {

constexpr int lookupTimeoutMs = 10'000;
constexpr qint64 largestIcon = 1024LL * 1024;

/// Whether the bytes begin as one of the picture formats that icons come in.
bool looksLikePicture(const QByteArray &head)
{
    static const QList<QByteArray> signatures{QByteArrayLiteral("\x89PNG"), QByteArray("\0\0\1\0", 4),
        QByteArrayLiteral("GIF8"), QByteArrayLiteral("\xff\xd8\xff"), QByteArrayLiteral("BM"),
        QByteArrayLiteral("<svg")};
    const bool isWebP = head.startsWith("RIFF") && head.mid(8, 4) == "WEBP";
    return isWebP || std::any_of(signatures.begin(), signatures.end(), [&head](const QByteArray &signature) {
        return head.startsWith(signature);
    });
}

/// The address as the service may know it. A login in it is between the user and the blog.
QString publicAddress(const QString &address)
{
    QUrl url(address);
    if (url.userInfo().isEmpty())
        return address;
    url.setUserInfo({});
    return url.toString();
}

} // namespace

FaviconLookup::FaviconLookup(AppEnvironment &environment)
    : m_environment(environment)
{
}

QString FaviconLookup::usableFaviconPath(const QString &blogName) const
{
    const QString path = m_environment.platform.files.faviconPathWithBlogName(blogName);
    QFile file(path);
    if (path.isNull() || !file.open(QIODevice::ReadOnly))
        return {};
    return looksLikePicture(file.read(16)) ? path : QString();
}

void FaviconLookup::getFavIconForAccount(const AccountPtr &account)
{
    const ZLPlatform &platform = m_environment.platform;
    if (platform.faviconService.isEmpty() || !platform.reachability.isReachable() || m_underWay.contains(account))
        return;
    QNetworkRequest request(
        QUrl(u"%1/%2?defaulticon=none"_qs.arg(platform.faviconService, publicAddress(account->url))));
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setTransferTimeout(lookupTimeoutMs);
    m_underWay.append(account);
    QNetworkReply *reply = platform.network.get(request);
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received) {
        if (received > largestIcon)
            reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [this, reply, account] { didFinish(reply, account); });
}

void FaviconLookup::didFinish(QNetworkReply *reply, const AccountPtr &account)
{
    reply->deleteLater();
    // The alias is asked for now: the user may have changed it since the start.
    const QString path = m_environment.platform.files.faviconPathWithBlogName(account->alias());
    const QByteArray icon = reply->readAll();
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (path.isNull() || reply->error() != QNetworkReply::NoError || status != 200 || icon.isEmpty()) {
        ZLLog(u"No data OR statusCode!= 200"_qs);
        storeBuiltInIcon(path);
    } else if (const Result<void> written = ZLAtomicFile::write(path, icon); !written) {
        ZLLog(u"error saving favicon: %1"_qs.arg(written.error().description));
    } else {
        // Still marked as under way: what the service sent may be no picture, and the refreshed selector would ask
        // for it again and again.
        Q_EMIT didStoreFavicon(account);
    }
    m_underWay.removeOne(account);
}

void FaviconLookup::storeBuiltInIcon(const QString &path)
{
    QFile builtIn(u":/wordpress_favicon.png"_qs);
    if (path.isNull() || !builtIn.open(QIODevice::ReadOnly))
        return;
    if (const Result<void> written = ZLAtomicFile::write(path, builtIn.readAll()); !written)
        ZLLog(u"error saving favicon: %1"_qs.arg(written.error().description));
}
