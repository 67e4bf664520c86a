#include "model/ZLDocument.h"
#include "support/TestClasses.h"
#include "wordpress/ServiceFixture.h"

#include <QFile>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// The blog's posts come into files, and rounds end as they should.
class PostSyncTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void asksForPostsAndPages();
    void bringsTheBlogIntoFiles();
    void writesABodyByteForByte_data();
    void writesABodyByteForByte();
    void followsTheBlogButKeepsLocalChanges();
    void endsTheRoundWithItsLastAnswer();
    void endsARoundAsItsFailuresTell_data();
    void endsARoundAsItsFailuresTell();
    void endsWithTheLogin_data();
    void endsWithTheLogin();
    void stopsARound();
    void lateAnswersOfAnEarlierRoundStillDoTheirWork();
    void writesNothingForForeignInput_data();
    void writesNothingForForeignInput();
    void goesOnAfterAPostThatCannotBeWritten();
    void keepsTheWindowAliveWhileItWrites();
    void writesIntoTheFolderOfTheBlogThatWasAsked();
};

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
        return environment.files.blogPath(u"Ada"_s) + u"/posts/p%1/post.zalmo"_s.arg(id);
    }
    DocumentPtr open(const QString &id) const
    {
        const Result<DocumentPtr> opened = ZLDocument::open(QUrl::fromLocalFile(path(id)));
        return opened ? *opened : nullptr;
    }
    QStringList files() const { return environment.postFiles(u"Ada"_s).keys(); }
    XMLRPCStruct postStruct(const XMLRPCValue &id)
    {
        return {{u"post_id"_s, id}, {u"post_title"_s, u"T"_s}, {u"post_content"_s, u"c"_s}};
    }
};
} // namespace

void PostSyncTest::asksForPostsAndPages()
{
    SyncFixture f;
    f.sync();
    QCOMPARE(f.blog.methods(),
        (QStringList{u"wp.getPosts"_s, u"wp.getPosts"_s, u"metaWeblog.getCategories"_s, u"wp.getTerms"_s}));
    QCOMPARE(f.parameters(f.blog.calls[0]), u"[\"\", \"ada\", \"secret\", {\"number\": 50}]"_s);
    QCOMPARE(
        f.parameters(f.blog.calls[1]), u"[\"\", \"ada\", \"secret\", {\"number\": 50, \"post_type\": \"page\"}]"_s);
    QCOMPARE(f.parameters(f.blog.calls[2]), u"[\"\", \"ada\", \"secret\"]"_s);
    QCOMPARE(f.parameters(f.blog.calls[3]), u"[\"\", \"ada\", \"secret\", \"post_tag\"]"_s);
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
}

void PostSyncTest::bringsTheBlogIntoFiles()
{
    SyncFixture f;
    FakeBlog::Post &draft = f.blog.addPost(u"A draft"_s, u"text"_s);
    draft.status = u"private"_s;
    draft.categories = QStringList{u"R&D"_s};
    draft.commentStatus = u"closed"_s;
    f.blog.addTerm(u"category"_s, u"R&D"_s);
    const QString draftId = draft.id;
    const QString pageId = f.blog.addPost(u"About"_s, u"page text"_s, u"page"_s).id;
    f.sync();
    QCOMPARE(f.files(), (QStringList{u"p%1/post.zalmo"_s.arg(draftId), u"p%1/post.zalmo"_s.arg(pageId)}));

    const DocumentPtr document = f.open(draftId);
    QVERIFY(document);
    QCOMPARE(document->post.title, u"A draft"_s);
    QCOMPARE(document->postInfo.status, u"draft"_s);
    QCOMPARE(document->postInfo.engine, u"wordpress"_s);
    QCOMPARE(document->postInfo.allowComments, false);
    QCOMPARE(document->postInfo.allowPingback, true);
    QCOMPARE(document->postInfo.updatedAt, f.blog.posts[draftId].modified);
    QCOMPARE(document->post.taxonomiesArray(), QStringList{u"R&D"_s});
    QCOMPARE(f.open(pageId)->postInfo.type, u"page"_s);
}

void PostSyncTest::writesABodyByteForByte_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("loose") << u"one\n\ntwo <b>bold</b>\n\n<!--more-->\n\nthree"_s;
    QTest::newRow("blocks") << u"<!-- wp:paragraph {\"a\":\"&amp;\"} -->\n<p>x</p>\n<!-- /wp:paragraph -->"_s;
    QTest::newRow("entities") << u"&lt;b&gt; &amp;amp; &nbsp;é 🫖"_s;
    // White space around a body does not count: both sides of the protocol trim every text.
    QTest::newRow("white space within") << u"a\t b\n\n\n c"_s;
    QTest::newRow("script") << u"<script>alert(\"<b>\" && 'x')</script>"_s;
}

void PostSyncTest::writesABodyByteForByte()
{
    QFETCH(QString, body);
    SyncFixture f;
    const QString id = f.blog.addPost(u"T"_s, body).id;
    f.sync();
    const DocumentPtr document = f.open(id);
    QVERIFY(document);
    QCOMPARE(document->storedContent(), body);
}

