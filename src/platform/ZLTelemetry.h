#pragma once

#include <QString>
#include <QUrl>
#include <QVariantMap>

class QNetworkAccessManager;
class ZLDefaults;

/// Anonymous usage counters and events. While the default "sendAnonymousData" is off, as it is at first, nothing is
/// counted or sent; and nothing goes anywhere until a deployer names a collector. The program reads nothing of it back.
class ZLTelemetry {
public:
    /// Events go to `collector` as JSON by HTTP POST; with an empty address they go nowhere.
    ZLTelemetry(ZLDefaults &defaults, QNetworkAccessManager &network, const QUrl &collector = configuredCollector());
    static QUrl configuredCollector();

    void trackEvent(const QString &name, const QVariantMap &dimensions = {});
    /// What is known of the anonymous user lasts from one start to the next.
    void setUserProperty(const QString &key, const QVariant &value);
    QVariant userProperty(const QString &key) const;
    void incrementUserProperty(const QString &key, int by = 1);

private:
    bool isEnabled() const;
    void send(const QVariantMap &message);

    ZLDefaults &m_defaults;
    QNetworkAccessManager &m_network;
    QUrl m_collector;
};
