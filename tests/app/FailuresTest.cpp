#include "AppFixture.h"
#include "app/RequestFailures.h"
#include "support/TestClasses.h"

Q_DECLARE_METATYPE(FailureAnswer)

class FailuresTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answersByTypeAndCode_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("code");
        QTest::addColumn<bool>("isLoginVisible");
        QTest::addColumn<FailureAnswer>("answer");
        const int options = ZLWordpressServiceRequestTypeGetOptions;
        const int sync = ZLWordpressServiceRequestTypeSyncPosts;
        const int blogs = ZLWordpressServiceRequestTypeGetUserBlogs;
        const int preview = ZLWordpressServiceRequestTypeGetPostForPreview;
        QTest::newRow("connecting -1003") << options << -1003 << false << FailureAnswer::AlertThenIntro;
        QTest::newRow("403") << sync << 403 << false << FailureAnswer::AlertThenLogin;
        QTest::newRow("403, login visible") << sync << 403 << true << FailureAnswer::Nothing;
        QTest::newRow("425") << sync << 425 << false << FailureAnswer::AlertThenLogin;
        QTest::newRow("425, login visible") << sync << 425 << true << FailureAnswer::Nothing;
        QTest::newRow("404") << sync << 404 << false << FailureAnswer::Alert;
        QTest::newRow("404 of the blogs") << blogs << 404 << false << FailureAnswer::NoWordpressThenIntro;
        QTest::newRow("-1003") << sync << -1003 << false << FailureAnswer::AlertThenIntro;
        QTest::newRow("401") << sync << 401 << false << FailureAnswer::Alert;
        QTest::newRow("time-out") << sync << -1001 << true << FailureAnswer::Alert;
        QTest::newRow("preview 403") << preview << 403 << false << FailureAnswer::AlertThenLogin;
    }

    void answersByTypeAndCode()
    {
        QFETCH(int, type);
        QFETCH(int, code);
        QFETCH(bool, isLoginVisible);
        QFETCH(FailureAnswer, answer);
        QVERIFY(answerToFailure(type, code, isLoginVisible) == answer);
    }

    void connecting_data()
    {
        QTest::addColumn<int>("fault");
        QTest::addColumn<QStringList>("seen");
        const QString noBlog =
            u"ask: Ops! Sorry, we couldn't find a WordPress Blog using this URL. Zalmo is only supporting "
            "WordPress for now but soon we'll give you more options. [Ok|Need Help?]"_qs;
        const QString again = u"login error: ada/secret@http://blog.test"_qs;
        QTest::newRow("404") << 404 << QStringList{noBlog, u"intro"_qs};
        QTest::newRow("403") << 403 << QStringList{again};
        QTest::newRow("425") << 425 << QStringList{u"error: refused"_qs, again};
        QTest::newRow("405") << 405 << QStringList{u"error: refused"_qs, u"intro"_qs};
    }

    void connecting()
    {
        QFETCH(int, fault);
        QFETCH(QStringList, seen);
        AppFixture fixture;
        fixture.launch();
        fixture.blog.answerWithFault(u"wp.getOptions"_qs, fault, u"refused"_qs);
        fixture.app().connectToBlogURL(fixture.blog.url());
        fixture.prompts.takeJournal();
        fixture.app().didEntryUsernameAndPassword(u"ada"_qs, u"secret"_qs);
        QTRY_VERIFY(!fixture.prompts.isConnecting);
        QCOMPARE(fixture.prompts.journal, seen);
        QCOMPARE(fixture.app().accounts().size(), 0);
    }

    void oneLoginSheetForManyFailures()
    {
        AppFixture fixture;
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url(), u"outdated"_qs);
        fixture.launch();
        QTRY_COMPARE(fixture.blog.calls.size(), 6); // terms of the current service, and a full round
        QTRY_VERIFY(fixture.prompts.isLoginShown);
        QCOMPARE(fixture.prompts.journal.filter(u"login: "_qs).size(), 1);
        QCOMPARE(fixture.prompts.journal.filter(u"error: "_qs).size(), 1);
    }

    void logsInAgain()
    {
        AppFixture fixture;
        fixture.blog.addPost(u"Hello"_qs, u"<p>world</p>"_qs);
        fixture.blog.addTerm(u"post_tag"_qs, u"green"_qs);
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url(), u"outdated"_qs);
        fixture.launch();
        QTRY_VERIFY(fixture.prompts.isLoginShown);
        QTRY_COMPARE(fixture.blog.calls.size(), 6);
        fixture.app().didReconnectFromLoginSheet(u"ada"_qs, u"secret"_qs);
        QVERIFY(!fixture.prompts.isLoginShown);
        QTRY_VERIFY(fixture.rowTitled(u"Hello"_qs));
        QTRY_COMPARE(fixture.app().getTaxonomiesForSearch(u"#g"_qs), QStringList{u"#green"_qs});
        // The current service has learned what the one of the round was told, and so has the keychain.
        QCOMPARE(fixture.app().wordpressService()->password, u"secret"_qs);
        QCOMPARE(fixture.secrets->value({ZLWordpressService::keychainService(),
                     ZLWordpressService::keychainAccount(u"ada"_qs, fixture.blog.url())}),
            u"secret"_qs);
    }

    void cancelledLoginForgetsThePassword()
    {
        AppFixture fixture;
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url(), u"outdated"_qs);
        fixture.launch();
        QTRY_VERIFY(fixture.prompts.isLoginShown);
        fixture.app().didPressedCancelButton();
        QVERIFY(!fixture.prompts.isLoginShown);
        QVERIFY(fixture.secrets->isEmpty());
        QVERIFY(!fixture.prompts.journal.contains(u"intro"_qs));
    }

    void helpOpensAnArticle()
    {
        AppFixture fixture;
        fixture.launch();
        fixture.blog.answerWithStatus(u"wp.getOptions"_qs, 404);
        fixture.prompts.answers = {1};
        fixture.app().connectToBlogURL(fixture.blog.url());
        fixture.app().didEntryUsernameAndPassword(u"ada"_qs, u"secret"_qs);
        QTRY_COMPARE(fixture.workspace.opened.size(), 1);
    }
};

static const RegisteredTest<FailuresTest> registered;

#include "FailuresTest.moc"
