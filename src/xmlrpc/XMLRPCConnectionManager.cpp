#include "xmlrpc/XMLRPCConnectionManager.h"

#include "xmlrpc/XMLRPCConnection.h"

XMLRPCConnectionManager::XMLRPCConnectionManager(QNetworkAccessManager &network, QObject *parent)
    : QObject(parent)
    , m_network(network)
{
}

XMLRPCConnectionManager::~XMLRPCConnectionManager()
{
    closeConnections();
}

QString XMLRPCConnectionManager::spawnConnectionWithXMLRPCRequest(
    const RequestPtr &request, std::shared_ptr<XMLRPCConnectionDelegate> delegate)
{
    auto *connection = new XMLRPCConnection(request, std::move(delegate), *this);
    const QString identifier = connection->identifier();
    m_connections.insert(identifier, connection);
    connection->start();
    return identifier;
}

QStringList XMLRPCConnectionManager::activeConnectionIdentifiers() const
{
    return m_connections.keys();
}

void XMLRPCConnectionManager::closeConnectionForIdentifier(const QString &identifier)
{
    XMLRPCConnection *connection = m_connections.take(identifier);
    if (!connection)
        return;
    connection->cancel();
    connection->deleteLater(); // it may be the one that calls
}

void XMLRPCConnectionManager::closeConnections()
{
    const QStringList identifiers = m_connections.keys();
    for (const QString &identifier : identifiers)
        closeConnectionForIdentifier(identifier);
}
