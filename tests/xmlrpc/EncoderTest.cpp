#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCRequest.h"

class EncoderTest : public QObject {
    Q_OBJECT

    static QByteArray documentOf(const QByteArray &parameters, const QByteArray &method = "m")
    {
        return "<?xml version=\"1.0\"?><methodCall><methodName>" + method + "</methodName><params>" + parameters
            + "</params></methodCall>";
    }

    static QByteArray encoded(const QString &method, XMLRPCArray parameters)
    {
        XMLRPCDefaultEncoder encoder;
        encoder.setMethod(method, std::move(parameters));
        return encoder.encode();
    }

private Q_SLOTS:
    void writesDocuments()
    {
        QCOMPARE(encoded(u"wp.getOptions"_qs, {}),
            QByteArray("<?xml version=\"1.0\"?><methodCall><methodName>wp.getOptions</methodName><params></params>"
                       "</methodCall>"));
        const XMLRPCStruct filter{{u"number"_qs, 50}, {u"post_type"_qs, u"page"_qs}};
        QCOMPARE(encoded(u"wp.getPosts"_qs, {u""_qs, u"ann"_qs, filter}),
            QByteArray("<?xml version=\"1.0\"?><methodCall><methodName>wp.getPosts</methodName><params>"
                       "<param><value><string></string></value></param>"
                       "<param><value><string>ann</string></value></param>"
                       "<param><value><struct><member><name>number</name><value><i4>50</i4></value></member>"
                       "<member><name>post_type</name><value><string>page</string></value></member>"
                       "</struct></value></param></params></methodCall>"));
        QCOMPARE(encoded(u"a<b"_qs, {}), documentOf({}, "a&#60;b"));
    }

    void writesValues_data()
    {
        const TestTable<XMLRPCValue, QByteArray> row({"value", "text"});
        row("escaped text", u"a<b&c>d"_qs, "<string>a&#60;b&#38;c&#62;d</string>");
        row("text that is escaped already", u"&lt;"_qs, "<string>&#38;lt;</string>");
        row("quotes stay", u"\"it's\""_qs, "<string>\"it's\"</string>");
        row("two to four bytes", u"\u00fc\u20ac\U0001f600!"_qs,
            "<string>\xc3\xbc\xe2\x82\xac\xf0\x9f\x98\x80!</string>");
        row("half an emoji", QString(QChar(0xd83d)) + u'x', "<string>\xef\xbf\xbdx</string>");
        row("what XML cannot hold", u"a\u0013\u0000b\uffff\tc\r\nd"_qs, "<string>ab\xef\xbf\xbd\tc\r\nd</string>");
        row("escape at every place of a block", u"1234567&1234567<>123456&8"_qs,
            "<string>1234567&#38;1234567&#60;&#62;123456&#38;8</string>");
        row("64 bits go as i4", qint64(9007199254740993), "<i4>9007199254740993</i4>");
        row("negative", -1, "<i4>-1</i4>");
        row("double", 0.5, "<double>0.5</double>");
        row("whole double", 1e6, "<double>1000000</double>");
        row("true", true, "<boolean>1</boolean>");
        row("false", false, "<boolean>0</boolean>");
        row("date", QDateTime(QDate(2024, 3, 1), QTime(10, 5, 9), Qt::UTC),
            "<dateTime.iso8601>20240301T10:05:09Z</dateTime.iso8601>");
        row("date of another zone", QDateTime(QDate(2024, 3, 1), QTime(0, 30), Qt::OffsetFromUTC, 3600),
            "<dateTime.iso8601>20240229T23:30:00Z</dateTime.iso8601>");
        row("data", QByteArray(49, 'a'), "<base64>" + QByteArray("YWFh").repeated(16) + "\r\nYQ==</base64>");
        row("no data", QByteArray(""), "<base64></base64>");
        row("empty array", XMLRPCArray(), "<array><data></data></array>");
        row("array", XMLRPCArray{1, u"x"_qs},
            "<array><data><value><i4>1</i4></value><value><string>x</string></value></data></array>");
        row("empty struct", XMLRPCStruct(), "<struct></struct>");
        row("null in a struct", XMLRPCStruct{{u"k"_qs, XMLRPCValue::Null()}},
            "<struct><member><name>k</name><value><nil/></value></member></struct>");
        row("members in order of insertion", XMLRPCStruct{{u"b&"_qs, 1}, {u"a"_qs, 2}},
            "<struct><member><name>b&#38;</name><value><i4>1</i4></value></member>"
            "<member><name>a</name><value><i4>2</i4></value></member></struct>");
    }
    void writesValues()
    {
        QFETCH(XMLRPCValue, value);
        QFETCH(QByteArray, text);
        QCOMPARE(encoded(u"m"_qs, {value}), documentOf("<param><value>" + text + "</value></param>"));
    }

    void writesLongTextsAsShortOnes()
    {
        // Long enough for every block size, with something to escape at a moving place.
        const QString piece = u"plain text, <b>caf\u00e9</b> & \U0001f600 "_qs;
        const QByteArray utf8 = "plain text, &#60;b&#62;caf\xc3\xa9&#60;/b&#62; &#38; \xf0\x9f\x98\x80 ";
        QCOMPARE(encoded(u"m"_qs, {piece.repeated(2000)}),
            documentOf("<param><value><string>" + utf8.repeated(2000) + "</string></value></param>"));
    }
};

static const RegisteredTest<EncoderTest> registered;
#include "EncoderTest.moc"
