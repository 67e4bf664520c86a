#pragma once

#include "text/MarkedBytes.h"
#include "text/XMLBytes.h"

/// XML of the plain form that programs write nearly always: tags with nothing but a name in them, and text with few
/// references. A reader of this form is several times faster than a parser; whatever else a text holds it leaves to the
/// parser, which decides on every error.
namespace PlainXML {
struct Reference {
    QByteArrayView text;
    char character;
};
/// The one of the five predefined references that these bytes begin with, or null.
const Reference *reference(QByteArrayView bytes);

struct Character {
    char32_t code = 0;
    qsizetype length = 0; ///< of the bytes that stand for it; 0 when there is none, or one that XML forbids
};
/// The character of the numeric reference that these bytes begin with.
Character numericReference(QByteArrayView bytes);

/// Walks over `xml` in UTF-8 and hands what it meets to the reader; false when a parser has to look. The reader has:
/// - bool takeTag(begin, end): the places of "<" and ">"; there is no mark, control or non-ASCII byte between;
/// - qsizetype takeMark(at): the length of what begins at this "&", ">" or "\r" in a text.
/// With false or 0 the reader gives up. All other bytes of the texts are characters that XML allows.
template <class Reader>
bool walk(QByteArrayView xml, Reader &reader)
{
    MarkedBytes marks(xml);
    qsizetype understood = 0;
    for (qsizetype at = marks.next(); at < xml.size(); at = marks.next()) {
        const char byte = xml[at];
        if (at < understood || byte == '\n' || byte == '\t')
            continue;
        if (byte == '<') {
            const qsizetype end = marks.next();
            if (end == xml.size() || xml[end] != '>' || !reader.takeTag(at, end))
                return false;
            continue;
        }
        const bool isMark = byte == '&' || byte == '>' || byte == '\r';
        const qsizetype length = isMark ? reader.takeMark(at) : XMLBytes::lengthOfCharacter(xml.sliced(at));
        if (length == 0)
            return false;
        understood = at + length;
    }
    return true;
}
} // namespace PlainXML
