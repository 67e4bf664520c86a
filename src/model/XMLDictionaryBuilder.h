#pragma once

#include "model/XMLDictionaryParser.h"

#include <map>
#include <memory>
#include <variant>
#include <vector>

/// An element while its dictionary is being built.
struct XMLDictionaryNode {
    using Item = std::variant<QString, std::shared_ptr<XMLDictionaryNode>>;
    struct Entry {
        std::vector<Item> items;
        bool isList = false;
    };
    std::map<QString, Entry> entries;

    /// Adds under the key; what stands there already makes a list with it.
    void add(const QString &key, Item item, bool alwaysList = false);
    /// The text runs joined by line breaks; null without any.
    QString innerText() const;
    /// Whether there is neither attribute, child nor comment.
    bool holdsTextAtMost() const;
    QVariantMap dictionary() const;
};

/// Receives the events of one text, in order, and builds its dictionary as the settings say.
class XMLDictionaryBuilder {
public:
    static constexpr size_t deepest = 200;

    explicit XMLDictionaryBuilder(const XMLDictionaryParser &settings)
        : m_settings(settings)
    {
    }
    struct Attribute {
        QString name;
        QString value;
    };
    /// False when the element lies too deep.
    bool startElement(const QString &name, const std::vector<Attribute> &attributes);
    void endElement();
    void characters(const QString &text) { m_text += text; }
    void comment(const QString &text);
    std::optional<QVariantMap> root() const;

private:
    using Node = XMLDictionaryNode;
    struct Open {
        QString name;
        std::shared_ptr<Node> node;
    };
    void endText();
    void addAttributes(Node &node, const std::vector<Attribute> &attributes) const;
    /// Puts a text-only element's string in its place, or takes an empty element out.
    void simplify(Node &parent, const QString &key, const Node &node) const;

    const XMLDictionaryParser &m_settings;
    std::shared_ptr<Node> m_root;
    std::vector<Open> m_stack;
    QString m_text;
};
