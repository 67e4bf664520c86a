#include "AppFixture.h"

#include <QCoroTask>

class SyncRoundsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bringsPostsPagesAndTerms()
    {
        AppFixture fixture;
        fixture.blog.addPost(u"Hello"_qs, u"<p>world</p>"_qs);
        fixture.blog.addPost(u"About"_qs, u"<p>me</p>"_qs, u"page"_qs);
        fixture.blog.addTerm(u"post_tag"_qs, u"R&D"_qs);
        fixture.launchWithBlog();
        QVERIFY(fixture.list.isSyncing);
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.rowTitled(u"Hello"_qs)->status, int(ZLLocalPostRepresentation::Published));
        QCOMPARE(fixture.rowTitled(u"About"_qs)->status, int(ZLLocalPostRepresentation::PublishedPage));
        QCOMPARE(fixture.app().getTaxonomiesForSearch(u"#r"_qs), QStringList{u"#R&D"_qs});
        QVERIFY(fixture.compose.reloadedEngines.contains(0));
        QCOMPARE(fixture.blog.protocolErrors, QStringList());
    }

    void offlineSkipsAllButLoopback()
    {
        AppFixture fixture;
        FakeBlog local(u"127.0.0.1"_qs);
        local.addPost(u"At home"_qs, u"<p>x</p>"_qs);
        fixture.network.addHost(local.host(), local);
        fixture.seedAccount(u"Local"_qs, local.url());
        fixture.seedAccount(u"Far"_qs, fixture.blog.url());
        fixture.reachability.reachable = false;
        fixture.launch();
        QVERIFY(fixture.app().isReachable());
        QTRY_VERIFY(fixture.rowTitled(u"At home"_qs));
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.blog.calls.size(), 0);
        fixture.reachability.plugIn(); // what was left out is still owed
        QTRY_COMPARE(fixture.blog.count(u"wp.getPosts"_qs), 2);
    }

    void aRoundEndsWithItsFailures_data()
    {
        QTest::addColumn<bool>("isSilent");
        QTest::newRow("the connection breaks") << false;
        QTest::newRow("nothing comes, and the writer stops it") << true;
    }

    void aRoundEndsWithItsFailures()
    {
        QFETCH(bool, isSilent);
        AppFixture fixture;
        fixture.blog.addPost(u"Hello"_qs, u"<p>world</p>"_qs);
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url());
        if (isSilent)
            fixture.blog.answerLate(u"wp.getPosts"_qs);
        else
            fixture.blog.breakConnection(u"wp.getPosts"_qs, QNetworkReply::RemoteHostClosedError);
        fixture.launch();
        if (isSilent) {
            QTRY_COMPARE(fixture.blog.count(u"wp.getPosts"_qs), 2);
            QVERIFY(fixture.list.isSyncing);
            fixture.app().stopSyncing();
        } else {
            QTRY_COMPARE(fixture.prompts.journal.filter(u"error: "_qs).size(), 1);
        }
        QTRY_VERIFY(!fixture.list.isSyncing);
        fixture.app().refreshCurrentBlog();
        QVERIFY(fixture.list.isSyncing);
        QTRY_VERIFY(!fixture.list.isSyncing);
        QVERIFY(fixture.rowTitled(u"Hello"_qs));
    }

    void keepsBothSidesOfAConflict()
    {
        AppFixture fixture;
        FakeBlog::Post &post = fixture.blog.addPost(u"Hello"_qs, u"<p>first</p>"_qs);
        const QString id = post.id;
        fixture.launchWithBlog();
        QTRY_VERIFY(!fixture.list.isSyncing);

        // The writer has typed, and the file does not know it yet.
        const QUrl file = fixture.rowTitled(u"Hello"_qs)->localFile;
        fixture.compose.document =
            QCoro::waitFor(fixture.app().documentController().openDocumentWithContentsOfURL(file)).value();
        fixture.compose.document->post.content = u"<p>just typed</p>"_qs;
        fixture.compose.document->fileInfo.status = u"modified"_qs;
        fixture.blog.posts[id].content = u"<p>theirs</p>"_qs;
        fixture.blog.posts[id].modified = fixture.blog.posts[id].modified.addDays(1);
        fixture.app().refreshCurrentBlog();
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.compose.document->fileInfo.status, u"conflict"_qs);
        QCOMPARE(fixture.rowTitled(u"Hello"_qs)->status, int(ZLLocalPostRepresentation::Conflict));
        QVERIFY(fixture.read(u"Blog"_qs, u"p%1/post.zalmo"_qs.arg(id)).contains("just typed"));
        QVERIFY(fixture.read(u"Blog"_qs, u"p%1/conflict.zalmo"_qs.arg(id)).contains("theirs"));
    }
};

static const RegisteredTest<SyncRoundsTest> registered;

#include "SyncRoundsTest.moc"
