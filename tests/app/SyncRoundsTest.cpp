#include "AppFixture.h"

class SyncRoundsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bringsPostsPagesAndTerms()
    {
        AppFixture f;
        f.blog.now = f.clock.present.addDays(-1);
        f.blog.addPost("Hello", "<p>world</p>");
        f.blog.addPost("About", "<p>me</p>", "page");
        f.blog.addTerm("post_tag", "R&D");
        f.launchWithBlog();
        QVERIFY(f.list.isSyncing);
        f.waitForRound();
        QCOMPARE(f.rowTitled("Hello")->status, int(ZLLocalPostRepresentation::Published));
        QCOMPARE(f.rowTitled("About")->status, int(ZLLocalPostRepresentation::PublishedPage));
        QCOMPARE(f.app().posts().getTaxonomiesForSearch("#r"), QStringList("#R&D"));
        QVERIFY(f.compose.reloadedEngines.contains(SyncEngine::WordPress));
        QCOMPARE(f.blog.protocolErrors, QStringList());
    }

    void offlineSkipsAllButLoopback()
    {
        AppFixture f;
        FakeBlog local("127.0.0.1");
        local.addPost("At home", "<p>x</p>");
        f.network.addHost(local.host(), local);
        f.seedAccount("Local", local.url());
        f.seedAccount("Far", f.blog.url());
        f.reachability.reachable = false;
        f.launch();
        QVERIFY(f.current().isReachable());
        QTRY_VERIFY(f.rowTitled("At home"));
        f.waitForRound();
        QCOMPARE(f.blog.calls.size(), 0);
        QVERIFY(f.list.syncFailure.startsWith("You are offline."));
        QCOMPARE(f.prompts.journal, QStringList());
        f.reachability.plugIn(); // what was left out is still owed, but once
        QTRY_COMPARE(f.blog.count("wp.getPosts"), 2);
        f.waitForRound();
        f.reachability.pullOut();
        f.reachability.plugIn();
        QVERIFY(!f.list.isSyncing);
    }

    void endsQuietlyWhateverFails_data()
    {
        const TestTable<QString, std::function<void(FakeBlog &)>> row; // the reason that is told
        for (const QString method : {"wp.getPosts", "wp.getTerms", "metaWeblog.getCategories"}) {
            row(qPrintable(method + ": broken"), {},
                [=](FakeBlog &b) { b.breakConnection(method, QNetworkReply::RemoteHostClosedError); });
            row(qPrintable(method + ": fault"), "no", [=](FakeBlog &b) { b.answerWithFault(method, 500, "no"); });
            row(qPrintable(method + ": status"), {}, [=](FakeBlog &b) { b.answerWithStatus(method, 503); });
        }
        row("firewall", {}, [](FakeBlog &b) { b.answerWithStatus("wp.getPosts", 403); });
        row("a refusal that is no wrong login", "Invalid taxonomy.",
            [](FakeBlog &b) { b.answerWithFault("wp.getTerms", 403, "Invalid taxonomy."); });
    }

    void endsQuietlyWhateverFails()
    {
        const auto [reason, spoil] = testRow<QString, std::function<void(FakeBlog &)>>();
        AppFixture f;
        spoil(f.blog);
        f.seedAccount("Other", f.other.url());
        f.launchWithBlog();
        QTRY_VERIFY(!f.list.syncFailure.isEmpty());
        QVERIFY(!f.list.isSyncing && !f.list.isLoading);
        QVERIFY(f.list.syncFailure.startsWith("“Blog” could not be synchronised. " + reason));
        QCOMPARE(f.prompts.journal, QStringList());
        f.app().rounds().didReach(*f.app().services().serviceOf(f.accounts().last())); // an upload worked
        QVERIFY(f.list.syncFailure.isEmpty());
        f.app().rounds().syncAllBlogs(); // "Try Again"
        f.waitForRound();
        QVERIFY(f.list.syncFailure.isEmpty());
    }

    void stopEndsARoundThatWaitsForEver()
    {
        AppFixture f;
        f.blog.addPost("Hello", "<p>world</p>");
        f.blog.answerLate("wp.getPosts");
        f.launchWithBlog();
        QTRY_COMPARE(f.network.heldCount(), 1);
        f.app().rounds().refreshCurrentBlog(); // which is waited for already
        QVERIFY(f.list.isSyncing);
        f.app().rounds().stopSyncing();
        QVERIFY(!f.list.isSyncing && !f.list.isLoading);
        QCOMPARE(f.blog.count("wp.getPosts"), 2);
        QVERIFY(f.list.syncFailure.isEmpty());
        f.app().rounds().refreshCurrentBlog();
        QVERIFY(f.list.isSyncing);
        f.waitForRound();
        QVERIFY(f.rowTitled("Hello"));
        f.network.release(); // nobody waits for it any more
    }

    void theAnswerOfARemovedBlogIsNobodys()
    {
        AppFixture f;
        f.seedAccount("Second", f.other.url());
        f.other.answerLate("wp.getPosts");
        f.launchWithBlog();
        QTRY_COMPARE(f.network.heldCount(), 1);
        f.removeAccount(f.accounts().first());
        f.network.release();
        f.waitForRound();
        QCOMPARE(f.current().blogName(), "Blog");
        QVERIFY(f.list.syncFailure.isEmpty());
    }
};

static const RegisteredTest<SyncRoundsTest> registered;

#include "SyncRoundsTest.moc"
