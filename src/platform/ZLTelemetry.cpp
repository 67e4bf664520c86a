#include "platform/ZLTelemetry.h"

#include "platform/ZLDefaults.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <ZalmoServices.h>

ZLTelemetry::ZLTelemetry(ZLDefaults &defaults, QNetworkAccessManager &network, const QUrl &collector)
    : m_defaults(defaults)
    , m_network(network)
    , m_collector(collector)
{
}

QUrl ZLTelemetry::configuredCollector()
{
    return QUrl(QString::fromUtf16(ZalmoServices::telemetryCollector));
}

bool ZLTelemetry::isEnabled() const
{
    return m_defaults.boolForKey(QStringLiteral("sendAnonymousData"));
}

void ZLTelemetry::trackEvent(const QString &name, const QVariantMap &dimensions)
{
    send({{QStringLiteral("event"), name}, {QStringLiteral("dimensions"), dimensions}});
}

void ZLTelemetry::setUserProperty(const QString &key, const QVariant &value)
{
    m_user.insert(key, value);
    send({{QStringLiteral("user"), m_user}});
}

QVariant ZLTelemetry::userProperty(const QString &key) const
{
    return m_user.value(key);
}

void ZLTelemetry::incrementUserProperty(const QString &key, int by)
{
    setUserProperty(key, m_user.value(key).toInt() + by);
}

void ZLTelemetry::send(const QVariantMap &message)
{
    if (m_collector.isEmpty())
        return;
    QNetworkRequest request(m_collector);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    QNetworkReply *reply = m_network.post(request, QJsonDocument(QJsonObject::fromVariantMap(message)).toJson());
    // A side road: nobody waits for the answer, and its failure is not seen.
    QObject::connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
}