void PostSyncTest::followsTheBlogButKeepsLocalChanges()
{
    SyncFixture f;
    const QString followed = f.blog.addPost(u"Followed"_s, u"one"_s).id;
    const QString edited = f.blog.addPost(u"Edited"_s, u"one"_s).id;
    f.sync();
    f.environment.currentDocument = f.open(edited);
    f.environment.currentDocument->post.content = u"mine"_s;
    f.environment.currentDocument->fileInfo.status = u"modified"_s;
    for (const QString &id : {followed, edited}) {
        f.blog.posts[id].content = u"two"_s;
        f.blog.posts[id].modified = f.blog.now.addSecs(60);
    }
    f.sync();
    QCOMPARE(f.open(followed)->post.content, u"two"_s);
    QCOMPARE(f.open(edited)->post.content, u"mine"_s); // unsaved until now
    QCOMPARE(f.open(edited)->fileInfo.status, u"conflict"_s);
    QCOMPARE(f.files(),
        (QStringList{
            u"p%1/post.zalmo"_s.arg(followed), u"p%1/conflict.zalmo"_s.arg(edited), u"p%1/post.zalmo"_s.arg(edited)}));
}

void PostSyncTest::endsTheRoundWithItsLastAnswer()
{
    SyncFixture f;
    f.blog.answerLate(u"wp.getTerms"_s);
    f.sync();
    QCOMPARE(f.journal(), QStringList());
    QVERIFY(f.service->isSyncing());
    f.environment.network.release();
    QTRY_COMPARE(f.journal(), QStringList{u"synced Ada"_s});
    QVERIFY(!f.service->isSyncing());
}

void PostSyncTest::endsARoundAsItsFailuresTell_data()
{
    using Spoil = std::function<void(FakeBlog &)>;
    QTest::addColumn<std::function<void(FakeBlog &)>>("spoil");
    QTest::addColumn<QStringList>("journal");
    const auto row = [](const char *name, const Spoil &spoil, const QStringList &journal) {
        QTest::newRow(name) << spoil << journal;
    };
    const QString ended = u"synced Ada"_s;
    row("fault on posts ends", [](FakeBlog &b) { b.answerWithFault(u"wp.getPosts"_s, 401, u"no"_s); },
        {u"request 24 failed: Response error 401"_s, ended});
    row("a login in doubt waits", [](FakeBlog &b) { b.answerWithFault(u"wp.getPosts"_s, 403, u"no"_s); },
        {u"request 24 failed: Response error 403"_s});
    row("and so does 425", [](FakeBlog &b) { b.answerWithFault(u"wp.getPosts"_s, 425, u"no"_s); },
        {u"request 24 failed: Response error 425"_s});
    row("a status waits", [](FakeBlog &b) { b.answerWithStatus(u"wp.getPosts"_s, 500); },
        {u"request 24 failed: HTTP 500"_s});
    row("a broken connection waits",
        [](FakeBlog &b) { b.breakConnection(u"wp.getPosts"_s, QNetworkReply::RemoteHostClosedError); },
        {u"request 24 failed: NSURLErrorDomain -1005"_s});
    row("an empty reply waits", [](FakeBlog &b) { b.answerEmpty(u"wp.getPosts"_s); }, {});
    row("fault on categories waits",
        [](FakeBlog &b) { b.answerWithFault(u"metaWeblog.getCategories"_s, 401, u"no"_s); },
        {u"request 28 failed: Response error 401"_s});
    row("fault on tags waits", [](FakeBlog &b) { b.answerWithFault(u"wp.getTerms"_s, 401, u"no"_s); },
        {u"request 29 failed: Response error 401"_s});
    row("a cut reply counts as an empty list", [](FakeBlog &b) { b.answerCut(u"wp.getPosts"_s, 150); }, {ended});
}

void PostSyncTest::endsARoundAsItsFailuresTell()
{
    QFETCH(std::function<void(FakeBlog &)>, spoil);
    QFETCH(QStringList, journal);
    SyncFixture f;
    spoil(f.blog);
    f.sync();
    QStringList told = f.journal();
    QCOMPARE(told, journal);
    QCOMPARE(f.service->isSyncing(), !journal.contains(u"synced Ada"_s));
    f.journal().clear();
    f.sync(); // and the next round heals
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
}

void PostSyncTest::endsWithTheLogin_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("logged in again") << false;
    QTest::newRow("login cancelled") << true;
}

void PostSyncTest::endsWithTheLogin()
{
    QFETCH(bool, cancelled);
    SyncFixture f;
    f.blog.password = u"new"_s;
    f.sync();
    QCOMPARE(f.journal().filter(u"synced"_s), QStringList());
    f.journal().clear();
    f.service->password = u"new"_s;
    if (cancelled)
        f.service->didCancelReconnect();
    else
        f.service->reconnect();
    f.settle();
    QCOMPARE(
        f.journal(), cancelled ? QStringList{u"synced Ada"_s} : (QStringList{u"reconnected ada"_s, u"synced Ada"_s}));
    QVERIFY(!f.service->isSyncing());
}

