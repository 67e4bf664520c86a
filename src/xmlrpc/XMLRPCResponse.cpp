#include "xmlrpc/XMLRPCResponse.h"

#include "xmlrpc/PlainReplyScanner.h"
#include "xmlrpc/ReplyText.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"

namespace {
// What is kept of the text, for the log alone: a list of posts would otherwise lie in memory twice.
constexpr qsizetype KeptBody = 4096;

QString summary(const XMLRPCValue &value)
{
    if (value.isArray())
        return QStringLiteral("array of %1").arg(value.array().size());
    if (value.isStruct())
        return QStringLiteral("struct of %1").arg(value.structure().members().size());
    return value.string();
}
} // namespace

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
    response->m_body = text->view().first(std::min(text->view().size(), KeptBody)).toByteArray();
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

QString XMLRPCResponse::description() const
{
    QString text = QStringLiteral("[body=%1").arg(QString::fromUtf8(m_body));
    if (m_isFault)
        text += QStringLiteral(", fault[%1]='%2'").arg(QString::number(faultCode()), faultString());
    else
        text += QStringLiteral(", object=%1").arg(summary(m_object));
    return text + u']';
}
