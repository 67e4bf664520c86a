#pragma once

#include "xmlrpc/XMLRPCValue.h"

/// The blog's side of the protocol. Calls are read by other means than the program's, so that a fault in its writing
/// shows.
namespace XMLRPCDocuments {
struct MethodCall {
    QString method;
    XMLRPCArray parameters;
    QString error; ///< what is wrong with the document; null when nothing is
};
MethodCall parseCall(const QByteArray &document);
QByteArray response(const XMLRPCValue &value);
QByteArray fault(int code, const QString &text);
/// A value as one line to compare with: ["", 5, {"key": @20240301T10:00:00, "bits": <3 bytes>}].
QString described(const XMLRPCValue &value);
} // namespace XMLRPCDocuments
