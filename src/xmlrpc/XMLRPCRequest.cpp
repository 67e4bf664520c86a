#include "xmlrpc/XMLRPCRequest.h"

namespace {
const QByteArray UserAgentField = QByteArrayLiteral("User-Agent");
const QByteArray DocumentType = QByteArrayLiteral("text/xml");
} // namespace

XMLRPCRequest::XMLRPCRequest(const QUrl &url)
    : XMLRPCRequest(url, std::make_unique<XMLRPCDefaultEncoder>())
{
}

XMLRPCRequest::XMLRPCRequest(const QUrl &url, std::unique_ptr<XMLRPCEncoder> encoder)
    : m_request(url)
    , m_encoder(std::move(encoder))
{
    setUserAgent(QStringLiteral("Zalmo"));
}

QString XMLRPCRequest::userAgent() const
{
    return QString::fromUtf8(m_request.rawHeader(UserAgentField));
}

void XMLRPCRequest::setUserAgent(const QString &userAgent)
{
    // A null value takes the header away.
    m_request.setRawHeader(UserAgentField, userAgent.isNull() ? QByteArray() : userAgent.toUtf8());
}

void XMLRPCRequest::setEncoder(std::unique_ptr<XMLRPCEncoder> encoder)
{
    encoder->setMethod(m_encoder->method(), m_encoder->parameters());
    m_encoder = std::move(encoder);
}

void XMLRPCRequest::setMethod(const QString &method)
{
    m_encoder->setMethod(method, {});
}

void XMLRPCRequest::setMethod(const QString &method, XMLRPCArray parameters)
{
    m_encoder->setMethod(method, std::move(parameters));
}

QString XMLRPCRequest::method() const
{
    return m_encoder->method();
}

const XMLRPCArray &XMLRPCRequest::parameters() const
{
    return m_encoder->parameters();
}

void XMLRPCRequest::setValueForHTTPHeaderField(const QByteArray &value, const QByteArray &field)
{
    m_request.setRawHeader(field, value);
}

QByteArray XMLRPCRequest::body() const
{
    return m_encoder->encode();
}

QNetworkRequest XMLRPCRequest::request(qsizetype bodyLength, const QString &defaultUserAgent) const
{
    QNetworkRequest request = m_request;
    request.setRawHeader(QByteArrayLiteral("Content-Type"), DocumentType);
    request.setRawHeader(QByteArrayLiteral("Content-Length"), QByteArray::number(bodyLength));
    request.setRawHeader(QByteArrayLiteral("Accept"), DocumentType);
    if (!request.hasRawHeader(UserAgentField) && !defaultUserAgent.isEmpty())
        request.setRawHeader(UserAgentField, defaultUserAgent.toUtf8());
    return request;
}
