#include "AppFixture.h"
#include "app/AppComposeHost.h"
#include "compose/ZLMainWindowCreateViewController.h"
#include "model/PostSync.h"
#include "support/FakeComposePage.h"
#include "support/FakeComposeView.h"

namespace {
/// The compose screen over the real controller, which brings what it sends to a pretended blog.
struct ScreenOnBlog : AppFixture {
    ScreenOnBlog()
    {
        seedAccount(u"Blog"_qs, blog.url());
        open();
    }
    ~ScreenOnBlog() { controller.reset(); }
    void open()
    {
        launch();
        waitForRound();
        host = std::make_unique<AppComposeHost>(
            app().environment(), app().currentBlog(), app().posts(), app().logins(), app().services());
        controller = std::make_unique<ZLMainWindowCreateViewController>(*host, page, view, prompts);
    }
    void restart()
    {
        controller->saveDocuments();
        controller.reset();
        quit();
        open();
        loadFirst();
    }
    void loadFirst()
    {
        controller->loadPost(rows().first());
        QTRY_VERIFY(document() && document()->fileURL() == rows().first()->localFile);
    }
    void publish() { controller->doActionForCurrentPost(PostAction::Publish); }
    bool isAtRest() const
    {
        return !controller->isUploadingCurrentPost() && controller->actions().testFlag(PostAction::Publish);
    }
    DocumentPtr document() const { return controller->currentDocument(); }
    /// What the blog last gave, as the file beside the post has it.
    QString syncedContent() const
    {
        const auto synced =
            ZLDocument::open(QUrl::fromLocalFile(PostSync::syncedPath(document()->fileURL().toLocalFile())));
        return synced ? (*synced)->storedContent() : QString();
    }

    FakeComposePage page;
    FakeComposeView view;
    std::unique_ptr<AppComposeHost> host;
    std::unique_ptr<ZLMainWindowCreateViewController> controller;
};
} // namespace

