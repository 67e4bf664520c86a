#include "AppFixture.h"
#include "app/PostCopier.h"

class LoginsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void areNotAskedForByOtherRefusals()
    {
        for (const int code : {401, 403}) { // the second is that of a wrong login, too, but this one holds
            AppFixture f;
            f.start();
            f.blog.answerWithFault("wp.newPost", code, "refused");
            f.service()->syncCategoriesAndPublishPost(f.writePost("Mine", "<p>x</p>"), Upload::NewPost);
            QTRY_COMPARE(f.prompts.journal, QStringList("alert: The post could not be sent to “Blog”."));
            QVERIFY(f.prompts.details.first().startsWith("refused"));
        }
    }

    void areAskedForOnceAndAgain()
    {
        AppFixture f;
        f.launchWithBlog("outdated");
        QTRY_VERIFY(f.prompts.login.isShown());
        f.waitForRound();
        QCOMPARE(f.prompts.takeJournal(), QStringList("login refused: ada/@Blog on blog.test")); // for many failures
        QVERIFY(f.list.syncFailure.isEmpty());

        f.blog.breakConnection("wp.getOptions", QNetworkReply::RemoteHostClosedError);
        f.prompts.login.answer(Login{"ada", "secret"});
        QTRY_VERIFY(f.prompts.login.isShown());
        QCOMPARE(f.prompts.takeJournal(),
            QStringList(
                {"alert: “Blog” could not be asked whether the login holds.", "login: ada/secret@Blog on blog.test"}));
        QCOMPARE(f.service()->password, "outdated");

        f.prompts.login.answer({}); // Cancel keeps the password
        QCOMPARE(f.secretOf("ada", f.blog.url()), "outdated");
        f.app().rounds().refreshCurrentBlog();
        QTRY_COMPARE(f.prompts.journal.filter("login refused: ").size(), 1);
    }

    void last()
    {
        AppFixture f;
        f.blog.addPost("Hello", "<p>world</p>");
        f.blog.addTerm("post_tag", "green");
        f.blog.user = "grace";
        f.seedAccount("Blog", f.blog.url(), "outdated");
        f.blog.user = "ada";
        f.launch();
        QTRY_VERIFY(f.prompts.login.isShown());
        f.prompts.logins = {{"ada", "wrong"}, {"ada", "secret"}};
        f.prompts.login.answer(Login{"ada", {}});
        QTRY_VERIFY(f.rowTitled("Hello"));
        QTRY_COMPARE(f.app().posts().getTaxonomiesForSearch("#g"), QStringList("#green"));
        QCOMPARE(f.prompts.takeJournal(),
            QStringList({"login refused: grace/@Blog on blog.test", "login error: ada/@Blog on blog.test",
                "login error: ada/wrong@Blog on blog.test"}));
        // The other user name lasts, and its password has taken the place of the old one.
        QCOMPARE(f.secrets->size(), 1);
        QCOMPARE(f.secretOf("ada", f.blog.url()), "secret");
        f.quit();
        f.launch();
        f.waitForRound();
        QCOMPARE(f.service()->username, "ada");
        QCOMPARE(f.prompts.journal, QStringList());
        QCOMPARE(f.accounts().size(), 1);
    }

    void areNeededBeforeAnythingIsAsked()
    {
        AppFixture f;
        f.reachability.reachable = false;
        f.launchWithBlog(QString());
        QTRY_VERIFY(f.list.syncFailure.startsWith("You are offline."));
        f.reachability.plugIn();
        QVERIFY(f.list.syncFailure.isEmpty());
        QTRY_VERIFY(f.prompts.login.isShown());
        f.prompts.login.answer({});
        QTRY_VERIFY((f.app().rounds().refreshCurrentBlog(), f.prompts.login.isShown()));
        QCOMPARE(f.blog.methods(), QStringList());
        QVERIFY(!f.list.isSyncing);
        f.prompts.login.answer(Login{"ada", "secret"});
        QTRY_COMPARE(f.blog.count("wp.getPosts"), 2);
    }

    /// The login of one blog must never be stored under another, or sent there.
    void goToTheBlogOfACopy()
    {
        AppFixture f;
        f.blog.addPost("Post", "<p>x</p>");
        f.start(true);
        f.other.addTerm("post_tag", "theirs");
        f.other.password = "changed";
        f.app().rounds().syncAllBlogs();
        QTRY_VERIFY(f.prompts.login.isShown());
        f.waitForRound();
        QVERIFY(PostCopier(f.files, f.app().documentController(), f.current())
                    .copyPostToBlog(f.rows().first(), f.accounts().at(1)));
        QCOMPARE(f.current().blogName(), "Other");
        QCOMPARE(f.prompts.journal.filter("login"), QStringList("login refused: ada/@Other on other.test"));
        f.blog.calls.clear();
        f.prompts.login.answer(Login{"ada", "changed"});
        QTRY_COMPARE(f.app().posts().getTaxonomiesForSearch("#t"), QStringList("#theirs"));
        QCOMPARE(f.blog.calls.size(), 0);
        QCOMPARE(f.secretOf("ada", f.blog.url()), "secret");
        QCOMPARE(f.secretOf("ada", f.other.url()), "changed");
    }
};

static const RegisteredTest<LoginsTest> registered;

#include "LoginsTest.moc"
