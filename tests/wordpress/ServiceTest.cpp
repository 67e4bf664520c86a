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
        row("login", u"wp.getOptions"_qs, login, {u"reconnected ada"_qs, u"synced Ada"_qs},
            [](auto &s) { s.reconnect(); });
        row("profile", u"wp.getProfile"_qs, login, {u"got profile"_qs}, [](auto &s) { s.getProfile(); });
        row("blogs", u"wp.getUsersBlogs"_qs, u"\"ada\", \"secret\""_qs, {u"got blogs"_qs},
            [](auto &s) { s.getUserBlogs(); });
        row("recent posts end a round, as no call is under way", u"metaWeblog.getRecentPosts"_qs, login + u", 50"_qs,
            {u"synced Ada"_qs, u"got 1 posts"_qs}, [](auto &s) { s.getPosts(); });
        row("post that is not there", u"metaWeblog.getPost"_qs, u"\"8\", \"ada\", \"secret\""_qs,
            {u"request 1 failed: Response error 404"_qs}, [](auto &s) { s.getPost(u"8"_qs); });
        row("post, original", u"wp.getPost"_qs, login + u", \"7\""_qs, {u"published T"_qs, u"note: published T"_qs},
            [](auto &s) { s.getPost(u"7"_qs, numbered()); });
        row("delete", u"wp.deletePost"_qs, login + u", \"7\""_qs, {u"deleted T"_qs},
            [](auto &s) { s.deletePost(numbered()); });
        row("delete a preview", u"wp.deletePost"_qs, login + u", \"7\""_qs, {},
            [](auto &s) { s.deletePostForPreview(numbered()); });
        row("taxonomies", u"metaWeblog.getCategories"_qs, login, {u"got taxonomies"_qs},
            [](auto &s) { s.getTaxonomies(); });
        row("category", u"wp.newCategory"_qs, login + u", {\"name\": \"Tea\"}"_qs, {u"created category Tea"_qs},
            [](auto &s) { s.newCategory(u"Tea"_qs); });
    }

    void sendsEachCallAndTellsTheAnswer()
    {
        QFETCH(Action, action);
        QFETCH(QString, parameters);
        ServiceFixture f;
        f.blog.posts[u"7"_qs].id = u"7"_qs;
        f.blog.posts[u"7"_qs].title = u"T"_qs;
        for (const QString &method : {u"wp.getProfile"_qs, u"wp.getUsersBlogs"_qs})
            f.blog.answerWith(method, XMLRPCStruct{{u"a"_qs, u"b"_qs}});
        f.blog.answerWith(u"metaWeblog.getRecentPosts"_qs, XMLRPCArray{XMLRPCStruct{{u"postid"_qs, 7}}});
        action(*f.service);
        f.settle();
        QTEST(f.journal(), "journal");
        QTEST(f.blog.calls.value(0).method, "method");
        QCOMPARE(f.parameters(f.blog.calls[0]), u'[' + parameters + u']');
        QCOMPARE(f.blog.protocolErrors, QStringList());
    }

    void keepsThePasswordAfterALogin_data()
    {
        QTest::addColumn<int>("automatically"); // -1: never set
        QTest::addColumn<QString>("kept");
        QTest::newRow("wanted") << 1 << u"new"_qs;
        QTest::newRow("not wanted") << 0 << u"secret"_qs;
        QTest::newRow("never set") << -1 << u"secret"_qs;
    }

    void keepsThePasswordAfterALogin()
    {
        QFETCH(int, automatically);
        ServiceFixture f;
        f.account->preferences->login_automatically =
            automatically < 0 ? std::optional<bool>() : std::optional<bool>(automatically == 1);
        f.blog.password = f.service->password = u"new"_qs;
        f.service->reconnect();
        QTRY_COMPARE(f.journal(), (QStringList{u"reconnected ada"_qs, u"synced Ada"_qs}));
        QTEST(f.environment.keychain.passwordForService(
                  ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(u"ada"_qs, f.blog.url())),
            "kept");
        QCOMPARE(f.blog.methods(), (QStringList{u"wp.getOptions"_qs, u"wp.getPosts"_qs, u"wp.getPosts"_qs}));
    }

    void tellsFailuresOfTheConnection_data()
    {
        const TestTable<QString, std::function<void(ServiceFixture &)>> row({"told", "spoil"});
        const QString method = u"wp.getOptions"_qs;
        row("wrong password", u"request 25 failed: Response error 403"_qs,
            [](auto &f) { f.service->password = u"no"_qs; });
        row("status", u"request 25 failed: HTTP 404"_qs, [=](auto &f) { f.blog.answerWithStatus(method, 404); });
        row("no such host", u"request 25 failed: NSURLErrorDomain -1003"_qs,
            [](auto &f) { f.service->changeApiURL(QUrl(u"http://nowhere.test/xmlrpc.php"_qs)); });
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

    void sendsLaterCallsToTheChangedAddress()
    {
        ServiceFixture f;
        FakeBlog other(u"other.test"_qs);
        f.environment.network.addHost(other.host(), other);
        f.service->changeApiURL(QUrl(u"http://other.test/xmlrpc.php"_qs));
        f.service->getOptions();
        QTRY_COMPARE(f.journal(), QStringList{u"got options"_qs});
        QCOMPARE(other.methods(), QStringList{u"wp.getOptions"_qs});
        QCOMPARE(f.blog.calls.size(), 0);
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
        for (const QString &method : {u"wp.getPosts"_qs, u"wp.getPosts"_qs, u"wp.getOptions"_qs})
            f.blog.answerLate(method);
        f.service->syncBlogPosts();
        f.service->getOptions();
        f.service.reset();
        f.environment.network.release();
        f.settle();
        QCOMPARE(f.journal(), QStringList());
        QCOMPARE(f.blog.calls.size(), 3);
    }
};

static const RegisteredTest<ServiceTest> registered;
#include "ServiceTest.moc"
