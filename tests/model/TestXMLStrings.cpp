#include "support/TestClasses.h"

#include "model/XMLStrings.h"

class TestXMLStrings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void encodes_data()
    {
        const TestTable<QString, QString> row({"text", "encoded"});
        row("plain", u"plain"_qs, u"plain"_qs);
        row("empty", u""_qs, u""_qs);
        row("all five", u"&<>\"'"_qs, u"&amp;&lt;&gt;&quot;&apos;"_qs);
        row("entity", u"a&lt;b"_qs, u"a&amp;lt;b"_qs);
        row("at the ends", u"<a>"_qs, u"&lt;a&gt;"_qs);
        row("beyond the basic plane", u"\U0001F600 & ü"_qs, u"\U0001F600 &amp; ü"_qs);
        row("line ends and controls", u"a\r\n\u000B"_qs, u"a\r\n\u000B"_qs);
    }
    void encodes()
    {
        QFETCH(QString, text);
        QTEST(XMLEncodedString(text), "encoded");
    }

    void decodesAsFiveReplacementsInOrder()
    {
        const QStringList parts{"&", "am", "amp;", "lt;", "gt;", "quot;", "apos;", "&amp;", "&#60;", "x"};
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
