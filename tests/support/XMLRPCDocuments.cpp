#include "support/XMLRPCDocuments.h"

#include <pugixml.hpp>

namespace {
QString text(const pugi::xml_node &node)
{
    return QString::fromUtf8(node.text().get());
}

QDateTime dateFromText(QString text)
{
    // Only this form is understood; WordPress ignores any other without a word.
    text.remove(QLatin1Char('Z'));
    QDateTime date = QDateTime::fromString(text, u"yyyyMMdd'T'HH:mm:ss"_qs);
    date.setTimeSpec(Qt::UTC);
    return date;
}

class CallReader {
public:
    QString error;

    XMLRPCValue value(const pugi::xml_node &node)
    {
        const pugi::xml_node typed = node.first_child();
        const QLatin1String type(typed.name());
        if (type == QLatin1String("string"))
            return text(typed).trimmed(); // as WordPress does
        if (type == QLatin1String("i4") || type == QLatin1String("int"))
            return text(typed).toLongLong();
        if (type == QLatin1String("double"))
            return text(typed).toDouble();
        if (type == QLatin1String("boolean"))
            return text(typed) == QLatin1String("1");
        if (type == QLatin1String("dateTime.iso8601"))
            return dateFromText(text(typed));
        if (type == QLatin1String("base64"))
            return QByteArray::fromBase64(QByteArray(typed.text().get()));
        if (type == QLatin1String("nil"))
            return XMLRPCValue::Null();
        if (type == QLatin1String("array"))
            return array(typed);
        if (type == QLatin1String("struct"))
            return structure(typed);
        error = u"a value of kind \"%1\""_qs.arg(type);
        return {};
    }

private:
    XMLRPCArray array(const pugi::xml_node &node)
    {
        XMLRPCArray values;
        for (const pugi::xml_node &element : node.child("data").children("value"))
            values.push_back(value(element));
        return values;
    }

    XMLRPCStruct structure(const pugi::xml_node &node)
    {
        XMLRPCStruct values;
        for (const pugi::xml_node &member : node.children("member"))
            values.insert(text(member.child("name")), value(member.child("value")));
        return values;
    }
};

struct ReplyWriter {
    QByteArray bytes;

    void tagged(const char *tag, const QString &text)
    {
        bytes += QByteArray("<value><") + tag + '>' + text.toHtmlEscaped().toUtf8() + "</" + tag + "></value>\n";
    }
    void operator()(std::monostate) { tagged("string", {}); }
    void operator()(XMLRPCValue::Null) { bytes += "<value><nil/></value>\n"; }
    void operator()(bool value) { tagged("boolean", value ? u"1"_qs : u"0"_qs); }
    void operator()(qint64 value) { tagged("int", QString::number(value)); }
    void operator()(double value) { tagged("double", QString::number(value)); }
    void operator()(const QString &value) { tagged("string", value); }
    void operator()(const QDateTime &value)
    {
        tagged("dateTime.iso8601", value.toUTC().toString(u"yyyyMMdd'T'HH:mm:ss"_qs));
    }
    void operator()(const QByteArray &value) { tagged("base64", QString::fromLatin1(value.toBase64())); }
    void operator()(const XMLRPCArray &values)
    {
        bytes += "<value><array><data>\n";
        for (const XMLRPCValue &value : values)
            std::visit(*this, value.variant());
        bytes += "</data></array></value>\n";
    }
    void operator()(const XMLRPCStruct &values)
    {
        bytes += "<value><struct>\n";
        for (const auto &[name, value] : values.members()) {
            bytes += "<member><name>" + name.toHtmlEscaped().toUtf8() + "</name>";
            std::visit(*this, value.variant());
            bytes += "</member>\n";
        }
        bytes += "</struct></value>\n";
    }
};

struct Describer {
    QString operator()(std::monostate) const { return u"absent"_qs; }
    QString operator()(XMLRPCValue::Null) const { return u"null"_qs; }
    QString operator()(bool value) const { return value ? u"true"_qs : u"false"_qs; }
    QString operator()(qint64 value) const { return QString::number(value); }
    QString operator()(double value) const { return QString::number(value) + u"d"_qs; }
    QString operator()(const QString &value) const { return QLatin1Char('"') + value + QLatin1Char('"'); }
    QString operator()(const QDateTime &value) const { return value.toUTC().toString(u"'@'yyyyMMdd'T'HH:mm:ss"_qs); }
    QString operator()(const QByteArray &value) const { return u"<%1 bytes>"_qs.arg(value.size()); }
    QString operator()(const XMLRPCArray &values) const
    {
        QStringList texts;
        for (const XMLRPCValue &value : values)
            texts.append(XMLRPCDocuments::described(value));
        return QLatin1Char('[') + texts.join(u", "_qs) + QLatin1Char(']');
    }
    QString operator()(const XMLRPCStruct &values) const
    {
        QStringList texts;
        for (const auto &[name, value] : values.members())
            texts.append(u"\"%1\": %2"_qs.arg(name, XMLRPCDocuments::described(value)));
        return QLatin1Char('{') + texts.join(u", "_qs) + QLatin1Char('}');
    }
};

QByteArray document(const QByteArray &inside)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<methodResponse>\n" + inside + "</methodResponse>\n";
}

QByteArray written(const XMLRPCValue &value)
{
    ReplyWriter writer;
    std::visit([&](const auto &held) { writer(held); }, value.variant());
    return writer.bytes;
}
} // namespace

XMLRPCDocuments::MethodCall XMLRPCDocuments::parseCall(const QByteArray &document)
{
    pugi::xml_document parsed;
    const pugi::xml_parse_result result = parsed.load_buffer(document.constData(), size_t(document.size()),
        pugi::parse_default | pugi::parse_ws_pcdata_single, pugi::encoding_utf8);
    MethodCall call;
    if (!result) {
        call.error = QString::fromUtf8(result.description());
        return call;
    }
    const pugi::xml_node root = parsed.child("methodCall");
    call.method = text(root.child("methodName"));
    CallReader reader;
    for (const pugi::xml_node &parameter : root.child("params").children("param"))
        call.parameters.push_back(reader.value(parameter.child("value")));
    call.error = reader.error;
    return call;
}

QByteArray XMLRPCDocuments::response(const XMLRPCValue &value)
{
    return document("<params>\n<param>\n" + written(value) + "</param>\n</params>\n");
}

QByteArray XMLRPCDocuments::fault(int code, const QString &text)
{
    const XMLRPCStruct fault{{u"faultCode"_qs, code}, {u"faultString"_qs, text}};
    return document("<fault>\n" + written(fault) + "</fault>\n");
}

QString XMLRPCDocuments::described(const XMLRPCValue &value)
{
    return std::visit(Describer(), value.variant());
}
