#include "xmlrpc/XMLRPCRequest.h"

XMLRPCRequest::XMLRPCRequest(const QUrl &url)
    : m_request(url)
{
    m_request.setRawHeader("User-Agent", "Zalmo");
    m_request.setRawHeader("Content-Type", "text/xml");
    m_request.setRawHeader("Accept", "text/xml");
}

void XMLRPCRequest::setMethod(const QString &method, XMLRPCArray parameters)
{
    m_encoder.setMethod(method, std::move(parameters));
}

bool XMLRPCRequest::mayBeRepeated() const
{
    return method().section(u'.', 1).startsWith(u"get");
}

QNetworkRequest XMLRPCRequest::request(qsizetype bodyLength) const
{
    QNetworkRequest request = m_request;
    request.setRawHeader("Content-Length", QByteArray::number(bodyLength));
    return request;
}
