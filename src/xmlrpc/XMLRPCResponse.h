#pragma once

#include "platform/ZLError.h"
#include "xmlrpc/XMLRPCValue.h"

#include <memory>

/// A parsed reply: its value tree and whether it is a fault. Immutable; made on any thread.
class XMLRPCResponse {
public:
    /// `charset` is the character set that the HTTP reply names; empty: UTF-8. Null when the bytes are valid neither in
    /// UTF-8 nor in it. A document that is malformed, nested too deep or too large gives a response without object, and
    /// a log line.
    static std::shared_ptr<const XMLRPCResponse> fromData(
        const QByteArray &data, const QByteArray &charset = {}, const QDateTime &date = {});

    bool isFault() const { return m_isFault; } ///< a whole one; a fault that breaks off is an unusable reply
    qint64 faultCode() const; ///< 0 when this is no fault
    QString faultString() const;
    const XMLRPCValue &object() const { return m_object; } ///< absent for an unusable reply
    const QDateTime &date() const { return m_date; } ///< when the host answered; invalid when it does not tell
    /// What was wrong with a reply without object.
    QString parseError() const { return m_parseError; }

private:
    XMLRPCResponse() = default;
    bool scan(QByteArrayView utf8);
    void parse(QByteArrayView utf8);
    XMLRPCValue m_object;
    QString m_parseError;
    QDateTime m_date;
    bool m_isFault = false;
};
using ResponsePtr = std::shared_ptr<const XMLRPCResponse>;
