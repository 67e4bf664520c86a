#include "xmlrpc/XMLRPCResponse.h"

#include "xmlrpc/PlainReplyScanner.h"
#include "xmlrpc/ReplyText.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"

std::shared_ptr<const XMLRPCResponse> XMLRPCResponse::fromData(
    const QByteArray &data, const QByteArray &charset, const QDateTime &date)
{
    std::optional<ReplyText> text = ReplyText::fromData(data, charset);
    if (!text)
        return nullptr;
    const std::shared_ptr<XMLRPCResponse> response(new XMLRPCResponse);
    if (!response->scan(text->view())) {
        // The scanner refuses whatever is not UTF-8 or forbidden, so that only now such bytes have to be looked for.
        if (!text->view().isValidUtf8())
            return nullptr;
        if (!text->dropForbidden() || !response->scan(text->view()))
            response->parse(text->view());
    }
    response->m_date = date;
    return response;
}

bool XMLRPCResponse::scan(QByteArrayView utf8)
{
    std::optional<PlainReplyScanner::Reply> reply = PlainReplyScanner(utf8).scan();
    if (!reply)
        return false;
    m_object = std::move(reply->object);
    m_isFault = reply->isFault;
    return true;
}

void XMLRPCResponse::parse(QByteArrayView utf8)
{
    XMLRPCEventBasedParser parser(utf8);
    m_object = parser.parse();
    m_parseError = parser.parserError();
    m_isFault = parser.isFault() && m_parseError.isNull();
}

qint64 XMLRPCResponse::faultCode() const
{
    return m_isFault ? m_object[u"faultCode"].integer() : 0;
}

QString XMLRPCResponse::faultString() const
{
    return m_isFault ? m_object[u"faultString"].string() : QString();
}
