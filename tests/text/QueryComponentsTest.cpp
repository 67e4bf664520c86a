#include "text/QueryComponents.h"
#include "support/TestClasses.h"
#include "text/HashValue.h"
#include "text/RandomString.h"

#include <QRegularExpression>
#include <QTest>

using namespace QueryComponents;

class QueryComponentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void queries()
    {
        const auto components = dictionaryFromQueryComponents(QStringLiteral("a=1&a=2&b&c=x=y&d=&%C3%A9+f=g%20h"));
        const QHash<QString, QStringList> expected{
            {QStringLiteral("a"), {QStringLiteral("1"), QStringLiteral("2")}},
            {QStringLiteral("c"), {QStringLiteral("x")}},
            {QStringLiteral("d"), {QString()}},
            {QStringLiteral("é f"), {QStringLiteral("g h")}},
        };
        QCOMPARE(components, expected);
        QCOMPARE(queryComponents(QUrl(QStringLiteral("http://h/p?x=a%26b&y=%2B+"))),
            (QHash<QString, QStringList>{
                {QStringLiteral("x"), {QStringLiteral("a&b")}}, {QStringLiteral("y"), {QStringLiteral("+ ")}}}));
    }

    void encoding()
    {
        QCOMPARE(stringByEncodingURLFormat(QStringLiteral("é <b> 100%")), QStringLiteral("%C3%A9+%3Cb%3E+100%25"));
        const QMap<QString, QStringList> components{{QStringLiteral("a"), {QStringLiteral("1 2"), QStringLiteral("3")}},
            {QStringLiteral("b"), {QStringLiteral("é")}}, {QStringLiteral("é"), {QStringLiteral("lost")}}};
        QCOMPARE(stringFromQueryComponents(components), QStringLiteral("a=1+2&a=3&b=%C3%A9"));
        QVERIFY(stringFromQueryComponents({}).isEmpty());
    }

    void variables()
    {
        const URLParser parser(QStringLiteral("http://h/p?a=1&&ab=2&x=&a=3%20"));
        QCOMPARE(parser.valueForVariable(QStringLiteral("a")), QStringLiteral("1"));
        QCOMPARE(parser.valueForVariable(QStringLiteral("ab")), QStringLiteral("2"));
        QVERIFY(parser.valueForVariable(QStringLiteral("x")).isNull());
        QVERIFY(parser.valueForVariable(QStringLiteral("b")).isNull());
        QVERIFY(URLParser(QStringLiteral("http://h/p&a=1")).valueForVariable(QStringLiteral("a")).isNull());
    }

    void digests()
    {
        const HashValue md5 = HashValue::md5HashWithData(QByteArrayLiteral("abc"));
        const HashValue sha = HashValue::sha256HashWithData(QByteArrayLiteral("abc"));
        QCOMPARE(md5.description(), QStringLiteral("900150983cd24fb0d6963f7d28e17f72"));
        QCOMPARE(sha.description(), QStringLiteral("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
        QCOMPARE(HashValue(sha.encoded()), sha);
        QCOMPARE(HashValue(sha.value(), HashValue::SHA256), sha);
        QVERIFY(HashValue(sha.value(), HashValue::MD5) != sha);
        QCOMPARE(HashValue(sha.value(), 7).value(), HashValue::Buffer{});
    }

    void randomStrings()
    {
        static const QRegularExpression id(QStringLiteral("^[a-zA-Z0-9]{8}$"));
        const QString one = genRandString(8);
        QVERIFY(id.match(one).hasMatch());
        QVERIFY(genRandString(8) != one);
        QVERIFY(stringByGeneratingUUID() != stringByGeneratingUUID());
    }
};

static const RegisteredTest<QueryComponentsTest> registered;
#include "QueryComponentsTest.moc"
