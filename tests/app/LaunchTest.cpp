#include "AppFixture.h"

class LaunchTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void withoutAccountsAsksForABlogOnlyWhenTheWindowComesUp()
    {
        AppFixture fixture;
        fixture.launch();
        QVERIFY(!fixture.selector.isShown);
        QVERIFY(!fixture.app().wordpressService());
        QVERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.prompts.journal, QStringList());
        fixture.app().showMainApplicationWindow();
        QCOMPARE(fixture.prompts.journal, QStringList{u"intro"_qs});
    }

    void takesTheSelectedAccount()
    {
        AppFixture fixture;
        fixture.seedAccount(u"First"_qs, u"http://first.test"_qs);
        fixture.seedAccount(u"Second"_qs, fixture.blog.url());
        fixture.changeStore([](ZLManagedObjectContext &context) {
            context.insertSelectedAccount()->account = context.accounts().at(1);
        });
        const QString file = fixture.files.postPathForBlogURL(u"Second"_qs, u"7"_qs) + u"/post.zalmo"_qs;
        ZLWordpressPost post;
        post.title = u"Of the second"_qs;
        QVERIFY(post.saveAtPath(file).has_value());

        fixture.launch();
        QCOMPARE(fixture.app().getBlogName(), u"Second"_qs);
        QCOMPARE(fixture.app().posts().size(), 1);
        QCOMPARE(fixture.app().posts().first()->title, u"Of the second"_qs);
        QCOMPARE(fixture.selector.titles(), (QStringList{u" First"_qs, u" Second"_qs}));
        QCOMPARE(fixture.selector.title, u"Second"_qs);
        QCOMPARE(fixture.selector.selected, 1); // the mark is not kept in step at launch
        QVERIFY(fixture.selector.isShown);
        QCOMPARE(fixture.app().wordpressService()->password, u"secret"_qs);
    }

    void opensPostsWhileTheKeychainIsLocked()
    {
        AppFixture fixture;
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url());
        fixture.isKeychainLocked = true;
        ZLWordpressService *service = nullptr;
        QTimer::singleShot(0, [&] {
            service = fixture.app().wordpressService();
            QVERIFY(service && service->password.isNull());
            QCOMPARE(service->postContentForZalmoEditor(u"<p>one</p><p>two</p>"_qs).pieces.size(), 2);
        });
        fixture.launch();
        QVERIFY(service);
        QCOMPARE(fixture.app().wordpressService(), service);
        QCOMPARE(service->password, u"secret"_qs);
        QVERIFY(!fixture.prompts.isLoginShown);
        QTRY_VERIFY(!service->isSyncing()); // the terms have come
        QVERIFY(fixture.blog.count(u"wp.getTerms"_qs) > 0);
    }

    void decidesOnLoginAndRound_data()
    {
        QTest::addColumn<bool>("hasPassword");
        QTest::addColumn<int>("logsInAutomatically"); // -1: the attribute is absent
        QTest::addColumn<bool>("asks");
        QTest::addColumn<int>("calls"); // that the first round makes for posts
        QTest::newRow("password, automatic") << true << 1 << false << 2;
        QTest::newRow("password, not automatic, synchronised all the same") << true << 0 << true << 2;
        QTest::newRow("password, never said") << true << -1 << true << 0;
        QTest::newRow("no password") << false << 1 << true << 0;
    }

    void decidesOnLoginAndRound()
    {
        QFETCH(bool, hasPassword);
        QFETCH(int, logsInAutomatically);
        QFETCH(bool, asks);
        QFETCH(int, calls);
        AppFixture fixture;
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url(), hasPassword ? u"secret"_qs : QString());
        fixture.changeStore([&](ZLManagedObjectContext &context) {
            auto &automatic = context.accounts().first()->preferences->login_automatically;
            automatic = logsInAutomatically < 0 ? std::nullopt : std::optional<bool>(logsInAutomatically == 1);
        });
        fixture.launch();
        QCOMPARE(fixture.prompts.isLoginShown, asks);
        if (asks)
            QCOMPARE(fixture.prompts.journal, QStringList{u"login: ada@Blog"_qs});
        QTRY_VERIFY(!fixture.app().wordpressService()->isSyncing() || !hasPassword);
        QTRY_COMPARE(fixture.blog.count(u"wp.getPosts"_qs), calls);
        if (!hasPassword)
            QCOMPARE(fixture.blog.calls.size(), 0);
    }

    void completesMissingPreferences()
    {
        AppFixture fixture;
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url());
        fixture.changeStore([](ZLManagedObjectContext &context) { context.accounts().first()->preferences.reset(); });
        fixture.launch();
        QVERIFY(!fixture.prompts.isLoginShown); // new preferences log in by themselves
        fixture.quit();
        fixture.changeStore(
            [](ZLManagedObjectContext &context) { QVERIFY(context.accounts().first()->preferences != nullptr); });
    }

    void keepsOneSelectedAccount()
    {
        AppFixture fixture;
        fixture.seedAccount(u"First"_qs, u"http://first.test"_qs);
        fixture.seedAccount(u"Second"_qs, u"http://second.test"_qs);
        fixture.changeStore([](ZLManagedObjectContext &context) {
            context.insertSelectedAccount()->account = context.accounts().at(1);
            context.insertSelectedAccount()->account = context.accounts().at(0);
        });
        fixture.launch();
        QCOMPARE(fixture.app().getBlogName(), u"Second"_qs);
        fixture.app().setSelectedAccount(fixture.app().accounts().at(0));
        fixture.quit();
        QCOMPARE(fixture.storedSelection(), u"First"_qs);
    }

    void startsTheOwedRoundWhenTheConnectionComesBack()
    {
        AppFixture fixture;
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url());
        fixture.blog.addPost(u"Hello"_qs, u"<p>world</p>"_qs);
        fixture.reachability.reachable = false;
        fixture.launch();
        QVERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.blog.count(u"wp.getPosts"_qs), 0);

        fixture.reachability.plugIn();
        QVERIFY(fixture.list.isSyncing);
        QTRY_VERIFY(!fixture.list.isSyncing);
        QVERIFY(fixture.rowTitled(u"Hello"_qs));

        // Nothing is owed any more.
        const int asked = fixture.blog.count(u"wp.getPosts"_qs);
        fixture.reachability.pullOut();
        fixture.reachability.plugIn();
        QCOMPARE(fixture.blog.count(u"wp.getPosts"_qs), asked);
    }

    void goesOnWithoutAStore()
    {
        AppFixture fixture;
        const QString path = fixture.files.applicationFilesDirectory();
        writeFile(path);

        fixture.launch();
        QCOMPARE(fixture.prompts.journal.value(0),
            u"error: Expected a folder to store application data, found a file (%1)."_qs.arg(path));
        QCOMPARE(fixture.prompts.journal.value(1), u"alert: Failed to initialize the store"_qs);
        QCOMPARE(fixture.app().accounts().size(), 0);
    }

    void saysOnceThatThereIsNoKeychain()
    {
        AppFixture fixture;
        fixture.hasSecretService = false;
        fixture.launch();
        fixture.connectBlog();
        QTRY_COMPARE(fixture.prompts.journal.filter(u"keychain"_qs).size(), 1);
        // The password holds for this session.
        fixture.app().syncAllBlogs();
        QTRY_COMPARE(fixture.blog.count(u"wp.getPosts"_qs), 4);
        QCOMPARE(fixture.prompts.journal.filter(u"keychain"_qs).size(), 1);
        fixture.quit();
        // And is asked for at the next start.
        fixture.prompts.takeJournal();
        fixture.launch();
        QVERIFY(fixture.prompts.isLoginShown);
    }
};

static const RegisteredTest<LaunchTest> registered;

#include "LaunchTest.moc"
