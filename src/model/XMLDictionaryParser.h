#pragma once

#include <QByteArray>
#include <QVariantMap>
#include <optional>

/// Turns an XML text into nested dictionaries. An element is a dictionary (QVariantMap) with its children under their
/// names, its text under "__text", its own name under "__name", comments under "__comments" and attributes as
/// `attributesMode` says; a name that occurs more than once holds a list.
///
/// A text that breaks off yields what was built up to there, one that is no XML yields nothing. Elements nested deeper
/// than 200 count as a break.
class XMLDictionaryParser {
public:
    enum AttributesMode {
        PrefixedAttributes = 0, ///< each attribute under "_" and its name
        DictionaryAttributes = 1, ///< all under "__attributes"
        UnprefixedAttributes = 2, ///< merged in as they are
        DiscardedAttributes = 3,
    };
    enum NodeNameMode { RootNodeName = 0, AlwaysNodeName = 1, NeverNodeName = 2 };

    bool collapseTextNodes = true; ///< an element with text only becomes a plain string in its parent
    bool stripEmptyNodes = true; ///< an element with nothing in it is removed from its parent
    bool trimWhiteSpace = true; ///< white space is cut from both ends of each text run
    bool alwaysUseArrays = false; ///< even a single child is put in a list
    bool preserveComments = false;
    int attributesMode = PrefixedAttributes;
    int nodeNameMode = RootNodeName;

    std::optional<QVariantMap> dictionaryWithData(const QByteArray &data);
    std::optional<QVariantMap> dictionaryWithString(const QString &text);
    std::optional<QVariantMap> dictionaryWithFile(const QString &path);
    /// Whether the last text was well-formed up to its end.
    bool wasComplete() const { return m_complete; }

private:
    bool m_complete = false;
};
