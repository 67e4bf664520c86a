#include "xmlrpc/XMLRPCEventBasedParserDelegate.h"

#include "text/Base64.h"
#include "xmlrpc/ReplyScalars.h"

#include <algorithm>
#include <iterator>

namespace {
template <class T>
std::vector<T> takeFrom(std::vector<T> &stack, size_t first)
{
    const auto begin = stack.begin() + std::ptrdiff_t(first);
    std::vector<T> taken(std::make_move_iterator(begin), std::make_move_iterator(stack.end()));
    stack.erase(begin, stack.end());
    return taken;
}
} // namespace

void XMLRPCEventBasedParserDelegate::didStartElement(std::string_view name)
{
    if (m_isFinished)
        return;
    if (name == "value")
        open(String);
    else if (name == "member")
        open(Member);
    else if (name == "name")
        open(Name);
    else if (name == "string")
        setType(String);
    else if (name == "struct")
        setType(Dictionary);
    else if (name == "array")
        setType(Array);
    else if (name == "int" || name == "i4")
        setType(Integer);
    else if (name == "dateTime.iso8601")
        setType(Date);
    else if (name == "boolean")
        setType(Boolean);
    else if (name == "double")
        setType(Double);
    else if (name == "base64")
        setType(Data);
}

void XMLRPCEventBasedParserDelegate::didEndElement(std::string_view name)
{
    if (m_isFinished)
        return;
    m_depth -= name == "value" ? 1 : 0;
    if (name == "value" || name == "member" || name == "name")
        close();
}

void XMLRPCEventBasedParserDelegate::foundCharacters(const char *characters, qsizetype length)
{
    if (!m_isFinished && m_nodes.back().type > Member)
        m_text.append(characters, size_t(length));
}

void XMLRPCEventBasedParserDelegate::open(ElementType type)
{
    const int isValue = type == String;
    m_depth += isValue;
    m_count += isValue;
    Node &node = m_nodes.emplace_back();
    node.type = type;
    node.firstItem = m_items.size();
    node.firstMember = m_members.size();
    node.firstCharacter = m_text.size();
}

void XMLRPCEventBasedParserDelegate::setType(ElementType type)
{
    Node &node = m_nodes.back();
    node.type = type;
    if (type == Array || type == Dictionary)
        dropContents(node);
}

void XMLRPCEventBasedParserDelegate::dropContents(const Node &node)
{
    m_items.erase(m_items.begin() + std::ptrdiff_t(node.firstItem), m_items.end());
    m_members.erase(m_members.begin() + std::ptrdiff_t(node.firstMember), m_members.end());
    m_text.resize(node.firstCharacter);
}

void XMLRPCEventBasedParserDelegate::close()
{
    Node node = std::move(m_nodes.back());
    m_nodes.pop_back();
    if (node.type == Name && !m_nodes.empty() && m_nodes.back().type == Member) {
        m_nodes.back().key = string(trimmedText(node));
        dropContents(node);
        return;
    }
    XMLRPCValue value = finishedValue(node);
    dropContents(node);
    if (m_nodes.empty()) {
        m_root = std::move(value);
        m_isFinished = true;
    } else {
        addToParent(node, std::move(value));
    }
}

void XMLRPCEventBasedParserDelegate::addToParent(Node &node, XMLRPCValue value)
{
    Node &parent = m_nodes.back();
    if (parent.type == Member)
        parent.value = std::move(value);
    else if (parent.type == Array)
        m_items.push_back(std::move(value));
    else if (parent.type == Dictionary && !node.key.isNull())
        m_members.emplace_back(std::move(node.key), std::move(value));
}

XMLRPCValue XMLRPCEventBasedParserDelegate::finishedValue(Node &node)
{
    switch (node.type) {
    case Array:
        return takeFrom(m_items, node.firstItem);
    case Dictionary:
        return XMLRPCStruct::fromReply(takeFrom(m_members, node.firstMember));
    case Member:
        return node.value.isAbsent() ? XMLRPCValue(QStringLiteral("")) : std::move(node.value);
    default:
        return finishedScalar(node);
    }
}

XMLRPCValue XMLRPCEventBasedParserDelegate::finishedScalar(const Node &node)
{
    const std::string_view text = trimmedText(node);
    switch (node.type) {
    case Integer:
        return ReplyScalars::integer(text);
    case Double:
        return ReplyScalars::number(text);
    case Boolean:
        return text == "1";
    case Date: {
        const QDateTime date = ReplyScalars::date(text);
        return date.isValid() ? XMLRPCValue(date) : XMLRPCValue(XMLRPCValue::Null());
    }
    case Data:
        return Base64::decoded(QByteArrayView(text.data(), qsizetype(text.size())));
    default:
        return string(text);
    }
}

std::string_view XMLRPCEventBasedParserDelegate::trimmedText(const Node &node) const
{
    return ReplyScalars::trimmed(std::string_view(m_text).substr(node.firstCharacter));
}

QString XMLRPCEventBasedParserDelegate::string(std::string_view utf8)
{
    return utf8.size() <= ShortTexts::MaximumLength ? m_shortTexts.text(utf8) : ReplyScalars::string(utf8);
}
