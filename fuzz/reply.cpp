#include "xmlrpc/PlainReplyScanner.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QLoggingCategory>
#include <cstdlib>

namespace {
/// What the scanner reads, the parser reads as the same.
void requireAgreement(QByteArrayView reply)
{
    const std::optional<PlainReplyScanner::Reply> scanned = PlainReplyScanner(reply).scan();
    if (!scanned)
        return;
    XMLRPCEventBasedParser parser(reply);
    if (!(parser.parse() == scanned->object) || !parser.parserError().isNull() || parser.isFault() != scanned->isFault)
        std::abort();
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    QLoggingCategory::setFilterRules(QStringLiteral("zalmo.info=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray reply(reinterpret_cast<const char *>(data), qsizetype(size));
    requireAgreement(reply);
    for (const char *charset : {"", "iso-8859-1", "utf-16"}) {
        const ResponsePtr response = XMLRPCResponse::fromData(reply, charset);
        if (response && !response->parseError().isNull() && !response->object().isAbsent())
            __builtin_trap();
    }
    return 0;
}
