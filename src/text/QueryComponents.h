#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>

/// Query strings.
namespace QueryComponents {
QString stringByDecodingURLFormat(const QString &text);
QString stringByEncodingURLFormat(const QString &text);
QHash<QString, QStringList> dictionaryFromQueryComponents(const QString &query);
QHash<QString, QStringList> queryComponents(const QUrl &url);
QString stringFromQueryComponents(const QMap<QString, QStringList> &components);
} // namespace QueryComponents

/// The variables of an address, undecoded.
class URLParser {
public:
    explicit URLParser(const QString &url);
    QString valueForVariable(const QString &name) const; ///< null when there is none or it is empty

private:
    QStringList m_variables;
};
