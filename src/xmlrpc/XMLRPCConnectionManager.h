#pragma once

#include "platform/ZLError.h"
#include "xmlrpc/XMLRPCRequest.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QHash>
#include <QNetworkAccessManager>
#include <QObject>
#include <QThreadPool>
#include <memory>

class XMLRPCConnection;

/// Hears how one call went. The connection keeps it alive until then.
class XMLRPCConnectionDelegate {
public:
    virtual ~XMLRPCConnectionDelegate() = default;
    /// `response` is null when the reply could not even be decoded.
    virtual void didReceiveResponse(const RequestPtr &request, const ResponsePtr &response) = 0;
    virtual void didFailWithError(const RequestPtr &request, const ZLError &error) = 0;
    /// `progress` from 0 to 1.
    virtual void didSendBodyData(const RequestPtr &, float /*progress*/) { }
};

/// The registry of connections, by identifier. Failures, empty replies and 304 remove an entry; after a delivered
/// response it stays, emptied, until closeConnections(), so the registry does not count the transfers under way. As
/// intended, such an entry would go as well.
class XMLRPCConnectionManager : public QObject {
    Q_OBJECT
public:
    explicit XMLRPCConnectionManager(QNetworkAccessManager &network, QObject *parent = nullptr);
    ~XMLRPCConnectionManager() override;

    /// Starts the call and gives its identifier. The document is encoded on a worker when it carries binary data.
    QString spawnConnectionWithXMLRPCRequest(
        const RequestPtr &request, std::shared_ptr<XMLRPCConnectionDelegate> delegate);
    QStringList activeConnectionIdentifiers() const;
    int numberOfActiveConnections() const { return int(m_connections.size()); }
    XMLRPCConnection *connectionForIdentifier(const QString &identifier) const;
    void closeConnectionForIdentifier(const QString &identifier);
    void closeConnections();

    /// Goes with requests whose own user agent was cleared.
    void setDefaultUserAgent(const QString &userAgent) { m_defaultUserAgent = userAgent; }
    QString defaultUserAgent() const { return m_defaultUserAgent; }
    QNetworkAccessManager &network() const { return m_network; }
    /// Where replies are parsed and uploads encoded; its jobs report to the manager's thread.
    QThreadPool &parsingQueue() { return m_parsingQueue; }

private:
    QNetworkAccessManager &m_network;
    QString m_defaultUserAgent;
    QHash<QString, XMLRPCConnection *> m_connections;
    QThreadPool m_parsingQueue; // the last member: it waits for its jobs, which post to this object
};
