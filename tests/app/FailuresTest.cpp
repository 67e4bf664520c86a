#include "ConnectedBlog.h"

class FailuresTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void failuresOfARoundStayQuiet_data()
    {
        const TestTable<QString, std::function<void(FakeBlog &)>> row({"reason", "spoil"});
        row("nobody answers", QString(),
            [](FakeBlog &b) { b.breakConnection(u"wp.getPosts"_qs, QNetworkReply::ConnectionRefusedError); });
        row("fault", u"out of order"_qs,
            [](FakeBlog &b) { b.answerWithFault(u"wp.getTerms"_qs, 500, u"out of order"_qs); });
        row("firewall", QString(), [](FakeBlog &b) { b.answerWithStatus(u"wp.getPosts"_qs, 403); });
        row("a refusal that is no wrong login", u"Invalid taxonomy."_qs,
            [](FakeBlog &b) { b.answerWithFault(u"wp.getTerms"_qs, 403, u"Invalid taxonomy."_qs); });
    }

    void failuresOfARoundStayQuiet()
    {
        QFETCH(QString, reason);
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        AppFixture fixture;
        spoil(fixture.blog);
        fixture.launchWithBlog();
        QTRY_VERIFY(!fixture.list.syncFailure.isEmpty());
        QVERIFY(!fixture.list.isSyncing);
        QVERIFY(!fixture.list.isLoading);
        QVERIFY(fixture.list.syncFailure.startsWith(u"“Blog” could not be synchronised. "_qs + reason));
        QCOMPARE(fixture.prompts.journal, QStringList());
        fixture.app().rounds().didReach(*fixture.app().currentBlog().wordpressService()); // an upload worked
        QVERIFY(fixture.list.syncFailure.isEmpty());
        fixture.app().rounds().syncAllBlogs(); // "Try Again"
        QVERIFY(fixture.list.syncFailure.isEmpty());
        QTRY_VERIFY(!fixture.list.isSyncing);
        QVERIFY(fixture.list.syncFailure.isEmpty());
    }

    void namesTheBlogOfAFailure_data()
    {
        const TestTable<int, QString> row({"code", "said"});
        row("refused", 401, u"alert: The post could not be sent to “Blog”."_qs);
        row("as a wrong login is, but it holds", 403, u"alert: The post could not be sent to “Blog”."_qs);
    }

    void namesTheBlogOfAFailure()
    {
        QFETCH(int, code);
        QFETCH(QString, said);
        ConnectedBlog fixture;
        fixture.start();
        const PostPtr post = fixture.writePost(u"Mine"_qs, u"<p>x</p>"_qs);
        post->status = ZLWordpressPost::Publish;
        fixture.blog.answerWithFault(u"wp.newPost"_qs, code, u"refused"_qs);
        fixture.service()->syncCategoriesAndPublishPost(post, Upload::NewPost);
        QTRY_COMPARE(fixture.prompts.journal, QStringList{said});
        QVERIFY(fixture.prompts.details.first().startsWith(u"refused"));
    }

    void oneLoginSheetForManyFailures()
    {
        AppFixture fixture;
        fixture.launchWithBlog(u"outdated"_qs);
        QTRY_VERIFY(fixture.prompts.login.isShown());
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.prompts.journal, QStringList{u"login refused: ada/@Blog on blog.test"_qs});
        QVERIFY(fixture.list.syncFailure.isEmpty());
    }

    void logsInAgain()
    {
        AppFixture fixture;
        fixture.blog.addPost(u"Hello"_qs, u"<p>world</p>"_qs);
        fixture.blog.addTerm(u"post_tag"_qs, u"green"_qs);
        fixture.blog.user = u"grace"_qs;
        const AccountPtr seeded = fixture.seedAccount(u"Blog"_qs, fixture.blog.url(), u"outdated"_qs);
        fixture.blog.user = u"ada"_qs;
        fixture.launch();
        QTRY_VERIFY(fixture.prompts.login.isShown());
        fixture.prompts.logins = {{u"ada"_qs, u"wrong"_qs}, {u"ada"_qs, u"secret"_qs}};
        fixture.prompts.login.answer(Login{u"ada"_qs, QString()});
        QTRY_VERIFY(fixture.rowTitled(u"Hello"_qs));
        QTRY_COMPARE(fixture.app().posts().getTaxonomiesForSearch(u"#g"_qs), QStringList{u"#green"_qs});
        QCOMPARE(fixture.prompts.journal,
            (QStringList{u"login refused: grace/@Blog on blog.test"_qs, u"login error: ada/@Blog on blog.test"_qs,
                u"login error: ada/wrong@Blog on blog.test"_qs}));
        // The other user name lasts, and its password has taken the place of the old one.
        QCOMPARE(fixture.secrets->size(), 1);
        QCOMPARE(fixture.secretOf(u"ada"_qs, fixture.blog.url()), u"secret"_qs);
        fixture.quit();
        fixture.prompts.takeJournal();
        fixture.launch();
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.service()->username, u"ada"_qs);
        QCOMPARE(fixture.prompts.journal, QStringList());
        QCOMPARE(fixture.accounts().size(), 1);
    }

    void aLoginThatCannotBeTriedIsAskedAgain()
    {
        AppFixture fixture;
        fixture.launchWithBlog(u"outdated"_qs);
        QTRY_VERIFY(fixture.prompts.login.isShown());
        fixture.prompts.takeJournal();
        fixture.blog.breakConnection(u"wp.getOptions"_qs, QNetworkReply::RemoteHostClosedError);
        fixture.prompts.login.answer(Login{u"ada"_qs, u"secret"_qs});
        QTRY_VERIFY(fixture.prompts.login.isShown());
        QCOMPARE(fixture.prompts.journal,
            (QStringList{u"alert: “Blog” could not be asked whether the login holds."_qs,
                u"login: ada/secret@Blog on blog.test"_qs}));
        QCOMPARE(fixture.service()->password, u"outdated"_qs);
    }

    void cancelledLoginKeepsThePassword()
    {
        AppFixture fixture;
        fixture.launchWithBlog(u"outdated"_qs);
        QTRY_VERIFY(fixture.prompts.login.isShown());
        fixture.prompts.login.answer({});
        QCOMPARE(fixture.secretOf(u"ada"_qs, fixture.blog.url()), u"outdated"_qs);
        QTRY_VERIFY(!fixture.list.isSyncing);
        fixture.app().rounds().refreshCurrentBlog();
        QTRY_COMPARE(fixture.prompts.journal.filter(u"login refused: "_qs).size(), 2);
    }

    void asksNothingWithoutAPassword()
    {
        AppFixture fixture;
        fixture.reachability.reachable = false;
        fixture.launchWithBlog(QString());
        QTRY_VERIFY(fixture.list.syncFailure.startsWith(u"You are offline."));
        fixture.reachability.plugIn();
        QVERIFY(fixture.list.syncFailure.isEmpty());
        QTRY_VERIFY(fixture.prompts.login.isShown());
        fixture.prompts.login.answer({});
        QTRY_VERIFY((fixture.app().rounds().refreshCurrentBlog(), fixture.prompts.login.isShown()));
        QCOMPARE(fixture.blog.methods(), QStringList());
        QVERIFY(!fixture.list.isSyncing);
        fixture.prompts.login.answer(Login{u"ada"_qs, u"secret"_qs});
        QTRY_COMPARE(fixture.blog.count(u"wp.getPosts"_qs), 2);
    }

    void theAnswerOfARemovedBlogIsNobodys()
    {
        AppFixture fixture;
        fixture.seedAccount(u"Second"_qs, fixture.other.url());
        fixture.other.answerLate(u"wp.getPosts"_qs);
        fixture.launchWithBlog();
        QTRY_COMPARE(fixture.network.heldCount(), 1);
        fixture.removeAccount(fixture.accounts().first());
        fixture.network.release();
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.app().currentBlog().blogName(), u"Blog"_qs);
        QVERIFY(fixture.list.syncFailure.isEmpty());
    }
};

static const RegisteredTest<FailuresTest> registered;

#include "FailuresTest.moc"
