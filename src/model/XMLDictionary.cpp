#include "model/XMLDictionary.h"

#include "model/XMLStrings.h"

namespace {
bool isOwnKey(const QString &key)
{
    return key == XMLDictionary::commentsKey || key == XMLDictionary::textKey || key == XMLDictionary::nameKey
        || key == XMLDictionary::attributesKey;
}

QVariantMap entriesOf(const QVariantMap &node, bool areAttributes)
{
    QVariantMap found;
    for (auto entry = node.begin(); entry != node.end(); ++entry) {
        if (!isOwnKey(entry.key()) && entry.key().startsWith(u'_') == areAttributes)
            found.insert(areAttributes ? entry.key().mid(1) : entry.key(), entry.value());
    }
    return found;
}

bool isList(const QVariant &value)
{
    return value.typeId() == QMetaType::QVariantList || value.typeId() == QMetaType::QStringList;
}

QVariant firstOf(const QVariant &value)
{
    if (!isList(value))
        return value;
    const QVariantList list = value.toList();
    return list.isEmpty() ? QVariant() : list.constFirst();
}

QString elementString(const QString &name, const QString &attributes, const QString &inner)
{
    return u'<' + name + attributes + u'>' + inner + QLatin1String("</") + name + u'>';
}

QString listString(const QVariantList &list, const QString &name)
{
    const QString member = name.endsWith(u's') ? name.chopped(1) : name;
    QStringList lines;
    for (const QVariant &value : list)
        lines << XMLDictionary::XMLStringForNode(value, member);
    return elementString(name, {}, lines.join(u'\n'));
}

QString dictionaryString(const QVariantMap &node, const QString &name)
{
    QString written;
    const QVariantMap attributes = XMLDictionary::attributes(node);
    for (auto attribute = attributes.begin(); attribute != attributes.end(); ++attribute)
        written += QStringLiteral(" %1=\"%2\"")
                       .arg(XMLEncodedString(attribute.key()), XMLEncodedString(attribute.value().toString()));
    const QString inner = XMLDictionary::innerXML(node);
    return inner.isEmpty() ? u'<' + name + written + QLatin1String("/>") : elementString(name, written, inner);
}
} // namespace

QVariantMap XMLDictionary::attributes(const QVariantMap &node)
{
    const QVariantMap grouped = node.value(attributesKey).toMap();
    return grouped.isEmpty() ? entriesOf(node, true) : grouped;
}

QVariantMap XMLDictionary::childNodes(const QVariantMap &node)
{
    return entriesOf(node, false);
}

QStringList XMLDictionary::comments(const QVariantMap &node)
{
    return node.value(commentsKey).toStringList();
}

QString XMLDictionary::nodeName(const QVariantMap &node)
{
    return node.value(nameKey).toString();
}

QString XMLDictionary::innerText(const QVariantMap &node)
{
    const QVariant text = node.value(textKey);
    return isList(text) ? text.toStringList().join(u'\n') : text.toString();
}

QString XMLDictionary::innerXML(const QVariantMap &node)
{
    QStringList lines;
    for (const QString &comment : comments(node))
        lines << QStringLiteral("<!--%1-->").arg(comment);
    const QVariantMap children = childNodes(node);
    for (auto child = children.begin(); child != children.end(); ++child)
        lines << XMLStringForNode(child.value(), child.key());
    const QString text = innerText(node);
    if (!text.isNull())
        lines << XMLEncodedString(text);
    return lines.join(u'\n');
}

QString XMLDictionary::XMLString(const QVariantMap &node)
{
    const QString name = nodeName(node);
    return XMLStringForNode(node, name.isNull() ? QStringLiteral("zalmo") : name);
}

QString XMLDictionary::XMLStringForNode(const QVariant &node, const QString &name)
{
    if (isList(node))
        return listString(node.toList(), name);
    if (node.typeId() == QMetaType::QVariantMap)
        return dictionaryString(node.toMap(), name);
    return elementString(name, {}, XMLEncodedString(node.toString()));
}

QVariant XMLDictionary::valueForKeyPath(const QVariantMap &node, const QString &path)
{
    QVariant value = node;
    for (const QString &key : path.split(u'.'))
        value = value.toMap().value(key);
    return value;
}

QVariantList XMLDictionary::arrayValueForKeyPath(const QVariantMap &node, const QString &path)
{
    const QVariant value = valueForKeyPath(node, path);
    if (!value.isValid() || isList(value))
        return value.toList();
    return {value};
}

QString XMLDictionary::stringValueForKeyPath(const QVariantMap &node, const QString &path)
{
    const QVariant value = firstOf(valueForKeyPath(node, path));
    return value.typeId() == QMetaType::QVariantMap ? innerText(value.toMap()) : value.toString();
}

QVariantMap XMLDictionary::dictionaryValueForKeyPath(const QVariantMap &node, const QString &path)
{
    const QVariant value = firstOf(valueForKeyPath(node, path));
    if (value.typeId() == QMetaType::QString)
        return {{textKey, value}};
    return value.toMap();
}
