#include "text/AttributeTags.h"

using namespace Scanning;

AttributeTags::AttributeTags(QStringView text, std::u16string_view tag, std::u16string_view attribute)
    : m_text(text)
    , m_tag(tag)
    , m_attribute(attribute)
    , m_equals(text, u'=')
    , m_tagEnd(text, u'>')
    , m_single(text, u'\'')
    , m_double(text, u'"')
    , m_lineEnds(text)
{
}

bool AttributeTags::next(AttributeTag &found)
{
    const qsizetype name = qsizetype(m_tag.size());
    for (qsizetype at = indexOf(m_text, u'<', m_at); at < m_text.size(); at = indexOf(m_text, u'<', at + 1)) {
        const qsizetype space = at + 1 + name;
        if (!matches(m_text, at + 1, m_tag) || space >= m_text.size() || !isSpace(m_text[space].unicode()))
            continue;
        // without an attribute or an end behind this tag there is none behind any later one
        if (!findAttribute(space + 1))
            break;
        const qsizetype end = m_tagEnd.from(m_valueEnd + 1);
        if (end == m_text.size())
            break;
        m_at = end + 1;
        found = {at, m_at, m_value};
        return true;
    }
    m_at = m_text.size();
    return false;
}

bool AttributeTags::findAttribute(qsizetype from)
{
    const qsizetype length = qsizetype(m_attribute.size());
    for (qsizetype equals = m_equals.from(from + length); equals < m_text.size(); equals = m_equals.from(equals + 1)) {
        qsizetype nameEnd = equals;
        while (nameEnd > from && isSpace(m_text[nameEnd - 1].unicode()))
            --nameEnd;
        if (nameEnd - length >= from && matches(m_text, nameEnd - length, m_attribute) && readValue(equals))
            return true;
    }
    return false;
}

bool AttributeTags::readValue(qsizetype equals)
{
    const qsizetype quote = skipSpace(m_text, equals + 1);
    if (quote == m_text.size() || !isQuote(m_text[quote].unicode()))
        return false;
    const qsizetype value = quote + 1;
    m_valueEnd = std::min(m_single.from(value), m_double.from(value));
    if (m_valueEnd == m_text.size() || m_lineEnds.within(value, m_valueEnd))
        return false;
    m_value = m_text.sliced(value, m_valueEnd - value);
    return true;
}
