#include "text/MarkupScanner.h"

#include "text/Scanning.h"

namespace {
bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isRawText(QStringView name)
{
    // Most names are shorter, or begin otherwise.
    constexpr qsizetype shortest = 3;
    constexpr QStringView initials = u"instxINSTX";
    return name.size() >= shortest && initials.contains(name[0]) && (ElementKinds::of(name) & ElementKinds::RawText);
}
} // namespace

MarkupScanner::MarkupScanner(QStringView text, qsizetype position)
    : m_text(text)
    , m_position(position)
{
}

bool MarkupScanner::isSpace(QChar c)
{
    return c == u' ' || c == u'\n' || c == u'\t' || c == u'\r' || c == u'\f';
}

std::optional<MarkupToken> MarkupScanner::next()
{
    while ((m_position = Scanning::indexOf(m_text, u'<', m_position)) < m_text.size()) {
        if (auto token = tokenAt(m_position)) {
            m_position = token->end;
            return token;
        }
        ++m_position;
    }
    return std::nullopt;
}

std::optional<MarkupToken> MarkupScanner::tokenAt(qsizetype position) const
{
    const QStringView rest = m_text.sliced(position + 1);
    if (rest.isEmpty())
        return std::nullopt;
    if (isLetter(rest[0]))
        return tag(position, position + 1, MarkupToken::StartTag);
    if (rest[0] == u'!' || rest[0] == u'?')
        return comment(position);
    if (rest[0] == u'/' && rest.size() > 1)
        return isLetter(rest[1]) ? tag(position, position + 2, MarkupToken::EndTag) : comment(position);
    return std::nullopt;
}

MarkupToken MarkupScanner::comment(qsizetype start) const
{
    // "<!doctype", "<?php" and the like end at the first ">", only true comments at "-->".
    const bool isTrue = m_text.sliced(start).startsWith(u"<!--");
    const QStringView closing = isTrue ? QStringView(u"-->") : QStringView(u">");
    // "<!-->" is a whole comment to a browser, so the end may overlap the beginning.
    const qsizetype found = m_text.indexOf(closing, start + 2);
    return {MarkupToken::Comment, start, found < 0 ? m_text.size() : found + closing.size(), {}};
}

MarkupToken MarkupScanner::tag(qsizetype start, qsizetype nameStart, MarkupToken::Kind kind) const
{
    qsizetype nameEnd = nameStart;
    while (nameEnd < m_text.size() && m_text[nameEnd] != u'>' && m_text[nameEnd] != u'/' && !isSpace(m_text[nameEnd]))
        ++nameEnd;
    const QStringView name = m_text.sliced(nameStart, nameEnd - nameStart);
    MarkupToken token{kind, start, tagEnd(nameEnd), name};
    if (kind == MarkupToken::StartTag && isRawText(name))
        token.end = rawTextEnd(name, token.end);
    return token;
}

qsizetype MarkupScanner::tagEnd(qsizetype position) const
{
    if (position < m_text.size() && m_text[position] == u'>')
        return position + 1;
    bool afterEquals = false; // a quote opens a value only behind "="
    for (; position < m_text.size(); ++position) {
        const QChar c = m_text[position];
        if (c == u'>')
            return position + 1;
        if (afterEquals && (c == u'"' || c == u'\'')) {
            position = m_text.indexOf(c, position + 1);
            if (position < 0)
                return m_text.size();
        }
        if (!isSpace(c))
            afterEquals = c == u'=';
    }
    return m_text.size();
}

qsizetype MarkupScanner::rawTextEnd(QStringView name, qsizetype position) const
{
    for (position = m_text.indexOf(u"</", position); position >= 0; position = m_text.indexOf(u"</", position + 2)) {
        const qsizetype nameEnd = position + 2 + name.size();
        if (m_text.sliced(position + 2).startsWith(name, Qt::CaseInsensitive))
            return tagEnd(nameEnd);
    }
    return m_text.size();
}
