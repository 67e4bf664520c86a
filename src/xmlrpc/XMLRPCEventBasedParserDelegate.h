#pragma once

#include "xmlrpc/ReplyElement.h"
#include "xmlrpc/ShortTexts.h"
#include "xmlrpc/XMLRPCValue.h"

#include <string>
#include <string_view>

/// Builds the value tree of a reply from the events of an XML parser. It looks for the fault mark and the first
/// `value`, and keeps one node for each open `value`, `member` and `name` in there; elements that it does not know are
/// passed over.
///
/// Finished elements, members and text of all open nodes lie in three common stacks; a node knows where its own part
/// begins. So every array and struct is allocated once, at its final size, and depth costs no recursion.
class XMLRPCEventBasedParserDelegate {
public:
    static constexpr int MaximumDepth = 256; ///< of values in values
    static constexpr qsizetype MaximumValues = 2'000'000; ///< an empty value costs far more in memory than in the reply

    void didStartElement(ReplyElement element);
    void didEndElement(ReplyElement element);
    void foundCharacters(std::string_view utf8);

    bool isTooDeep() const { return m_depth > MaximumDepth || m_elementDepth > MaximumElementDepth; }
    bool hasTooManyValues() const { return m_count > MaximumValues; }
    bool isFault() const { return m_isFault; }
    XMLRPCValue takeElementValue() { return std::move(m_root); }

private:
    // A value in a struct stands in struct, member and value; some room is for what blogs put around.
    static constexpr int MaximumElementDepth = MaximumDepth * 4;

    struct Node {
        ReplyElement type = ReplyElement::String;
        bool isMember = false; // its key and value are the last of m_members before its own
        size_t firstItem = 0;
        size_t firstMember = 0;
        size_t firstCharacter = 0;
    };

    void open(ReplyElement type);
    void close();
    void setType(ReplyElement type);
    void dropContents(const Node &node);
    std::string_view trimmedText(const Node &node) const;
    XMLRPCValue finishedValue(const Node &node);
    XMLRPCValue finishedScalar(const Node &node);
    QString string(std::string_view utf8);
    XMLRPCStruct::Member &memberOf(const Node &node) { return m_members[node.firstMember - 1]; }
    void closeMember(const Node &node);
    void addToParent(XMLRPCValue value);

    std::vector<Node> m_nodes;
    XMLRPCArray m_items;
    std::vector<XMLRPCStruct::Member> m_members;
    std::string m_text;
    ShortTexts m_shortTexts;
    XMLRPCValue m_root;
    int m_elementDepth = 0; // of elements of any name
    int m_depth = 0; // of values
    qsizetype m_count = 0;
    bool m_isFault = false;
    bool m_hasRoot = false;
    bool m_isFinished = false; // the root has closed
};
