#include "support/Files.h"
#include "support/ProcessorTime.h"
#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QLoggingCategory>

/// Replies that are meant to hurt, or that a bad line has cut: each ends in a response that says what was wrong.
class HostileRepliesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // Thousands of broken replies are thousands of lines.
        QLoggingCategory::setFilterRules(QStringLiteral("zalmo.info=false"));
    }

    void truncatedAtEveryByte()
    {
        const QStringList names = filesBelow(QStringLiteral(REPLIES));
        QVERIFY(!names.isEmpty());
        for (const QString &name : names) {
            const QByteArray reply = contentsOf(QStringLiteral(REPLIES "/") + name).trimmed();
            for (qsizetype length = 0; length < reply.size(); ++length) {
                const ResponsePtr response = XMLRPCResponse::fromData(reply.first(length));
                if (response && !(response->object().isAbsent() && !response->parseError().isEmpty()))
                    QFAIL(qPrintable(QStringLiteral("%1 cut at %2").arg(name).arg(length)));
            }
            QVERIFY(!XMLRPCResponse::fromData(reply)->object().isAbsent());
        }
    }

    void oneByteChanged()
    {
        const QByteArray good = contentsOf(QStringLiteral(REPLIES "/options.xml"));
        for (qsizetype at = 0; at < good.size(); ++at) {
            for (const char byte : {'<', '>', '&', '\0', '\xff', '/'}) {
                QByteArray reply = good;
                reply[at] = byte;
                const ResponsePtr response = XMLRPCResponse::fromData(reply);
                QVERIFY(!response || response->object().isAbsent() == !response->parseError().isNull()
                    || !response->parseError().isEmpty());
            }
        }
    }

    void limits_data()
    {
        const TestTable<QByteArray, QString> row({"reply", "error"});
        const QString tooDeep = u"values are nested more than 256 deep"_qs;
        const QByteArray array = "<value><array><data>", arrayEnd = "</data></array></value>";
        const QByteArray member = "<value><struct><member><name>a</name>", memberEnd = "</member></struct></value>";
        const auto nested = [](const QByteArray &open, const QByteArray &close, int depth) -> QByteArray {
            return "<p>" + open.repeated(depth) + close.repeated(depth) + "</p>";
        };
        row("arrays, as deep as may be", nested(array, arrayEnd, 256), {});
        row("arrays, one too deep", nested(array, arrayEnd, 257), tooDeep);
        row("structs, as deep as may be", nested(member, memberEnd, 256), {});
        row("arrays", nested(array, arrayEnd, 100000), tooDeep);
        row("structs", nested(member, memberEnd, 100000), tooDeep);
        row("values", nested("<value>", "</value>", 100000), tooDeep);
        row("arrays that never close", nested(array, "", 100000), tooDeep);
        row("members in members", nested("<member>", "</member>", 100000), tooDeep);
        row("unknown elements", nested("<a>", "</a>", 100000), tooDeep);
        row("size", "<p><value>" + QByteArray(XMLRPCEventBasedParser::MaximumSize, 'x') + "</value></p>",
            u"the reply is larger than 64 MB"_qs);
        row("values in all", "<value><array>" + QByteArray("<value/>").repeated(2'100'000) + "</array></value>",
            u"the reply holds more than 2000000 values"_qs);

        QByteArray bomb = "<!ENTITY lol \"lol\"><!ENTITY lol0 \"&lol;\">";
        for (char i = '0'; i < '9'; ++i)
            bomb += "<!ENTITY lol" + QByteArray(1, char(i + 1)) + " \"" + ("&lol" + QByteArray(1, i) + ";").repeated(10)
                + "\">";
        const QByteArray passwords = "<!ENTITY lol9 SYSTEM \"file:///etc/passwd\">";
        for (const QByteArray &type : {"[" + bomb + "]", QByteArray("[<!ENTITY lol9 \"x\">]"), "[" + passwords + "]",
                 QByteArray("SYSTEM \"http://127.0.0.1/a.dtd\"")})
            row("document type " + type.left(30),
                "<?xml version=\"1.0\"?><!DOCTYPE a " + type + "><p><value>&lol9;</value></p>",
                u"a document type has no place in a reply"_qs);
    }
    void limits()
    {
        QFETCH(QByteArray, reply);
        const ResponsePtr response = XMLRPCResponse::fromData(reply);
        QVERIFY(response);
        QTEST(response->parseError(), "error");
        QCOMPARE(response->object().isAbsent(), !response->parseError().isNull());
    }

    void takesLinearTime_data()
    {
        const TestTable<QByteArray> row({"reply"});
        QByteArray members;
        for (int i = 0; i < 300'000; ++i)
            members += "<member><name>" + QByteArray::number(i) + "</name><value/></member>";
        row("members of one struct", "<value><struct>" + members + "</struct></value>");
        const QByteArray same = "<member><name>a</name><value>?</value></member>";
        row("the same member", "<value><struct>" + same.repeated(300'000) + "</struct></value>");
        const QByteArray date = "<member><name>a</name><value><dateTime.iso8601/></value></member>";
        row("dates that cannot be read", "<value><struct>" + date.repeated(200'000) + "</struct></value>");
        row("blanks", "<value>" + QByteArray(10'000'000, ' ') + "</value>");
        row("control characters", "<value>" + QByteArray("\1x").repeated(5'000'000) + "</value>");
        row("blanks in front", QByteArray(10'000'000, '\n') + "<value/>");
        row("entities", "<value>" + QByteArray("&#1234;").repeated(1'000'000) + "</value>");
        row("values in turn with text",
            "<value>" + QByteArray("text<value>text</value>").repeated(300'000) + "</value>");
    }
    void takesLinearTime()
    {
        QFETCH(QByteArray, reply);
        ResponsePtr response;
        // Whatever is quadratic takes minutes here.
        const double seconds = processorSeconds([&] { response = XMLRPCResponse::fromData(reply); });
        QVERIFY2(seconds < 10, qPrintable(QString::number(seconds)));
        QVERIFY(response);
        QVERIFY2(response->parseError().isNull(), qPrintable(response->parseError()));
    }
};

static const RegisteredTest<HostileRepliesTest> registered;
#include "HostileRepliesTest.moc"
