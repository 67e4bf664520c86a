#include "support/TestClasses.h"
#include "wordpress/ServiceFixture.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// The account's categories and tags follow the blog's.
class TaxonomySyncTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void followsTheBlog();
    void keepsTermsOfTheSameName();
    void wipesTheListOnAnUnusableReply_data();
    void wipesTheListOnAnUnusableReply();
    void needsAnAccount();
    void keepsThemInTheStore();
    void addsWhatAPostBroughtAlong();
    void listsNamesWithoutTheStore();
};

namespace {
void add(const AccountPtr &account, int type, const QString &name, const QString &id)
{
    account->taxonomies.append(std::make_shared<Taxonomy>(Taxonomy{name, id, type}));
}

/// "0 News 12": type, name and id of each, sorted.
QStringList described(const QList<TaxonomyPtr> &taxonomies)
{
    QStringList lines;
    for (const TaxonomyPtr &taxonomy : taxonomies)
        lines.append(u"%1 %2 %3"_s.arg(taxonomy->taxonomy_type).arg(taxonomy->name, taxonomy->taxonomy_id));
    lines.sort();
    return lines;
}

void sync(ServiceFixture &f)
{
    f.service->syncBlogTaxonomies();
    f.settle();
}
} // namespace

void TaxonomySyncTest::followsTheBlog()
{
    ServiceFixture f;
    f.blog.terms.clear();
    const QString research = f.blog.addTerm(u"category"_s, u"R&D"_s);
    f.blog.addTerm(u"category"_s, u"Kept"_s);
    f.blog.addTerm(u"category"_s, u"news"_s);
    const QString green = f.blog.addTerm(u"post_tag"_s, u"green"_s);
    add(f.account, 0, u"Kept"_s, u"1"_s); // its id on the blog has changed
    add(f.account, 0, u"Gone"_s, u"2"_s);
    add(f.account, 0, u"News"_s, u"3"_s); // names are told apart by case
    add(f.account, 1, u"Kept"_s, u"4"_s); // a tag of that name is another thing
    sync(f);
    QCOMPARE(described(f.account->taxonomies),
        (QStringList{u"0 Kept 1"_s, u"0 R&D "_s + research, u"0 news "_s + f.blog.terms[2].id, u"1 green "_s + green}));
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
}

void TaxonomySyncTest::keepsTermsOfTheSameName()
{
    ServiceFixture f;
    f.blog.terms.clear();
    const QString one = f.blog.addTerm(u"category"_s, u"News"_s); // below different parents
    const QString two = f.blog.addTerm(u"category"_s, u"News"_s);
    for (int round = 0; round < 2; ++round) {
        sync(f);
        QCOMPARE(described(f.account->taxonomies), (QStringList{u"0 News "_s + one, u"0 News "_s + two}));
    }
}

void TaxonomySyncTest::wipesTheListOnAnUnusableReply_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("empty list") << XMLRPCDocuments::response(XMLRPCArray());
    QTest::newRow("another kind") << XMLRPCDocuments::response(u"categories"_s);
    QTest::newRow("cut off") << QByteArray("<?xml version=\"1.0\"?><methodRes");
}

void TaxonomySyncTest::wipesTheListOnAnUnusableReply()
{
    QFETCH(QByteArray, reply);
    ServiceFixture f;
    add(f.account, 0, u"News"_s, u"3"_s);
    f.blog.answerWithBytes(u"metaWeblog.getCategories"_s, reply);
    sync(f);
    QCOMPARE(described(f.account->taxonomies), QStringList());
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
}

void TaxonomySyncTest::needsAnAccount()
{
    ServiceFixture f;
    f.service->account.reset();
    sync(f);
    QVERIFY(f.service->isSyncing());
    QCOMPARE(f.journal(), QStringList());
    f.service->syncTaxonomiesAfterPublish(f.post(u"T"_s, {}));
}

void TaxonomySyncTest::keepsThemInTheStore()
{
    ServiceFixture f;
    f.blog.addTerm(u"post_tag"_s, u"green"_s);
    sync(f);
    const QStringList expected = described(f.account->taxonomies);
    QVERIFY(!f.environment.context->hasChanges());
    const auto reopened = ZLManagedObjectContext::open(f.environment.files.applicationFilesDirectory());
    QVERIFY(reopened);
    QCOMPARE(described((*reopened)->accounts().first()->taxonomies), expected);
}

void TaxonomySyncTest::addsWhatAPostBroughtAlong()
{
    ServiceFixture f;
    add(f.account, 0, u"News"_s, u"3"_s);
    const PostPtr post = f.post(u"T"_s, {});
    post->taxonomies = {{u"News"_s, {}, 0}, {u"News"_s, {}, 1}, {u"new"_s, u"9"_s, 0}};
    f.service->syncTaxonomiesAfterPublish(post);
    QCOMPARE(described(f.account->taxonomies), (QStringList{u"0 News 3"_s, u"0 new 9"_s, u"1 News "_s}));
    QVERIFY(f.account->taxonomies.last()->taxonomy_id == u"9"_s || f.account->taxonomies[1]->taxonomy_id.isNull());
    QVERIFY(!f.environment.context->hasChanges());
    f.service->syncTaxonomiesAfterPublish(post);
    QCOMPARE(f.account->taxonomies.size(), 3);
}

void TaxonomySyncTest::listsNamesWithoutTheStore()
{
    ServiceFixture f;
    f.blog.addTerm(u"category"_s, u"R&D"_s);
    f.blog.addTerm(u"post_tag"_s, u"green"_s);
    for (int round = 0; round < 2; ++round) { // the second does not add to the first
        f.journal().clear();
        f.service->getTaxonomies();
        QTRY_COMPARE(f.journal(), QStringList{u"got taxonomies"_s});
        QCOMPARE(f.delegate.taxonomies,
            (QList<ZLTaxonomy>{{u"Uncategorized"_s, {}, 0}, {u"R&D"_s, {}, 0}, {u"green"_s, {}, 1}}));
    }
    QCOMPARE(f.account->taxonomies.size(), 0);
}

static const RegisteredTest<TaxonomySyncTest> registered;
#include "TaxonomySyncTest.moc"
