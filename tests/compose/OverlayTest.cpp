#include "ComposeFixture.h"

namespace {
PostPtr makePost(const QString &id, const QString &title = {})
{
    auto post = std::make_shared<ZLWordpressPost>();
    post->id = id;
    post->title = title;
    return post;
}
} // namespace

class OverlayTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysHeadingAndStep()
    {
        QStringList said;
        for (int value = -1; value <= 7; ++value)
            said.append(UploadOverlay::headingText(value) + '|' + UploadOverlay::stepText(value));
        QCOMPARE(said,
            QStringList({"|", "Publishing Article|Preparing...", "Updating Article|Syncing categories and tags...",
                "Saving Draft|Syncing images...", "Saving to Evernote|Uploading content...",
                "Scheduling Article|Finishing...", "Updating Draft|", "Moving to Drafts|", "|"}));
    }

    void followsThePost()
    {
        FakeComposeHost host;
        FakeComposeView view;
        UploadOverlay overlay(host, view);
        const PostPtr uploading = makePost("1");
        overlay.addPostForLoadingList(uploading, UploadOverlay::SavingDraft);
        overlay.addPostForLoadingList(uploading, UploadOverlay::UpdatingDraft); // a second save keeps the first heading
        overlay.showLoadingView(UploadOverlay::SavingDraft);
        QVERIFY(view.isLoading);
        QCOMPARE(view.blogName, "Blog");
        overlay.follow(makePost("2"));
        QVERIFY(!view.isLoading);
        overlay.didUpdateLoadingStatus(uploading, UploadOverlay::SyncingImages, makePost("2"));
        host.account->blog_name = "Another";
        overlay.follow(makePost("1"));
        QVERIFY(view.isLoading);
        QCOMPARE(view.blogName, "Blog"); // to which it still goes
        QCOMPARE(view.heading, "Saving Draft");
        QCOMPARE(view.step, "Syncing images...");
        overlay.removePostFromLoadingList("1");
        overlay.follow(makePost("1"));
        QVERIFY(!view.isLoading);
    }

    void showsTheStepsOfItsPostOnly()
    {
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        QCOMPARE(screen.view.heading, "Updating Article");
        QCOMPARE(screen.view.step, "Preparing...");
        Q_EMIT screen.host.noted.syncingImagesPostStatus(makePost("7", "Title"));
        QCOMPARE(screen.view.step, "Preparing...");
        Q_EMIT screen.host.noted.syncingImagesPostStatus(screen.post());
        QCOMPARE(screen.view.step, "Syncing images...");
        Q_EMIT screen.host.noted.syncingContentPostStatus(screen.post());
        QCOMPARE(screen.view.step, "Uploading content...");
        screen.controller->didSendBodyData(makePost("7"), 0.25F);
        QCOMPARE(screen.view.progress, 0.0F);
        screen.controller->didSendBodyData(screen.post(), 0.5F);
        QCOMPARE(screen.view.progress, 0.5F);
    }

    void goesWhenTheUploadFails_data()
    {
        const TestTable<QString, bool> row({"failedId", "isLoading"});
        row("this post", "41", false);
        row("another post", "42", true);
    }

    void goesWhenTheUploadFails()
    {
        QFETCH(QString, failedId);
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        Q_EMIT screen.host.noted.didFailToUploadPost(makePost(failedId));
        QTEST(screen.view.isLoading, "isLoading");
        QCOMPARE(screen.post()->status, int(ZLWordpressPost::Publish));
        if (!screen.view.isLoading) {
            screen.controller->didPressedPublishButton();
            QVERIFY(screen.sends(2));
        }
    }

    void cancelsTheRecordThatWasSent()
    {
        ComposeFixture screen(ZLWordpressPost::Publish);
        const LocalPostPtr row = screen.host.rows.first();
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        QVERIFY(screen.load(screen.host.addPost("2", ZLWordpressPost::Draft, "Other", "<p>Other</p>")));
        QVERIFY(!screen.view.isLoading);
        QVERIFY(screen.load(row));
        QVERIFY(screen.view.isLoading);
        Q_EMIT screen.view.didPressedCancelUpload();
        QVERIFY(!screen.view.isLoading);
        QCOMPARE(screen.host.cancelled, QList<PostPtr>{screen.host.sent.first().post});
        QVERIFY(!screen.controller->isUploadingCurrentPost());
    }

    void takesTheReturnedPost()
    {
        ComposeFixture screen(ZLWordpressPost::Draft, "Title", "<p>Text</p>", ZLWordpressPost::Page);
        const PostPtr sent = screen.post();
        const LocalPostPtr row = sent->localPost;
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        const PostPtr returned = makePost("41", "Title");
        returned->status = ZLWordpressPost::Publish;
        returned->type = ZLWordpressPost::Page;
        Q_EMIT screen.host.noted.didUpdatePost(returned, {sent, row});
        QVERIFY(!screen.view.isLoading);
        QCOMPARE(screen.post(), returned);
        QCOMPARE(returned->localPost, row);
        QVERIFY(!screen.controller->currentDocument());
        QCOMPARE(screen.view.publish.toolTip, "Update Page");
        QVERIFY(!screen.view.save.enabled);
        // The next edit opens the file again.
        screen.view.typeTitle("Title 2");
        QTRY_VERIFY(screen.controller->currentDocument());
        QCOMPARE(screen.controller->currentDocument()->post.title, "Title 2");
    }

    void staysForAnotherObjectUntilTheListReloads()
    {
        ComposeFixture screen(ZLWordpressPost::New);
        const LocalPostPtr row = screen.post()->localPost;
        screen.controller->didPressedPublishButton();
        QVERIFY(screen.sends(1));
        const PostPtr remote = makePost("99", "Title");
        Q_EMIT screen.host.noted.didUpdatePost(remote, {remote, row});
        QVERIFY(screen.view.isLoading);
        const LocalPostPtr moved = screen.host.addPost("99", ZLWordpressPost::Publish, "Title", "<p>Text</p>");
        QVERIFY(screen.load(moved));
        QVERIFY(!screen.view.isLoading);
    }

    void findsAPostWithoutAnIdByItsTitle()
    {
        ZLWordpressPost onScreen;
        onScreen.title = "Same";
        QVERIFY(UploadOverlay::matches(onScreen, *makePost("5", "Same")));
        QVERIFY(!UploadOverlay::matches(onScreen, *makePost("5", "Other")));
        onScreen.id = "6";
        QVERIFY(!UploadOverlay::matches(onScreen, *makePost("5", "Same")));
    }
};

static const RegisteredTest<OverlayTest> registered;

#include "OverlayTest.moc"
