#include "support/TestClasses.h"

#include "model/XMLStrings.h"

#include <QTest>

class TestXMLStrings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void encodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("encoded");
        QTest::newRow("plain") << u"plain"_qs << u"plain"_qs;
        QTest::newRow("empty") << u""_qs << u""_qs;
        QTest::newRow("all five") << u"&<>\"'"_qs << u"&amp;&lt;&gt;&quot;&apos;"_qs;
        QTest::newRow("entity") << u"a&lt;b"_qs << u"a&amp;lt;b"_qs;
        QTest::newRow("at the ends") << u"<a>"_qs << u"&lt;a&gt;"_qs;
        QTest::newRow("beyond the basic plane") << u"\U0001F600 & ü"_qs << u"\U0001F600 &amp; ü"_qs;
        QTest::newRow("line ends and controls") << u"a\r\n\u000B"_qs << u"a\r\n\u000B"_qs;
    }
    void encodes()
    {
        QFETCH(QString, text);
        QTEST(XMLEncodedString(text), "encoded");
    }

    void decodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("decoded");
        QTest::newRow("cut off") << u"&am &lt &amp;l"_qs << u"&am &lt &l"_qs;
        QTest::newRow("others stay") << u"&nbsp;&#60;"_qs << u"&nbsp;&#60;"_qs;
    }
    void decodes()
    {
        QFETCH(QString, text);
        QTEST(XMLDecodedString(text), "decoded");
    }

    void decodesAsFiveReplacementsInOrder()
    {
        const QStringList parts{
            u"&"_qs, u"amp;"_qs, u"lt;"_qs, u"gt;"_qs, u"quot;"_qs, u"apos;"_qs, u"&amp;"_qs, u"x"_qs};
        const int combinations = int(parts.size() * parts.size() * parts.size() * parts.size() * parts.size());
        for (int number = 0; number < combinations; ++number) {
            QString text;
            for (int left = number, length = 0; length < 5; ++length, left /= int(parts.size()))
                text += parts.at(left % parts.size());
            QString expected = text;
            expected.replace(u"&amp;"_qs, u"&"_qs).replace(u"&lt;"_qs, u"<"_qs).replace(u"&gt;"_qs, u">"_qs);
            expected.replace(u"&quot;"_qs, u"\""_qs).replace(u"&apos;"_qs, u"'"_qs);
            QVERIFY2(XMLDecodedString(text) == expected, qPrintable(text));
        }
    }

    void comesBackWhenNothingLooksLikeAnEntity()
    {
        const QString text = u"<p class=\"a\">R&D's & more</p>"_qs;
        QCOMPARE(XMLDecodedString(XMLEncodedString(text)), text);
    }
};

static const RegisteredTest<TestXMLStrings> registered;
#include "TestXMLStrings.moc"
