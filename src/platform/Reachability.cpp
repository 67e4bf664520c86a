#include "platform/Reachability.h"

#include <QHostAddress>
#include <QNetworkInformation>

namespace {

/// Where the desktop offers no backend the program counts as online.
class SystemReachability : public Reachability {
public:
    using Reachability::Reachability;

    bool isReachable() const override
    {
        const auto *information = QNetworkInformation::instance();
        return !information || information->reachability() != QNetworkInformation::Reachability::Disconnected;
    }

    void startNotifier() override
    {
        if (!QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability))
            return;
        m_wasReachable = isReachable();
        connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this, [this] {
            if (isReachable() == m_wasReachable)
                return;
            m_wasReachable = !m_wasReachable;
            Q_EMIT m_wasReachable ? becameReachable() : becameUnreachable();
        });
    }

private:
    bool m_wasReachable = true;
};

bool isLoopback(const QString &host)
{
    return host == QLatin1String("localhost") || host.endsWith(QLatin1String(".localhost"))
        || QHostAddress(host).isLoopback();
}

} // namespace

bool Reachability::isReachable(const QUrl &blog) const
{
    return isLoopback(blog.host()) || isReachable();
}

Reachability *makeSystemReachability(QObject *parent)
{
    return new SystemReachability(parent);
}
