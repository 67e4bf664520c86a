#include "model/XMLStrings.h"

#include "text/PlainXML.h"

#include <QVarLengthArray>
#include <algorithm>
#include <cstring>

namespace {
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
    return text.toHtmlEscaped().replace(u'\'', QLatin1String("&apos;"));
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

QString XMLDecodedOnce(QByteArrayView utf8)
{
    const char *const end = utf8.end();
    const auto find = [end](const char *from) {
        const void *found = std::memchr(from, '&', size_t(end - from));
        return found ? static_cast<const char *>(found) : end;
    };
    const char *ampersand = find(utf8.begin());
    if (ampersand == end)
        return QString::fromUtf8(utf8);
    QVarLengthArray<char, 2048> decoded(utf8.size());
    char *to = std::copy(utf8.begin(), ampersand, decoded.data());
    while (ampersand != end) {
        const QByteArrayView rest(ampersand, end);
        qsizetype length = 1;
        if (const PlainXML::Reference *reference = PlainXML::reference(rest)) {
            *to++ = reference->character;
            length = reference->text.size();
        } else if (const PlainXML::Character character = PlainXML::numericReference(rest); character.length > 0) {
            const QByteArray bytes = QString::fromUcs4(&character.code, 1).toUtf8();
            to = std::copy(bytes.begin(), bytes.end(), to);
            length = character.length;
        } else {
            *to++ = '&';
        }
        const char *const from = ampersand + length;
        ampersand = find(from);
        to = std::copy(from, ampersand, to);
    }
    return QString::fromUtf8(decoded.data(), to - decoded.data());
}
