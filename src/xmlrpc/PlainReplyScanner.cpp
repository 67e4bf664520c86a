#include "xmlrpc/PlainReplyScanner.h"

#include "text/PlainXML.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"

#include <algorithm>

namespace {
bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isPlainName(std::string_view name)
{
    const auto continuesName = [](char c) {
        return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '_';
    };
    return !name.empty() && isLetter(name.front()) && std::all_of(name.begin(), name.end(), continuesName);
}

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == text.npos;
}

bool skip(QByteArrayView &text, QByteArrayView beginning)
{
    const bool isThere = text.startsWith(beginning);
    if (isThere)
        text = text.sliced(beginning.size());
    return isThere;
}

// What follows the declaration; the whole when there is none, or one that is not plain.
QByteArrayView afterDeclaration(QByteArrayView utf8)
{
    QByteArrayView rest = utf8;
    if (!skip(rest, "<?xml version=\"1.0\""))
        return utf8;
    // Whatever the name, the bytes are UTF-8 by now.
    if (skip(rest, " encoding=\"")) {
        const qsizetype quote = rest.indexOf('"');
        if (quote < 0 || !isPlainName({rest.data(), size_t(quote)}))
            return utf8;
        rest = rest.sliced(quote + 1);
    }
    return skip(rest, "?>") ? rest : utf8;
}

// What these bytes, a reference or a line end, stand for.
PlainXML::Character markedCharacter(QByteArrayView bytes)
{
    if (bytes[0] == '\r')
        return {'\n', bytes.startsWith("\r\n") ? 2 : 1};
    if (const PlainXML::Reference *reference = PlainXML::reference(bytes))
        return {char32_t(reference->character), reference->text.size()};
    return PlainXML::numericReference(bytes);
}
} // namespace

std::optional<PlainReplyScanner::Reply> PlainReplyScanner::scan()
{
    if (m_utf8.size() > XMLRPCEventBasedParser::MaximumSize)
        return std::nullopt;
    m_utf8 = afterDeclaration(m_utf8);
    if (!PlainXML::walk(m_utf8, *this) || !m_hasBegun || !m_open.empty() || !takeText(m_utf8.size()))
        return std::nullopt;
    return Reply{m_delegate.takeElementValue(), m_delegate.isFault()};
}

qsizetype PlainReplyScanner::takeMark(qsizetype at)
{
    const QByteArrayView rest = m_utf8.sliced(at);
    // A text may not hold "]]>".
    if (rest[0] == '>')
        return at > 0 && m_utf8[at - 1] == ']' ? 0 : 1;
    if (m_open.empty())
        return rest[0] == '\r' ? 1 : 0;
    const PlainXML::Character character = markedCharacter(rest);
    if (character.length == 0)
        return 0;
    takeText(at);
    takeCharacter(character.code);
    m_textBegin = at + character.length;
    return character.length;
}

bool PlainReplyScanner::takeTag(qsizetype begin, qsizetype end)
{
    if (!takeText(begin))
        return false;
    m_textBegin = end + 1;
    std::string_view name = bytes(begin + 1, end);
    if (name.starts_with('/'))
        return close(name.substr(1));
    const bool isEmptyElement = name.ends_with('/');
    if (isEmptyElement)
        name.remove_suffix(1);
    return open(name) && (!isEmptyElement || close(name));
}

bool PlainReplyScanner::open(std::string_view name)
{
    const ReplyElement element = replyElementNamed(name);
    const bool isSecondRoot = m_hasBegun && m_open.empty();
    if (isSecondRoot || (element == ReplyElement::Other && !isPlainName(name)))
        return false;
    m_hasBegun = true;
    m_open.push_back({name, element});
    m_delegate.didStartElement(element);
    return !m_delegate.isTooDeep() && !m_delegate.hasTooManyValues();
}

bool PlainReplyScanner::close(std::string_view name)
{
    if (m_open.empty() || m_open.back().name != name)
        return false;
    m_delegate.didEndElement(m_open.back().element);
    m_open.pop_back();
    return true;
}

bool PlainReplyScanner::takeText(qsizetype end)
{
    const std::string_view text = bytes(m_textBegin, end);
    if (m_open.empty())
        return isBlank(text);
    m_delegate.foundCharacters(text);
    return true;
}

void PlainReplyScanner::takeCharacter(char32_t code)
{
    if (code < 0x80) {
        const char byte = char(code);
        m_delegate.foundCharacters({&byte, 1});
    } else {
        m_delegate.foundCharacters(QString::fromUcs4(&code, 1).toStdString());
    }
}

std::string_view PlainReplyScanner::bytes(qsizetype begin, qsizetype end) const
{
    return {m_utf8.data() + begin, size_t(end - begin)};
}
