#pragma once

#include <QStringList>
#include <QVariantMap>

/// What an XMLDictionaryParser's dictionaries hold, and the way back to text.
namespace XMLDictionary {
inline const QString nameKey = QStringLiteral("__name");
inline const QString textKey = QStringLiteral("__text");
inline const QString commentsKey = QStringLiteral("__comments");
inline const QString attributesKey = QStringLiteral("__attributes");

/// An element whose own name begins with "_" counts as an attribute here and in childNodes().
QVariantMap attributes(const QVariantMap &node);
QVariantMap childNodes(const QVariantMap &node);
QStringList comments(const QVariantMap &node);
QString nodeName(const QVariantMap &node); ///< null when the node does not hold its name
QString innerText(const QVariantMap &node); ///< several runs are joined with a line break; null without any
/// Comments, then child nodes, then the text, joined with a line break.
QString innerXML(const QVariantMap &node);
/// The node under its own name, or "zalmo" when it has none.
QString XMLString(const QVariantMap &node);
/// Writes one node: a list as its members under the name without its final "s", wrapped in the name itself.
QString XMLStringForNode(const QVariant &node, const QString &name);

QVariant valueForKeyPath(const QVariantMap &node, const QString &path);
QVariantList arrayValueForKeyPath(const QVariantMap &node, const QString &path); ///< a single value in a list
QString stringValueForKeyPath(const QVariantMap &node, const QString &path); ///< the first; null without any
QVariantMap dictionaryValueForKeyPath(const QVariantMap &node, const QString &path); ///< the first
} // namespace XMLDictionary
