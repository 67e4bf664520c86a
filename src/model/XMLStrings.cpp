#include "model/XMLStrings.h"

namespace {
QLatin1String entityFor(QChar character)
{
    switch (character.unicode()) {
    case '&':
        return QLatin1String("&amp;");
    case '<':
        return QLatin1String("&lt;");
    case '>':
        return QLatin1String("&gt;");
    case '"':
        return QLatin1String("&quot;");
    case '\'':
        return QLatin1String("&apos;");
    default:
        return {};
    }
}

struct Entity {
    QLatin1String name; ///< without the ampersand
    QChar character;
};
constexpr Entity markupEntities[] = {
    {QLatin1String("lt;"), u'<'},
    {QLatin1String("gt;"), u'>'},
    {QLatin1String("quot;"), u'"'},
    {QLatin1String("apos;"), u'\''},
};
} // namespace

QString XMLEncodedString(const QString &text)
{
    QString encoded;
    encoded.reserve(text.size() + text.size() / 8);
    qsizetype copied = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QLatin1String entity = entityFor(text.at(at));
        if (entity.isEmpty())
            continue;
        encoded.append(QStringView(text).mid(copied, at - copied)).append(entity);
        copied = at + 1;
    }
    if (copied == 0)
        return text;
    return encoded.append(QStringView(text).mid(copied));
}

// One pass that gives what the five replacements in a row give: an ampersand made of "&amp;" can begin one of the
// other four entities, but never another "&amp;".
QString XMLDecodedString(const QString &text)
{
    qsizetype ampersand = text.indexOf(u'&');
    if (ampersand < 0)
        return text;
    QString decoded;
    decoded.reserve(text.size());
    const QStringView all(text);
    qsizetype copied = 0;
    for (; ampersand >= 0; ampersand = text.indexOf(u'&', copied)) {
        decoded.append(all.mid(copied, ampersand - copied));
        copied = ampersand + 1;
        if (all.mid(copied).startsWith(QLatin1String("amp;")))
            copied += 4;
        QChar character = u'&';
        for (const Entity &entity : markupEntities) {
            if (!all.mid(copied).startsWith(entity.name))
                continue;
            character = entity.character;
            copied += entity.name.size();
            break;
        }
        decoded.append(character);
    }
    return decoded.append(all.mid(copied));
}