/// Presses of Publish, from the screen to the blog and back.
class SendingAgainTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void makesOnePost_data()
    {
        const TestTable<QString, bool> row; // the call whose answer is cut, or late and not waited for
        row("the answer is cut", u"wp.newPost"_qs, false);
        row("the copy cannot be read", u"wp.getPost"_qs, false);
        row("cancelled", u"wp.newPost"_qs, true);
    }

    void makesOnePost()
    {
        const auto [method, isCancelled] = testRow<QString, bool>();
        for (const QString &change : {u"nothing"_qs, u"title"_qs, u"restart"_qs}) {
            ScreenOnBlog f;
            f.view.typeTitle(u"Title"_qs);
            f.page.type(u"<p>first</p>"_qs);
            const QDateTime began = f.clock.present;
            isCancelled ? f.blog.answerLate(method) : f.blog.answerCut(method, 60);
            f.publish();
            QTRY_COMPARE(f.blog.posts.size(), 1);
            QTRY_COMPARE(f.network.heldCount(), isCancelled ? 1 : 0);
            if (isCancelled)
                Q_EMIT f.view.didPressedCancelUpload();
            QTRY_VERIFY(f.isAtRest());
            QVERIFY(f.view.notice.contains(u"may be there"_qs));

            f.clock.present = f.clock.present.addSecs(3600);
            if (change == u"restart")
                f.restart();
            if (change == u"title")
                f.view.typeTitle(u"Better Title"_qs);
            else
                f.page.type(u"<p>second</p>"_qs);
            const QString text = *f.page.body;
            f.publish();
            QTRY_VERIFY(f.document()->fileInfo.status.isEmpty());
            QTRY_VERIFY(f.isAtRest());
            QCOMPARE(f.blog.posts.size(), 1);
            QCOMPARE(f.blog.posts.first().content, text);
            QCOMPARE(f.blog.posts.first().title, f.view.titleText);
            QCOMPARE(f.blog.posts.first().date, began);
            QCOMPARE(f.postFiles(), QStringList{u"p%1/post.zalmo"_qs.arg(f.blog.posts.firstKey())});
            QCOMPARE(f.view.notice, QString());
        }
    }

    void datesAPostThatNeverArrivedAnew()
    {
        ScreenOnBlog f;
        f.view.typeTitle(u"Title"_qs);
        f.blog.breakConnection(u"wp.newPost"_qs, QNetworkReply::RemoteHostClosedError);
        f.publish();
        QTRY_VERIFY(f.isAtRest());
        f.clock.present = f.clock.present.addSecs(3600);
        f.publish();
        QTRY_COMPARE(f.blog.posts.size(), 1);
        QCOMPARE(f.blog.posts.first().date, f.clock.present);
    }

    void keepsWhatWasTypedMeanwhile_data()
    {
        const TestTable<QString, QString> row; // the late answer, and what is typed before it comes
        row("text, first publish", u"wp.newPost"_qs, u"text"_qs);
        row("title, first publish", u"wp.getPost"_qs, u"title"_qs);
        row("tokens, update", u"wp.editPost"_qs, u"tokens"_qs);
        row("text, update", u"wp.editPost"_qs, u"text"_qs);
    }

    void keepsWhatWasTypedMeanwhile()
    {
        const auto [late, typed] = testRow<QString, QString>();
        ScreenOnBlog f;
        f.view.typeTitle(u"Title"_qs);
        f.page.type(u"<p>C</p>"_qs);
        if (late == u"wp.editPost") {
            f.publish();
            QTRY_COMPARE(f.list.updated.size(), 1);
            f.page.type(u"<p>C</p><p>D</p>"_qs);
        }
        const QString sent = *f.page.body;
        f.blog.answerLate(late);
        f.publish();
        QTRY_COMPARE(f.network.heldCount(), 1);
        QCOMPARE(f.view.notice, QString()); // nothing is unclear yet
        if (typed == u"text")
            f.page.type(sent + u"x"_qs);
        else if (typed == u"title")
            f.view.typeTitle(u"Titlex"_qs);
        else
            f.view.typeTokens({u"News"_qs});
        f.controller->saveDocuments();
        f.app().rounds().refreshCurrentBlog(); // which fetches the very post
        f.waitForRound();
        f.network.release();
        QTRY_VERIFY(f.isAtRest());

        QCOMPARE(f.blog.posts.first().content, sent);
        QCOMPARE(f.document()->fileInfo.status, u"modified"_qs); // and no conflict
        QCOMPARE(f.rows().size(), 1);
        QCOMPARE(f.syncedContent(), sent);
        QCOMPARE(f.rows().first()->status, int(ZLLocalPostRepresentation::Modified));
        QCOMPARE(f.view.notice, QString());
        f.publish();
        QTRY_VERIFY(f.document()->fileInfo.status.isEmpty());
        const FakeBlog::Post &post = f.blog.posts.first();
        QCOMPARE(post.content, *f.page.body);
        QCOMPARE(post.content.endsWith(u'x'), typed == u"text");
        QCOMPARE(post.title, typed == u"title" ? u"Titlex"_qs : u"Title"_qs);
        QCOMPARE(post.categories, typed == u"tokens" ? QStringList(u"News"_qs) : QStringList());
        QCOMPARE(f.postFiles().size(), 1);
    }

    void goesOnByItselfAfterALogin_data()
    {
        const TestTable<QString, bool, QString> row({"password", "deletes", "sheet"});
        row("publish without a password", QString(), false, u"login: "_qs);
        row("publish, refused", u"outdated"_qs, false, u"login refused: "_qs);
        row("delete without a password", QString(), true, u"login: "_qs);
        row("delete, refused", u"outdated"_qs, true, u"login refused: "_qs);
    }

    void goesOnByItselfAfterALogin()
    {
        QFETCH(QString, password);
        QFETCH(bool, deletes);
        QFETCH(QString, sheet);
        ScreenOnBlog f;
        f.view.typeTitle(u"Title"_qs);
        if (deletes) {
            f.publish();
            QTRY_COMPARE(f.list.updated.size(), 1);
            QTRY_VERIFY(f.isAtRest());
        }
        f.service()->password = password;
        const auto press = [&] {
            f.controller->doActionForCurrentPost(deletes ? PostAction::Delete : PostAction::Publish);
            if (deletes)
                Q_EMIT f.view.alertViewDidDismissWithButtonIndex(1);
        };
        press();
        QTRY_VERIFY(f.prompts.login.isShown());
        QVERIFY(f.prompts.takeJournal().last().startsWith(sheet));
        f.prompts.login.answer({});
        QTRY_COMPARE(f.list.syncFailure, u"“Blog” could not be synchronised. It waits for you to log in."_qs);
        QTRY_VERIFY(f.isAtRest());
        QCOMPARE(f.blog.posts.size(), deletes ? 1 : 0);
        press();
        QTRY_VERIFY(f.prompts.login.isShown());
        f.prompts.login.answer(Login{u"ada"_qs, u"secret"_qs});
        const auto isDone = [&] {
            return deletes ? f.blog.posts.first().status == u"trash" : f.blog.posts.size() == 1 && f.isAtRest();
        };
        QTRY_VERIFY(isDone());
        QCOMPARE(f.prompts.journal.size(), 1);
        QCOMPARE(f.list.syncFailure, QString());
    }

    void offersToPublishAPostThatIsGoneAnew_data()
    {
        const TestTable<bool> row({"isTrashed"});
        row("deleted", false);
        row("in the trash", true);
    }

    void offersToPublishAPostThatIsGoneAnew()
    {
        QFETCH(bool, isTrashed);
        ScreenOnBlog f;
        f.view.typeTitle(u"Title"_qs);
        f.publish();
        QTRY_COMPARE(f.list.updated.size(), 1);
        QTRY_VERIFY(f.isAtRest());
        FakeBlog::Post &post = f.blog.posts.first();
        post.status = u"trash"_qs;
        post.modified = f.clock.present.addSecs(60);
        if (!isTrashed)
            f.blog.posts.clear();
        f.page.type(u"<p>more</p>"_qs);
        f.publish();
        QTRY_COMPARE(f.view.noticeAction, u"Publish as a New Post"_qs);
        QVERIFY(f.prompts.details.last().contains(u"you can publish it as a new one"_qs));
        Q_EMIT f.view.didPressedNoticeAction();
        QTRY_COMPARE(f.list.updated.size(), 2);
        QTRY_VERIFY(f.isAtRest());
        QCOMPARE(f.blog.posts.last().content, u"<p>more</p>"_qs);
        QCOMPARE(f.postFiles(u"Blog"_qs), QStringList{u"p%1/post.zalmo"_qs.arg(f.blog.posts.lastKey())});
        QCOMPARE(f.view.notice, QString());
    }
};

static const RegisteredTest<SendingAgainTest> registered;

#include "SendingAgainTest.moc"
