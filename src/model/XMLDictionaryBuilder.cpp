#include "model/XMLDictionaryBuilder.h"

#include "model/XMLDictionary.h"

#include <algorithm>

using Node = XMLDictionaryNode;

namespace {
QVariant valueOf(const Node::Item &item)
{
    if (const QString *text = std::get_if<QString>(&item))
        return *text;
    return std::get<std::shared_ptr<Node>>(item)->dictionary();
}
} // namespace

void Node::add(const QString &key, Item item, bool alwaysList)
{
    Entry &entry = entries[key];
    entry.isList = alwaysList || entry.isList || !entry.items.empty();
    entry.items.push_back(std::move(item));
}

QString Node::innerText() const
{
    const auto text = entries.find(XMLDictionary::textKey);
    if (text == entries.end())
        return {};
    QStringList runs;
    for (const Item &item : text->second.items) {
        if (const QString *run = std::get_if<QString>(&item))
            runs << *run;
    }
    return runs.join(u'\n');
}

bool Node::holdsTextAtMost() const
{
    return std::all_of(entries.begin(), entries.end(), [](const auto &entry) {
        return entry.first == XMLDictionary::textKey || entry.first == XMLDictionary::nameKey;
    });
}

QVariantMap Node::dictionary() const
{
    QVariantMap map;
    for (const auto &[key, entry] : entries) {
        if (!entry.isList) {
            map.insert(key, valueOf(entry.items.front()));
            continue;
        }
        QVariantList list;
        for (const Item &item : entry.items)
            list.append(valueOf(item));
        map.insert(key, list);
    }
    return map;
}

bool XMLDictionaryBuilder::startElement(const QString &name, const std::vector<Attribute> &attributes)
{
    endText();
    if (m_stack.size() >= deepest)
        return false;
    auto node = std::make_shared<Node>();
    const bool namesItself = m_settings.nodeNameMode == XMLDictionaryParser::AlwaysNodeName
        || (m_settings.nodeNameMode == XMLDictionaryParser::RootNodeName && !m_root);
    if (namesItself)
        node->add(XMLDictionary::nameKey, name);
    addAttributes(*node, attributes);
    if (!m_root)
        m_root = node;
    else if (!m_stack.empty())
        m_stack.back().node->add(name, node, m_settings.alwaysUseArrays);
    m_stack.push_back({name, node});
    return true;
}

void XMLDictionaryBuilder::addAttributes(Node &node, const std::vector<Attribute> &attributes) const
{
    const auto inDictionary = std::make_shared<Node>();
    for (const Attribute &attribute : attributes) {
        if (m_settings.attributesMode == XMLDictionaryParser::PrefixedAttributes)
            node.add(u'_' + attribute.name, attribute.value);
        else if (m_settings.attributesMode == XMLDictionaryParser::UnprefixedAttributes)
            node.add(attribute.name, attribute.value);
        else if (m_settings.attributesMode == XMLDictionaryParser::DictionaryAttributes)
            inDictionary->add(attribute.name, attribute.value);
    }
    if (!inDictionary->entries.empty())
        node.add(XMLDictionary::attributesKey, inDictionary);
}

void XMLDictionaryBuilder::endElement()
{
    endText();
    if (m_stack.empty())
        return;
    const Open ended = m_stack.back();
    m_stack.pop_back();
    if (!m_stack.empty() && ended.node->holdsTextAtMost())
        simplify(*m_stack.back().node, ended.name, *ended.node);
}

void XMLDictionaryBuilder::simplify(Node &parent, const QString &key, const Node &node) const
{
    const auto found = parent.entries.find(key);
    Node::Entry &entry = found->second;
    const QString text = node.innerText();
    if (!text.isNull()) {
        if (m_settings.collapseTextNodes)
            entry.items.back() = text;
        return;
    }
    if (!m_settings.stripEmptyNodes)
        return;
    // A list stays a list, with one member or none: "<k>a</k><k></k>" gives a list of one.
    if (entry.isList)
        entry.items.pop_back();
    else
        parent.entries.erase(found);
}

void XMLDictionaryBuilder::comment(const QString &text)
{
    if (m_settings.preserveComments && !m_stack.empty())
        m_stack.back().node->add(XMLDictionary::commentsKey, text, true);
}

void XMLDictionaryBuilder::endText()
{
    const QString text = m_settings.trimWhiteSpace ? m_text.trimmed() : m_text;
    m_text.clear();
    if (!text.isEmpty() && !m_stack.empty())
        m_stack.back().node->add(XMLDictionary::textKey, text);
}

std::optional<QVariantMap> XMLDictionaryBuilder::root() const
{
    if (!m_root)
        return std::nullopt;
    return m_root->dictionary();
}
