#include "text/QueryComponents.h"

#include <QUrl>

QString QueryComponents::stringByDecodingURLFormat(const QString &text)
{
    return QUrl::fromPercentEncoding(QString(text).replace(u'+', u' ').toUtf8());
}

QHash<QString, QStringList> QueryComponents::dictionaryFromQueryComponents(const QString &query)
{
    QHash<QString, QStringList> components;
    const QStringList pieces = query.split(u'&');
    for (const QString &piece : pieces) {
        const QStringList parts = piece.split(u'=');
        if (parts.size() >= 2)
            components[stringByDecodingURLFormat(parts[0])].append(stringByDecodingURLFormat(parts[1]));
    }
    return components;
}

QString URLParser::valueForVariable(const QString &name) const
{
    const QString start = name + u'=';
    for (QStringView variable : QStringView(m_query).split(u'&')) {
        while (variable.startsWith(u'?'))
            variable = variable.sliced(1);
        if (variable.size() > start.size() && variable.startsWith(start))
            return variable.sliced(start.size()).toString();
    }
    return {};
}
