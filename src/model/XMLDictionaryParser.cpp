#include "model/XMLDictionaryParser.h"

#include "model/XMLDictionary.h"
#include "platform/ZLAtomicFile.h"

#include <algorithm>
#include <expat.h>
#include <limits>
#include <memory>
#include <vector>

namespace {
constexpr size_t deepest = 200;

/// Adds under the key; what stands there already makes a list with it.
void add(QVariantMap &node, const QString &key, const QVariant &value, bool alwaysList = false)
{
    QVariant &entry = node[key];
    if (!entry.isValid() && !alwaysList) {
        entry = value;
        return;
    }
    if (entry.typeId() != QMetaType::QVariantList)
        entry = entry.isValid() ? QVariantList{entry} : QVariantList();
    // In place: a list of thousands is not to be copied for each member.
    if (value.isValid())
        static_cast<QVariantList *>(entry.data())->append(value);
}

/// Receives the events of one text and builds its dictionary as the settings say.
class Builder {
public:
    Builder(const XMLDictionaryParser &settings, XML_Parser parser)
        : m_settings(settings)
        , m_parser(parser)
    {
    }

    void startElement(const char *name, const char **attributes)
    {
        endText();
        if (m_open.size() >= deepest) {
            XML_StopParser(m_parser, XML_FALSE);
            return;
        }
        Open element{QString::fromUtf8(name), {}};
        const bool isRoot = m_open.empty();
        if (m_settings.nodeNameMode == XMLDictionaryParser::AlwaysNodeName
            || (m_settings.nodeNameMode == XMLDictionaryParser::RootNodeName && isRoot))
            element.node.insert(XMLDictionary::nameKey, element.name);
        addAttributes(element.node, attributes);
        m_open.push_back(std::move(element));
    }

    void endElement()
    {
        endText();
        const QVariantMap node = m_open.back().node;
        const bool holdsTextAtMost = std::all_of(node.keyBegin(), node.keyEnd(),
            [](const QString &key) { return key == XMLDictionary::textKey || key == XMLDictionary::nameKey; });
        const QString text = holdsTextAtMost ? XMLDictionary::innerText(node) : QString();
        if (!text.isNull() && m_settings.collapseTextNodes)
            close(text);
        else if (holdsTextAtMost && text.isNull() && m_settings.stripEmptyNodes)
            close({});
        else
            close(node);
    }

    void characters(const char *text, int length) { m_text += QString::fromUtf8(text, length); }

    void comment(const char *text)
    {
        if (m_settings.preserveComments && !m_open.empty())
            add(m_open.back().node, XMLDictionary::commentsKey, QString::fromUtf8(text), true);
    }

    /// What was built, also when the text broke off.
    std::optional<QVariantMap> root()
    {
        while (!m_open.empty())
            close(m_open.back().node);
        return m_root;
    }

private:
    struct Open {
        QString name;
        QVariantMap node;
    };

    void addAttributes(QVariantMap &node, const char **attributes) const
    {
        QVariantMap grouped;
        for (; *attributes; attributes += 2) {
            const QString name = QString::fromUtf8(attributes[0]);
            const QString value = QString::fromUtf8(attributes[1]);
            if (m_settings.attributesMode == XMLDictionaryParser::PrefixedAttributes)
                add(node, u'_' + name, value);
            else if (m_settings.attributesMode == XMLDictionaryParser::UnprefixedAttributes)
                add(node, name, value);
            else if (m_settings.attributesMode == XMLDictionaryParser::DictionaryAttributes)
                grouped.insert(name, value);
        }
        if (!grouped.isEmpty())
            add(node, XMLDictionary::attributesKey, grouped);
    }

    /// The innermost element goes to its parent as this value. Without one it disappears, but what makes a list of its
    /// kind makes one all the same: "<k>a</k><k></k>" gives a list of one.
    void close(const QVariant &value)
    {
        const Open ended = std::move(m_open.back());
        m_open.pop_back();
        if (m_open.empty()) {
            m_root = ended.node;
            return;
        }
        QVariantMap &parent = m_open.back().node;
        if (value.isValid() || m_settings.alwaysUseArrays || parent.contains(ended.name))
            add(parent, ended.name, value, m_settings.alwaysUseArrays);
    }

    void endText()
    {
        const QString text = m_settings.trimWhiteSpace ? m_text.trimmed() : m_text;
        m_text.clear();
        if (!text.isEmpty() && !m_open.empty())
            add(m_open.back().node, XMLDictionary::textKey, text);
    }

    const XMLDictionaryParser &m_settings;
    XML_Parser m_parser;
    std::vector<Open> m_open;
    std::optional<QVariantMap> m_root;
    QString m_text;
};

Builder &builderOf(void *user)
{
    return *static_cast<Builder *>(user);
}
} // namespace

std::optional<QVariantMap> XMLDictionaryParser::dictionaryWithData(const QByteArray &data)
{
    m_complete = false;
    if (data.size() > std::numeric_limits<int>::max())
        return std::nullopt;
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> owner(XML_ParserCreate(nullptr), XML_ParserFree);
    XML_Parser parser = owner.get();
    Builder builder(*this, parser);
    XML_SetUserData(parser, &builder);
    XML_SetElementHandler(
        parser,
        [](void *user, const char *name, const char **attributes) { builderOf(user).startElement(name, attributes); },
        [](void *user, const char *) { builderOf(user).endElement(); });
    // CDATA comes here as well
    XML_SetCharacterDataHandler(
        parser, [](void *user, const char *text, int length) { builderOf(user).characters(text, length); });
    XML_SetCommentHandler(parser, [](void *user, const char *text) { builderOf(user).comment(text); });
    m_complete = XML_Parse(parser, data.constData(), int(data.size()), XML_TRUE) == XML_STATUS_OK;
    return builder.root();
}

std::optional<QVariantMap> XMLDictionaryParser::dictionaryWithString(const QString &text)
{
    return dictionaryWithData(text.toUtf8());
}

std::optional<QVariantMap> XMLDictionaryParser::dictionaryWithFile(const QString &path)
{
    return dictionaryWithData(ZLAtomicFile::read(path).value_or(QByteArray()));
}
