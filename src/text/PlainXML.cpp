#include "text/PlainXML.h"

const PlainXML::Reference *PlainXML::reference(QByteArrayView bytes)
{
    static constexpr Reference references[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&amp;", '&'}, {"&apos;", '\''}};
    for (const Reference &reference : references) {
        // The letter first: most of these comparisons fail.
        if (bytes.size() >= reference.text.size() && bytes[1] == reference.text[1] && bytes.startsWith(reference.text))
            return &reference;
    }
    return nullptr;
}
