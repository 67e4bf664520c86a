#include "xmlrpc/XMLRPCResponse.h"

#include <QLoggingCategory>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    QLoggingCategory::setFilterRules(QStringLiteral("zalmo.info=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray reply(reinterpret_cast<const char *>(data), qsizetype(size));
    for (const char *charset : {"", "iso-8859-1", "utf-16"}) {
        const ResponsePtr response = XMLRPCResponse::fromData(reply, charset);
        if (response && !response->parseError().isNull() && !response->object().isAbsent())
            __builtin_trap();
        if (response)
            static_cast<void>(response->description());
    }
    return 0;
}
