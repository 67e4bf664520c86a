#include "text/HTMLEntities.h"
#include "TextRows.h"
#include "support/TestClasses.h"
#include "text/HTMLEntityTable.h"

using namespace HTMLEntities;

class HTMLEntitiesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void decoding_data()
    {
        addTextColumns();
        row("hexadecimal", u"&#x41;&#X4a;", u"AJ");
        row("decimal", u"&#65;", u"A");
        row("out of range", u"&#0;&#xFFFF;&#65535;", u"&#0;&#xFFFF;&#65535;");
        row("highest", u"&#xFFFE;", u"\ufffe");
        row("not all digits", u"&#6a;&#x;&#;", u"&#6a;&#x;&#;");
        row("unknown", u"&bogus;", u"&bogus;");
        row("other case", u"&AMP;", u"&AMP;");
        row("once only", u"&amp;lt;", u"&lt;");
        row("ampersand before", u"&&amp;&", u"&&&");
        row("longest", u"&thetasym;&thetasymx;", u"ϑ&thetasymx;");
        row("shortest", u"&lt;&#9;", u"<\t");
        row("unfinished", u"a &amp", u"a &amp");
        row("markup", u"&quot;&apos;&nbsp;&hearts;&diams;", u"\"'\u00a0♥♦");
    }

    void decoding()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(stringByDecodingHTMLEntities(text), expected);
    }

    void tables()
    {
        QCOMPARE(longEntityTable.size(), size_t(253));
        QCOMPARE(shortEntityTable.size(), size_t(33));
        QString all;
        QString names;
        for (const HTMLEntity &entity : longEntityTable) {
            all += QChar(entity.code);
            names += u'&' + QStringView(entity.name).toString() + u';';
        }
        QCOMPARE(stringByDecodingHTMLEntities(names), all);
        QCOMPARE(stringByEscapingForAsciiHTML(all), names);
    }

    void escaping()
    {
        const QString text = QStringLiteral("<a> & 'é' – € 日");
        QCOMPARE(stringByEscapingForHTML(text), QStringLiteral("&lt;a&gt; &amp; &apos;é&apos; &ndash; &euro; 日"));
        QCOMPARE(stringByEscapingForAsciiHTML(text),
            QStringLiteral("&lt;a&gt; &amp; &apos;&eacute;&apos; &ndash; &euro; &#26085;"));
    }

    void plainText_data()
    {
        addTextColumns();
        row("empty", u"", u"");
        row("closing block", u"<p>one</p><p>two</p>", u"one two");
        row("inline", u"<b>on</b>e", u"one");
        row("inline in capitals", u"<B>on</B>e", u"one");
        row("heading", u"<h1>a</h1>b", u"a b");
        row("white space", u"a  \n b", u"a b");
        row("comment", u"a<!-- <p> b --></p>c<!-- d", u"a c");
        row("white space at the ends", u" a ", u"a");
        row("unclosed tag", u"a <b", u"a ");
        row("entities", u"1 &lt; 2 &amp;amp;", u"1 < 2 &amp;");
        row("entity out of pieces", u"&l<i>t</i>;", u"<");
        row("no break space stays", u"a\u00a0 b", u"a\u00a0 b");
    }

    void plainText()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(stringByConvertingHTMLToPlainText(text), expected);
    }

    void lineEnds()
    {
        QCOMPARE(stringWithNewLinesAsBRs(QStringLiteral("a\r\nb\n\rc\u2028\vd")),
            QStringLiteral("a<br />b<br /><br />c<br />\vd"));
        QCOMPARE(stringByRemovingNewLinesAndWhitespace(QStringLiteral(" \ta\n\n b\u0085")), QStringLiteral("a b"));
    }

    void strippingTags()
    {
        QCOMPARE(stringByStrippingTags(QStringLiteral("<p>a<em>b</em><a href='x'>c</a></p>")), QStringLiteral("ab c"));
        QCOMPARE(stringByStrippingTags(QStringLiteral(" a ")), QStringLiteral(" a "));
        QCOMPARE(stringByStrippingTags(QStringLiteral("a <b")), QStringLiteral("a <b"));
    }

    void linkifying_data()
    {
        addTextColumns();
        row("sentence", u"see http://a.b/c. Yes",
            u"see <a href=\"http://a.b/c\" class=\"linkified\">http://a.b/c</a>. Yes");
        row("query", u"(https://a.b?c=1&d=2,3)",
            u"(<a href=\"https://a.b?c=1&d=2,3\" class=\"linkified\">https://a.b?c=1&d=2,3</a>)");
        row("attribute", u"<a href=\"http://a.b\">", u"<a href=\"http://a.b\">");
        row("one label", u"http://localhost/", u"http://localhost/");
        row("in a word", u"xhttp://a.b", u"xhttp://a.b");
    }

    void linkifying()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(stringByLinkifyingURLs(text), expected);
    }
};

static const RegisteredTest<HTMLEntitiesTest> registered;
#include "HTMLEntitiesTest.moc"
