#include "support/TestClasses.h"

#include "model/PostFileDate.h"
#include "model/XMLStrings.h"
#include "model/ZLWordpressPost.h"

/// The records by themselves, and how their texts and dates are spelled.
class TestPosts : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void turnsTaxonomiesIntoStringsAndBack()
    {
        ZLAbstractPost post;
        post.taxonomies = {{u"News"_qs, u"4"_qs, ZLTaxonomy::Category}, {u"qt"_qs, {}, ZLTaxonomy::Tag},
            {u"#a b"_qs, u"9"_qs, ZLTaxonomy::Category}}; // would come back as a tag, were it not known
        QCOMPARE(post.taxonomiesArray(), (QStringList{u"News"_qs, u"#qt"_qs, u"#a b"_qs}));
        post.setTaxonomiesFromStringArray({u"#a b"_qs, u"C#"_qs, u""_qs, u"#"_qs, u"#c"_qs});
        QCOMPARE(post.taxonomies,
            (QList<ZLTaxonomy>{{u"#a b"_qs, u"9"_qs, ZLTaxonomy::Category}, {u"C#"_qs, {}, ZLTaxonomy::Category},
                {u""_qs, {}, ZLTaxonomy::Tag}, {u"c"_qs, {}, ZLTaxonomy::Tag}}));

        // Of several terms of one name, each keyword takes the next.
        post.taxonomies = {{u"a"_qs, u"5"_qs, ZLTaxonomy::Category}, {u"a"_qs, u"7"_qs, ZLTaxonomy::Category},
            {u"a"_qs, u"9"_qs, ZLTaxonomy::Tag}};
        post.setTaxonomiesFromStringArray({u"#a"_qs, u"a"_qs, u"new"_qs, QString(), u"a"_qs, u"a"_qs});
        QStringList ids;
        for (const ZLTaxonomy &taxonomy : post.taxonomies)
            ids << taxonomy.keyword() + u' ' + taxonomy.termId;
        QCOMPARE(ids, (QStringList{u"#a 9"_qs, u"a 5"_qs, u"new "_qs, u"a 7"_qs, u"a "_qs}));
    }

    void spellsDates()
    {
        const QDateTime known(QDate(2014, 10, 21), QTime(9, 30), Qt::UTC);
        for (const char *text : {"2014-10-21 09:30:00 +0000", "2014-10-21 11:30:00 +0200", "2014-10-21 00:00:00 -0930"})
            QCOMPARE(PostFileDate::dateWithString(QString::fromLatin1(text)), known);
        for (const char *text : {"", "2014-10-21 09:30:00", "2014-02-30 09:30:00 +0000", "2014-10-21 25:30:00 +0000",
                 "2014-10-21T09:30:00 +0000", "٢٠١٤-10-21 09:30:00 +0000"})
            QCOMPARE(PostFileDate::dateWithString(QString::fromUtf8(text)), QDateTime());
        QCOMPARE(PostFileDate::description(known.toOffsetFromUtc(7200)), u"2014-10-21 09:30:00 +0000"_qs);
        QCOMPARE(PostFileDate::description({}), QString());
    }

    void encodesTexts()
    {
        const QString text = u"<&>\"' &lt; \U0001F600 ü\r\n\u000B"_qs;
        QCOMPARE(XMLEncodedString(text), u"&lt;&amp;&gt;&quot;&apos; &amp;lt; \U0001F600 ü\r\n\u000B"_qs);
        QCOMPARE(XMLEncodedString(u"plain"_qs), u"plain"_qs);
    }

    void decodesAsFiveReplacementsInOrder()
    {
        const QStringList parts{"&", "am", "amp;", "lt;", "gt;", "quot;", "apos;", "&amp;", "&#60;", "x"};
        for (int number = 0; number < 100000; ++number) {
            QString text;
            for (const char digit : QByteArray::number(number + 100000).mid(1))
                text += parts.at(digit - '0');
            QString expected = text;
            expected.replace(u"&amp;"_qs, u"&"_qs).replace(u"&lt;"_qs, u"<"_qs).replace(u"&gt;"_qs, u">"_qs);
            expected.replace(u"&quot;"_qs, u"\""_qs).replace(u"&apos;"_qs, u"'"_qs);
            QVERIFY2(XMLDecodedString(text) == expected, qPrintable(text));
        }
    }
};

static const RegisteredTest<TestPosts> registered;
#include "TestPosts.moc"
