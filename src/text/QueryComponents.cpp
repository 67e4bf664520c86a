#include "text/QueryComponents.h"

#include <QUrl>
#include <algorithm>

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

URLParser::URLParser(const QString &url)
{
    const qsizetype mark = url.indexOf(u'?');
    if (mark < 0)
        return;
    const QStringList stretches = url.sliced(mark).split(u'&');
    for (const QString &stretch : stretches) {
        const auto begin = std::find_if(stretch.cbegin(), stretch.cend(), [](QChar c) { return c != u'?'; });
        if (begin != stretch.cend())
            m_variables.append(stretch.sliced(begin - stretch.cbegin()));
    }
}

QString URLParser::valueForVariable(const QString &name) const
{
    const QString start = name + u'=';
    for (const QString &variable : m_variables) {
        if (variable.size() > start.size() && variable.startsWith(start))
            return variable.sliced(start.size());
    }
    return {};
}
