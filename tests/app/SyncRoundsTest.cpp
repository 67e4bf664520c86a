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
        QCOMPARE(fixture.app().posts().getTaxonomiesForSearch(u"#r"_qs), QStringList{u"#R&D"_qs});
        QVERIFY(fixture.compose.reloadedEngines.contains(SyncEngine::WordPress));
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
        QVERIFY(fixture.app().currentBlog().isReachable());
        QTRY_VERIFY(fixture.rowTitled(u"At home"_qs));
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.blog.calls.size(), 0);
        QVERIFY(fixture.list.syncFailure.startsWith(u"You are offline."));
        QCOMPARE(fixture.prompts.journal, QStringList());
        fixture.reachability.plugIn(); // what was left out is still owed
        QTRY_COMPARE(fixture.blog.count(u"wp.getPosts"_qs), 2);
    }

    void endsWhateverFails_data()
    {
        const TestTable<QString, std::function<void(FakeBlog &, const QString &)>> row({"method", "spoil"});
        for (const QString &method : {u"wp.getPosts"_qs, u"wp.getTerms"_qs, u"metaWeblog.getCategories"_qs}) {
            const auto add = [&](const char *name, const std::function<void(FakeBlog &, const QString &)> &spoil) {
                row(qPrintable(u"%1: %2"_qs.arg(method, QLatin1String(name))), method, spoil);
            };
            add("broken",
                [](FakeBlog &b, const QString &m) { b.breakConnection(m, QNetworkReply::RemoteHostClosedError); });
            add("fault", [](FakeBlog &b, const QString &m) { b.answerWithFault(m, 500, u"no"_qs); });
            add("status", [](FakeBlog &b, const QString &m) { b.answerWithStatus(m, 503); });
        }
    }

    void endsWhateverFails()
    {
        QFETCH(QString, method);
        QFETCH(std::function<void(FakeBlog &, const QString &)>, spoil);
        AppFixture fixture;
        fixture.seedAccount(u"Blog"_qs, fixture.blog.url());
        fixture.seedAccount(u"Second"_qs, fixture.other.url());
        spoil(fixture.other, method);
        fixture.launch();
        QVERIFY(fixture.list.isSyncing);
        QTRY_VERIFY(!fixture.list.isSyncing);
        QVERIFY(fixture.list.syncFailure.contains(u"“Second”"));
        QCOMPARE(fixture.prompts.journal, QStringList());
    }

    void stopEndsARoundThatWaitsForEver()
    {
        AppFixture fixture;
        fixture.blog.addPost(u"Hello"_qs, u"<p>world</p>"_qs);
        fixture.blog.answerLate(u"wp.getPosts"_qs);
        fixture.launchWithBlog();
        QTRY_COMPARE(fixture.network.heldCount(), 1);
        fixture.app().rounds().refreshCurrentBlog(); // which is waited for already
        QVERIFY(fixture.list.isSyncing);
        fixture.app().rounds().stopSyncing();
        QVERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.blog.count(u"wp.getPosts"_qs), 2);
        QVERIFY(fixture.list.syncFailure.isEmpty());
        fixture.app().rounds().refreshCurrentBlog();
        QVERIFY(fixture.list.isSyncing);
        QTRY_VERIFY(!fixture.list.isSyncing);
        QVERIFY(fixture.rowTitled(u"Hello"_qs));
        fixture.network.release(); // nobody waits for it any more
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
        fixture.app().rounds().refreshCurrentBlog();
        QTRY_VERIFY(!fixture.list.isSyncing);
        QCOMPARE(fixture.compose.document->fileInfo.status, u"conflict"_qs);
        QCOMPARE(fixture.rowTitled(u"Hello"_qs)->status, int(ZLLocalPostRepresentation::Conflict));
        QVERIFY(fixture.read(u"Blog"_qs, u"p%1/post.zalmo"_qs.arg(id)).contains("just typed"));
        QVERIFY(fixture.read(u"Blog"_qs, u"p%1/conflict.zalmo"_qs.arg(id)).contains("theirs"));
    }
};

static const RegisteredTest<SyncRoundsTest> registered;

#include "SyncRoundsTest.moc"
