#include "support/TestClasses.h"

#include "model/XMLDictionary.h"
#include "model/XMLDictionaryParser.h"

#include <QJsonDocument>
#include <QJsonObject>

/// With single quotation marks.
static QByteArray json(const std::optional<QVariantMap> &dictionary)
{
    if (!dictionary)
        return "nothing";
    return QJsonDocument(QJsonObject::fromVariantMap(*dictionary)).toJson(QJsonDocument::Compact).replace('"', '\'');
}

class TestXMLDictionary : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void reads_data()
    {
        const TestTable<QByteArray, QByteArray, bool> row({"text", "expected", "isComplete"});
        const auto whole = [&row](
                               const QByteArray &text, const QByteArray &expected) { row(text, text, expected, true); };
        whole("<r></r>", "{'__name':'r'}");
        whole("<r><a></a><b/></r>", "{'__name':'r'}");
        whole("<r><a> \n\t</a></r>", "{'__name':'r'}");
        whole("<r><a> x </a></r>", "{'__name':'r','a':'x'}");
        whole("<r><a>1</a><b>z</b><a>2</a><a>3</a></r>", "{'__name':'r','a':['1','2','3'],'b':'z'}");
        whole("<r><a></a><a>2</a></r>", "{'__name':'r','a':'2'}");
        whole("<r><a>1</a><a></a></r>", "{'__name':'r','a':['1']}"); // an empty one behind leaves a list of one
        whole("<r><a>1</a><a></a><a/></r>", "{'__name':'r','a':['1']}");
        whole("<r>one<a>x</a>two</r>", "{'__name':'r','__text':['one','two'],'a':'x'}");
        whole("<r><p>one<a/>two</p></r>", "{'__name':'r','p':'one\\ntwo'}");
        whole("<r k='v'><a x='1'>t</a></r>", "{'__name':'r','_k':'v','a':{'__text':'t','_x':'1'}}");
        whole("<r><a><_b>x</_b></a></r>", "{'__name':'r','a':{'_b':'x'}}"); // counts as an attribute
        whole("<r><a>&amp;&lt;&gt;&quot;&apos;&#65;</a></r>", "{'__name':'r','a':'&<>\\''A'}");
        whole("<r><a>x<![CDATA[<&>]]>y</a></r>", "{'__name':'r','a':'x<&>y'}");
        whole("<r><!-- c --><a>x<!-- c -->y</a></r>", "{'__name':'r','a':'xy'}");
        whole("<r><a>1\r\n2\r3</a></r>", "{'__name':'r','a':'1\\n2\\n3'}");
        whole("<r><a><b><c>x</c></b></a></r>", "{'__name':'r','a':{'b':{'c':'x'}}}");
        whole("<r><a><b><c/></b></a></r>", "{'__name':'r'}");
        row("nothing", {}, "nothing", false);
        row("no XML", "hello", "nothing", false);
        row("cut in a text", "<r><a>1</a><b>2", "{'__name':'r','a':'1','b':{}}", false);
        row("cut in a tag", "<r><a>1</a><b", "{'__name':'r','a':'1'}", false);
        row("wrong end", "<r><a>1</a></s>", "{'__name':'r','a':'1'}", false);
        row("junk behind", "<r><a>1</a></r>x", "{'__name':'r','a':'1'}", false);
    }
    void reads()
    {
        QFETCH(QByteArray, text);
        XMLDictionaryParser parser;
        QTEST(json(parser.dictionaryWithData(text)), "expected");
        QTEST(parser.wasComplete(), "isComplete");
    }

    void standsHostileTexts()
    {
        QByteArray bomb = "<!ENTITY e0 \"" + QByteArray(40, 'a') + "\">";
        for (char i = '0'; i < '5'; ++i)
            bomb += "<!ENTITY e" + QByteArray(1, char(i + 1)) + " \"" + ("&e" + QByteArray(1, i) + ";").repeated(20)
                + "\">";
        QByteArray names("<r>");
        for (int number = 0; number < 50000; ++number)
            names += "<n" + QByteArray::number(number) + ">x</n" + QByteArray::number(number) + ">";
        for (const QByteArray &text : {QByteArray("<a>").repeated(100000),
                 "<!DOCTYPE r [" + bomb + "]><r><a>&e5;&e5;&e5;&e5;</a></r>", names + "</"}) {
            XMLDictionaryParser parser;
            parser.dictionaryWithData(text);
            QVERIFY2(!parser.wasComplete(), text.left(99));
        }
    }

    void looksThingsUp()
    {
        XMLDictionaryParser parser;
        const QVariantMap root = *parser.dictionaryWithString(u"<r><a><b>1</b><b>2</b></a><c x='y'>t</c></r>"_qs);
        QCOMPARE(XMLDictionary::nodeName(root), u"r"_qs);
        QCOMPARE(XMLDictionary::arrayValueForKeyPath(root, u"a.b"_qs), (QVariantList{u"1"_qs, u"2"_qs}));
        QCOMPARE(XMLDictionary::stringValueForKeyPath(root, u"a.b"_qs), u"1"_qs);
        QCOMPARE(XMLDictionary::stringValueForKeyPath(root, u"c"_qs), u"t"_qs);
        QVERIFY(XMLDictionary::stringValueForKeyPath(root, u"a.z.q"_qs).isNull());
    }
};

static const RegisteredTest<TestXMLDictionary> registered;
#include "TestXMLDictionary.moc"
