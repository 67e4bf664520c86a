#include "support/TestClasses.h"

#include "model/PostFileDate.h"
#include "model/ZLWordpressPost.h"

/// The records by themselves.
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
    }

    void readsDates_data()
    {
        const TestTable<QString, QDateTime> row({"text", "date"});
        const QDateTime known(QDate(2014, 10, 21), QTime(9, 30), Qt::UTC);
        row("universal time", u"2014-10-21 09:30:00 +0000"_qs, known);
        row("east", u"2014-10-21 11:30:00 +0200"_qs, known);
        row("west", u"2014-10-21 00:00:00 -0930"_qs, known);
        row("empty", {}, QDateTime());
        row("no zone", u"2014-10-21 09:30:00"_qs, QDateTime());
        row("no such day", u"2014-02-30 09:30:00 +0000"_qs, QDateTime());
        row("no such hour", u"2014-10-21 25:30:00 +0000"_qs, QDateTime());
        row("other form", u"2014-10-21T09:30:00 +0000"_qs, QDateTime());
        row("foreign digits", u"٢٠١٤-10-21 09:30:00 +0000"_qs, QDateTime());
    }
    void readsDates()
    {
        QFETCH(QString, text);
        QTEST(PostFileDate::dateWithString(text), "date");
    }

    void writesDatesInUniversalTime()
    {
        const QDateTime east(QDate(2014, 10, 21), QTime(11, 30), Qt::OffsetFromUTC, 7200);
        QCOMPARE(PostFileDate::description(east), u"2014-10-21 09:30:00 +0000"_qs);
        QCOMPARE(PostFileDate::description({}), QString());
    }
};

static const RegisteredTest<TestPosts> registered;
#include "TestPosts.moc"
