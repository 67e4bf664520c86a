#include "support/TestClasses.h"
#include "wordpress/ServiceFixture.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// Construction, login, and what holds for every call.
class ServiceTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void takesCredentialsFromTheAccount();
    void staysUsableWithoutAPassword();
    void sendsOnlyTheCredentialsThatItHas_data();
    void sendsOnlyTheCredentialsThatItHas();
    void sendsEachCallAsTheTableTells_data();
    void sendsEachCallAsTheTableTells();
    void tellsWhatTheBlogAnswers_data();
    void tellsWhatTheBlogAnswers();
    void keepsThePasswordAfterALogin_data();
    void keepsThePasswordAfterALogin();
    void tellsFailuresOfTheConnection_data();
    void tellsFailuresOfTheConnection();
    void sendsLaterCallsToTheChangedAddress();
    void mayBeLetGoInsideItsOwnCallback();
    void dropsRepliesAfterItsEnd();
};

namespace {
using Action = std::function<void(ZLWordpressService &)>;

PostPtr numbered()
{
    const PostPtr post = ServiceFixture::post(u"T"_s, u"c"_s);
    post->id = u"7"_s;
    return post;
}
} // namespace
Q_DECLARE_METATYPE(Action)

void ServiceTest::takesCredentialsFromTheAccount()
{
    ServiceFixture f;
    QCOMPARE(f.service->blogApiURL(), QUrl(u"http://blog.test/xmlrpc.php"_s));
    QCOMPARE(f.service->username, u"ada"_s);
    QCOMPARE(f.service->password, u"secret"_s);
    QCOMPARE(f.service->blogName, u"Ada"_s);
    f.account->blog_name = QString();
    QCOMPARE(f.makeService(f.account)->blogName, u"ada"_s);
}

void ServiceTest::staysUsableWithoutAPassword()
{
    ServiceFixture f;
    QVERIFY(f.environment.keychain.deletePasswordForService(
        ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(u"ada"_s, f.blog.url())));
    const ServicePtr service = f.makeService(f.account);
    QVERIFY(service->password.isNull());
    service->password = u"secret"_s;
    service->getProfile();
    QTRY_COMPARE(f.journal(), QStringList{u"got profile"_s});
}

void ServiceTest::sendsOnlyTheCredentialsThatItHas_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("parameters");
    QTest::newRow("both") << u"ada"_s << u"pw"_s << u"[\"\", \"ada\", \"pw\"]"_s;
    QTest::newRow("no password") << u"ada"_s << QString() << u"[\"\", \"ada\"]"_s;
    QTest::newRow("no user") << QString() << u"pw"_s << u"[\"\"]"_s;
    QTest::newRow("empty texts are there") << u""_s << u""_s << u"[\"\", \"\", \"\"]"_s;
}

void ServiceTest::sendsOnlyTheCredentialsThatItHas()
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

void ServiceTest::sendsEachCallAsTheTableTells_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("parameters");
    const auto row = [](const char *name, const Action &action, const QString &method, const QString &parameters) {
        QTest::newRow(name) << action << method << parameters;
    };
    const QString login = u"\"\", \"ada\", \"secret\""_s;
    row(
        "getOptions", [](auto &s) { s.getOptions(); }, u"wp.getOptions"_s, login);
    row(
        "reconnect", [](auto &s) { s.reconnect(); }, u"wp.getOptions"_s, login);
    row(
        "getProfile", [](auto &s) { s.getProfile(); }, u"wp.getProfile"_s, login);
    row(
        "getUserBlogs", [](auto &s) { s.getUserBlogs(); }, u"wp.getUsersBlogs"_s, u"\"ada\", \"secret\""_s);
    row(
        "getPosts", [](auto &s) { s.getPosts(); }, u"metaWeblog.getRecentPosts"_s, login + u", 50"_s);
    row(
        "getPost", [](auto &s) { s.getPost(u"7"_s); }, u"metaWeblog.getPost"_s, u"\"7\", \"ada\", \"secret\""_s);
    row(
        "getPost, original", [](auto &s) { s.getPost(u"7"_s, numbered()); }, u"wp.getPost"_s, login + u", \"7\""_s);
    row(
        "deletePost", [](auto &s) { s.deletePost(numbered()); }, u"wp.deletePost"_s, login + u", \"7\""_s);
    row(
        "deletePostForPreview", [](auto &s) { s.deletePostForPreview(numbered()); }, u"wp.deletePost"_s,
        login + u", \"7\""_s);
    row(
        "getTaxonomies", [](auto &s) { s.getTaxonomies(); }, u"metaWeblog.getCategories"_s, login);
    row(
        "newCategory", [](auto &s) { s.newCategory(u"Tea"_s); }, u"wp.newCategory"_s,
        login + u", {\"name\": \"Tea\"}"_s);
}

void ServiceTest::sendsEachCallAsTheTableTells()
{
    QFETCH(Action, action);
    ServiceFixture f;
    action(*f.service);
    QTRY_VERIFY(!f.blog.calls.isEmpty());
    QTEST(f.blog.calls[0].method, "method");
    QFETCH(QString, parameters);
    QCOMPARE(f.parameters(f.blog.calls[0]), u'[' + parameters + u']');
    QCOMPARE(f.blog.protocolErrors, QStringList());
}

