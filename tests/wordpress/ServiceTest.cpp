#include "wordpress/ServiceFixture.h"

namespace {
PostPtr numbered()
{
    const PostPtr post = ServiceFixture::post(u"T"_qs, u"c"_qs);
    post->id = u"7"_qs;
    return post;
}
} // namespace
/// Login, and what holds for every call.
class ServiceTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void sendsOnlyTheCredentialsThatItHas_data()
    {
        const TestTable<QString, QString, QString> row({"user", "password", "parameters"});
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

    void tellsAFaultInWords()
    {
        ServiceFixture f;
        for (const auto &[sent, told] : {std::pair(u"No & no"_qs, u"No & no"_qs),
                 std::pair(u""_qs, u"The blog refused the call (fault 500) without saying why."_qs)}) {
            f.journal().clear();
            f.blog.answerWithFault(u"wp.getOptions"_qs, 500, sent);
            f.service->getOptions();
            QTRY_COMPARE(f.journal(), QStringList{u"request 25 failed: Response error 500"_qs});
            QCOMPARE(f.delegate.error.description, told);
        }
    }

    void tellsARefusedLoginFromOtherRefusals()
    {
        const QString fault = u"Response error"_qs;
        QVERIFY(isRefusedLogin({fault, 403, {}}, ZLWordpressServiceRequestTypeSyncPosts));
        QVERIFY(isRefusedLogin({fault, 403, {}}, ZLWordpressServiceRequestTypeUpdatePost));
        QVERIFY(isRefusedLogin({fault, 425, {}}, ZLWordpressServiceRequestTypeGetOptions)); // another code for it
        QVERIFY(!isRefusedLogin({u"HTTP"_qs, 403, {}}, ZLWordpressServiceRequestTypeSyncPosts)); // a firewall
        QVERIFY(!isRefusedLogin({fault, 401, {}}, ZLWordpressServiceRequestTypeSyncPosts)); // the user's role
        QVERIFY(!isRefusedLogin({fault, 403, {}}, ZLWordpressServiceRequestTypeSyncTags)); // a blog without tags
    }

    void mayBeLetGoInsideItsOwnCallback()
    {
        ServiceFixture f;
        f.blog.answerWithFault(u"wp.editPost"_qs, 500, u"no"_qs);
        f.delegate.onFailure = [&f] { f.service.reset(); };
        const PostPtr post = numbered();
        f.service->syncCategoriesAndPublishPost(post, Upload::Update);
        QTRY_COMPARE(f.journal(), (QStringList{u"upload failed: T"_qs, u"request 3 failed: Response error 500"_qs}));
    }

    void dropsRepliesAfterItsEnd()
    {
        ServiceFixture f;
        f.service->syncCategoriesAndPublishPost(numbered(), Upload::Update);
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
