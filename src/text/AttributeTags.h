#pragma once

#include "text/Scanning.h"

/// An attribute of a tag, the first that has a closing quote on its line, and the stretch from the tag's beginning to
/// the first ">" behind the attribute.
struct AttributeTag {
    qsizetype start = 0;
    qsizetype end = 0;
    QStringView value;
};

/// Finds tags with an attribute from left to right, as `<tag\s[\s\S]*?attribute\s*?=\s*?['"](.*?)['"][\s\S]*?>` does:
/// the attribute may stand in a later tag, the quotes may differ. One walk over the text.
class AttributeTags {
public:
    /// Both names are in lower case.
    AttributeTags(QStringView text, std::u16string_view tag, std::u16string_view attribute);
    bool next(AttributeTag &found);

private:
    bool findAttribute(qsizetype from);
    bool readValue(qsizetype equals);

    QStringView m_text;
    std::u16string_view m_tag;
    std::u16string_view m_attribute;
    Scanning::NextChar m_equals;
    Scanning::NextChar m_tagEnd;
    Scanning::NextChar m_single;
    Scanning::NextChar m_double;
    Scanning::LineEnds m_lineEnds;
    qsizetype m_at = 0;
    QStringView m_value;
    qsizetype m_valueEnd = 0; ///< of the attribute found last, as m_value
};
