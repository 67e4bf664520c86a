#include "text/TagAttributes.h"

#include "text/MarkupScanner.h"
#include "text/Scanning.h"

namespace {
template <class Test>
qsizetype skip(QStringView text, qsizetype at, Test test)
{
    while (at < text.size() && test(text[at]))
        ++at;
    return at;
}

bool isName(QChar c)
{
    return !MarkupScanner::isSpace(c) && c != u'/' && c != u'=' && c != u'>';
}
} // namespace

TagAttributes::TagAttributes(QStringView text, qsizetype start)
    : m_text(text)
    , m_at(skip(m_text, start + 1, isName))
{
}

bool TagAttributes::next(TagAttribute &found)
{
    using Scanning::isQuote;
    constexpr auto isSpace = MarkupScanner::isSpace;
    m_at = skip(m_text, m_at, [](QChar c) { return isSpace(c) || c == u'/'; });
    if (m_at >= m_text.size() || m_text[m_at] == u'>')
        return false;
    found.start = m_at;
    m_at = skip(m_text, m_at + 1, isName); // an "=" in front belongs to the name
    found.name = m_text.sliced(found.start, m_at - found.start);
    found.end = found.valueStart = m_at;
    found.value = {};
    const qsizetype equals = skip(m_text, m_at, isSpace);
    if (equals >= m_text.size() || m_text[equals] != u'=')
        return true;
    found.valueStart = skip(m_text, equals + 1, isSpace);
    qsizetype valueEnd = found.valueStart;
    if (valueEnd < m_text.size() && isQuote(m_text[valueEnd].unicode())) {
        valueEnd = Scanning::indexOf(m_text, m_text[valueEnd].unicode(), ++found.valueStart);
        m_at = std::min(valueEnd + 1, m_text.size());
    } else {
        m_at = valueEnd = skip(m_text, valueEnd, [](QChar c) { return !isSpace(c) && c != u'>'; });
    }
    found.value = m_text.sliced(found.valueStart, valueEnd - found.valueStart);
    found.end = m_at;
    return true;
}

bool TagAttributes::find(QStringView name, TagAttribute &found)
{
    while (next(found)) {
        if (found.is(name))
            return true;
    }
    return false;
}

qsizetype TagAttributes::tagEnd() const
{
    return MarkupScanner::tagEnd(m_text, m_at);
}
