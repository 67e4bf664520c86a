#include "AppFixture.h"

class BlogChangeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bySelector()
    {
        AppFixture f;
        f.blog.addPost("Post of the first", "<p>x</p>");
        f.other.addPost("Post of the second", "<p>x</p>");
        f.start(true);
        ZLWordpressService *const first = f.service();
        for (const int sameBlog : {1, 0, 9}) { // the empty item and one that is not there change nothing, either
            f.compose.post->status = ZLWordpressPost::Publish;
            f.current().selectorDidChange(sameBlog);
            QCOMPARE(f.service(), first);
            QCOMPARE(f.compose.post->status, int(ZLWordpressPost::Publish));
        }
        f.other.calls.clear();
        f.current().selectorDidChange(2);
        QCOMPARE(f.current().blogName(), "Other");
        QCOMPARE(f.service()->blogApiURL(), QUrl(f.other.url() + "/xmlrpc.php"));
        QCOMPARE(f.service()->blogName, "Other");
        QCOMPARE(f.service()->account, f.accounts().at(1));
        QCOMPARE(f.service()->password, "secret");
        QCOMPARE(f.selector.title, "Other");
        QCOMPARE(f.selector.selected, 2);
        QCOMPARE(f.rows().size(), 1);
        QCOMPARE(f.rows().first()->title, "Post of the second");
        QCOMPARE(f.compose.post->status, int(ZLWordpressPost::New));
        QCOMPARE(f.current().accountsCanReceivePostCopy(), QList<AccountPtr>{f.accounts().first()});
        QVERIFY(!f.list.isSyncing && f.other.calls.isEmpty()); // choosing only chooses
        f.current().selectorDidChange(1);
        QCOMPARE(f.service(), first);
        QCOMPARE(first->blogApiURL(), QUrl(f.blog.url() + "/xmlrpc.php"));
        f.current().selectAccount(f.accounts().at(1));
        f.quit();
        QCOMPARE(f.storedSelection(), "Other");
    }

    void searchesPostsAndTerms()
    {
        AppFixture f;
        f.blog.addPost("Post of the first", "<p>x</p>");
        f.start();
        const AccountPtr account = f.current().selectedAccount();
        account->taxonomies.clear();
        for (const auto &[name, type] :
            {std::pair("Travel", 0), std::pair("trains", 1), std::pair("Tram", 1), std::pair("Food", 0)})
            account->taxonomies.append(std::make_shared<Taxonomy>(Taxonomy{name, {}, type}));
        QCOMPARE(f.app().posts().getTaxonomiesForSearch("TRA"), QStringList("Travel"));
        QCOMPARE(f.app().posts().getTaxonomiesForSearch("#tra"), QStringList({"#trains", "#Tram"}));
        QCOMPARE(f.app().posts().getTaxonomiesForSearch("rav"), QStringList());

        f.app().posts().insert(0, std::make_shared<ZLLocalPostRepresentation>()); // a row without any title
        QCOMPARE(f.app().posts().getPostsForSearch("POST of").size(), 1);
        QCOMPARE(f.app().posts().getPostsForSearch("nothing").size(), 0);
    }
};

static const RegisteredTest<BlogChangeTest> registered;

#include "BlogChangeTest.moc"
