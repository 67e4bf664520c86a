#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCValue.h"

#include <QTest>
#include <limits>

Q_DECLARE_METATYPE(XMLRPCValue)

class ValueTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsAsOtherKinds_data()
    {
        QTest::addColumn<XMLRPCValue>("value");
        QTest::addColumn<QString>("string");
        QTest::addColumn<qint64>("integer");
        QTest::addColumn<bool>("boolean");
        const auto row = [](const char *name, const XMLRPCValue &value, const QString &string, qint64 integer,
                             bool boolean) { QTest::newRow(name) << value << string << integer << boolean; };
        const auto text = [&](const char *of, qint64 integer, bool boolean) {
            row(of, QString::fromLatin1(of), QString::fromLatin1(of), integer, boolean);
        };
        row("absent", {}, {}, 0, false);
        row("null", XMLRPCValue::Null(), {}, 0, false);
        row("array", XMLRPCArray{1}, {}, 0, false);
        row("struct", XMLRPCStruct{{QStringLiteral("a"), 1}}, {}, 0, false);
        row("data", QByteArray("1"), {}, 0, false);
        row("1542", 1542, QStringLiteral("1542"), 1542, true);
        row("0", 0, QStringLiteral("0"), 0, false);
        row("0.5", 0.5, QStringLiteral("0.5"), 0, true);
        row("infinite", std::numeric_limits<double>::infinity(), QStringLiteral("inf"), 9200000000000000000, true);
        row("true", true, QStringLiteral("1"), 1, true);
        text("", 0, false);
        text("1542", 1542, true);
        text("000", 0, false);
        text("007", 7, true);
        text("  -3 apples", -3, true);
        text("+Yes", 0, true);
        text("true", 0, true);
        text("no", 0, false);
        text("0x1", 0, false);
        text("99999999999999999999", std::numeric_limits<qint64>::max(), true);
    }
    void readsAsOtherKinds()
    {
        QFETCH(XMLRPCValue, value);
        QTEST(value.string(), "string");
        QTEST(value.integer(), "integer");
        QTEST(value.boolean(), "boolean");
    }

    void wrongShapesReadEmpty()
    {
        const XMLRPCValue text(QStringLiteral("x"));
        QVERIFY(text[u"key"].isAbsent());
        QVERIFY(text[u"key"][u"further"].array().empty());
        QVERIFY(!text.date().isValid());
        QVERIFY(text.data().isEmpty());
    }

    void keepsOnlyPresentValues()
    {
        XMLRPCStruct structure;
        structure.setObjectIfNotNil({}, QStringLiteral("absent"));
        structure.setObjectIfNotNil(QString(), QStringLiteral("null text"));
        structure.setObjectIfNotNil(QDateTime(), QStringLiteral("no date"));
        structure.setObjectIfNotNil(QStringLiteral(""), QStringLiteral("empty text"));
        structure.setObjectIfNotNil(0, QStringLiteral("zero"));
        structure.insert(QStringLiteral("empty text"), 1);
        QCOMPARE(structure, (XMLRPCStruct{{QStringLiteral("empty text"), 1}, {QStringLiteral("zero"), 0}}));
        structure.remove(u"zero");
        QVERIFY(!structure.find(u"zero"));
    }
};

static const RegisteredTest<ValueTest> registered;
#include "ValueTest.moc"
