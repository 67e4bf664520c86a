#include "text/MarkupScanner.h"

#include "text/Scanning.h"

namespace {
bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isRawText(QStringView name)
{
    constexpr qsizetype shortest = 3; // as most names are not
    return name.size() >= shortest && (ElementKinds::of(name) & ElementKinds::RawText);
}
} // namespace

MarkupScanner::MarkupScanner(QStringView text, qsizetype position)
    : m_text(text)
    , m_position(position)
{
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
    MarkupToken token{kind, start, tagEnd(m_text, nameEnd), name};
    if (kind == MarkupToken::StartTag && isRawText(name))
        token.end = rawTextEnd(name, token.end);
    return token;
}

/// A quote opens a value only behind "=".
qsizetype MarkupScanner::tagEnd(QStringView text, qsizetype position)
{
    while ((position = Scanning::indexOfAny(text, position, u'>', u'=')) < text.size()) {
        if (text[position++] == u'>')
            return position;
        while (position < text.size() && isSpace(text[position]))
            ++position;
        if (position < text.size() && Scanning::isQuote(text[position].unicode()))
            position = Scanning::indexOf(text, text[position].unicode(), position + 1) + 1;
    }
    return text.size();
}

qsizetype MarkupScanner::rawTextEnd(QStringView name, qsizetype position) const
{
    for (position = m_text.indexOf(u"</", position); position >= 0; position = m_text.indexOf(u"</", position + 2)) {
        const qsizetype nameEnd = position + 2 + name.size();
        if (m_text.sliced(position + 2).startsWith(name, Qt::CaseInsensitive))
            return tagEnd(m_text, nameEnd);
    }
    return m_text.size();
}
