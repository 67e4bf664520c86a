#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCDefaultEncoder.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QFile>
#include <QStringConverter>
#include <QTest>

Q_DECLARE_METATYPE(XMLRPCValue)

class ResponseTest : public QObject {
    Q_OBJECT

    static QByteArray replyWith(const QByteArray &value)
    {
        return "<?xml version=\"1.0\"?><methodResponse><params><param>" + value + "</param></params></methodResponse>";
    }

    static XMLRPCValue objectOf(const QByteArray &value)
    {
        const ResponsePtr response = XMLRPCResponse::fromData(replyWith(value));
        return response ? response->object() : XMLRPCValue();
    }

    static ResponsePtr responseFrom(const char *name)
    {
        QFile file(QStringLiteral(REPLIES "/") + QString::fromLatin1(name));
        return file.open(QIODevice::ReadOnly) ? XMLRPCResponse::fromData(file.readAll()) : nullptr;
    }

private Q_SLOTS:
    void readsValues_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<XMLRPCValue>("value");
        const auto row = [](const char *name, const QByteArray &xml, const XMLRPCValue &value) {
            QTest::newRow(name) << "<value>" + xml + "</value>" << value;
        };
        row("no type", "plain", QStringLiteral("plain"));
        row("string", "<string>a &lt;b&gt; &amp; &#252; &#x1F600;</string>",
            QStringLiteral("a <b> & \u00fc \U0001f600"));
        row("CDATA", "<string><![CDATA[<p>&amp;</p>]]></string>", QStringLiteral("<p>&amp;</p>"));
        row("a comment in the text", "<string>a<!-- no -->b</string>", QStringLiteral("ab"));
        row("lines inside stay", "<string>one\n\ttwo\r\nthree</string>", QStringLiteral("one\n\ttwo\nthree"));
        row("padding goes", "<string>  padded \n</string>", QStringLiteral("padded"));
        row("padding of other scripts goes", "\xe3\x80\x80 <string>\xc2\xa0x y\xe2\x80\xa8</string>",
            QStringLiteral("x y"));
        row("blanks only", "<string> \n </string>", QStringLiteral(""));
        row("empty", "", QStringLiteral(""));
        row("nil", "<nil/>", QStringLiteral(""));
        row("unknown type", "<i8>7</i8>", QStringLiteral("7"));
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
        row("array", "<array><data><value><int>1</int></value>\n<value>x</value></data></array>",
            XMLRPCArray{1, QStringLiteral("x")});
        row("empty struct", "<struct></struct>", XMLRPCStruct());
        row("text in a struct is dropped",
            "<struct>lost<member>lost<name>a</name>lost<value>b</value></member></struct>",
            XMLRPCStruct{{QStringLiteral("a"), QStringLiteral("b")}});
        row("key that comes twice",
            "<struct><member><name>a</name><value>1</value></member><member><name>b</name><value>2</value></member>"
            "<member><name>a</name><value>3</value></member></struct>",
            XMLRPCStruct{{QStringLiteral("a"), QStringLiteral("3")}, {QStringLiteral("b"), QStringLiteral("2")}});
        row("value before its name", "<struct><member><value>1</value><name>a</name></member></struct>",
            XMLRPCStruct{{QStringLiteral("a"), QStringLiteral("1")}});
        row("member without a name", "<struct><member><value>1</value></member></struct>", XMLRPCStruct());
        row("member without a value", "<struct><member><name>a</name></member></struct>",
            XMLRPCStruct{{QStringLiteral("a"), QStringLiteral("")}});
        row("arrays in structs in arrays",
            "<array><data><value><struct><member><name>a</name><value><array><data><value>1</value><value>2</value>"
            "</data></array></value></member></struct></value><value>3</value></data></array>",
            XMLRPCArray{XMLRPCStruct{{QStringLiteral("a"), XMLRPCArray{QStringLiteral("1"), QStringLiteral("2")}}},
                QStringLiteral("3")});
        row("a struct that gives way to an array",
            "<struct><member><name>a</name><value>1</value></member></struct><array><data><value>2</value></data></"
            "array>",
            XMLRPCArray{QStringLiteral("2")});
        row("a value in a value", "a<value>lost</value>b", QStringLiteral("ab"));
    }
    void readsValues()
    {
        QFETCH(QByteArray, xml);
        QFETCH(XMLRPCValue, value);
        QVERIFY(objectOf(xml) == value);
    }

    void readsDates_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QDateTime>("date");
        const QDateTime date(QDate(2024, 3, 1), QTime(10, 5, 9), Qt::UTC);
        QTest::newRow("without dashes") << QByteArray("20240301T10:05:09") << date;
        QTest::newRow("with dashes") << QByteArray("2024-03-01T10:05:09") << date;
        QTest::newRow("with a zone letter") << QByteArray("20240301T10:05:09Z") << date;
        QTest::newRow("padded") << QByteArray("\n 2024-03-01T10:05:09Z ") << date;
        QTest::newRow("garbage") << QByteArray("garbage") << QDateTime();
        QTest::newRow("empty") << QByteArray() << QDateTime();
        QTest::newRow("no such day") << QByteArray("20240230T10:05:09") << QDateTime();
        QTest::newRow("of a post that never was published") << QByteArray("00000000T00:00:00Z") << QDateTime();
        QTest::newRow("no such hour") << QByteArray("20240301T25:05:09") << QDateTime();
        QTest::newRow("an offset") << QByteArray("20240301T10:05:09+0100") << QDateTime();
        QTest::newRow("a blank for the T") << QByteArray("2024-03-01 10:05:09") << QDateTime();
    }
    void readsDates()
    {
        QFETCH(QByteArray, text);
        QFETCH(QDateTime, date);
        const QByteArray value = "<value><dateTime.iso8601>" + text + "</dateTime.iso8601></value>";
        const XMLRPCValue inArray = objectOf("<value><array><data>" + value + "</data></array></value>");
        const XMLRPCValue inStruct =
            objectOf("<value><struct><member><name>x</name>" + value + "</member></struct></value>");
        if (date.isValid()) {
            QCOMPARE(inArray.array().at(0).date(), date);
            QCOMPARE(inStruct[u"x"].date().timeSpec(), Qt::UTC);
        } else {
            QVERIFY(inArray.array().at(0).isNull());
            QVERIFY(inStruct.isStruct() && inStruct[u"x"].isAbsent());
        }
    }

    void anUnreadableDateRemovesAnEarlierValue()
    {
        const XMLRPCValue object =
            objectOf("<value><struct><member><name>x</name><value>1</value></member><member><name>x</name><value>"
                     "<dateTime.iso8601>?</dateTime.iso8601></value></member></struct></value>");
        QCOMPARE(object, XMLRPCValue(XMLRPCStruct()));
    }

    void cleansItsInput_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("string");
        const QString ab = QStringLiteral("ab");
        QTest::newRow("nothing to do") << QByteArray() << QByteArray("ab") << ab;
        QTest::newRow("blank lines in front") << QByteArray("\r\n \t\n") << QByteArray("ab") << ab;
        QTest::newRow("byte order marks in front")
            << QByteArray("\xef\xbb\xbf\n\xef\xbb\xbf") << QByteArray("ab") << ab;
        QTest::newRow("wide blanks in front") << QByteArray("\xe3\x80\x80\xc2\xa0\xc2\x85") << QByteArray("ab") << ab;
        QTest::newRow("controls in front") << QByteArray("\x01\n\x13", 3) << QByteArray("ab") << ab;
        QTest::newRow("U+0013 and U+0001") << QByteArray()
                                           << QByteArray("a\x13\x01\x13"
                                                         "b")
                                           << ab;
        QTest::newRow("all that XML forbids")
            << QByteArray()
            << QByteArray("a\0\2\3\4\5\6\7\x08\x0b\x0c\x0e\x0f\x10\x11\x12\x14\x1b\x1f"
                          "b",
                   20)
            << ab;
        QTest::newRow("noncharacters") << QByteArray()
                                       << QByteArray("a\xef\xbf\xbe\xef\xbf\xbf"
                                                     "b")
                                       << ab;
        QTest::newRow("their neighbours stay")
            << QByteArray() << QByteArray("\xef\xbf\xbd\xef\xbc\x8c") << QStringLiteral("\ufffd\uff0c");
        QTest::newRow("deletes and C1 stay")
            << QByteArray() << QByteArray("\x7f|\xc2\x80") << QStringLiteral("\u007f|\u0080");
        QTest::newRow("far inside") << QByteArray() << QByteArray(1000, 'x') + "\x13" + QByteArray(1000, 'y')
                                    << QString(1000, u'x') + QString(1000, u'y');
    }
    void cleansItsInput()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, text);
        const auto response = XMLRPCResponse::fromData(before + replyWith("<value>" + text + "</value>"));
        QVERIFY(response);
        QTEST(response->object().string(), "string");
    }

    void readsCharacterSets_data()
    {
        QTest::addColumn<QByteArray>("charset");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("declared");
        QTest::newRow("none") << QByteArray() << QByteArray("\xc3\xbc") << QByteArray("UTF-8");
        QTest::newRow("declared otherwise than it is")
            << QByteArray() << QByteArray("\xc3\xbc") << QByteArray("ISO-8859-1");
        QTest::newRow("declared as nobody knows") << QByteArray() << QByteArray("\xc3\xbc") << QByteArray("X-NONE");
        QTest::newRow("UTF-8") << QByteArray("UTF-8") << QByteArray("\xc3\xbc") << QByteArray("UTF-8");
        QTest::newRow("utf8") << QByteArray("utf8") << QByteArray("\xc3\xbc") << QByteArray("UTF-8");
        QTest::newRow("said to be Latin 1")
            << QByteArray("ISO-8859-1") << QByteArray("\xc3\xbc") << QByteArray("UTF-8");
        QTest::newRow("of an unknown name") << QByteArray("x-none") << QByteArray("\xc3\xbc") << QByteArray("UTF-8");
        QTest::newRow("Latin 1") << QByteArray("ISO-8859-1") << QByteArray("\xfc") << QByteArray("ISO-8859-1");
        QTest::newRow("Latin 1, declared as UTF-8")
            << QByteArray("iso-8859-1") << QByteArray("\xfc") << QByteArray("UTF-8");
        QTest::newRow("Windows") << QByteArray("windows-1252") << QByteArray("\xfc") << QByteArray("windows-1252");
    }
    void readsCharacterSets()
    {
        QFETCH(QByteArray, charset);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, declared);
        const QByteArray reply =
            "<?xml version=\"1.0\" encoding=\"" + declared + "\"?><p><value>" + text + "</value></p>";
        const ResponsePtr response = XMLRPCResponse::fromData(reply, charset);
        QVERIFY(response);
        QCOMPARE(response->object().string(), QStringLiteral("\u00fc"));
    }

    void readsUtf16()
    {
        QStringEncoder encoder(QStringConverter::Utf16LE);
        const QByteArray reply = encoder(QStringLiteral("<p><value>\u00fc\U0001f600</value></p>"));
        const ResponsePtr response = XMLRPCResponse::fromData(reply, "utf-16le");
        QVERIFY(response);
        QCOMPARE(response->object().string(), QStringLiteral("\u00fc\U0001f600"));
    }

    void undecodableBytesGiveNoResponse_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("charset");
        QTest::newRow("Latin 1 as UTF-8") << QByteArray("caf\xe9 x") << QByteArray();
        QTest::newRow("cut inside a character") << QByteArray("\xf0\x9f\x98") << QByteArray("utf-8");
        QTest::newRow("half a surrogate pair") << QByteArray("\xed\xa0\xbd") << QByteArray();
        QTest::newRow("overlong") << QByteArray("\xc0\xaf") << QByteArray();
        QTest::newRow("valid once cleaned") << QByteArray("\xc3\x01\xa9") << QByteArray();
        QTest::newRow("unknown character set") << QByteArray("\xfc") << QByteArray("x-no-such-thing");
    }
    void undecodableBytesGiveNoResponse()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, charset);
        QVERIFY(!XMLRPCResponse::fromData(replyWith("<value>" + text + "</value>"), charset));
    }

    void readsRepliesOfABlog()
    {
        const ResponsePtr posts = responseFrom("posts.xml");
        QVERIFY(posts && posts->object().isArray());
        QCOMPARE(posts->object().array().size(), size_t(3));
        const XMLRPCValue &first = posts->object().array().at(0);
        QCOMPARE(first.structure().members().size(), size_t(25));
        QCOMPARE(first[u"post_id"].string(), QStringLiteral("7"));
        QCOMPARE(first[u"post_modified_gmt"].date(), QDateTime(QDate(2024, 3, 2), QTime(10, 30, 15), Qt::UTC));
        QVERIFY(first[u"post_content"].string().startsWith(
            u"<!-- wp:paragraph -->\n<p>It's raining on the caf\u00e9 &amp;"));
        QVERIFY(first[u"post_content"].string().contains(u"\U0001f327"));
        QCOMPARE(first[u"post_thumbnail"][u"metadata"][u"width"].integer(), 4000);
        QCOMPARE(first[u"terms"].array().at(1)[u"name"].string(), QStringLiteral("R&amp;D"));
        QVERIFY(posts->object().array().at(1)[u"post_thumbnail"].isArray());

        QCOMPARE(responseFrom("page-with-control-characters.xml")->object()[u"post_content"].string(),
            QStringLiteral("before between after end"));
        QCOMPARE(responseFrom("new-post.xml")->object().string(), QStringLiteral("1542"));
        QVERIFY(responseFrom("edit-post.xml")->object().boolean());
        QCOMPARE(responseFrom("options.xml")->object()[u"blog_title"][u"value"].string(),
            QStringLiteral("Tom&#039;s &amp; Ann&#039;s"));
        QCOMPARE(responseFrom("media.xml")->object()[u"bits"].data(), QByteArray("abc"));
    }

    void readsFaults()
    {
        const ResponsePtr fault = responseFrom("fault.xml");
        QVERIFY(fault && fault->isFault());
        QCOMPARE(fault->faultCode(), 403);
        QCOMPARE(fault->faultString(), QStringLiteral("Incorrect username or password."));

        const ResponsePtr reply = XMLRPCResponse::fromData("<fault><value><struct><member><name>faultCode</name>"
                                                           "<value>404</value></member></struct></value></fault>");
        QCOMPARE(reply->faultCode(), 404);
        QVERIFY(reply->faultString().isEmpty());
    }

    void aValueNamedFaultIsNone()
    {
        const ResponsePtr reply = XMLRPCResponse::fromData("<p><value>1</value><fault><value>2</value></fault></p>");
        QVERIFY(!reply->isFault());
        QCOMPARE(reply->object().string(), QStringLiteral("1")); // only the first value counts
        QCOMPARE(reply->faultCode(), 0);
    }

    void unusableRepliesHaveNoObject_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<bool>("isMalformed");
        QTest::newRow("no value") << QByteArray("<methodResponse/>") << false;
        QTest::newRow("nothing at all") << QByteArray("\n") << true;
        QTest::newRow("not XML") << QByteArray("XML-RPC server accepts POST requests only.") << true;
        QTest::newRow("a page") << QByteArray("<!DOCTYPE html><html><p>Not found<br></html>") << true;
        QTest::newRow("wrong nesting") << QByteArray("<p><value><string></value></string></p>") << true;
        QTest::newRow("a warning behind") << replyWith("<value>1</value>") + "<b>Warning</b>" << true;
        QTest::newRow("a fault that breaks off")
            << QByteArray("<methodResponse><fault><value><struct><member><name>faultCode</name>") << true;
        QTest::newRow("an entity of HTML") << replyWith("<value>a&nbsp;b</value>") << true;
    }
    void unusableRepliesHaveNoObject()
    {
        QFETCH(QByteArray, reply);
        const ResponsePtr response = XMLRPCResponse::fromData(reply);
        QVERIFY(response);
        QVERIFY(response->object().isAbsent());
        QVERIFY(!response->isFault());
        QTEST(!response->parseError().isEmpty(), "isMalformed");
    }

    void readsWhatTheEncoderWrites()
    {
        const XMLRPCValue value = XMLRPCStruct{
            {QStringLiteral("text & <more>"), QStringLiteral("\u00fc \U0001f600 \"q\" ]]>")},
            {QStringLiteral("number"), qint64(-5)}, {QStringLiteral("double"), 0.25}, {QStringLiteral("flag"), true},
            {QStringLiteral("date"), QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58), Qt::UTC)},
            {QStringLiteral("data"), QByteArray(1000, '\xa7')},
            {QStringLiteral("list"), XMLRPCArray{XMLRPCArray(), XMLRPCStruct(), QStringLiteral("")}}};
        XMLRPCDefaultEncoder encoder;
        encoder.setMethod(QStringLiteral("m"), {value});
        const ResponsePtr response = XMLRPCResponse::fromData(encoder.encode());
        QVERIFY(response->object() == value);
    }
};

static const RegisteredTest<ResponseTest> registered;
#include "ResponseTest.moc"
