#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Query strings.
namespace QueryComponents {
QString stringByDecodingURLFormat(const QString &text);
QHash<QString, QStringList> dictionaryFromQueryComponents(const QString &query);
} // namespace QueryComponents

/// The variables of an address, undecoded.
class URLParser {
public:
    explicit URLParser(const QString &url)
        : m_query(url.section(u'?', 1))
    {
    }
    QString valueForVariable(const QString &name) const; ///< null when there is none or it is empty

private:
    QString m_query;
};
