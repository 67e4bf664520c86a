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

    void plainText_data()
    {
        const TestTable<QString, QString> row({"text", "expected"});
        row("empty", "", "");
        row("closing block", "<p>one</p><p>two</p>", "one two");
        row("inline", "<B>on</B>e", "one");
        row("heading", "<h1>a</h1>b", "a b");
        row("white space", "a  \n b", "a b");
        row("comment", "a<!-- <p> b --></p>c<!-- d", "a c");
        row("entities", "1 &lt; 2 &amp;amp;", "1 < 2 &amp;");
        row("entity out of pieces", "&l<i>t</i>;", "<");
        row("no break space stays", "a\u00a0 b", "a\u00a0 b");
    }

    void plainText()
    {
        QFETCH(QString, text);
        QTEST(stringByConvertingHTMLToPlainText(text), "expected");
    }
};

static const RegisteredTest<HTMLEntitiesTest> registered;
#include "HTMLEntitiesTest.moc"
