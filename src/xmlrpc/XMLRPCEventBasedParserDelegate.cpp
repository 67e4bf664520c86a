#include "xmlrpc/XMLRPCEventBasedParserDelegate.h"

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

void XMLRPCEventBasedParserDelegate::didStartElement(ReplyElement element)
{
    ++m_elementDepth;
    if (!m_hasRoot) {
        m_isFault |= element == ReplyElement::Fault;
        m_hasRoot = element == ReplyElement::Value;
    }
    if (!m_hasRoot || m_isFinished)
        return;
    switch (element) {
    case ReplyElement::Other:
    case ReplyElement::Fault:
        break;
    case ReplyElement::Value:
        ++m_depth;
        ++m_count;
        open(ReplyElement::String);
        break;
    case ReplyElement::Member:
    case ReplyElement::Name:
        open(element);
        break;
    default:
        setType(element);
    }
}

void XMLRPCEventBasedParserDelegate::didEndElement(ReplyElement element)
{
    --m_elementDepth;
    if (!m_hasRoot || m_isFinished)
        return;
    m_depth -= element == ReplyElement::Value ? 1 : 0;
    if (element == ReplyElement::Value || element == ReplyElement::Member || element == ReplyElement::Name)
        close();
}

void XMLRPCEventBasedParserDelegate::foundCharacters(std::string_view utf8)
{
    if (m_hasRoot && !m_isFinished && m_nodes.back().type >= ReplyElement::Name)
        m_text.append(utf8);
}

void XMLRPCEventBasedParserDelegate::open(ReplyElement type)
{
    const bool isMember = type == ReplyElement::Member;
    if (isMember)
        m_members.emplace_back();
    m_nodes.push_back({type, isMember, m_items.size(), m_members.size(), m_text.size()});
}

void XMLRPCEventBasedParserDelegate::setType(ReplyElement type)
{
    Node &node = m_nodes.back();
    node.type = type;
    if (type == ReplyElement::Array || type == ReplyElement::Struct)
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
    const Node node = m_nodes.back();
    m_nodes.pop_back();
    if (node.isMember) {
        closeMember(node);
        return;
    }
    if (node.type == ReplyElement::Name && m_nodes.back().type == ReplyElement::Member) {
        memberOf(m_nodes.back()).first = string(trimmedText(node));
        dropContents(node);
        return;
    }
    XMLRPCValue value = finishedValue(node);
    dropContents(node);
    addToParent(std::move(value));
}

void XMLRPCEventBasedParserDelegate::closeMember(const Node &node)
{
    // An array or the like may stand in a member without a value around.
    if (node.type != ReplyElement::Member)
        memberOf(node).second = finishedValue(node);
    else if (memberOf(node).second.isAbsent())
        memberOf(node).second = QStringLiteral("");
    dropContents(node);
    if (m_nodes.back().type == ReplyElement::Struct && !m_members.back().first.isNull())
        return; // it is where it belongs
    XMLRPCValue value = std::move(m_members.back().second);
    m_members.pop_back();
    addToParent(std::move(value));
}

void XMLRPCEventBasedParserDelegate::addToParent(XMLRPCValue value)
{
    if (m_nodes.empty()) {
        m_root = std::move(value);
        m_isFinished = true;
    } else if (m_nodes.back().type == ReplyElement::Member) {
        memberOf(m_nodes.back()).second = std::move(value);
    } else if (m_nodes.back().type == ReplyElement::Array) {
        m_items.push_back(std::move(value));
    }
}

XMLRPCValue XMLRPCEventBasedParserDelegate::finishedValue(const Node &node)
{
    switch (node.type) {
    case ReplyElement::Array:
        return takeFrom(m_items, node.firstItem);
    case ReplyElement::Struct:
        return XMLRPCStruct::fromReply(takeFrom(m_members, node.firstMember));
    default:
        return finishedScalar(node);
    }
}

XMLRPCValue XMLRPCEventBasedParserDelegate::finishedScalar(const Node &node)
{
    const std::string_view text = trimmedText(node);
    switch (node.type) {
    case ReplyElement::Integer:
        return ReplyScalars::integer(text);
    case ReplyElement::Double:
        return ReplyScalars::number(text);
    case ReplyElement::Boolean:
        return text == "1";
    case ReplyElement::Date: {
        const QDateTime date = ReplyScalars::date(text);
        return date.isValid() ? XMLRPCValue(date) : XMLRPCValue(XMLRPCValue::Null());
    }
    case ReplyElement::Data:
        return QByteArray::fromBase64(QByteArray::fromRawData(text.data(), qsizetype(text.size())));
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
