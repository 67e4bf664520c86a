#include "support/XMLRPCDocuments.h"

#include "xmlrpc/XMLRPCDefaultEncoder.h"

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

/// The value of a node; what it cannot read goes into `error`.
XMLRPCValue valueOf(const pugi::xml_node &node, QString &error)
{
    const pugi::xml_node typed = node.first_child();
    const QString type = QString::fromLatin1(typed.name());
    if (type == u"string")
        return text(typed).trimmed(); // as WordPress does
    if (type == u"i4" || type == u"int")
        return text(typed).toLongLong();
    if (type == u"double")
        return text(typed).toDouble();
    if (type == u"boolean")
        return text(typed) == u"1";
    if (type == u"dateTime.iso8601")
        return dateFromText(text(typed));
    if (type == u"base64")
        return QByteArray::fromBase64(QByteArray(typed.text().get()));
    if (type == u"array") {
        XMLRPCArray values;
        for (const pugi::xml_node &element : typed.child("data").children("value"))
            values.push_back(valueOf(element, error));
        return values;
    }
    if (type == u"struct") {
        XMLRPCStruct values;
        for (const pugi::xml_node &member : typed.children("member"))
            values.insert(text(member.child("name")), valueOf(member.child("value"), error));
        return values;
    }
    error = u"a value of kind \"%1\""_qs.arg(type);
    return {};
}

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

/// A value as the program itself writes it, which it may, since calls are read here by other means.
QByteArray written(const XMLRPCValue &value)
{
    XMLRPCDefaultEncoder encoder;
    encoder.setMethod({}, {value});
    const QByteArray call = encoder.encode();
    const qsizetype start = call.indexOf("<value>");
    return call.mid(start, call.lastIndexOf("</value>") + 8 - start);
}

QByteArray document(const QByteArray &inside)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<methodResponse>\n" + inside + "</methodResponse>\n";
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
    for (const pugi::xml_node &parameter : root.child("params").children("param"))
        call.parameters.push_back(valueOf(parameter.child("value"), call.error));
    return call;
}

QByteArray XMLRPCDocuments::response(const XMLRPCValue &value)
{
    return document("<params>\n<param>\n" + written(value) + "\n</param>\n</params>\n");
}

QByteArray XMLRPCDocuments::fault(int code, const QString &text)
{
    const XMLRPCStruct fault{{u"faultCode"_qs, code}, {u"faultString"_qs, text}};
    return document("<fault>\n" + written(fault) + "\n</fault>\n");
}

QString XMLRPCDocuments::described(const XMLRPCValue &value)
{
    return std::visit(Describer(), value.variant());
}
