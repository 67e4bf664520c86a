#include "platform/ZLTelemetry.h"

#include "platform/ZLDefaults.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <ZalmoServices.h>

namespace {
const QString userKey = QStringLiteral("telemetryUser");
}

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
    if (!isEnabled())
        return;
    QVariantMap user = m_defaults.objectForKey(userKey).toMap();
    user.insert(key, value);
    m_defaults.setObjectForKey(user, userKey);
    send({{QStringLiteral("user"), user}});
}

QVariant ZLTelemetry::userProperty(const QString &key) const
{
    return m_defaults.objectForKey(userKey).toMap().value(key);
}

void ZLTelemetry::incrementUserProperty(const QString &key, int by)
{
    setUserProperty(key, userProperty(key).toInt() + by);
}

void ZLTelemetry::send(const QVariantMap &message)
{
    if (m_collector.isEmpty() || !isEnabled())
        return;
    QNetworkRequest request(m_collector);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    QNetworkReply *reply = m_network.post(request, QJsonDocument(QJsonObject::fromVariantMap(message)).toJson());
    // A side road: nobody waits for the answer, and its failure is not seen.
    QObject::connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
}
