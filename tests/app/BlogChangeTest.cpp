#include "AppFixture.h"
#include "app/PostCopier.h"

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
        fixture.app().currentBlog().selectorDidChange(2);
        QCOMPARE(fixture.app().currentBlog().blogName(), u"Second"_qs);
        QCOMPARE(fixture.service()->blogApiURL(), QUrl(fixture.other.url() + u"/xmlrpc.php"_qs));
        QCOMPARE(fixture.service()->blogName, u"Second"_qs);
        QCOMPARE(fixture.selector.title, u"Second"_qs);
        QCOMPARE(fixture.rows().size(), 1);
        QCOMPARE(fixture.rows().first()->title, u"Post of Second"_qs);
        QCOMPARE(fixture.compose.post->status, int(ZLWordpressPost::New));
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.other.count(u"wp.getTerms"_qs), 1); // of the first round: choosing only chooses
        fixture.quit();
        QCOMPARE(fixture.storedSelection(), u"Second"_qs);
    }

    void toTheSameBlogDoesNothing()
    {
        TwoBlogs fixture;
        fixture.compose.post->status = ZLWordpressPost::Publish;
        ZLWordpressService *const service = fixture.service();
        fixture.app().currentBlog().selectorDidChange(1);
        fixture.app().currentBlog().selectorDidChange(0); // the empty item
        fixture.app().currentBlog().selectorDidChange(9);
        QCOMPARE(fixture.service(), service);
        QCOMPARE(fixture.compose.post->status, int(ZLWordpressPost::Publish));
    }

    void keepsOneServiceForEachAccount()
    {
        TwoBlogs fixture;
        ZLWordpressService *const first = fixture.service();
        fixture.app().currentBlog().selectAccount(fixture.accounts().at(1));
        ZLWordpressService *const second = fixture.service();
        QVERIFY(first != second);
        QCOMPARE(first->blogApiURL(), QUrl(fixture.blog.url() + u"/xmlrpc.php"_qs));
        QCOMPARE(second->blogApiURL(), QUrl(fixture.other.url() + u"/xmlrpc.php"_qs));
        QCOMPARE(second->account, fixture.accounts().at(1));
        QCOMPARE(second->blogName, u"Second"_qs);
        QCOMPARE(second->password, u"secret"_qs);
        QCOMPARE(fixture.selector.selected, 2);
        QCOMPARE(fixture.rows().first()->title, u"Post of Second"_qs);
        QCOMPARE(
            fixture.app().currentBlog().accountsCanReceivePostCopy(), QList<AccountPtr>{fixture.accounts().first()});
        fixture.app().currentBlog().selectorDidChange(1);
        QCOMPARE(fixture.service(), first);
    }

    /// The login of one blog must never be stored under another, or sent there.
    void logsIntoTheBlogOfACopy()
    {
        TwoBlogs fixture;
        fixture.other.addTerm(u"post_tag"_qs, u"theirs"_qs);
        fixture.other.password = u"changed"_qs;
        QTRY_VERIFY(!fixture.list.isSyncing);
        fixture.app().rounds().syncAllBlogs();
        QTRY_VERIFY(fixture.prompts.login.isShown());
        const Result<QUrl> copy =
            PostCopier(fixture.files, fixture.app().documentController(), fixture.app().currentBlog())
                .copyPostToBlog(fixture.rows().first(), fixture.accounts().at(1));
        QVERIFY(copy);
        QCOMPARE(fixture.app().currentBlog().blogName(), u"Second"_qs);
        QCOMPARE(
            fixture.prompts.journal.filter(u"login"_qs), QStringList{u"login refused: ada/@Second on other.test"_qs});
        fixture.blog.calls.clear();
        fixture.prompts.login.answer(Login{u"ada"_qs, u"changed"_qs});
        QTRY_COMPARE(fixture.app().posts().getTaxonomiesForSearch(u"#t"_qs), QStringList{u"#theirs"_qs});
        QCOMPARE(fixture.blog.calls.size(), 0);
        QCOMPARE(fixture.secretOf(u"ada"_qs, fixture.blog.url()), u"secret"_qs);
        QCOMPARE(fixture.secretOf(u"ada"_qs, fixture.other.url()), u"changed"_qs);
    }

    void aliasIsShown()
    {
        TwoBlogs fixture;
        const AccountPtr account = fixture.app().currentBlog().selectedAccount();
        account->blog_name = u"Renamed"_qs;
        fixture.app().currentBlog().didChangeBlogAliasForAccount(account);
        QCOMPARE(fixture.app().currentBlog().blogName(), u"Renamed"_qs);
        QCOMPARE(fixture.service()->blogName, u"Renamed"_qs);
        QCOMPARE(fixture.selector.title, u"Renamed"_qs);
        QCOMPARE(fixture.selector.titles(), (QStringList{u" Renamed"_qs, u" Second"_qs}));
    }

    void searchesPostsAndTerms()
    {
        TwoBlogs fixture;
        const AccountPtr account = fixture.app().currentBlog().selectedAccount();
        account->taxonomies.clear();
        for (const auto &[name, type] : {std::pair(u"Travel"_qs, 0), std::pair(u"trains"_qs, 1),
                 std::pair(u"Tram"_qs, 1), std::pair(u"Food"_qs, 0)})
            account->taxonomies.append(std::make_shared<Taxonomy>(Taxonomy{name, {}, type}));
        QCOMPARE(fixture.app().posts().getTaxonomiesForSearch(u"TRA"_qs), QStringList{u"Travel"_qs});
        QCOMPARE(fixture.app().posts().getTaxonomiesForSearch(u"#tra"_qs), (QStringList{u"#trains"_qs, u"#Tram"_qs}));
        QCOMPARE(fixture.app().posts().getTaxonomiesForSearch(u"rav"_qs), QStringList());

        fixture.app().posts().insert(0, std::make_shared<ZLLocalPostRepresentation>()); // a row without any title
        QCOMPARE(fixture.app().posts().getPostsForSearch(u"POST of"_qs).size(), 1);
        QCOMPARE(fixture.app().posts().getPostsForSearch(u"nothing"_qs).size(), 0);
    }
};

static const RegisteredTest<BlogChangeTest> registered;

#include "BlogChangeTest.moc"
