#include "engine/EditorRequestFilter.h"

#include "engine/EditorScheme.h"

#include <QHostAddress>
#include <algorithm>
#include <array>

namespace {
bool isOwnNetwork(const QHostAddress &address)
{
    static const std::array<std::pair<QHostAddress, int>, 10> networks{{
        {QHostAddress(QStringLiteral("0.0.0.0")), 8},
        {QHostAddress(QStringLiteral("10.0.0.0")), 8},
        {QHostAddress(QStringLiteral("100.64.0.0")), 10},
        {QHostAddress(QStringLiteral("127.0.0.0")), 8},
        {QHostAddress(QStringLiteral("169.254.0.0")), 16},
        {QHostAddress(QStringLiteral("172.16.0.0")), 12},
        {QHostAddress(QStringLiteral("192.168.0.0")), 16},
        {QHostAddress(QStringLiteral("::")), 127},
        {QHostAddress(QStringLiteral("fc00::")), 7},
        {QHostAddress(QStringLiteral("fe80::")), 10},
    }};
    bool isVersion4 = false; // also when it is written as one of version 6
    const quint32 version4 = address.toIPv4Address(&isVersion4);
    const QHostAddress plain = isVersion4 ? QHostAddress(version4) : address;
    return std::any_of(networks.begin(), networks.end(),
        [&plain](const auto &network) { return plain.isInSubnet(network.first, network.second); });
}

/// By what is written: a public name can still lead here, and no look-up can be waited for.
bool isOwnNetwork(const QString &host)
{
    const QHostAddress address(host);
    if (!address.isNull())
        return isOwnNetwork(address);
    const QString name = host.endsWith(u'.') ? host.chopped(1) : host;
    if (!name.contains(u'.'))
        return true;
    static const std::array<QLatin1String, 5> ends{QLatin1String(".localhost"), QLatin1String(".local"),
        QLatin1String(".internal"), QLatin1String(".lan"), QLatin1String(".home.arpa")};
    return std::any_of(ends.begin(), ends.end(), [&name](QLatin1String end) { return name.endsWith(end); });
}

int portOf(const QUrl &url)
{
    const int port = url.port();
    return port == 80 || port == 443 ? -1 : port; // a blog has its pictures at both
}
} // namespace

bool EditorRequestFilter::mayFetchPicture(const QUrl &url) const
{
    if (url.scheme() == u"data")
        return true;
    if (url.scheme() != u"http" && url.scheme() != u"https")
        return false;
    const bool isOfBlog = url.host() == m_blogURL.host() && portOf(url) == portOf(m_blogURL);
    return isOfBlog || !isOwnNetwork(url.host());
}

void EditorRequestFilter::interceptRequest(QWebEngineUrlRequestInfo &info)
{
    const QUrl url = info.requestUrl();
    if (url.scheme() == QLatin1String(EditorScheme::name))
        return;
    info.block(info.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeImage || !mayFetchPicture(url));
}
