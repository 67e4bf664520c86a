#pragma once

#include "xmlrpc/XMLRPCDefaultEncoder.h"

#include <QNetworkRequest>
#include <memory>

/// One call: an HTTP POST to `URL` with the document of its encoder.
class XMLRPCRequest {
public:
    explicit XMLRPCRequest(const QUrl &url);

    QUrl URL() const { return m_request.url(); }
    void setMethod(const QString &method, XMLRPCArray parameters = {});
    QString method() const { return m_encoder.method(); }
    const XMLRPCArray &parameters() const { return m_encoder.parameters(); }
    double timeout() const { return m_timeout; } ///< seconds; 240 after construction
    void setTimeoutInterval(double seconds) { m_timeout = seconds; }
    /// Whether the call only reads, so that a second one does no harm. A second deletion, say, would empty the trash.
    bool mayBeRepeated() const;

    /// The document in UTF-8.
    QByteArray body() const { return m_encoder.encode(); }
    /// The request with its headers, for a body of this length.
    QNetworkRequest request(qsizetype bodyLength) const;

private:
    QNetworkRequest m_request;
    XMLRPCDefaultEncoder m_encoder;
    double m_timeout = 240.0;
};
using RequestPtr = std::shared_ptr<XMLRPCRequest>;
