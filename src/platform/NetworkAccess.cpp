#include "platform/NetworkAccess.h"

#include "platform/ZLLog.h"

#include <QFile>
#include <QNetworkProxyFactory>

namespace {
constexpr int WatchInterval = 250; // milliseconds

/// What the system or the environment sets, with a buffered socket where there is no proxy. A plain connection without
/// a proxy gets an unbuffered one, which is read for as long as the host goes on sending: nothing else happens in the
/// thread meanwhile, an abort among it.
class BufferedRoads : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        QList<QNetworkProxy> roads = proxyForQuery(query);
        for (QNetworkProxy &road : roads) {
            if (road.type() == QNetworkProxy::NoProxy) {
                // To the socket this means the same.
                road = QNetworkProxy(QNetworkProxy::DefaultProxy);
                road.setCapabilities(QNetworkProxy::TunnelingCapability);
            }
        }
        return roads;
    }
};

/// The memory that the process has in use; 0 where the system does not tell.
qint64 bytesInUse()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray status = file.readAll();
    const QByteArray label = "VmRSS:";
    const qsizetype at = status.indexOf(label);
    return at < 0 ? 0 : status.mid(at + label.size(), 32).simplified().split(' ').first().toLongLong() * 1024;
}
} // namespace

NetworkAccess::NetworkAccess(qint64 mostUnseenBytes, QObject *parent)
    : QNetworkAccessManager(parent)
    , m_mostUnseenBytes(mostUnseenBytes)
{
    setProxyFactory(new BufferedRoads);
    m_watch.setInterval(WatchInterval);
    connect(&m_watch, &QTimer::timeout, this, &NetworkAccess::watchMemory);
}

QNetworkReply *NetworkAccess::createRequest(Operation operation, const QNetworkRequest &request, QIODevice *outgoing)
{
    QNetworkRequest bare = request;
    for (const auto attribute : {QNetworkRequest::AuthenticationReuseAttribute,
             QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute})
        bare.setAttribute(attribute, QNetworkRequest::Manual);
    QNetworkReply *reply = QNetworkAccessManager::createRequest(operation, bare, outgoing);
    m_running.append(reply);
    if (!m_watch.isActive()) {
        m_useBeforeGrowth = m_lastUse = bytesInUse();
        m_watch.start();
    }
    return reply;
}

void NetworkAccess::watchMemory()
{
    m_running.removeIf([](const auto &reply) { return !reply || reply->isFinished(); });
    if (m_running.isEmpty())
        return m_watch.stop();
    const qint64 use = bytesInUse();
    if (use < m_lastUse)
        m_useBeforeGrowth = use;
    m_lastUse = use;
    if (use - m_useBeforeGrowth <= m_mostUnseenBytes)
        return;
    m_useBeforeGrowth = use;
    ZLLog(
        QStringLiteral("The memory grew by %1 MB and never shrank, so all transfers end").arg(m_mostUnseenBytes >> 20));
    for (const QPointer<QNetworkReply> &reply : std::exchange(m_running, {})) {
        if (reply)
            reply->abort();
    }
}
