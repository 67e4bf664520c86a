#include "support/TestClasses.h"

#include "model/XMLDictionary.h"
#include "model/XMLDictionaryParser.h"

#include <QJsonDocument>
#include <QJsonObject>

class TestXMLDictionary : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsByDefault_data();
    void readsByDefault();
    void readsWithSettings_data();
    void readsWithSettings();
    void yieldsWhatWasReadBeforeABreak_data();
    void yieldsWhatWasReadBeforeABreak();
    void standsHostileTexts_data();
    void standsHostileTexts();
    void writes_data();
    void writes();
    void looksThingsUp();
};

static QByteArray json(const std::optional<QVariantMap> &dictionary)
{
    if (!dictionary)
        return "nothing";
    return QJsonDocument(QJsonObject::fromVariantMap(*dictionary)).toJson(QJsonDocument::Compact);
}

void TestXMLDictionary::readsByDefault_data()
{
    const TestTable<QByteArray, QByteArray> row({"text", "expected"});
    row("an empty root stays", "<r></r>", R"({"__name":"r"})");
    row("an empty child disappears", "<r><a></a><b/></r>", R"({"__name":"r"})");
    row("blanks only disappear", "<r><a> \n\t</a></r>", R"({"__name":"r"})");
    row("text collapses", "<r><a> x </a></r>", R"({"__name":"r","a":"x"})");
    row("two of a name", "<r><a>1</a><a>2</a></r>", R"({"__name":"r","a":["1","2"]})");
    row("three of a name", "<r><a>1</a><b>z</b><a>2</a><a>3</a></r>", R"({"__name":"r","a":["1","2","3"],"b":"z"})");
    row("an empty one before", "<r><a></a><a>2</a></r>", R"({"__name":"r","a":"2"})");
    row("an empty one behind leaves a list of one", "<r><a>1</a><a></a></r>", R"({"__name":"r","a":["1"]})");
    row("two empty ones behind", "<r><a>1</a><a></a><a/></r>", R"({"__name":"r","a":["1"]})");
    row("text around a child", "<r>one<a>x</a>two</r>", R"({"__name":"r","__text":["one","two"],"a":"x"})");
    row("text around an empty child", "<r><p>one<a/>two</p></r>", R"({"__name":"r","p":"one\ntwo"})");
    row("attributes", R"(<r k="v"><a x="1">t</a></r>)", R"({"__name":"r","_k":"v","a":{"__text":"t","_x":"1"}})");
    row("an underscored element counts as attribute", "<r><a><_b>x</_b></a></r>", R"({"__name":"r","a":{"_b":"x"}})");
    row("entities", "<r><a>&amp;&lt;&gt;&quot;&apos;&#65;</a></r>", R"({"__name":"r","a":"&<>\"'A"})");
    row("CDATA joins the text", "<r><a>x<![CDATA[<&>]]>y</a></r>", R"({"__name":"r","a":"x<&>y"})");
    row("comments are dropped", "<r><!-- c --><a>x<!-- c -->y</a></r>", R"({"__name":"r","a":"xy"})");
    row("line ends", "<r><a>1\r\n2\r3</a></r>", R"({"__name":"r","a":"1\n2\n3"})");
    row("nested", "<r><a><b><c>x</c></b></a></r>", R"({"__name":"r","a":{"b":{"c":"x"}}})");
    row("nested and all empty", "<r><a><b><c/></b></a></r>", R"({"__name":"r"})");
}

void TestXMLDictionary::readsByDefault()
{
    QFETCH(QByteArray, text);
    XMLDictionaryParser parser;
    QTEST(json(parser.dictionaryWithData(text)), "expected");
    QVERIFY(parser.wasComplete());
}

void TestXMLDictionary::readsWithSettings_data()
{
    addColumns<QString, QByteArray>({"setting", "expected"});
    const auto row = [](const char *setting, const char *expected) {
        QTest::newRow(setting) << QString::fromLatin1(setting) << QByteArray(expected);
    };
    row("collapse off", R"({"__name":"r","a":[{"__text":"x","_k":"v"},{"__text":"y"}]})");
    row("strip off", R"({"__name":"r","a":[{"__text":"x","_k":"v"},"y"],"b":{}})");
    row("trim off", R"({"__name":"r","a":[{"__text":" x ","_k":"v"},"y"]})");
    row("always lists", R"({"__name":"r","a":[{"__text":"x","_k":"v"},"y"],"b":[]})");
    row("comments", R"({"__comments":["c"],"__name":"r","a":[{"__text":"x","_k":"v"},"y"]})");
    row("attributes 1", R"({"__name":"r","a":[{"__attributes":{"k":"v"},"__text":"x"},"y"]})");
    row("attributes 2", R"({"__name":"r","a":[{"__text":"x","k":"v"},"y"]})");
    row("attributes 3", R"({"__name":"r","a":["x","y"]})");
    row("names 1", R"({"__name":"r","a":[{"__name":"a","__text":"x","_k":"v"},"y"]})");
    row("names 2", R"({"a":[{"__text":"x","_k":"v"},"y"]})");
}

