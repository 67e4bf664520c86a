#include "text/HTMLEntities.h"
#include "support/TestClasses.h"
#include "text/HTMLEntityTable.h"

using namespace HTMLEntities;

/// Examples of what comes out; SamePassesTest tries what is odd about each pass.
class HTMLEntitiesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decoding()
    {
        QCOMPARE(stringByDecodingHTMLEntities("&#x41;&#X4a;&#65;&#xFFFE;&AMP;&lt;&#9;"), "AJA\ufffe&AMP;<\t");
        QCOMPARE(stringByDecodingHTMLEntities("&thetasym;&thetasymx;&apos;&nbsp;"), "ϑ&thetasymx;'\u00a0");
        QCOMPARE(entityTable.size(), size_t(253));
        QString all;
        QString names;
        for (const HTMLEntity &entity : entityTable) {
            all += QChar(entity.code);
            names += u'&' + QStringView(entity.name).toString() + u';';
        }
        QCOMPARE(stringByDecodingHTMLEntities(names), all);
    }

    void plainText()
    {
        const auto plain = [](const char *html) { return stringByConvertingHTMLToPlainText(html); };
        QCOMPARE(plain(""), "");
        QCOMPARE(plain("<p>one</p><p>two</p>"), "one two");
        QCOMPARE(plain("<B>on</B>e"), "one");
        QCOMPARE(plain("<h1>a</h1>b"), "a b");
        QCOMPARE(plain("a  \n b"), "a b");
        QCOMPARE(plain("a<!-- <p> b --></p>c<!-- d"), "a c");
        QCOMPARE(plain("1 &lt; 2 &amp;amp;"), "1 < 2 &amp;");
        QCOMPARE(plain("&l<i>t</i>;"), "<"); // out of pieces
        QCOMPARE(plain("a\u00a0 b"), "a\u00a0 b");
    }
};

static const RegisteredTest<HTMLEntitiesTest> registered;
#include "HTMLEntitiesTest.moc"