void PostSyncTest::stopsARound()
{
    SyncFixture f;
    f.blog.addPost(u"T"_s, u"c"_s);
    f.blog.answerLate(u"wp.getPosts"_s);
    f.sync();
    f.service->stopSync();
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
    f.environment.network.release();
    f.settle();
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
    QCOMPARE(f.files(), QStringList());
}

void PostSyncTest::lateAnswersOfAnEarlierRoundStillDoTheirWork()
{
    SyncFixture f;
    const QString id = f.blog.addPost(u"T"_s, u"c"_s).id;
    f.blog.answerLate(u"wp.getPosts"_s);
    f.service->syncBlogPosts();
    f.settle();
    f.blog.answerWith(u"wp.getPosts"_s, XMLRPCArray());
    f.service->syncBlogPosts();
    f.settle();
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
    QCOMPARE(f.files(), QStringList());
    f.environment.network.release();
    f.settle();
    QCOMPARE(f.files(), QStringList{u"p%1/post.zalmo"_s.arg(id)});
    QCOMPARE(f.journal(), (QStringList{u"synced Ada"_s, u"synced Ada"_s}));
}

void PostSyncTest::writesNothingForForeignInput_data()
{
    QTest::addColumn<XMLRPCValue>("reply");
    const auto post = [](const QString &id) {
        return XMLRPCValue(XMLRPCArray{XMLRPCStruct{{u"post_id"_s, id}, {u"post_content"_s, u"evil"_s}}});
    };
    QTest::newRow("id that climbs") << post(u"/../../../../climbed"_s);
    QTest::newRow("dots") << post(u".."_s);
    QTest::newRow("separator") << post(u"1/2"_s);
    QTest::newRow("no id") << post(u""_s);
    QTest::newRow("not a struct") << XMLRPCValue(XMLRPCArray{u"text"_s, 7, XMLRPCArray()});
    QTest::newRow("not a list") << XMLRPCValue(u"text"_s);
    QTest::newRow("a struct") << XMLRPCValue(XMLRPCStruct{{u"post_id"_s, u"5"_s}});
}

void PostSyncTest::writesNothingForForeignInput()
{
    QFETCH(XMLRPCValue, reply);
    SyncFixture f;
    f.blog.answerWith(u"wp.getPosts"_s, reply);
    f.sync();
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
    QCOMPARE(f.files(), QStringList());
    QCOMPARE(
        QDir(f.environment.folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), (QStringList{u"data"_s}));
}

void PostSyncTest::goesOnAfterAPostThatCannotBeWritten()
{
    SyncFixture f;
    const QString blocked = f.blog.addPost(u"Blocked"_s, u"c"_s).id;
    const QString fine = f.blog.addPost(u"Fine"_s, u"c"_s).id;
    // A folder in the place of the file.
    QVERIFY(QDir().mkpath(f.path(blocked)));
    f.sync();
    QCOMPARE(f.journal(), QStringList{u"synced Ada"_s});
    QCOMPARE(f.files(), QStringList{u"p%1/post.zalmo"_s.arg(fine)});
}

void PostSyncTest::keepsTheWindowAliveWhileItWrites()
{
    SyncFixture f;
    for (int i = 0; i < 50; ++i)
        f.blog.addPost(u"Post %1"_s.arg(i), QString(10000, u'x'));
    QElapsedTimer sinceTurn;
    qint64 longest = 0;
    QTimer turns;
    QObject::connect(&turns, &QTimer::timeout, &turns, [&] { longest = qMax(longest, sinceTurn.restart()); });
    sinceTurn.start();
    turns.start(0);
    f.service->syncBlogPosts();
    QTRY_COMPARE(f.journal(), QStringList{u"synced Ada"_s});
    QCOMPARE(f.files().size(), 50);
    // Far above what a turn takes, far below what all files together would take on a slow disk.
    QVERIFY2(longest < 500, qPrintable(QString::number(longest)));
}

void PostSyncTest::writesIntoTheFolderOfTheBlogThatWasAsked()
{
    SyncFixture f;
    const QString id = f.blog.addPost(u"T"_s, u"c"_s).id;
    f.blog.answerLate(u"wp.getPosts"_s);
    f.service->syncBlogPosts();
    // The user turns to another blog, for which the same service goes on.
    f.service->cleanData();
    f.service->changeApiURL(QUrl(u"http://other.test/xmlrpc.php"_s));
    f.service->blogName = u"Other"_s;
    f.environment.network.release();
    f.settle();
    QCOMPARE(f.files(), QStringList{u"p%1/post.zalmo"_s.arg(id)});
    QVERIFY(f.environment.postFiles(u"Other"_s).isEmpty());
}

static const RegisteredTest<PostSyncTest> registered;
#include "PostSyncTest.moc"