void ServiceTest::tellsWhatTheBlogAnswers_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QStringList>("journal");
    QTest::newRow("options") << Action([](auto &s) { s.getOptions(); }) << QStringList{u"got options"_s};
    QTest::newRow("profile") << Action([](auto &s) { s.getProfile(); }) << QStringList{u"got profile"_s};
    QTest::newRow("blogs") << Action([](auto &s) { s.getUserBlogs(); }) << QStringList{u"got blogs"_s};
    QTest::newRow("category") << Action([](auto &s) { s.newCategory(u"Tea"_s); })
                              << QStringList{u"created category Tea"_s};
    QTest::newRow("taxonomies") << Action([](auto &s) { s.getTaxonomies(); }) << QStringList{u"got taxonomies"_s};
    QTest::newRow("recent posts end a round, as no call is under way")
        << Action([](auto &s) { s.getPosts(); }) << QStringList{u"synced Ada"_s, u"got posts"_s};
}

void ServiceTest::tellsWhatTheBlogAnswers()
{
    QFETCH(Action, action);
    QFETCH(QStringList, journal);
    ServiceFixture f;
    action(*f.service);
    QTRY_COMPARE(f.journal(), journal);
}

void ServiceTest::keepsThePasswordAfterALogin_data()
{
    QTest::addColumn<int>("automatically"); // -1: never set
    QTest::addColumn<QString>("kept");
    QTest::newRow("wanted") << 1 << u"new"_s;
    QTest::newRow("not wanted") << 0 << u"secret"_s;
    QTest::newRow("never set") << -1 << u"secret"_s;
}

void ServiceTest::keepsThePasswordAfterALogin()
{
    QFETCH(int, automatically);
    ServiceFixture f;
    f.account->preferences->login_automatically =
        automatically < 0 ? std::optional<bool>() : std::optional<bool>(automatically == 1);
    f.blog.password = f.service->password = u"new"_s;
    f.service->reconnect();
    QTRY_COMPARE(f.journal(), (QStringList{u"reconnected ada"_s, u"synced Ada"_s}));
    QTEST(f.environment.keychain.passwordForService(
              ZLWordpressService::keychainService(), ZLWordpressService::keychainAccount(u"ada"_s, f.blog.url())),
        "kept");
    QCOMPARE(f.blog.methods(), (QStringList{u"wp.getOptions"_s, u"wp.getPosts"_s, u"wp.getPosts"_s}));
}

void ServiceTest::tellsFailuresOfTheConnection_data()
{
    using Spoil = std::function<void(ServiceFixture &)>;
    QTest::addColumn<std::function<void(ServiceFixture &)>>("spoil");
    QTest::addColumn<QStringList>("journal");
    const QString method = u"wp.getOptions"_s;
    QTest::newRow("wrong password") << Spoil([](ServiceFixture &f) { f.service->password = u"no"_s; })
                                    << QStringList{u"request 25 failed: Response error 403"_s};
    QTest::newRow("status 404") << Spoil([=](ServiceFixture &f) { f.blog.answerWithStatus(method, 404); })
                                << QStringList{u"request 25 failed: HTTP 404"_s};
    QTest::newRow("no such host") << Spoil([](ServiceFixture &f) {
        f.service->changeApiURL(QUrl(u"http://nowhere.test/xmlrpc.php"_s));
    }) << QStringList{u"request 25 failed: NSURLErrorDomain -1003"_s};
    QTest::newRow("not XML") << Spoil([=](ServiceFixture &f) { f.blog.answerWithBytes(method, "<html><p>Hi"); })
                             << QStringList{u"got options"_s};
    QTest::newRow("cut off") << Spoil([=](ServiceFixture &f) { f.blog.answerCut(method, 200); })
                             << QStringList{u"got options"_s};
}

void ServiceTest::tellsFailuresOfTheConnection()
{
    QFETCH(std::function<void(ServiceFixture &)>, spoil);
    QFETCH(QStringList, journal);
    ServiceFixture f;
    spoil(f);
    f.service->getOptions();
    QTRY_COMPARE(f.journal(), journal);
    QVERIFY(!f.delegate.struct_.isStruct()); // an unusable reply is told as an absent one
}

void ServiceTest::sendsLaterCallsToTheChangedAddress()
{
    ServiceFixture f;
    FakeBlog other(u"other.test"_s);
    f.environment.network.addHost(other.host(), other);
    f.service->changeApiURL(QUrl(u"http://other.test/xmlrpc.php"_s));
    f.service->getOptions();
    QTRY_COMPARE(f.journal(), QStringList{u"got options"_s});
    QCOMPARE(other.methods(), QStringList{u"wp.getOptions"_s});
    QCOMPARE(f.blog.calls.size(), 0);
}

void ServiceTest::mayBeLetGoInsideItsOwnCallback()
{
    ServiceFixture f;
    f.blog.answerWithFault(u"wp.editPost"_s, 500, u"no"_s);
    f.delegate.onFailure = [&f] { f.service.reset(); };
    const PostPtr post = numbered();
    f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::Update);
    QTRY_COMPARE(f.journal(), (QStringList{u"upload failed: T"_s, u"request 3 failed: Response error 500"_s}));
}

void ServiceTest::dropsRepliesAfterItsEnd()
{
    ServiceFixture f;
    for (const QString &method : {u"wp.getPosts"_s, u"wp.getPosts"_s, u"wp.getOptions"_s})
        f.blog.answerLate(method);
    f.service->syncBlogPosts();
    f.service->getOptions();
    f.service.reset();
    f.environment.network.release();
    f.settle();
    QCOMPARE(f.journal(), QStringList());
    QCOMPARE(f.blog.calls.size(), 3);
}

static const RegisteredTest<ServiceTest> registered;
#include "ServiceTest.moc"
