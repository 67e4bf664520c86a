#pragma once

#include "xmlrpc/XMLRPCValue.h"

/// Turns a method name and parameters into a methodCall document.
class XMLRPCEncoder {
public:
    virtual ~XMLRPCEncoder() = default;
    virtual QByteArray encode() const = 0; ///< the whole document in UTF-8
    virtual void setMethod(const QString &method, XMLRPCArray parameters) = 0;
    virtual QString method() const = 0;
    virtual const XMLRPCArray &parameters() const = 0;
};

class XMLRPCDefaultEncoder : public XMLRPCEncoder {
public:
    QByteArray encode() const override;
    void setMethod(const QString &method, XMLRPCArray parameters) override;
    QString method() const override { return m_method; }
    const XMLRPCArray &parameters() const override { return m_parameters; }

private:
    QString m_method;
    XMLRPCArray m_parameters;
};
