#include "xmlrpc/XMLRPCEventBasedParser.h"

#include "platform/ZLLog.h"

#include <expat.h>

XMLRPCEventBasedParser::XMLRPCEventBasedParser(QByteArrayView utf8)
    // The bytes are UTF-8 by now, whatever encoding the declaration of the document names.
    : m_utf8(utf8)
    , m_parser(XML_ParserCreate("UTF-8"))
{
    XML_SetUserData(m_parser, this);
    XML_SetElementHandler(
        m_parser, [](void *self, const char *name, const char **) { of(self).startElement(name); },
        [](void *self, const char *name) { of(self).endElement(name); });
    XML_SetCharacterDataHandler(m_parser, [](void *self, const char *characters, int length) {
        of(self).m_delegate.foundCharacters({characters, size_t(length)});
    });
    XML_SetStartDoctypeDeclHandler(m_parser, [](void *self, const char *, const char *, const char *, int) {
        of(self).refuse(QStringLiteral("a document type has no place in a reply"));
    });
}

XMLRPCEventBasedParser::~XMLRPCEventBasedParser()
{
    XML_ParserFree(m_parser);
}

XMLRPCValue XMLRPCEventBasedParser::parse()
{
    if (m_utf8.size() > MaximumSize) {
        m_error = QStringLiteral("the reply is larger than %1 MB").arg(MaximumSize >> 20);
    } else if (XML_Parse(m_parser, m_utf8.data(), int(m_utf8.size()), XML_TRUE) != XML_STATUS_OK && m_error.isNull()) {
        m_error = expatError();
    }
    if (m_error.isNull())
        return m_delegate.takeElementValue();
    ZLLog(QStringLiteral("error parsing request - %1").arg(m_error));
    return {};
}

void XMLRPCEventBasedParser::startElement(std::string_view name)
{
    m_delegate.didStartElement(replyElementNamed(name));
    if (m_delegate.isTooDeep()) {
        refuse(QStringLiteral("values are nested more than %1 deep").arg(XMLRPCEventBasedParserDelegate::MaximumDepth));
    } else if (m_delegate.hasTooManyValues()) {
        refuse(
            QStringLiteral("the reply holds more than %1 values").arg(XMLRPCEventBasedParserDelegate::MaximumValues));
    }
}

void XMLRPCEventBasedParser::endElement(std::string_view name)
{
    // Expat still reports the end of an empty element after it was told to stop.
    if (m_error.isNull())
        m_delegate.didEndElement(replyElementNamed(name));
}

void XMLRPCEventBasedParser::refuse(const QString &error)
{
    m_error = error;
    XML_StopParser(m_parser, XML_FALSE);
}

QString XMLRPCEventBasedParser::expatError() const
{
    return QStringLiteral("%1 in line %2, column %3")
        .arg(QString::fromUtf8(XML_ErrorString(XML_GetErrorCode(m_parser))))
        .arg(XML_GetCurrentLineNumber(m_parser))
        .arg(XML_GetCurrentColumnNumber(m_parser));
}
