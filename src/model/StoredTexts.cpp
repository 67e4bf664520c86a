#include "model/StoredTexts.h"

#include "text/XMLBytes.h"

#include <expat.h>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace {
QString decodedReference(QByteArrayView name)
{
    if (name == "amp")
        return QStringLiteral("&");
    if (name == "lt")
        return QStringLiteral("<");
    if (name == "gt")
        return QStringLiteral(">");
    if (name == "quot")
        return QStringLiteral("\"");
    if (name == "apos")
        return QStringLiteral("'");
    if (!name.startsWith('#'))
        return {};
    const bool isHexadecimal = name.size() > 1 && name[1] == 'x';
    bool isNumber = false;
    const uint code = name.sliced(isHexadecimal ? 2 : 1).toByteArray().toUInt(&isNumber, isHexadecimal ? 16 : 10);
    return isNumber && code <= 0x10FFFF ? QString::fromUcs4(reinterpret_cast<const char32_t *>(&code), 1) : QString();
}

QString decodedOnce(QByteArrayView raw)
{
    constexpr qsizetype longestReference = 12;
    QString text = QStringLiteral("");
    qsizetype from = 0;
    for (qsizetype at = raw.indexOf('&'); at >= 0; at = raw.indexOf('&', at + 1)) {
        const qsizetype end = raw.sliced(at).first(qMin(longestReference, raw.size() - at)).indexOf(';');
        const QString character = end < 0 ? QString() : decodedReference(raw.sliced(at + 1, end - 1));
        if (character.isNull())
            continue;
        text += QString::fromUtf8(raw.sliced(from, at - from)) + character;
        from = at + end + 1;
        at += end;
    }
    return text + QString::fromUtf8(raw.sliced(from));
}

/// Where one text lies in the file.
struct FoundText {
    qsizetype begin = 0;
    qsizetype end = -1; ///< below 0 while the element is open
    bool isPlain = true; ///< nothing but characters and references within
    QString parsed; ///< the characters as the parser gives them
};

/// Follows the elements of a file and notes where the two texts begin and end.
class TextFinder {
public:
    std::optional<FoundText> title;
    std::optional<FoundText> content;
    bool isUtf8 = true;
    XML_Parser parser = nullptr;

    void start(const QByteArray &name)
    {
        if (m_current)
            m_current->isPlain = false;
        m_path.push_back(name);
        std::optional<FoundText> *slot = wanted();
        if (!slot || *slot) // only the first of each
            return;
        slot->emplace();
        m_current = &**slot;
        m_currentDepth = m_path.size();
        m_current->begin = XML_GetCurrentByteIndex(parser) + XML_GetCurrentByteCount(parser);
    }
    void end()
    {
        if (m_current && m_currentDepth == m_path.size()) {
            m_current->end = XML_GetCurrentByteIndex(parser);
            m_current = nullptr;
        }
        m_path.pop_back();
    }
    void characters(const char *text, int length)
    {
        if (m_current)
            m_current->parsed += QString::fromUtf8(text, length);
    }
    /// A comment, CDATA or instruction.
    void other()
    {
        if (m_current)
            m_current->isPlain = false;
    }

private:
    std::optional<FoundText> *wanted()
    {
        if (m_path.size() != 3 || m_path[0] != "zalmo" || m_path[1] != "post")
            return nullptr;
        return m_path[2] == "title" ? &title : m_path[2] == "content" ? &content : nullptr;
    }
    std::vector<QByteArray> m_path;
    FoundText *m_current = nullptr;
    size_t m_currentDepth = 0;
};

TextFinder &finderOf(void *user)
{
    return *static_cast<TextFinder *>(user);
}

void run(TextFinder &finder, const QByteArray &legal)
{
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    if (!parser || legal.size() > std::numeric_limits<int>::max())
        return;
    finder.parser = parser.get();
    XML_SetUserData(finder.parser, &finder);
    XML_SetElementHandler(
        finder.parser, [](void *user, const char *name, const char **) { finderOf(user).start(QByteArray(name)); },
        [](void *user, const char *) { finderOf(user).end(); });
    XML_SetCharacterDataHandler(
        finder.parser, [](void *user, const char *text, int length) { finderOf(user).characters(text, length); });
    XML_SetCommentHandler(finder.parser, [](void *user, const char *) { finderOf(user).other(); });
    XML_SetProcessingInstructionHandler(
        finder.parser, [](void *user, const char *, const char *) { finderOf(user).other(); });
    XML_SetCdataSectionHandler(
        finder.parser, [](void *user) { finderOf(user).other(); }, [](void *) {});
    XML_SetXmlDeclHandler(finder.parser, [](void *user, const char *, const char *encoding, int) {
        finderOf(user).isUtf8 = !encoding || qstricmp(encoding, "utf-8") == 0;
    });
    XML_Parse(finder.parser, legal.constData(), int(legal.size()), XML_TRUE);
}

QString textOf(const std::optional<FoundText> &found, const QByteArray &original, bool isUtf8)
{
    if (!found || found->end < 0)
        return {};
    if (isUtf8 && found->isPlain && found->begin <= found->end && found->end <= original.size())
        return decodedOnce(QByteArrayView(original).sliced(found->begin, found->end - found->begin));
    return found->parsed.isNull() ? QStringLiteral("") : found->parsed;
}
} // namespace

StoredTexts StoredTexts::fromData(const QByteArray &original, const QByteArray &legal)
{
    TextFinder finder;
    finder.isUtf8 = !XMLBytes::isUtf16(original);
    run(finder, legal);
    return {textOf(finder.title, original, finder.isUtf8), textOf(finder.content, original, finder.isUtf8)};
}
