#include "text/MarkupScanner.h"

#include <QSet>

namespace {
bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isRawText(const QString &name)
{
    static const QSet<QString> names{QStringLiteral("script"), QStringLiteral("style"), QStringLiteral("textarea"),
        QStringLiteral("title"), QStringLiteral("xmp"), QStringLiteral("iframe"), QStringLiteral("noembed"),
        QStringLiteral("noframes")};
    return names.contains(name);
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
    while ((m_position = m_text.indexOf(u'<', m_position)) >= 0) {
        if (auto token = tokenAt(m_position)) {
            m_position = token->end;
            return token;
        }
        ++m_position;
    }
    m_position = m_text.size();
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
    while (nameEnd < m_text.size() && !isSpace(m_text[nameEnd]) && m_text[nameEnd] != u'/' && m_text[nameEnd] != u'>')
        ++nameEnd;
    MarkupToken token{kind, start, tagEnd(nameEnd), m_text.sliced(nameStart, nameEnd - nameStart).toString().toLower()};
    if (kind == MarkupToken::StartTag && isRawText(token.name))
        token.end = rawTextEnd(token.name, token.end);
    return token;
}

qsizetype MarkupScanner::tagEnd(qsizetype position) const
{
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

qsizetype MarkupScanner::rawTextEnd(const QString &name, qsizetype position) const
{
    const QString closing = QStringLiteral("</") + name;
    const qsizetype found = m_text.indexOf(closing, position, Qt::CaseInsensitive);
    return found < 0 ? m_text.size() : tagEnd(found + closing.size());
}