void TestXMLDictionary::readsWithSettings()
{
    QFETCH(QString, setting);
    XMLDictionaryParser parser;
    parser.collapseTextNodes = setting != u"collapse off"_qs;
    parser.stripEmptyNodes = setting != u"strip off"_qs;
    parser.trimWhiteSpace = setting != u"trim off"_qs;
    parser.alwaysUseArrays = setting == u"always lists"_qs;
    parser.preserveComments = setting == u"comments"_qs;
    if (setting.startsWith(u"attributes"_qs))
        parser.attributesMode = setting.right(1).toInt();
    if (setting.startsWith(u"names"_qs))
        parser.nodeNameMode = setting.right(1).toInt();
    const QByteArray text = R"(<r><!--c--><a k="v"> x </a><a>y</a><b></b></r>)";
    QTEST(json(parser.dictionaryWithData(text)), "expected");
}

void TestXMLDictionary::yieldsWhatWasReadBeforeABreak_data()
{
    const TestTable<QByteArray, QByteArray> row({"text", "expected"});
    row("nothing", {}, "nothing");
    row("no XML", "hello", "nothing");
    row("cut in a text", "<r><a>1</a><b>2", R"({"__name":"r","a":"1","b":{}})");
    row("cut in a tag", "<r><a>1</a><b", R"({"__name":"r","a":"1"})");
    row("wrong end", "<r><a>1</a></s>", R"({"__name":"r","a":"1"})");
    row("junk behind", "<r><a>1</a></r>x", R"({"__name":"r","a":"1"})");
}

void TestXMLDictionary::yieldsWhatWasReadBeforeABreak()
{
    QFETCH(QByteArray, text);
    XMLDictionaryParser parser;
    QTEST(json(parser.dictionaryWithData(text)), "expected");
    QVERIFY(!parser.wasComplete());
}

void TestXMLDictionary::standsHostileTexts_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("nested 100,000 deep") << QByteArray("<a>").repeated(100000);
    QTest::newRow("entity bomb") << QByteArray(
        "<!DOCTYPE r [<!ENTITY a \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\">"
        "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
        "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">"
        "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">"
        "<!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\">]><r><a>&e;&e;&e;&e;</a></r>");
    QByteArray names("<r>");
    for (int number = 0; number < 50000; ++number)
        names += "<n" + QByteArray::number(number) + ">x</n" + QByteArray::number(number) + ">";
    QTest::newRow("50,000 names") << names + "</";
}

void TestXMLDictionary::standsHostileTexts()
{
    QFETCH(QByteArray, text);
    XMLDictionaryParser parser;
    parser.dictionaryWithData(text);
    QVERIFY(!parser.wasComplete());
}

void TestXMLDictionary::writes_data()
{
    addColumns<QVariantMap, QString>({"node", "text"});
    QTest::newRow("no name, nothing in it") << QVariantMap{} << u"<zalmo/>"_qs;
    QTest::newRow("text is encoded") << QVariantMap{{u"a"_qs, u"x<y"_qs}} << u"<zalmo><a>x&lt;y</a></zalmo>"_qs;
    QTest::newRow("own name and attributes")
        << QVariantMap{{u"__name"_qs, u"r"_qs}, {u"_k"_qs, u"\"v\""_qs}} << u"<r k=\"&quot;v&quot;\"/>"_qs;
    QTest::newRow("a list under its name")
        << QVariantMap{{u"keywords"_qs, QVariantList{u"a"_qs, u"b"_qs}}}
        << u"<zalmo><keywords><keyword>a</keyword>\n<keyword>b</keyword></keywords></zalmo>"_qs;
    QTest::newRow("comments, children, text")
        << QVariantMap{{u"__comments"_qs, QVariantList{u"c"_qs}}, {u"__text"_qs, u"t"_qs}, {u"a"_qs, u"1"_qs}}
        << u"<zalmo><!--c-->\n<a>1</a>\nt</zalmo>"_qs;
}

void TestXMLDictionary::writes()
{
    QFETCH(QVariantMap, node);
    QTEST(XMLDictionary::XMLString(node), "text");
}

void TestXMLDictionary::looksThingsUp()
{
    XMLDictionaryParser parser;
    const QVariantMap root =
        *parser.dictionaryWithString(u"<r k='v'>in<a><b>1</b><b>2</b></a><c x='y'>t</c>out</r>"_qs);
    QCOMPARE(XMLDictionary::nodeName(root), u"r"_qs);
    QCOMPARE(XMLDictionary::innerText(root), u"in\nout"_qs);
    QCOMPARE(XMLDictionary::attributes(root), (QVariantMap{{u"k"_qs, u"v"_qs}}));
    QCOMPARE(XMLDictionary::childNodes(root).keys(), (QStringList{u"a"_qs, u"c"_qs}));
    QCOMPARE(XMLDictionary::arrayValueForKeyPath(root, u"a.b"_qs), (QVariantList{u"1"_qs, u"2"_qs}));
    QCOMPARE(XMLDictionary::arrayValueForKeyPath(root, u"_k"_qs), (QVariantList{u"v"_qs}));
    QCOMPARE(XMLDictionary::stringValueForKeyPath(root, u"a.b"_qs), u"1"_qs);
    QCOMPARE(XMLDictionary::stringValueForKeyPath(root, u"c"_qs), u"t"_qs);
    QCOMPARE(XMLDictionary::dictionaryValueForKeyPath(root, u"a.b"_qs), (QVariantMap{{u"__text"_qs, u"1"_qs}}));
    QVERIFY(XMLDictionary::stringValueForKeyPath(root, u"a.z.q"_qs).isNull());
}

static const RegisteredTest<TestXMLDictionary> registered;
#include "TestXMLDictionary.moc"
