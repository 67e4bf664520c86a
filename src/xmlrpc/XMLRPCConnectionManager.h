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

/// Hears how one call went: of a response or of a failure, once. The connection keeps it alive until then.
class XMLRPCConnectionDelegate {
public:
    virtual ~XMLRPCConnectionDelegate() = default;
    /// `response` is a fault or has an object.
    virtual void didReceiveResponse(const RequestPtr &request, const ResponsePtr &response) = 0;
    virtual void didFailWithError(const RequestPtr &request, const ZLError &error) = 0;
    /// The call goes on at another address of the same host.
    virtual void didRedirect(const QUrl & /*target*/) { }
    /// `progress` from 0 to 1.
    virtual void didSendBodyData(const RequestPtr &, float /*progress*/) { }
};

/// The connections under way, by identifier. An entry goes when its delegate has been told.
class XMLRPCConnectionManager : public QObject {
    Q_OBJECT
public:
    explicit XMLRPCConnectionManager(QNetworkAccessManager &network, QObject *parent = nullptr);
    ~XMLRPCConnectionManager() override;

    /// Starts the call and gives its identifier. The document is encoded on a worker when it carries binary data.
    QString spawnConnectionWithXMLRPCRequest(
        const RequestPtr &request, std::shared_ptr<XMLRPCConnectionDelegate> delegate);
    QStringList activeConnectionIdentifiers() const;
    void closeConnectionForIdentifier(const QString &identifier);
    void closeConnections();

    QNetworkAccessManager &network() const { return m_network; }
    /// Where replies are parsed and uploads encoded; its jobs report to the manager's thread.
    QThreadPool &parsingQueue() { return m_parsingQueue; }

private:
    QNetworkAccessManager &m_network;
    QHash<QString, XMLRPCConnection *> m_connections;
    QThreadPool m_parsingQueue; // the last member: it waits for its jobs, which post to this object
};
