#include "text/PlainXML.h"

#include <cstring>

const PlainXML::Reference *PlainXML::reference(QByteArrayView bytes)
{
    static constexpr Reference references[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&amp;", '&'}, {"&apos;", '\''}};
    for (const Reference &reference : references) {
        // Not startsWith(), so that the compiler makes one comparison of numbers of each row.
        const qsizetype length = reference.text.size();
        if (bytes.size() >= length && std::memcmp(bytes.data(), reference.text.data(), size_t(length)) == 0)
            return &reference;
    }
    return nullptr;
}
