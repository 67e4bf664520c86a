#include "support/ProcessorTime.h"
#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCEventBasedParser.h"
#include "xmlrpc/XMLRPCResponse.h"

#include <QDir>
#include <QLoggingCategory>
#include <QTest>

/// Replies that are meant to hurt, or that a bad line has cut: each ends in a response that says what was wrong.
class HostileRepliesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        // Thousands of broken replies are thousands of lines.
        QLoggingCategory::setFilterRules(QStringLiteral("zalmo.info=false"));
    }

    void truncatedAtEveryByte_data()
    {
        QTest::addColumn<QByteArray>("reply");
        const QDir corpus(QStringLiteral(REPLIES));
        const QStringList names = corpus.entryList(QDir::Files);
        QVERIFY(names.size() >= 8);
        for (const QString &name : names) {
            QFile file(corpus.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QTest::newRow(qPrintable(name)) << file.readAll().trimmed();
        }
    }
    void truncatedAtEveryByte()
    {
        QFETCH(QByteArray, reply);
        for (qsizetype length = 0; length < reply.size(); ++length) {
            const ResponsePtr response = XMLRPCResponse::fromData(reply.first(length));
            if (response && !(response->object().isAbsent() && !response->parseError().isEmpty()))
                QFAIL(qPrintable(QStringLiteral("cut at %1").arg(length)));
        }
        QVERIFY(!XMLRPCResponse::fromData(reply)->object().isAbsent());
    }

    void oneByteChanged()
    {
        QFile file(QStringLiteral(REPLIES "/options.xml"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray good = file.readAll();
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

    void nesting_data()
    {
        QTest::addColumn<QByteArray>("open");
        QTest::addColumn<QByteArray>("close");
        QTest::addColumn<int>("depth");
        QTest::addColumn<bool>("isRead");
        const QByteArray array = "<value><array><data>", arrayEnd = "</data></array></value>";
        const QByteArray member = "<value><struct><member><name>a</name>", memberEnd = "</member></struct></value>";
        QTest::newRow("arrays, as deep as may be") << array << arrayEnd << 256 << true;
        QTest::newRow("arrays, one too deep") << array << arrayEnd << 257 << false;
        QTest::newRow("structs, as deep as may be") << member << memberEnd << 256 << true;
        QTest::newRow("arrays") << array << arrayEnd << 100000 << false;
        QTest::newRow("structs") << member << memberEnd << 100000 << false;
        QTest::newRow("values") << QByteArray("<value>") << QByteArray("</value>") << 100000 << false;
        QTest::newRow("arrays that never close") << array << QByteArray() << 100000 << false;
        QTest::newRow("members in members") << QByteArray("<member>") << QByteArray("</member>") << 100000 << false;
        QTest::newRow("unknown elements") << QByteArray("<a>") << QByteArray("</a>") << 100000 << false;
    }
    void nesting()
    {
        QFETCH(QByteArray, open);
        QFETCH(QByteArray, close);
        QFETCH(int, depth);
        const ResponsePtr response = XMLRPCResponse::fromData("<methodResponse><params><param>" + open.repeated(depth)
            + close.repeated(depth) + "</param></params></methodResponse>");
        QVERIFY(response);
        QTEST(!response->object().isAbsent(), "isRead");
        QCOMPARE(response->parseError(),
            response->object().isAbsent() ? QStringLiteral("values are nested more than 256 deep") : QString());
    }

    void entitiesOfADocumentTypeAreRefused_data()
    {
        QTest::addColumn<QByteArray>("declaration");
        QByteArray bomb = "<!DOCTYPE lolz [<!ENTITY lol \"lol\">";
        for (int i = 1; i < 10; ++i)
            bomb += "<!ENTITY lol" + QByteArray::number(i) + " \""
                + ("&lol" + (i > 1 ? QByteArray::number(i - 1) : "") + ";").repeated(10) + "\">";
        QTest::newRow("bomb") << bomb + "]>";
        QTest::newRow("one entity") << QByteArray("<!DOCTYPE a [<!ENTITY lol9 \"x\">]>");
        QTest::newRow("a file") << QByteArray("<!DOCTYPE a [<!ENTITY lol9 SYSTEM \"file:///etc/passwd\">]>");
        QTest::newRow("elsewhere") << QByteArray("<!DOCTYPE a SYSTEM \"http://127.0.0.1/a.dtd\">");
    }
    void entitiesOfADocumentTypeAreRefused()
    {
        QFETCH(QByteArray, declaration);
        const ResponsePtr response =
            XMLRPCResponse::fromData("<?xml version=\"1.0\"?>" + declaration + "<p><value>&lol9;</value></p>");
        QVERIFY(response && response->object().isAbsent());
        QCOMPARE(response->parseError(), QStringLiteral("a document type has no place in a reply"));
    }

    void tooLarge()
    {
        QByteArray reply = "<p><value>" + QByteArray(XMLRPCEventBasedParser::MaximumSize, 'x') + "</value></p>";
        QCOMPARE(XMLRPCResponse::fromData(reply)->parseError(), QStringLiteral("the reply is larger than 64 MB"));
    }

    void tooManyValues()
    {
        const QByteArray reply = "<value><array>" + QByteArray("<value/>").repeated(2'100'000) + "</array></value>";
        const ResponsePtr response = XMLRPCResponse::fromData(reply);
        QVERIFY(response->object().isAbsent());
        QCOMPARE(response->parseError(), QStringLiteral("the reply holds more than 2000000 values"));
    }

    void takesLinearTime_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QByteArray members;
        for (int i = 0; i < 300'000; ++i)
            members += "<member><name>" + QByteArray::number(i) + "</name><value/></member>";
        QTest::newRow("members of one struct") << "<value><struct>" + members + "</struct></value>";
        QTest::newRow("the same member") << "<value><struct>"
                + QByteArray("<member><name>a</name><value>?</value></member>").repeated(300'000) + "</struct></value>";
        QTest::newRow("dates that cannot be read") << "<value><struct>"
                + QByteArray("<member><name>a</name><value><dateTime.iso8601/></value></member>").repeated(200'000)
                + "</struct></value>";
        QTest::newRow("blanks") << "<value>" + QByteArray(10'000'000, ' ') + "</value>";
        QTest::newRow("control characters") << "<value>" + QByteArray("\1x").repeated(5'000'000) + "</value>";
        QTest::newRow("blanks in front") << QByteArray(10'000'000, '\n') + "<value/>";
        QTest::newRow("entities") << "<value>" + QByteArray("&#1234;").repeated(1'000'000) + "</value>";
        QTest::newRow("values in turn with text")
            << "<value>" + QByteArray("text<value>text</value>").repeated(300'000) + "</value>";
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
