#include "model/XMLDictionaryParser.h"

#include "model/XMLDictionaryBuilder.h"
#include "platform/ZLAtomicFile.h"

#include <expat.h>
#include <limits>

namespace {
struct Parse {
    XMLDictionaryBuilder builder;
    XML_Parser parser;
};

Parse &parseOf(void *user)
{
    return *static_cast<Parse *>(user);
}

void startElement(void *user, const char *name, const char **attributes)
{
    std::vector<XMLDictionaryBuilder::Attribute> list;
    for (; *attributes; attributes += 2)
        list.push_back({QString::fromUtf8(attributes[0]), QString::fromUtf8(attributes[1])});
    if (!parseOf(user).builder.startElement(QString::fromUtf8(name), list))
        XML_StopParser(parseOf(user).parser, XML_FALSE);
}
void endElement(void *user, const char *)
{
    parseOf(user).builder.endElement();
}
void characters(void *user, const char *text, int length)
{
    parseOf(user).builder.characters(QString::fromUtf8(text, length));
}
void comment(void *user, const char *text)
{
    parseOf(user).builder.comment(QString::fromUtf8(text));
}
} // namespace

std::optional<QVariantMap> XMLDictionaryParser::dictionaryWithData(const QByteArray &data)
{
    m_complete = false;
    if (data.size() > std::numeric_limits<int>::max())
        return std::nullopt;
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    if (!parser)
        return std::nullopt;
    Parse parse{XMLDictionaryBuilder(*this), parser.get()};
    XML_SetUserData(parser.get(), &parse);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characters); // CDATA comes here as well
    XML_SetCommentHandler(parser.get(), comment);
    m_complete = XML_Parse(parser.get(), data.constData(), int(data.size()), XML_TRUE) == XML_STATUS_OK;
    return parse.builder.root();
}

std::optional<QVariantMap> XMLDictionaryParser::dictionaryWithString(const QString &text)
{
    return dictionaryWithData(text.toUtf8());
}

std::optional<QVariantMap> XMLDictionaryParser::dictionaryWithFile(const QString &path)
{
    return dictionaryWithData(ZLAtomicFile::read(path).value_or(QByteArray()));
}
