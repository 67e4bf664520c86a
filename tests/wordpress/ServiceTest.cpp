#include "wordpress/ServiceFixture.h"

namespace {
using Action = std::function<void(ZLWordpressService &)>;

PostPtr numbered()
{
    const PostPtr post = ServiceFixture::post(u"T"_qs, u"c"_qs);
    post->id = u"7"_qs;
    return post;
}
} // namespace
/// Construction, login, and what holds for every call.
class ServiceTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void takesCredentialsFromTheAccount()
    {
        ServiceFixture f;
        QCOMPARE(f.service->blogApiURL(), QUrl(u"http://blog.test/xmlrpc.php"_qs));
        QCOMPARE(f.service->username, u"ada"_qs);
        QCOMPARE(f.service->password, u"secret"_qs);
        QCOMPARE(f.service->blogName, u"Ada"_qs);
        f.account->blog_name = QString();
        QCOMPARE(f.makeService(f.account)->blogName, u"ada"_qs);
    }

    void staysUsableWithoutAPassword()
    {
        ServiceFixture f;
        QVERIFY(f.environment.keychain.deletePasswordForService(
            ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(u"ada"_qs, f.blog.url())));
        const ServicePtr service = f.makeService(f.account);
        QVERIFY(service->password.isNull());
        service->password = u"secret"_qs;
        service->getOptions();
        QTRY_COMPARE(f.journal(), QStringList{u"got options"_qs});
    }

    void sendsOnlyTheCredentialsThatItHas_data()
    {
        const TestTable<QString, QString, QString> row({"user", "password", "parameters"});
        row("both", u"ada"_qs, u"pw"_qs, u"[\"\", \"ada\", \"pw\"]"_qs);
        row("no password", u"ada"_qs, {}, u"[\"\", \"ada\"]"_qs);
        row("no user", {}, u"pw"_qs, u"[\"\"]"_qs);
        row("empty texts are there", u""_qs, u""_qs, u"[\"\", \"\", \"\"]"_qs);
    }

    void sendsOnlyTheCredentialsThatItHas()
    {
        QFETCH(QString, user);
        QFETCH(QString, password);
        ServiceFixture f;
        f.service->username = user;
        f.service->password = password;
        f.service->getOptions();
        QTRY_COMPARE(f.blog.calls.size(), 1);
        QTEST(f.parameters(f.blog.calls[0]), "parameters");
    }

    void sendsEachCallAndTellsTheAnswer_data()
    {
        const TestTable<QString, QString, QStringList, Action> row({"method", "parameters", "journal", "action"});
        const QString login = u"\"\", \"ada\", \"secret\""_qs;
        row("options", u"wp.getOptions"_qs, login, {u"got options"_qs}, [](auto &s) { s.getOptions(); });
        row("delete", u"wp.deletePost"_qs, login + u", \"7\""_qs, {u"deleted T"_qs},
            [](auto &s) { s.deletePost(numbered()); });
        row("delete a preview", u"wp.deletePost"_qs, login + u", \"7\""_qs, {},
            [](auto &s) { s.deletePostForPreview(numbered()); });
    }

    void sendsEachCallAndTellsTheAnswer()
    {
        QFETCH(Action, action);
        QFETCH(QString, parameters);
        ServiceFixture f;
        f.blog.posts[u"7"_qs].id = u"7"_qs;
        f.blog.posts[u"7"_qs].title = u"T"_qs;
        action(*f.service);
        f.settle();
        QTEST(f.journal(), "journal");
        QTEST(f.blog.calls.value(0).method, "method");
        QCOMPARE(f.parameters(f.blog.calls[0]), u'[' + parameters + u']');
        QCOMPARE(f.blog.protocolErrors, QStringList());
    }

    void tellsFailuresOfTheConnection_data()
    {
        const TestTable<QString, std::function<void(ServiceFixture &)>> row({"told", "spoil"});
        const QString method = u"wp.getOptions"_qs;
        row("wrong password", u"request 25 failed: Response error 403"_qs,
            [](auto &f) { f.service->password = u"no"_qs; });
        row("status", u"request 25 failed: HTTP 404"_qs, [=](auto &f) { f.blog.answerWithStatus(method, 404); });
        row("no such host", u"request 25 failed: NSURLErrorDomain -1003"_qs, [](auto &f) {
            f.account->url = u"http://nowhere.test"_qs;
            f.service = f.makeService(f.account);
        });
        const QString unreadable = u"request 25 failed: NSURLErrorDomain -1017"_qs;
        row("not XML", unreadable, [=](auto &f) { f.blog.answerWithBytes(method, "<html><p>Hi"); });
        row("cut off", unreadable, [=](auto &f) { f.blog.answerCut(method, 200); });
        row("empty", unreadable, [=](auto &f) { f.blog.answerEmpty(method); });
    }

    void tellsFailuresOfTheConnection()
    {
        QFETCH(std::function<void(ServiceFixture &)>, spoil);
        QFETCH(QString, told);
        ServiceFixture f;
        spoil(f);
        f.service->getOptions();
        QTRY_COMPARE(f.journal(), QStringList{told});
    }

    void tellsAFaultInWords_data()
    {
        const TestTable<QString, QString> row({"sent", "told"});
        row("its own", u"No & no"_qs, u"No & no"_qs);
        row("none", u""_qs, u"The blog refused the call (fault 500) without saying why."_qs);
    }

    void tellsAFaultInWords()
    {
        QFETCH(QString, sent);
        ServiceFixture f;
        f.blog.answerWithFault(u"wp.getOptions"_qs, 500, sent);
        f.service->getOptions();
        QTRY_COMPARE(f.journal(), QStringList{u"request 25 failed: Response error 500"_qs});
        QTEST(f.delegate.error.description, "told");
    }

    void tellsARefusedLoginFromOtherRefusals_data()
    {
        const TestTable<ZLError, int, bool> row({"error", "type", "isLogin"});
        const QString fault = u"Response error"_qs;
        row("login", {fault, 403, {}}, ZLWordpressServiceRequestTypeSyncPosts, true);
        row("login at publishing", {fault, 403, {}}, ZLWordpressServiceRequestTypeUpdatePost, true);
        row("another code for it", {fault, 425, {}}, ZLWordpressServiceRequestTypeGetOptions, true);
        row("firewall", {u"HTTP"_qs, 403, {}}, ZLWordpressServiceRequestTypeSyncPosts, false);
        row("role", {fault, 401, {}}, ZLWordpressServiceRequestTypeSyncPosts, false);
        row("a blog without tags", {fault, 403, {}}, ZLWordpressServiceRequestTypeSyncTags, false);
    }

    void tellsARefusedLoginFromOtherRefusals()
    {
        QFETCH(ZLError, error);
        QFETCH(int, type);
        QTEST(isRefusedLogin(error, type), "isLogin");
    }

    void mayBeLetGoInsideItsOwnCallback()
    {
        ServiceFixture f;
        f.blog.answerWithFault(u"wp.editPost"_qs, 500, u"no"_qs);
        f.delegate.onFailure = [&f] { f.service.reset(); };
        const PostPtr post = numbered();
        f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::Update);
        QTRY_COMPARE(f.journal(), (QStringList{u"upload failed: T"_qs, u"request 3 failed: Response error 500"_qs}));
    }

    void dropsRepliesAfterItsEnd()
    {
        ServiceFixture f;
        f.service->syncCategoriesAndPublishPost(numbered(), ZLWordpressService::Update);
        for (const QString &method : {u"wp.editPost"_qs, u"wp.getPosts"_qs, u"wp.getPosts"_qs, u"wp.getOptions"_qs})
            f.blog.answerLate(method);
        f.service->syncBlogPosts();
        f.service->getOptions();
        f.service.reset();
        f.environment.network.release();
        f.settle();
        QCOMPARE(f.journal(), QStringList());
        QCOMPARE(f.blog.calls.size(), 4);
    }
};

static const RegisteredTest<ServiceTest> registered;
#include "ServiceTest.moc"
