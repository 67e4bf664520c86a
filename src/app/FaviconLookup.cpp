#include "app/FaviconLookup.h"

#include "platform/ZLAtomicFile.h"

#include <QCoroSignal>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>

namespace {

constexpr int lookupTimeoutMs = 10'000;
constexpr qint64 largestIcon = 1024LL * 1024;
constexpr int mostRedirects = 3;

/// Whether the bytes begin as one of the picture formats that icons come in. SVG is none of them: a drawing may name
/// files of this computer, and cost any time.
bool looksLikePicture(const QByteArray &head)
{
    static const QList<QByteArray> signatures{QByteArrayLiteral("\x89PNG"), QByteArray("\0\0\1\0", 4),
        QByteArrayLiteral("GIF8"), QByteArrayLiteral("\xff\xd8\xff"), QByteArrayLiteral("BM")};
    const bool isWebP = head.startsWith("RIFF") && head.mid(8, 4) == "WEBP";
    return isWebP || std::any_of(signatures.begin(), signatures.end(), [&head](const QByteArray &signature) {
        return head.startsWith(signature);
    });
}

/// Whether to go on from one address to the other: on the same host, and not from https down to http.
bool mayFollow(const QUrl &from, const QUrl &to)
{
    const bool isWeaker = from.scheme() == u"https" && to.scheme() != u"https";
    return from.host() == to.host() && !isWeaker && (to.scheme() == u"http" || to.scheme() == u"https");
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
    if (m_environment.platform.reachability.isReachable(QUrl(account->url)) && !m_underWay.contains(account))
        lookUp(account);
}

QCoro::Task<void> FaviconLookup::lookUp(AccountPtr account)
{
    const QPointer<FaviconLookup> self(this);
    m_underWay.append(account);
    const QUrl blog(account->url);
    QByteArray icon = co_await fetch(QUrl(account->url + u"/?favicon=1"_qs));
    if (self && icon.isEmpty()) {
        icon = co_await fetch(blog.resolved(QUrl(u"/favicon.ico"_qs)));
    }
    if (!self)
        co_return;
    store(account, icon);
    m_underWay.removeOne(account);
}

QCoro::Task<QByteArray> FaviconLookup::fetch(QUrl url)
{
    const QPointer<FaviconLookup> self(this);
    for (int hops = 0; self && hops <= mostRedirects; ++hops) {
        QNetworkRequest request(url);
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
        request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        request.setTransferTimeout(lookupTimeoutMs);
        QNetworkReply *reply = m_environment.platform.network.get(request);
        connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received) {
            if (received > largestIcon)
                reply->abort();
        });
        co_await qCoro(reply, &QNetworkReply::finished);
        reply->deleteLater();
        const QUrl target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (target.isEmpty()) {
            const QByteArray icon = reply->error() == QNetworkReply::NoError ? reply->readAll() : QByteArray();
            co_return looksLikePicture(icon) ? icon : QByteArray();
        }
        const QUrl next = url.resolved(target);
        if (!mayFollow(url, next))
            co_return QByteArray();
        url = next;
    }
    co_return QByteArray();
}

void FaviconLookup::store(const AccountPtr &account, const QByteArray &icon)
{
    QByteArray stored = icon;
    if (icon.isEmpty()) {
        ZLLog(u"No icon at “%1”"_qs.arg(account->alias()));
        QFile builtIn(u":/wordpress_favicon.png"_qs);
        if (builtIn.open(QIODevice::ReadOnly))
            stored = builtIn.readAll();
    }
    // The alias is asked for now: the user may have changed it since the start.
    const QString path = m_environment.platform.files.faviconPathWithBlogName(account->alias());
    if (path.isNull())
        return;
    if (const Result<void> written = ZLAtomicFile::write(path, stored); !written)
        ZLLog(u"error saving favicon: %1"_qs.arg(written.error().description));
    else if (!icon.isEmpty())
        Q_EMIT didStoreFavicon(account);
}
