#include "text/QueryComponents.h"
#include "support/TestClasses.h"
#include "text/HashValue.h"
#include "text/RandomString.h"

#include <QRegularExpression>

using namespace QueryComponents;

class QueryComponentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void queries()
    {
        const QHash<QString, QStringList> expected{
            {u"a"_qs, {u"1"_qs, u"2"_qs}}, {u"c"_qs, {u"x"_qs}}, {u"d"_qs, {QString()}}, {u"é f"_qs, {u"g h"_qs}}};
        QCOMPARE(dictionaryFromQueryComponents(u"a=1&a=2&b&c=x=y&d=&%C3%A9+f=g%20h"_qs), expected);
        const URLParser parser(u"http://h/p?a=1&&ab=2&x=&a=3%20"_qs);
        QCOMPARE(parser.valueForVariable(u"a"_qs), u"1"_qs);
        QCOMPARE(parser.valueForVariable(u"ab"_qs), u"2"_qs);
        QVERIFY(parser.valueForVariable(u"x"_qs).isNull());
        QVERIFY(parser.valueForVariable(u"b"_qs).isNull());
        QVERIFY(URLParser(u"http://h/p&a=1"_qs).valueForVariable(u"a"_qs).isNull());
    }

    void digests()
    {
        const HashValue md5 = HashValue::md5HashWithData(QByteArrayLiteral("abc"));
        const HashValue sha = HashValue::sha256HashWithData(QByteArrayLiteral("abc"));
        QCOMPARE(md5.description(), u"900150983cd24fb0d6963f7d28e17f72"_qs);
        QCOMPARE(sha.description(), u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_qs);
        QCOMPARE(HashValue(sha.encoded()), sha);
        QCOMPARE(HashValue(sha.value(), HashValue::SHA256), sha);
        QVERIFY(HashValue(sha.value(), HashValue::MD5) != sha);
        QCOMPARE(HashValue(sha.value(), 7).value(), HashValue::Buffer{});
    }

    void randomStrings()
    {
        static const QRegularExpression id(u"^[a-zA-Z0-9]{8}$"_qs);
        const QString one = genRandString(8);
        QVERIFY(id.match(one).hasMatch());
        QVERIFY(genRandString(8) != one);
        QVERIFY(stringByGeneratingUUID() != stringByGeneratingUUID());
    }
};

static const RegisteredTest<QueryComponentsTest> registered;
#include "QueryComponentsTest.moc"
