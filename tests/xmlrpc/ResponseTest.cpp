#include "support/Files.h"
#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCDefaultEncoder.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QStringConverter>

class ResponseTest : public QObject {
    Q_OBJECT

    static QByteArray replyWith(const QByteArray &value)
    {
        return "<?xml version=\"1.0\"?><methodResponse><params><param><value>" + value
            + "</value></param></params></methodResponse>";
    }

    static XMLRPCValue objectOf(const QByteArray &value)
    {
        const ResponsePtr response = XMLRPCResponse::fromData(replyWith(value));
        return response ? response->object() : XMLRPCValue();
    }

    static ResponsePtr responseFrom(const char *name)
    {
        return XMLRPCResponse::fromData(contentsOf(QStringLiteral(REPLIES "/") + QString::fromLatin1(name)));
    }

private Q_SLOTS:
    void readsValues_data()
    {
        const TestTable<QByteArray, XMLRPCValue> row({"xml", "value"});
        const auto member = [](const QByteArray &name, const QByteArray &value) {
            return "<member><name>" + name + "</name><value>" + value + "</value></member>";
        };
        row("no type", "plain", u"plain"_qs);
        row("string", "<string>a &lt;b&gt; &amp; &#252; &#x1F600;</string>", u"a <b> & \u00fc \U0001f600"_qs);
        row("CDATA", "<string><![CDATA[<p>&amp;</p>]]></string>", u"<p>&amp;</p>"_qs);
        row("a comment in the text", "<string>a<!-- no -->b</string>", u"ab"_qs);
        row("lines inside stay", "<string>one\n\ttwo\r\nthree</string>", u"one\n\ttwo\nthree"_qs);
        row("padding goes", "\xe3\x80\x80 <string>\xc2\xa0x y\xe2\x80\xa8\n</string>", u"x y"_qs);
        row("blanks only", "<string> \n </string>", u""_qs);
        row("empty", "", u""_qs);
        row("nil", "<nil/>", u""_qs);
        row("unknown type", "<i8>7</i8>", u"7"_qs);
        row("int", "<int> 42 </int>", 42);
        row("i4", "<i4>-7</i4>", -7);
        row("signed", "<int>+7</int>", 7);
        row("wide", "<i4>9007199254740993</i4>", qint64(9007199254740993));
        row("too wide", "<int>-99999999999999999999</int>", std::numeric_limits<qint64>::min());
        row("rubbish as int", "<int>x1</int>", 0);
        row("int with a tail", "<int>12px</int>", 12);
        row("no int", "<int/>", 0);
        row("double", "<double>-2.5e1</double>", -25.0);
        row("rubbish as double", "<double>nan</double>", 0.0);
        row("true", "<boolean>1</boolean>", true);
        row("only 1 is true", "<boolean>true</boolean>", false);
        row("data", "<base64>\r\nYWJj\r\nZA==</base64>", QByteArray("abcd"));
        row("rubbish as data", "<base64>***</base64>", QByteArray());
        row("empty array", "<array><data></data></array>", XMLRPCArray());
        row("empty struct", "<struct></struct>", XMLRPCStruct());
        row("text in a struct is dropped",
            "<struct>lost<member>lost<name>a</name>lost<value>b</value></member></struct>",
            XMLRPCStruct{{u"a"_qs, u"b"_qs}});
        row("key that comes twice", "<struct>" + member("a", "1") + member("b", "2") + member("a", "3") + "</struct>",
            XMLRPCStruct{{u"a"_qs, u"3"_qs}, {u"b"_qs, u"2"_qs}});
        row("unreadable date behind a value of its key",
            "<struct>" + member("a", "1") + member("a", "<dateTime.iso8601>?</dateTime.iso8601>") + "</struct>",
            XMLRPCStruct());
        row("value before its name", "<struct><member><value>1</value><name>a</name></member></struct>",
            XMLRPCStruct{{u"a"_qs, u"1"_qs}});
        row("member without a name", "<struct><member><value>1</value></member></struct>", XMLRPCStruct());
        row("member without a value", "<struct><member><name>a</name></member></struct>",
            XMLRPCStruct{{u"a"_qs, u""_qs}});
        row("arrays in structs in arrays",
            "<array><data><value><struct>"
                + member("a", "<array><data><value>1</value>\n<value>2</value></data></array>")
                + "</struct></value><value>3</value></data></array>",
            XMLRPCArray{XMLRPCStruct{{u"a"_qs, XMLRPCArray{u"1"_qs, u"2"_qs}}}, u"3"_qs});
        row("a struct that gives way to an array",
            "<struct>" + member("a", "1") + "</struct><array><data><value>2</value></data></array>",
            XMLRPCArray{u"2"_qs});
        row("a value in a value", "a<value>lost</value>b", u"ab"_qs);
    }
    void readsValues()
    {
        QFETCH(QByteArray, xml);
        QFETCH(XMLRPCValue, value);
        QVERIFY(objectOf(xml) == value);
    }

