#include "support/Files.h"
#include "support/TestClasses.h"
#include "xmlrpc/PlainReplyScanner.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"

#include <QLoggingCategory>
#include <QRandomGenerator>

/// What the scanner of plain replies reads, the parser behind it reads as the same.
class PlainRepliesTest : public QObject {
    Q_OBJECT

    static bool readersAgree(QByteArrayView reply, const std::optional<PlainReplyScanner::Reply> &scanned)
    {
        XMLRPCEventBasedParser parser(reply);
        const XMLRPCValue object = parser.parse();
        return !scanned
            || (parser.parserError().isNull() && scanned->object == object && scanned->isFault == parser.isFault());
    }

private Q_SLOTS:
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("zalmo.info=false")); }

    void scannerAgreesWithTheParser_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<bool>("isPlain");
        const auto rows = [](bool isPlain, const QByteArrayList &replies) {
            for (const QByteArray &reply : replies)
                QTest::newRow(reply.left(60).toPercentEncoding(" <>/&;?=\"[]!#'").constData()) << reply << isPlain;
        };
        const auto texts = [&](bool isPlain, const QByteArrayList &texts) {
            for (const QByteArray &text : texts)
                rows(isPlain, {"<value>" + text + "</value>"});
        };
        texts(true,
            {"", "a\tb\n c", "a\r\nb\rc\r", "\r", "&lt;&gt;&amp;&quot;&apos;", "&#60;&#x3C;&#xfC;", "&#13;&#10;&#9;",
                "&#000038;", "&#x10FFFF;&#xFFFD;&#x1FFFE;", "]] > ]&#93;>", "\x7f\xc3\xbc\xe2\x80\xa6",
                "\xf0\x9f\x98\x80\xef\xbf\xbd", "<i8>7</i8>", "<string/>", "<a><b.c-d_1/></a>", "<member>x</member>"});
        texts(false,
            {"]]>", "&nbsp;", "&lt", "& ", "&#0;", "&#31;", "&#xD800;", "&#xFFFF;", "&#x110000;", "&#X41;", "&#;",
                "&#x;", "&#-1;", "&#99999999999999999999;", "\x01", "\xff", "\xc3", "\xc0\xaf", "\xed\xa0\x80",
                "\xef\xbf\xbe", "\xf4\x90\x80\x80", "<!--c-->", "<![CDATA[a]]>", "<?p?>", "<string a='b'/>",
                "<string >a</string>", "<i4>1</int>", "<1/>", "<>", "</>", "</string>", "<string", "<value>"});
        rows(true,
            {"<?xml version=\"1.0\"?>\r\n<a/>\r\n", "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><a/> \t", "\n<a/>",
                "<fault><value>1</value></fault>", "<p><value>1</value><fault><value>2</value></fault></p>"});
        rows(false,
            {"", " ", "a", "<a/>a", "a<a/>", "<a/>&#32;", "<a/><a/>", "<a/></a>", "<?xml version=\"1.1\"?><a/>",
                "<?xml version=\"1.0\" encoding=\"\"?><a/>", " <?xml version=\"1.0\"?><a/>", "<!DOCTYPE a><a/>",
                "\xef\xbb\xbf<a/>"});
        const QByteArray value = "<value><array>", valueEnd = "</array></value>";
        rows(true, {value.repeated(256) + valueEnd.repeated(256)});
        rows(false, {value.repeated(257) + valueEnd.repeated(257)});
        const QByteArray element = "<p>", elementEnd = "</p>";
        rows(true, {element.repeated(1024) + elementEnd.repeated(1024)});
        rows(false, {element.repeated(1025) + elementEnd.repeated(1025)});
    }
    void scannerAgreesWithTheParser()
    {
        QFETCH(QByteArray, reply);
        const std::optional<PlainReplyScanner::Reply> scanned = PlainReplyScanner(reply).scan();
        QTEST(scanned.has_value(), "isPlain");
        QVERIFY(readersAgree(reply, scanned));
    }

    void scannerAgreesOnMangledReplies()
    {
        const QByteArrayView characters("<>/&;!?]#a \n\r\x0B\xFF\xBC");
        QRandomGenerator random(7);
        for (const QString &name : filesBelow(QStringLiteral(REPLIES))) {
            const QByteArray whole = contentsOf(QStringLiteral(REPLIES "/") + name);
            QCOMPARE(PlainReplyScanner(whole).scan().has_value(), whole.startsWith("<?xml"));
            for (int round = 0; round < 1000; ++round) {
                QByteArray reply = whole;
                const int at = random.bounded(int(reply.size()));
                reply.remove(at, random.bounded(8));
                reply.insert(at, characters[random.bounded(int(characters.size()))]);
                if (!readersAgree(reply, PlainReplyScanner(reply).scan()))
                    QFAIL(reply.constData());
            }
        }
    }
};

static const RegisteredTest<PlainRepliesTest> registered;
#include "PlainRepliesTest.moc"
