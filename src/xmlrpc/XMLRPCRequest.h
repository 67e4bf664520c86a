#pragma once

#include "xmlrpc/XMLRPCDefaultEncoder.h"

#include <QNetworkRequest>
#include <QUrl>
#include <memory>

/// One call: an HTTP POST to `URL` with the document of its encoder.
class XMLRPCRequest {
public:
    explicit XMLRPCRequest(const QUrl &url);
    XMLRPCRequest(const QUrl &url, std::unique_ptr<XMLRPCEncoder> encoder);

    QUrl URL() const { return m_request.url(); }
    void setURL(const QUrl &url) { m_request.setUrl(url); }
    QString userAgent() const;
    void setUserAgent(const QString &userAgent); ///< a null text clears it
    void setEncoder(std::unique_ptr<XMLRPCEncoder> encoder); ///< takes over name and parameters of the old one
    void setMethod(const QString &method);
    void setMethod(const QString &method, XMLRPCArray parameters);
    QString method() const;
    const XMLRPCArray &parameters() const;
    double timeout() const { return m_timeout; } ///< seconds; 240 after construction
    void setTimeoutInterval(double seconds) { m_timeout = seconds; }
    void setValueForHTTPHeaderField(const QByteArray &value, const QByteArray &field);

    /// The document in UTF-8.
    QByteArray body() const;
    /// The request with its headers, for a body of this length. `defaultUserAgent` serves a request whose own was
    /// cleared.
    QNetworkRequest request(qsizetype bodyLength, const QString &defaultUserAgent = {}) const;

private:
    QNetworkRequest m_request;
    std::unique_ptr<XMLRPCEncoder> m_encoder;
    double m_timeout = 240.0;
};
using RequestPtr = std::shared_ptr<XMLRPCRequest>;
