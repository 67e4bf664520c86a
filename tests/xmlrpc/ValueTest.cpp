#include "support/TestClasses.h"
#include "xmlrpc/XMLRPCValue.h"

#include <limits>

class ValueTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsAsOtherKinds_data()
    {
        const TestTable<XMLRPCValue, QString, qint64, bool> row({"value", "string", "integer", "boolean"});
        const auto text = [&](const char *of, qint64 integer, bool boolean) {
            row(of, QString::fromLatin1(of), QString::fromLatin1(of), integer, boolean);
        };
        row("absent", {}, {}, 0, false);
        row("array", XMLRPCArray{1}, {}, 0, false);
        row("struct", XMLRPCStruct{{u"a"_qs, 1}}, {}, 0, false);
        row("data", QByteArray("1"), {}, 0, false);
        row("1542", 1542, u"1542"_qs, 1542, true);
        row("0", 0, u"0"_qs, 0, false);
        row("0.5", 0.5, u"0.5"_qs, 0, true);
        row("infinite", std::numeric_limits<double>::infinity(), u"inf"_qs, 9200000000000000000, true);
        row("true", true, u"1"_qs, 1, true);
        text("", 0, false);
        text("1542", 1542, true);
        text("000", 0, false);
        text("007", 7, true);
        text("  -3 apples", -3, true);
        text("+Yes", 0, true);
        text("true", 0, true);
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
        const XMLRPCValue text(u"x"_qs);
        QVERIFY(text[u"key"].isAbsent() && text[u"key"][u"further"].array().empty());
        QVERIFY(!text.date().isValid() && text.data().isEmpty());
    }

    void keepsOnlyPresentValues()
    {
        XMLRPCStruct structure;
        structure.setObjectIfNotNil({}, u"absent"_qs);
        structure.setObjectIfNotNil(QString(), u"null text"_qs);
        structure.setObjectIfNotNil(QDateTime(), u"no date"_qs);
        structure.setObjectIfNotNil(u""_qs, u"empty text"_qs);
        structure.setObjectIfNotNil(0, u"zero"_qs);
        structure.insert(u"empty text"_qs, 1);
        QCOMPARE(structure, (XMLRPCStruct{{u"empty text"_qs, 1}, {u"zero"_qs, 0}}));
    }
};

static const RegisteredTest<ValueTest> registered;
#include "ValueTest.moc"
