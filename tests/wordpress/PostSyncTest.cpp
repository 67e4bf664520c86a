#include "model/ZLDocument.h"
#include "support/Files.h"
#include "wordpress/ServiceFixture.h"

#include <QRegularExpression>

namespace {
struct SyncFixture : ServiceFixture {
    void sync()
    {
        service->syncBlogPosts();
        service->syncBlogTaxonomies();
        settle();
    }
    QString path(const QString &id) const
    {
        return environment.files.blogPath(u"Ada"_qs) + u"/posts/p%1/post.zalmo"_qs.arg(id);
    }
    DocumentPtr open(const QString &id) const
    {
        const Result<DocumentPtr> opened = ZLDocument::open(QUrl::fromLocalFile(path(id)));
        return opened ? *opened : nullptr;
    }
    QStringList files() const { return filesBelow(environment.files.blogPath(u"Ada"_qs) + u"/posts"_qs); }
};
} // namespace

/// The blog's posts come into files, and rounds end as they should.
class PostSyncTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksForPostsAndPages()
    {
        SyncFixture f;
        f.sync();
        const QString login = u"[\"\", \"ada\", \"secret\""_qs;
        QStringList asked;
        for (const FakeBlog::Call &call : f.blog.calls)
            asked.append(call.method + u' ' + f.parameters(call));
        QCOMPARE(asked,
            (QStringList{u"wp.getPosts "_qs + login + u", {\"number\": 50}]"_qs,
                u"wp.getPosts "_qs + login + u", {\"number\": 50, \"post_type\": \"page\"}]"_qs,
                u"metaWeblog.getCategories "_qs + login + u"]"_qs,
                u"wp.getTerms "_qs + login + u", \"post_tag\"]"_qs}));
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
    }

    void bringsTheBlogIntoFiles()
    {
        SyncFixture f;
        const QString blocks = u"<!-- wp:paragraph {\"a\":\"&amp;\"} -->\n<p>x</p>\n<!-- /wp:paragraph -->"_qs;
        // White space around a body does not count: both sides of the protocol trim every text.
        const QString loose =
            u"one\n\ntwo <b>bold</b>\n\n<!--more-->\n\nthree &lt;b&gt; &amp;amp; &nbsp;é 🫖\t b\n\n\n c"
            "<script>alert(\"<b>\" && 'x')</script>"_qs;
        FakeBlog::Post &draft = f.blog.addPost(u"A draft"_qs, blocks);
        draft.status = u"pending"_qs;
        draft.categories = QStringList{u"R&D"_qs};
        draft.commentStatus = u"closed"_qs;
        f.blog.addTerm(u"category"_qs, u"R&D"_qs);
        const QString draftId = draft.id;
        const QString pageId = f.blog.addPost(u"About"_qs, loose, u"page"_qs).id;
        f.sync();
        QCOMPARE(f.files(), (QStringList{u"p%1/post.zalmo"_qs.arg(draftId), u"p%1/post.zalmo"_qs.arg(pageId)}));

        const DocumentPtr document = f.open(draftId);
        QVERIFY(document);
        QCOMPARE(document->post.blogStatus, u"pending"_qs);
        QCOMPARE(document->post.allowComments, false);
        QCOMPARE(document->post.allowPingback, true);
        QCOMPARE(document->post.updatedAt, f.blog.posts[draftId].modified);
        QCOMPARE(document->post.taxonomiesArray(), QStringList{u"R&D"_qs});
        QCOMPARE(document->storedContent(), blocks);
        QCOMPARE(f.open(pageId)->post.type, int(PostFields::Page));
        QCOMPARE(f.open(pageId)->storedContent(), loose);
    }

    void writesAddressesByteForByte()
    {
        const QString link = u"http://Blog.TEST/%e6%97%a5/%7eada/ü?x=%41"_qs;
        const XMLRPCStruct thumbnail{{u"attachment_id"_qs, u"9"_qs}, {u"link"_qs, link},
            {u"metadata"_qs, XMLRPCStruct{{u"image_meta"_qs, XMLRPCStruct()}}}};
        SyncFixture f;
        f.blog.answerWith(u"wp.getPosts"_qs,
            XMLRPCArray{XMLRPCStruct{{u"post_id"_qs, u"5"_qs}, {u"link"_qs, link}, {u"post_thumbnail"_qs, thumbnail}}});
        f.sync();
        for (int writer = 0; writer < 2; ++writer) {
            const DocumentPtr document = f.open(u"5"_qs);
            QVERIFY(document);
            QCOMPARE(document->post.URL, link);
            QCOMPARE(document->post.featuredImageURL, link);
            document->setRecentlySyncedWordpressPost(*document->wordpressPost());
            QVERIFY(document->saveDocument()); // the document writes as the sync did
        }
    }

    void followsTheBlogButKeepsLocalChanges()
    {
        SyncFixture f;
        const QString followed = f.blog.addPost(u"Followed"_qs, u"one"_qs).id;
        const QString edited = f.blog.addPost(u"Edited"_qs, u"one"_qs).id;
        f.sync();
        const DocumentPtr open =
            *QCoro::waitFor(f.environment.documents.openDocumentWithContentsOfURL(QUrl::fromLocalFile(f.path(edited))));
        open->post.content = u"mine"_qs;
        open->updateChangeCount();
        for (const QString &id : {followed, edited}) {
            f.blog.posts[id].content = u"two"_qs;
            f.blog.posts[id].modified = f.blog.now.addSecs(60);
        }
        f.sync();
        QCOMPARE(f.open(followed)->post.content, u"two"_qs);
        QCOMPARE(f.open(edited)->post.content, u"mine"_qs); // unsaved until now
        QCOMPARE(f.open(edited)->fileInfo.status, u"conflict"_qs);
        QCOMPARE(f.files(),
            (QStringList{u"p%1/post.zalmo"_qs.arg(followed), u"p%1/conflict.zalmo"_qs.arg(edited),
                u"p%1/post.zalmo"_qs.arg(edited), u"p%1/synced.zalmo"_qs.arg(edited)}));
    }

    void endsItsShareWhateverFails_data()
    {
        const TestTable<std::function<void(FakeBlog &)>, QStringList> row({"spoil", "told"});
        for (const auto &[method, type] : {std::pair(u"wp.getPosts"_qs, 24),
                 std::pair(u"metaWeblog.getCategories"_qs, 28), std::pair(u"wp.getTerms"_qs, 29)}) {
            const auto named = [&](const char *failure) { return QByteArray(failure) + ' ' + method.toLatin1(); };
            const QString told = u"request %1 failed: "_qs.arg(type);
            row(named("fault on"), [=](FakeBlog &b) { b.answerWithFault(method, 500, u"no"_qs); },
                {told + u"Response error 500"_qs});
            row(named("status of"), [=](FakeBlog &b) { b.answerWithStatus(method, 500); }, {told + u"HTTP 500"_qs});
            row(named("empty"), [=](FakeBlog &b) { b.answerEmpty(method); }, {told + u"NSURLErrorDomain -1017"_qs});
            row(named("another kind of"), [=](FakeBlog &b) { b.answerWith(method, u"text"_qs); },
                {told + u"ZLReply 1"_qs});
        }
        const QString refused = u" failed: Response error 401"_qs;
        row("an author", [](FakeBlog &b) { b.role = u"author"_qs; }, {}); // no pages: that is all
        row("a subscriber", [](FakeBlog &b) { b.role = u"subscriber"_qs; }, {u"request 24"_qs + refused});
        row("all", [](FakeBlog &b) { b.password = u"new"_qs; }, {});
    }

    void endsItsShareWhateverFails()
    {
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        QFETCH(QStringList, told);
        SyncFixture f;
        spoil(f.blog);
        f.sync();
        QCOMPARE(f.journal().count(u"synced Ada"_qs), 1);
        QCOMPARE(f.journal().last(), u"synced Ada"_qs);
        if (f.blog.password == f.service->password)
            QCOMPARE(f.journal().mid(0, f.journal().size() - 1), told);
        QVERIFY(!f.service->isSyncing());
        f.journal().clear();
        f.service->password = f.blog.password;
        f.blog.role = u"editor"_qs;
        f.sync();
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
    }

    void stopsARound()
    {
        SyncFixture f;
        f.blog.addPost(u"T"_qs, u"c"_qs);
        f.blog.answerLate(u"wp.getPosts"_qs);
        f.sync();
        f.service->stopSync();
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
        f.environment.network.release();
        f.settle();
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
        QCOMPARE(f.files(), QStringList());
    }

    void endsTheRoundWithItsLastAnswer()
    {
        SyncFixture f;
        const QString id = f.blog.addPost(u"T"_qs, u"c"_qs).id;
        f.blog.answerLate(u"wp.getPosts"_qs);
        f.sync();
        f.sync(); // joins the share that is under way
        QCOMPARE(f.blog.count(u"wp.getPosts"_qs), 3); // the posts are awaited still
        QCOMPARE(f.journal(), QStringList());
        QVERIFY(f.service->isSyncing());
        f.environment.network.release();
        f.settle();
        QCOMPARE(f.files(), QStringList{u"p%1/post.zalmo"_qs.arg(id)});
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
        QVERIFY(!f.service->isSyncing());
    }

    void writesNothingForForeignInput()
    {
        SyncFixture f;
        XMLRPCArray posts{u"text"_qs, 7, XMLRPCArray()};
        for (const QString &id : {u"/../../../../climbed"_qs, u".."_qs, u"1/2"_qs, u""_qs})
            posts.push_back(XMLRPCStruct{{u"post_id"_qs, id}, {u"post_content"_qs, u"evil"_qs}});
        f.blog.answerWith(u"wp.getPosts"_qs, posts);
        f.sync();
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
        QCOMPARE(f.files(), QStringList());
        QCOMPARE(QDir(f.environment.folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            (QStringList{u"data"_qs}));
    }

    void goesOnAfterAPostThatCannotBeWritten()
    {
        SyncFixture f;
        const QString blocked = f.blog.addPost(u"Blocked"_qs, u"c"_qs).id;
        const QString fine = f.blog.addPost(u"Fine"_qs, u"c"_qs).id;
        const QString homeless = f.blog.addPost(u"Homeless"_qs, u"c"_qs).id;
        // A folder in the place of the file, and a file in the place of the folder.
        QVERIFY(QDir().mkpath(f.path(blocked)));
        writeFile(QFileInfo(f.path(homeless)).path());
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(u"error-.*no folder .*Homeless"_qs));
        f.sync();
        QCOMPARE(f.journal(), QStringList{u"synced Ada"_qs});
        QCOMPARE(f.files(), (QStringList{u"p%1/post.zalmo"_qs.arg(fine), u"p%1"_qs.arg(homeless)}));
    }

    void takesNoMoreThanItAskedFor()
    {
        SyncFixture f;
        XMLRPCArray posts;
        for (int id = 1; id <= 60; ++id)
            posts.push_back(XMLRPCStruct{{u"post_id"_qs, QString::number(id)}});
        f.blog.answerWith(u"wp.getPosts"_qs, posts);
        f.sync();
        QTRY_VERIFY(!f.service->isSyncing());
        QCOMPARE(f.files().size(), 50);
    }
};

static const RegisteredTest<PostSyncTest> registered;
#include "PostSyncTest.moc"