    void readsDates()
    {
        const auto inArray = [](const QByteArray &text) {
            return objectOf(
                "<array><data><value><dateTime.iso8601>" + text + "</dateTime.iso8601></value></data></array>");
        };
        for (const char *text :
            {"20240301T10:05:09", "2024-03-01T10:05:09", "20240301T10:05:09Z", "\n 2024-03-01T10:05:09Z "}) {
            const QDateTime date = inArray(text).array().at(0).date();
            QCOMPARE(date, QDateTime(QDate(2024, 3, 1), QTime(10, 5, 9), Qt::UTC));
            QCOMPARE(date.timeSpec(), Qt::UTC);
        }
        // the last but one is that of a post that never was published
        for (const char *text : {"garbage", "", "20240230T10:05:09", "20240301T25:05:09", "20240301T10:05:09+0100",
                 "00000000T00:00:00Z", "2024-03-01 10:05:09"})
            QVERIFY2(inArray(text).array().at(0).isNull(), text);
    }

    void cleansItsInput_data()
    {
        const TestTable<QByteArray, QByteArray, QString> row({"before", "text", "string"});
        const QString ab = u"ab"_qs;
        row("blank lines in front", "\r\n \t\n", "ab", ab);
        row("byte order marks in front", "\xef\xbb\xbf\n\xef\xbb\xbf", "ab", ab);
        row("wide blanks in front", "\xe3\x80\x80\xc2\xa0\xc2\x85", "ab", ab);
        row("controls in front", "\x01\n\x13", "ab", ab);
        row("all that XML forbids", "",
            "a" + QByteArray("\0\1\2\3\4\5\6\7\x08\x0b\x0c\x0e\x0f\x10\x11\x12\x13\x14\x1b\x1f", 20) + "b", ab);
        row("noncharacters", "", QByteArray("a\xef\xbf\xbe\xef\xbf\xbf") + "b", ab);
        row("their neighbours stay", "", "\xef\xbf\xbd\xef\xbc\x8c", u"\ufffd\uff0c"_qs);
        row("deletes and C1 stay", "", "\x7f|\xc2\x80", u"\u007f|\u0080"_qs);
        row("far inside", "", QByteArray(1000, 'x') + "\x13" + QByteArray(1000, 'y'),
            QString(1000, u'x') + QString(1000, u'y'));
    }
    void cleansItsInput()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, text);
        const auto response = XMLRPCResponse::fromData(before + replyWith(text));
        QVERIFY(response);
        QTEST(response->object().string(), "string");
    }

    void readsCharacterSets_data()
    {
        const TestTable<QByteArray, QByteArray, QByteArray> row({"charset", "text", "declared"});
        row("none", "", "\xc3\xbc", "UTF-8");
        row("declared otherwise than it is", "", "\xc3\xbc", "ISO-8859-1");
        row("declared as nobody knows", "", "\xc3\xbc", "X-NONE");
        row("utf8", "utf8", "\xc3\xbc", "UTF-8");
        row("said to be Latin 1", "ISO-8859-1", "\xc3\xbc", "UTF-8");
        row("of an unknown name", "x-none", "\xc3\xbc", "UTF-8");
        row("Latin 1", "ISO-8859-1", "\xfc", "ISO-8859-1");
        row("Latin 1, declared as UTF-8", "iso-8859-1", "\xfc", "UTF-8");
        row("Windows", "windows-1252", "\xfc", "windows-1252");
    }
    void readsCharacterSets()
    {
        QFETCH(QByteArray, charset);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, declared);
        const ResponsePtr response = XMLRPCResponse::fromData(
            "<?xml version=\"1.0\" encoding=\"" + declared + "\"?><p><value>" + text + "</value></p>", charset);
        QVERIFY(response);
        QCOMPARE(response->object().string(), u"\u00fc"_qs);
        QStringEncoder wide(QStringConverter::Utf16LE);
        const QByteArray reply = wide(u"<p><value>\U0001f600</value></p>"_qs);
        QCOMPARE(XMLRPCResponse::fromData(reply, "utf-16le")->object().string(), u"\U0001f600"_qs);
    }

    void undecodableBytesGiveNoResponse()
    {
        for (const QByteArray text : {"caf\xe9 x", "\xf0\x9f\x98", "\xed\xa0\xbd", "\xc0\xaf", "\xc3\x01\xa9"})
            QVERIFY2(!XMLRPCResponse::fromData(replyWith(text)), text.toHex());
        QVERIFY(!XMLRPCResponse::fromData(replyWith("\xfc"), "x-no-such-thing"));
    }

    void readsRepliesOfABlog()
    {
        const ResponsePtr posts = responseFrom("posts.xml");
        QVERIFY(posts && posts->object().array().size() == 2);
        const XMLRPCValue &first = posts->object().array().at(0);
        QCOMPARE(first.structure().members().size(), size_t(9));
        QCOMPARE(first[u"post_id"].string(), u"7"_qs);
        QCOMPARE(first[u"post_modified_gmt"].date(), QDateTime(QDate(2024, 3, 2), QTime(10, 30, 15), Qt::UTC));
        QVERIFY(first[u"post_content"].string().startsWith(
            u"<!-- wp:paragraph -->\n<p>It's raining on the caf\u00e9 &amp;"));
        QVERIFY(first[u"post_content"].string().contains(u"\U0001f327"));
        QCOMPARE(first[u"post_thumbnail"][u"metadata"][u"width"].integer(), 4000);
        QCOMPARE(first[u"terms"].array().at(0)[u"name"].string(), u"R&amp;D"_qs);
        QVERIFY(posts->object().array().at(1)[u"post_thumbnail"].isArray());
        QCOMPARE(
            responseFrom("options.xml")->object()[u"blog_title"][u"value"].string(), u"Tom&#039;s &amp; Ann&#039;s"_qs);
        QCOMPARE(responseFrom("media.xml")->object()[u"bits"].data(), QByteArray("abc"));
    }

    void readsFaults()
    {
        const ResponsePtr fault = responseFrom("fault.xml");
        QVERIFY(fault && fault->isFault());
        QCOMPARE(fault->faultCode(), 403);
        QCOMPARE(fault->faultString(), u"Incorrect username or password."_qs);
        const ResponsePtr wordless = XMLRPCResponse::fromData("<fault><value><struct><member><name>faultCode</name>"
                                                              "<value>404</value></member></struct></value></fault>");
        QCOMPARE(wordless->faultCode(), 404);
        QVERIFY(wordless->faultString().isEmpty());
        const ResponsePtr reply = XMLRPCResponse::fromData("<p><value>1</value><fault><value>2</value></fault></p>");
        QVERIFY(!reply->isFault() && reply->faultCode() == 0);
        QCOMPARE(reply->object().string(), u"1"_qs); // only the first value counts
    }

    void unusableRepliesHaveNoObject()
    {
        for (const QByteArray &reply : {QByteArray("<methodResponse/>"), QByteArray("\n"),
                 QByteArray("XML-RPC server accepts POST requests only."),
                 QByteArray("<!DOCTYPE html><html><p>Not found<br></html>"),
                 QByteArray("<p><value><string></value></string></p>"), replyWith("1") + "<b>Warning</b>",
                 QByteArray("<methodResponse><fault><value><struct><member><name>faultCode</name>"),
                 replyWith("a&nbsp;b")}) {
            const ResponsePtr response = XMLRPCResponse::fromData(reply);
            QVERIFY2(response && response->object().isAbsent() && !response->isFault(), reply);
            QCOMPARE(response->parseError().isEmpty(), reply == "<methodResponse/>");
        }
    }

    void readsWhatTheEncoderWrites()
    {
        const XMLRPCValue value = XMLRPCStruct{{u"text & <more>"_qs, u"\u00fc \U0001f600 \"q\" ]]>"_qs},
            {u"number"_qs, qint64(-5)}, {u"double"_qs, 0.25}, {u"flag"_qs, true},
            {u"date"_qs, QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58), Qt::UTC)},
            {u"data"_qs, QByteArray(1000, '\xa7')}, {u"list"_qs, XMLRPCArray{XMLRPCArray(), XMLRPCStruct(), u""_qs}}};
        XMLRPCDefaultEncoder encoder;
        encoder.setMethod(u"m"_qs, {value});
        QVERIFY(XMLRPCResponse::fromData(encoder.encode())->object() == value);
    }
};

static const RegisteredTest<ResponseTest> registered;
#include "ResponseTest.moc"
