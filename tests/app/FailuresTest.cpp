#include "AppFixture.h"
#include "app/RequestFailures.h"

class FailuresTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answersByTypeAndCode_data()
    {
        const TestTable<int, int, bool, FailureAnswer> row({"type", "code", "isLoginVisible", "answer"});
        const int options = ZLWordpressServiceRequestTypeGetOptions;
        const int sync = ZLWordpressServiceRequestTypeSyncPosts;
        const int blogs = ZLWordpressServiceRequestTypeGetUserBlogs;
        const int preview = ZLWordpressServiceRequestTypeGetPostForPreview;
        row("connecting -1003", options, -1003, false, FailureAnswer::AlertThenIntro);
        row("403", sync, 403, false, FailureAnswer::AlertThenLogin);
        row("403, login visible", sync, 403, true, FailureAnswer::Nothing);
        row("425", sync, 425, false, FailureAnswer::AlertThenLogin);
        row("425, login visible", sync, 425, true, FailureAnswer::Nothing);
        row("404", sync, 404, false, FailureAnswer::Alert);
        row("404 of the blogs", blogs, 404, false, FailureAnswer::NoWordpressThenIntro);
        row("-1003", sync, -1003, false, FailureAnswer::AlertThenIntro);
        row("401", sync, 401, false, FailureAnswer::Alert);
        row("time-out", sync, -1001, true, FailureAnswer::Alert);
        row("preview 403", preview, 403, false, FailureAnswer::AlertThenLogin);
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
        const TestTable<QStringList, std::function<void(FakeBlog &)>> row({"seen", "spoil"});
        const QString noBlog =
            u"ask: Ops! Sorry, we couldn't find a WordPress Blog using this URL. Zalmo is only supporting "
            "WordPress for now but soon we'll give you more options. [Ok|Need Help?]"_qs;
        const QString noList =
            u"ask: Whoops! Sorry but something went wrong with the XML-RPC connection. Custom plugins "
            "or changes in the PHP may affect your WordPress API. Contact our support and we will help you with that. "
            "[Ok|Need Help?]"_qs;
        const QString error = u"error: refused"_qs, intro = u"intro"_qs;
        const QString again = u"login error: ada/secret@http://blog.test"_qs;
        const QString method = u"wp.getOptions"_qs;
        row("404", {noBlog, intro}, [=](FakeBlog &b) { b.answerWithFault(method, 404, u"refused"_qs); });
        row("no such page", {noBlog, intro}, [=](FakeBlog &b) { b.answerWithStatus(method, 404); });
        row("403", {again}, [=](FakeBlog &b) { b.answerWithFault(method, 403, u"refused"_qs); });
        row("425", {error, again}, [=](FakeBlog &b) { b.answerWithFault(method, 425, u"refused"_qs); });
        row("405", {error, intro}, [=](FakeBlog &b) { b.answerWithFault(method, 405, u"refused"_qs); });
        row("no dictionary", {noList, intro}, [=](FakeBlog &b) { b.answerWith(method, u"hello"_qs); });
    }

    void connecting()
    {
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        AppFixture fixture;
        fixture.launch();
        spoil(fixture.blog);
        fixture.prompts.answers = {1}; // help, where it is offered
        fixture.logInto(fixture.blog);
        QTRY_VERIFY(!fixture.prompts.isConnecting);
        QTEST(fixture.prompts.journal.mid(1), "seen");
        QCOMPARE(fixture.app().accounts().size(), 0);
        QCOMPARE(fixture.workspace.opened.size(), fixture.prompts.journal.filter(u"Need Help?"_qs).size());
    }

    void oneLoginSheetForManyFailures()
    {
        AppFixture fixture;
        fixture.launchWithBlog(u"outdated"_qs);
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
        fixture.launchWithBlog(u"outdated"_qs);
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
        fixture.launchWithBlog(u"outdated"_qs);
        QTRY_VERIFY(fixture.prompts.isLoginShown);
        fixture.app().didPressedCancelButton();
        QVERIFY(!fixture.prompts.isLoginShown);
        QVERIFY(fixture.secrets->isEmpty());
        QVERIFY(!fixture.prompts.journal.contains(u"intro"_qs));
    }
};

static const RegisteredTest<FailuresTest> registered;

#include "FailuresTest.moc"
