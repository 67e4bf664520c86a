#include "wordpress/ServiceFixture.h"

namespace {
/// "0 News 12": type, name and id of each, sorted.
QStringList described(const QList<TaxonomyPtr> &taxonomies)
{
    QStringList lines;
    for (const TaxonomyPtr &taxonomy : taxonomies)
        lines.append(u"%1 %2 %3"_qs.arg(taxonomy->taxonomy_type).arg(taxonomy->name, taxonomy->taxonomy_id));
    lines.sort();
    return lines;
}

void sync(ServiceFixture &f)
{
    f.service->syncBlogTaxonomies();
    f.settle();
}
} // namespace

/// The account's categories and tags follow the blog's.
class TaxonomySyncTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void followsTheBlog()
    {
        ServiceFixture f;
        f.blog.terms.clear();
        const QString research = f.blog.addTerm(u"category"_qs, u"R&D"_qs);
        f.blog.addTerm(u"category"_qs, u"Kept"_qs);
        f.blog.addTerm(u"category"_qs, u"news"_qs);
        const QString green = f.blog.addTerm(u"post_tag"_qs, u"green"_qs);
        f.addTaxonomy(ZLTaxonomy::Category, u"Kept"_qs, u"1"_qs); // its id on the blog is another now
        f.addTaxonomy(ZLTaxonomy::Category, u"Gone"_qs, u"2"_qs);
        f.addTaxonomy(ZLTaxonomy::Category, u"News"_qs, u"3"_qs); // names are told apart by case
        f.addTaxonomy(ZLTaxonomy::Tag, u"Kept"_qs, u"4"_qs); // a tag of that name is another thing
        sync(f);
        QCOMPARE(described(f.account->taxonomies),
            (QStringList{u"0 Kept "_qs + f.blog.terms[1].id, u"0 R&D "_qs + research,
                u"0 news "_qs + f.blog.terms[2].id, u"1 green "_qs + green}));
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
    }

    void keepsTermsOfTheSameName()
    {
        ServiceFixture f;
        f.blog.terms.clear();
        const QString one = f.blog.addTerm(u"category"_qs, u"News"_qs); // below different parents
        const QString two = f.blog.addTerm(u"category"_qs, u"News"_qs);
        for (int round = 0; round < 2; ++round) {
            sync(f);
            QCOMPARE(described(f.account->taxonomies), (QStringList{u"0 News "_qs + one, u"0 News "_qs + two}));
        }
    }

    void keepsItsTermsOnAnUnusableReply()
    {
        ServiceFixture f;
        f.addTaxonomy(ZLTaxonomy::Category, u"News"_qs, u"3"_qs);
        const QString method = u"metaWeblog.getCategories"_qs;
        f.blog.answerWith(method, u"categories"_qs);
        f.blog.answerWith(method, XMLRPCArray{7, XMLRPCStruct{}}); // terms without names
        f.blog.answerEmpty(method);
        for (const QString &told : {u"ZLReply 1"_qs, u"ZLReply 1"_qs, u"NSURLErrorDomain -1017"_qs}) {
            f.journal().clear();
            sync(f);
            QCOMPARE(described(f.account->taxonomies), QStringList{u"0 News 3"_qs});
            QCOMPARE(f.journal(), (QStringList{u"request 28 failed: "_qs + told, u"synced Ada"_qs}));
        }
    }

    void keepsThemInTheStore()
    {
        ServiceFixture f;
        f.blog.addTerm(u"post_tag"_qs, u"green"_qs);
        sync(f);
        const QStringList expected = described(f.account->taxonomies);
        QTRY_VERIFY(!f.environment.context->hasChanges());
        const auto reopened = ZLManagedObjectContext::open(f.environment.files.applicationFilesDirectory());
        QVERIFY(reopened);
        QCOMPARE(described((*reopened)->accounts().first()->taxonomies), expected);
    }

    void addsWhatAPostBroughtAlong()
    {
        ServiceFixture f;
        f.addTaxonomy(ZLTaxonomy::Category, u"News"_qs, u"3"_qs);
        const PostPtr post = f.post(u"T"_qs, {});
        post->taxonomies = {{u"News"_qs, {}, 0}, {u"News"_qs, {}, 1}, {u"new"_qs, u"9"_qs, 0}};
        f.service->syncTaxonomiesAfterPublish(post);
        QCOMPARE(described(f.account->taxonomies), (QStringList{u"0 News 3"_qs, u"0 new 9"_qs, u"1 News "_qs}));
        QVERIFY(f.account->taxonomies.last()->taxonomy_id == u"9"_qs || f.account->taxonomies[1]->taxonomy_id.isNull());
        QTRY_VERIFY(!f.environment.context->hasChanges());
        f.service->syncTaxonomiesAfterPublish(post);
        QCOMPARE(f.account->taxonomies.size(), 3);
    }
};

static const RegisteredTest<TaxonomySyncTest> registered;
#include "TaxonomySyncTest.moc"
