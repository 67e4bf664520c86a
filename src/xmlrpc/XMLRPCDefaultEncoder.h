#pragma once

#include "xmlrpc/XMLRPCValue.h"

/// Turns a method name and parameters into a methodCall document.
class XMLRPCDefaultEncoder {
public:
    QByteArray encode() const; ///< the whole document in UTF-8
    void setMethod(const QString &method, XMLRPCArray parameters);
    QString method() const { return m_method; }
    const XMLRPCArray &parameters() const { return m_parameters; }

private:
    QString m_method;
    XMLRPCArray m_parameters;
};
