#include "AppFixture.h"

namespace {

/// Two blogs with a post each; the first is current.
struct TwoBlogs : AppFixture {
    TwoBlogs()
    {
        seedAccount(u"First"_qs, blog.url());
        seedAccount(u"Second"_qs, other.url());
        for (const QString &alias : {u"First"_qs, u"Second"_qs}) {
            ZLWordpressPost post;
            post.title = u"Post of "_qs + alias;
            (void)post.saveAtPath(files.postPathForBlogURL(alias, u"local123"_qs) + u"/post.zalmo"_qs);
        }
        launch();
    }
};

} // namespace

class BlogChangeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bySelector()
    {
        TwoBlogs fixture;
        fixture.compose.post->status = ZLWordpressPost::Publish;
        fixture.app().selectorDidChange(2);
        QCOMPARE(fixture.app().getBlogName(), u"Second"_qs);
        QCOMPARE(fixture.app().blogURL(), QUrl(fixture.other.url()));
        QCOMPARE(fixture.app().wordpressService()->blogName, u"Second"_qs);
        QCOMPARE(fixture.selector.title, u"Second"_qs);
        QCOMPARE(fixture.app().posts().size(), 1);
        QCOMPARE(fixture.app().posts().first()->title, u"Post of Second"_qs);
        QCOMPARE(fixture.compose.post->status, int(ZLWordpressPost::New));
        QVERIFY(fixture.compose.isNewPostNotInList);
        QTRY_COMPARE(fixture.other.count(u"wp.getTerms"_qs), 2); // of the first round, and of the change
        fixture.quit();
        QCOMPARE(fixture.storedSelection(), u"Second"_qs);
    }

    void toTheSameBlogDoesNothing()
    {
        TwoBlogs fixture;
        fixture.compose.post->status = ZLWordpressPost::Publish;
        ZLWordpressService *const service = fixture.app().wordpressService();
        fixture.app().selectorDidChange(1);
        fixture.app().selectorDidChange(0); // the empty item
        fixture.app().selectorDidChange(9);
        QCOMPARE(fixture.app().wordpressService(), service);
        QCOMPARE(fixture.compose.post->status, int(ZLWordpressPost::Publish));
    }

    void keepsANewPostOnTheScreen()
    {
        TwoBlogs fixture;
        fixture.compose.post->title = u"Just begun"_qs;
        fixture.app().selectorDidChange(2);
        QCOMPARE(fixture.compose.post->title, u"Just begun"_qs);
    }

    void byProgramKeepsTheService()
    {
        TwoBlogs fixture;
        ZLWordpressService *const service = fixture.app().wordpressService();
        fixture.app().selectAccount(fixture.app().accounts().at(1));
        QCOMPARE(fixture.app().wordpressService(), service);
        QCOMPARE(service->blogApiURL(), QUrl(fixture.other.url() + u"/xmlrpc.php"_qs));
        QCOMPARE(service->blogName, u"Second"_qs);
        QCOMPARE(service->password, u"secret"_qs);
        QCOMPARE(fixture.selector.selected, 2);
        QCOMPARE(fixture.app().posts().first()->title, u"Post of Second"_qs);
        QCOMPARE(fixture.app().accountsCanReceivePostCopy(), QList<AccountPtr>{fixture.app().accounts().first()});
    }

    void aliasIsShown()
    {
        TwoBlogs fixture;
        const AccountPtr account = fixture.app().selectedAccount();
        account->blog_name = u"Renamed"_qs;
        fixture.app().didChangeBlogAliasForAccount(account);
        QCOMPARE(fixture.app().getBlogName(), u"Renamed"_qs);
        QCOMPARE(fixture.selector.title, u"Renamed"_qs);
        QCOMPARE(fixture.selector.titles(), (QStringList{u" Renamed"_qs, u" Second"_qs}));
    }

    void searchesPostsAndTerms()
    {
        TwoBlogs fixture;
        const AccountPtr account = fixture.app().selectedAccount();
        account->taxonomies.clear();
        for (const auto &[name, type] : {std::pair(u"Travel"_qs, 0), std::pair(u"trains"_qs, 1),
                 std::pair(u"Tram"_qs, 1), std::pair(u"Food"_qs, 0)})
            account->taxonomies.append(std::make_shared<Taxonomy>(Taxonomy{name, {}, type}));
        QCOMPARE(fixture.app().getTaxonomiesForSearch(u"TRA"_qs), QStringList{u"Travel"_qs});
        QCOMPARE(fixture.app().getTaxonomiesForSearch(u"#tra"_qs), (QStringList{u"#trains"_qs, u"#Tram"_qs}));
        QCOMPARE(fixture.app().getTaxonomiesForSearch(u"rav"_qs), QStringList());

        fixture.app().insertPost(0, std::make_shared<ZLLocalPostRepresentation>()); // a row without any title
        QCOMPARE(fixture.app().getPostsForSearch(u"POST of"_qs).size(), 1);
        QCOMPARE(fixture.app().getPostsForSearch(u"nothing"_qs).size(), 0);
    }
};

static const RegisteredTest<BlogChangeTest> registered;

#include "BlogChangeTest.moc"
