#include "xmlrpc/XMLRPCDefaultEncoder.h"

#include "text/Base64.h"
#include "xmlrpc/XMLRPCText.h"

#include <QTimeZone>
#include <cstring>

namespace {
// A document is written twice by the same code: first to a sink that only counts, then to one that fills a buffer of
// that length. An upload of many megabytes thus needs its own bytes and the document, and nothing beside.
class LengthSink {
public:
    void raw(QByteArrayView text) { m_length += text.size(); }
    void text(QStringView text) { m_length += XMLRPCText::escapedUtf8Room(text); }
    void base64(const QByteArray &bytes) { m_length += Base64::encodedLength(bytes.size()); }
    qsizetype length() const { return m_length; }

private:
    qsizetype m_length = 0;
};

class BufferSink {
public:
    explicit BufferSink(char *out)
        : m_out(out)
    {
    }
    void raw(QByteArrayView text)
    {
        std::memcpy(m_out, text.data(), size_t(text.size()));
        m_out += text.size();
    }
    void text(QStringView text) { m_out = XMLRPCText::writeEscapedUtf8(text, m_out); }
    void base64(const QByteArray &bytes) { m_out = Base64::encode(bytes.constData(), bytes.size(), m_out); }
    const char *end() const { return m_out; }

private:
    char *m_out;
};

template <class Sink>
class DocumentWriter {
public:
    explicit DocumentWriter(Sink &sink)
        : m_sink(sink)
    {
    }

    void document(const QString &method, const XMLRPCArray &parameters)
    {
        m_sink.raw("<?xml version=\"1.0\"?><methodCall><methodName>");
        m_sink.text(method);
        m_sink.raw("</methodName><params>");
        for (const XMLRPCValue &parameter : parameters) {
            m_sink.raw("<param>");
            value(parameter);
            m_sink.raw("</param>");
        }
        m_sink.raw("</params></methodCall>");
    }

private:
    void value(const XMLRPCValue &value)
    {
        std::visit([this](const auto &held) { this->encode(held); }, value.variant());
    }

    void encode(std::monostate) { Q_ASSERT_X(false, "XMLRPCDefaultEncoder", "an absent value has no form"); }
    // A null marker has a form only as the value of a member.
    void encode(XMLRPCValue::Null) { tagged("string", {}); }
    void encode(bool flag) { tagged("boolean", flag ? "1" : "0"); }
    // Wider numbers go under i4 as well: WordPress reads every integer alike and knows no wider tag.
    void encode(qint64 number) { tagged("i4", QByteArray::number(number)); }
    void encode(double number) { tagged("double", QByteArray::number(number, 'g', 16)); }

    void encode(const QDateTime &date)
    {
        tagged("dateTime.iso8601", date.toUTC().toString(u"yyyyMMdd'T'HH:mm:ss'Z'").toLatin1());
    }

    void encode(const QString &text)
    {
        m_sink.raw("<value><string>");
        m_sink.text(text);
        m_sink.raw("</string></value>");
    }

    void encode(const QByteArray &bytes)
    {
        m_sink.raw("<value><base64>");
        m_sink.base64(bytes);
        m_sink.raw("</base64></value>");
    }

    void encode(const XMLRPCArray &array)
    {
        m_sink.raw("<value><array><data>");
        for (const XMLRPCValue &element : array)
            value(element);
        m_sink.raw("</data></array></value>");
    }

    void encode(const XMLRPCStruct &structure)
    {
        m_sink.raw("<value><struct>");
        for (const auto &[name, held] : structure.members()) {
            m_sink.raw("<member><name>");
            m_sink.text(name);
            m_sink.raw("</name>");
            if (held.isNull())
                m_sink.raw("<value><nil/></value>");
            else
                value(held);
            m_sink.raw("</member>");
        }
        m_sink.raw("</struct></value>");
    }

    void tagged(QByteArrayView tag, QByteArrayView text)
    {
        m_sink.raw("<value><");
        m_sink.raw(tag);
        m_sink.raw(">");
        m_sink.raw(text);
        m_sink.raw("</");
        m_sink.raw(tag);
        m_sink.raw("></value>");
    }

    Sink &m_sink;
};
} // namespace

QByteArray XMLRPCDefaultEncoder::encode() const
{
    LengthSink length;
    DocumentWriter(length).document(m_method, m_parameters);
    QByteArray document(length.length(), Qt::Uninitialized);
    BufferSink buffer(document.data());
    DocumentWriter(buffer).document(m_method, m_parameters);
    document.truncate(buffer.end() - document.constData());
    return document;
}

void XMLRPCDefaultEncoder::setMethod(const QString &method, XMLRPCArray parameters)
{
    m_method = method;
    m_parameters = std::move(parameters);
}
