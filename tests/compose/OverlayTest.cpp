#include "ComposeFixture.h"

class OverlayTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
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

    void isWhatGoesOutAgainAfterALogin()
    {
        const ZLError refused{"Response error", 403, {}};
        ComposeFixture screen(ZLWordpressPost::Draft);
        const LocalPostPtr draft = screen.post()->localPost;
        screen.press(false);
        QVERIFY(screen.sends(1));
        // Another one that was sent since is no measure for it.
        QVERIFY(screen.load(screen.host.addPost("42", ZLWordpressPost::Publish, "Two", "<p>2</p>")));
        screen.press(true);
        QVERIFY(screen.sends(2));
        QVERIFY(screen.load(draft));
        screen.host.hasNewLogin = true;
        screen.host.sent[0]->end({.kind = UploadOutcome::Failed, .error = refused});
        QVERIFY(screen.sends(3));
        QCOMPARE(screen.host.sent[2]->kind(), Upload::Update);
        QCOMPARE(screen.host.sent[2]->asSent.status, int(ZLWordpressPost::Draft));
        // Nor does anything go out that was written since.
        screen.page.body = QString("<p>Typed since</p>");
        screen.host.sent[2]->end({.kind = UploadOutcome::Failed, .error = refused});
        screen.settle();
        QCOMPARE(screen.host.sent.size(), 3);
    }

    void goesWithTheUpload()
    {
        const QString notSent = "Not sent to the blog";
        for (const auto &[kind, saveState, notice] :
            {std::tuple(UploadOutcome::Failed, notSent, QString()), {UploadOutcome::Cancelled, notSent, {}},
                {UploadOutcome::Unclear, notSent, "the post may be there"}, {UploadOutcome::Updated, {}, {}}}) {
            ComposeFixture screen(ZLWordpressPost::Draft);
            screen.press(true);
            QVERIFY(screen.sends(1));
            if (kind == UploadOutcome::Cancelled)
                Q_EMIT screen.view.didPressedCancelUpload();
            else
                screen.host.sent.first()->end({.kind = kind});
            QVERIFY(!screen.view.isLoading);
            QVERIFY(!screen.controller->isUploadingCurrentPost());
            QCOMPARE(screen.view.saveState, saveState);
            QVERIFY(screen.view.notice.contains(notice));
            QCOMPARE(screen.view.notice.isEmpty(), notice.isEmpty());
        }
    }

    void leavesTheTextAloneThatTheBlogHasNow()
    {
        for (const bool changes : {false, true}) { // addresses of pictures
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
    }
};

static const RegisteredTest<OverlayTest> registered;

#include "OverlayTest.moc"
