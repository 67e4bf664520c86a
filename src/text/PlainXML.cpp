#include "text/PlainXML.h"

#include <algorithm>
#include <charconv>
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

PlainXML::Character PlainXML::numericReference(QByteArrayView bytes)
{
    constexpr qsizetype MaximumDigits = 8;
    if (!bytes.startsWith("&#"))
        return {};
    const bool isHexadecimal = bytes.sliced(2).startsWith('x');
    const QByteArrayView digits = bytes.sliced(isHexadecimal ? 3 : 2);
    const char *const limit = digits.data() + std::min(digits.size(), MaximumDigits);
    quint32 code = 0;
    const auto [end, error] = std::from_chars(digits.data(), limit, code, isHexadecimal ? 16 : 10);
    if (error != std::errc() || end == bytes.end() || *end != ';' || !XMLBytes::isAllowed(code))
        return {};
    return {code, end + 1 - bytes.data()};
}
