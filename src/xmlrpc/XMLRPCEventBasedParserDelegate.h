#pragma once

#include "xmlrpc/ShortTexts.h"
#include "xmlrpc/XMLRPCValue.h"

#include <string>
#include <string_view>

/// Builds the value tree of a reply from the events of an XML parser. It keeps one node for each open `value`, `member`
/// and `name`; elements that it does not know are passed over.
///
/// Finished elements, members and text of all open nodes lie in three common stacks; a node knows where its own part
/// begins. So every array and struct is allocated once, at its final size, and depth costs no recursion.
class XMLRPCEventBasedParserDelegate {
public:
    static constexpr int MaximumDepth = 256; ///< of values in values
    static constexpr qsizetype MaximumValues = 2'000'000; ///< an empty value costs far more in memory than in the reply

    /// The first call has to open the root `value`.
    void didStartElement(std::string_view name);
    void didEndElement(std::string_view name);
    void foundCharacters(const char *characters, qsizetype length);

    bool isFinished() const { return m_isFinished; } ///< the root has closed
    bool isTooDeep() const { return m_depth > MaximumDepth; }
    bool hasTooManyValues() const { return m_count > MaximumValues; }
    XMLRPCValue takeElementValue() { return std::move(m_root); }

private:
    enum ElementType : quint8 { Array, Dictionary, Member, Name, Integer, Double, Boolean, String, Date, Data };
    struct Node {
        ElementType type = String;
        size_t firstItem = 0;
        size_t firstMember = 0;
        size_t firstCharacter = 0;
        QString key; // of a member
        XMLRPCValue value; // of a member
    };

    void open(ElementType type);
    void close();
    void setType(ElementType type);
    void dropContents(const Node &node);
    XMLRPCValue finishedValue(Node &node);
    XMLRPCValue finishedScalar(const Node &node);
    std::string_view trimmedText(const Node &node) const;
    QString string(std::string_view utf8);
    void addToParent(Node &node, XMLRPCValue value);

    std::vector<Node> m_nodes;
    XMLRPCArray m_items;
    std::vector<XMLRPCStruct::Member> m_members;
    std::string m_text;
    ShortTexts m_shortTexts;
    XMLRPCValue m_root;
    int m_depth = 0;
    qsizetype m_count = 0;
    bool m_isFinished = false;
};
