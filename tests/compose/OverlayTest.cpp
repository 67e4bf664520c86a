#include "ComposeFixture.h"

class OverlayTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void saysHeadingAndStep()
    {
        QStringList said;
        for (int value = 0; value <= 6; ++value)
            said.append(UploadOverlay::headingText(UploadOverlay::Heading(value)));
        for (int value = 0; value <= 4; ++value)
            said.append(UploadOverlay::stepText(Upload::Step(value)));
        QCOMPARE(said,
            QStringList({"Publishing Article", "Updating Article", "Saving Draft", "Saving to Evernote",
                "Scheduling Article", "Updating Draft", "Moving to Drafts", "Preparing...",
                "Syncing categories and tags...", "Syncing images...", "Uploading content...", "Finishing..."}));
    }

    void followsThePost()
    {
        ComposeFixture screen;
        screen.view.typeTitle("New");
        screen.press(true);
        QVERIFY(screen.sends(1));
        const LocalPostPtr row = screen.post()->localPost;
        FakeUpload &upload = *screen.host.sent.first();
        QCOMPARE(screen.view.step, "Preparing...");
        upload.goOn(Upload::SyncingImages, 0.5F);
        QCOMPARE(screen.view.step, "Syncing images...");
        QCOMPARE(screen.view.progress, 0.5F);
        // A post of the same number in another blog is another post.
        screen.host.account->blog_name = "Another";
        QVERIFY(screen.load(screen.host.addPost("41", ZLWordpressPost::Draft, "Two", "<p>2</p>")));
        QVERIFY(!screen.view.isLoading);
        upload.goOn(Upload::UploadingContent, 0.25F);
        QCOMPARE(screen.view.progress, 0.5F);
        QVERIFY(screen.load(row));
        QVERIFY(screen.view.isLoading);
        QCOMPARE(screen.view.heading, "Publishing Article");
        QCOMPARE(screen.view.step, "Uploading content...");
        QCOMPARE(screen.view.blogName, "Blog"); // to which it still goes
        upload.end({.kind = UploadOutcome::Failed});
        QVERIFY(!screen.view.isLoading);
    }

    void goesWithTheUpload_data()
    {
        const TestTable<UploadOutcome::Kind, QString, QString> row({"kind", "saveState", "notice"});
        row("failed", UploadOutcome::Failed, "Not sent to the blog", "");
        row("cancelled", UploadOutcome::Cancelled, "Not sent to the blog", "");
        row("unclear", UploadOutcome::Unclear, "Not sent to the blog", "the post may be there");
        row("updated", UploadOutcome::Updated, "", "");
    }

    void goesWithTheUpload()
    {
        QFETCH(UploadOutcome::Kind, kind);
        QFETCH(QString, notice);
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.press(true);
        QVERIFY(screen.sends(1));
        if (kind == UploadOutcome::Cancelled)
            Q_EMIT screen.view.didPressedCancelUpload();
        else
            screen.host.sent.first()->end({.kind = kind});
        QVERIFY(!screen.view.isLoading);
        QVERIFY(!screen.controller->isUploadingCurrentPost());
        QTEST(screen.view.saveState, "saveState");
        QVERIFY(screen.view.notice.contains(notice));
        QCOMPARE(screen.view.notice.isEmpty(), notice.isEmpty());
    }

    void leavesTheTextAloneThatTheBlogHasNow_data()
    {
        QTest::addColumn<bool>("changes");
        QTest::newRow("as it was sent") << false;
        QTest::newRow("with other addresses of pictures") << true;
    }

    void leavesTheTextAloneThatTheBlogHasNow()
    {
        QFETCH(bool, changes);
        ComposeFixture screen(ZLWordpressPost::Draft);
        screen.view.typeTitle("A & B");
        screen.page.type("<p>Typed</p>");
        screen.press(true);
        QVERIFY(screen.sends(1));
        const LocalPostPtr row = screen.post()->localPost;
        ZLWordpressPost onBlog = screen.host.sent.first()->asSent;
        onBlog.status = ZLWordpressPost::Publish;
        onBlog.title = "A &amp; B";
        onBlog.content = onBlog.storedContent = changes ? "<p>Typed, and a picture</p>" : "<p>Typed</p>";
        screen.host.sent.first()->end({.kind = UploadOutcome::Updated});
        const int loaded = screen.page.loaded.size();
        const DocumentPtr document = screen.controller->currentDocument();
        document->setRecentlySyncedWordpressPost(onBlog);
        QVERIFY(document->saveDocument());
        Q_EMIT screen.host.noted.didUpdatePost(screen.host.sent.first()->post(), {nullptr, row});
        QCOMPARE(screen.view.titleText, "A & B");
        QCOMPARE(screen.page.loaded.size() - loaded, changes ? 1 : 0);
        if (changes)
            QVERIFY(screen.page.loading == ComposePage::Loading::SamePost); // the cursor stays
        QCOMPARE(screen.view.buttons.publish.toolTip, "Update Post");
        QVERIFY(!screen.view.buttons.save.enabled);
    }

    void offersTheTextThatTheBlogMadeOfIt()
    {
        ComposeFixture screen(ZLWordpressPost::Publish);
        screen.press(true);
        QVERIFY(screen.sends(1));
        const auto theirs = std::make_shared<ZLWordpressPost>(screen.host.sent.first()->asSent);
        theirs->content = theirs->storedContent = "<p>Filtered</p>";
        screen.host.sent.first()->end(
            {.kind = UploadOutcome::Published, .remote = screen.post(), .blogVersion = theirs});
        Q_EMIT screen.host.noted.didUpdatePost(screen.post(), {nullptr, screen.post()->localPost});
        QCOMPARE(screen.page.loaded.last(), "<p>Text</p>");
        QCOMPARE(screen.view.noticeAction, "Take the Blog's Version");
        Q_EMIT screen.view.didPressedNoticeAction();
        screen.settle();
        QCOMPARE(screen.page.loaded.last(), "<p>Filtered</p>");
        QCOMPARE(screen.onDisk(screen.post()->localPost)->post.content, "<p>Filtered</p>");
        QCOMPARE(screen.view.notice, "");
    }
};

static const RegisteredTest<OverlayTest> registered;

#include "OverlayTest.moc"
