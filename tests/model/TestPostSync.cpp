#include "PostFolder.h"
#include "TestClasses.h"

#include "model/ZLDocument.h"

#include <QFileInfo>
#include <QTest>

/// A remote post meets the file of the same post.
class TestPostSync : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void decides_data();
    void decides();
    void replacesTheWaitingCopyOnly();
    void takesTheDocumentOnTheScreen();
    void readsTheScreensDocumentAnew();
    void keepsADamagedFileAside();
    void failsWithoutAFile();
};

namespace {
const QDateTime localDate(QDate(2014, 10, 22), QTime(9, 30), Qt::UTC);

ZLWordpressPost remotePost(int seconds)
{
    ZLWordpressPost post;
    post.id = u"12"_qs;
    post.title = u"Remote"_qs;
    post.content = post.storedContent = u"remote body"_qs;
    post.status = ZLWordpressPost::Publish;
    post.createdAt = localDate;
    post.updatedAt = localDate.addSecs(seconds);
    return post;
}

enum Effect { Nothing, Overwritten, Conflict };
} // namespace

void TestPostSync::decides_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QByteArray>("fileInfo");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("effect");
    const QString post = u"post.zalmo"_qs;
    const QString solved = u"conflict-solved.zalmo"_qs;
    const QByteArray version = "<app_version>3</app_version>";
    QTest::newRow("newer, modified") << 1 << "<status>modified</status>" + version << post << int(Conflict);
    QTest::newRow("newer, in conflict") << 1 << "<status>conflict</status>" + version << post << int(Conflict);
    QTest::newRow("newer, modified, old form") << 1 << QByteArray("<status>modified</status>") << post << int(Conflict);
    QTest::newRow("newer, modified, other file")
        << 1 << "<status>modified</status>" + version << solved << int(Nothing);
    QTest::newRow("newer, in step") << 1 << "<status></status>" + version << post << int(Overwritten);
    QTest::newRow("newer, new") << 1 << "<status>new</status>" + version << post << int(Overwritten);
    QTest::newRow("same, in step") << 0 << version << post << int(Nothing);
    QTest::newRow("same, a later form") << 0 << QByteArray("<app_version>10</app_version>") << post << int(Nothing);
    QTest::newRow("same, modified") << 0 << "<status>modified</status>" + version << post << int(Nothing);
    QTest::newRow("older, modified, old form")
        << -1 << QByteArray("<status>modified</status><app_version>2</app_version>") << post << int(Nothing);
    QTest::newRow("same, in conflict, no version")
        << 0 << QByteArray("<status>conflict</status>") << post << int(Nothing);
    QTest::newRow("same, old form") << 0 << QByteArray("<app_version>2</app_version>") << post << int(Overwritten);
    QTest::newRow("older, no version") << -1 << QByteArray("<status></status>") << post << int(Overwritten);
}

void TestPostSync::decides()
{
    QFETCH(int, seconds);
    QFETCH(QString, name);
    QFETCH(int, effect);
    FileText text;
    text.fileInfo = *static_cast<QByteArray *>(QTest::qData("fileInfo", qMetaTypeId<QByteArray>()));
    const PostFolder folder;
    folder.write(text.bytes(), name);
    ZLWordpressPost remote = remotePost(seconds);
    QVERIFY(remote.syncWithPostAtPath(folder.path(name), u"zalmo"_qs, nullptr));
    QCOMPARE(folder.has(u"conflict.zalmo"_qs), effect == Conflict);
    if (effect == Nothing)
        QCOMPARE(folder.read(name), text.bytes());
    if (effect == Overwritten) {
        QVERIFY(folder.read(name).contains("<title>Remote</title><content>remote body</content>"));
        QVERIFY(folder.read(name).endsWith("<file_info><app_version>3</app_version></file_info></zalmo>"));
        QCOMPARE(QFileInfo(folder.path(name)).lastModified().toUTC(), remote.updatedAt);
    }
    if (effect == Conflict) {
        text.fileInfo = "<status>conflict</status><app_version>3</app_version>";
        QCOMPARE(folder.read(), text.bytes());
        QVERIFY(folder.read(u"conflict.zalmo"_qs).contains("<title>Remote</title><content>remote body</content>"));
        QVERIFY(folder.read(u"conflict.zalmo"_qs).endsWith("<file_info><status></status></file_info></zalmo>"));
    }
}

void TestPostSync::replacesTheWaitingCopyOnly()
{
    FileText text;
    text.fileInfo = "<status>conflict</status><app_version>3</app_version>";
    const PostFolder folder;
    folder.write(text.bytes());
    folder.write("an earlier copy", u"conflict.zalmo"_qs);
    QVERIFY(remotePost(60).syncWithPostAtPath(folder.path(), u"zalmo"_qs, nullptr));
    QCOMPARE(folder.read(), text.bytes());
    QVERIFY(folder.read(u"conflict.zalmo"_qs).contains("remote body"));
}

void TestPostSync::takesTheDocumentOnTheScreen()
{
    const PostFolder folder;
    const DocumentPtr document = *ZLDocument::open(folder.write(FileText().bytes()));
    document->post.content = u"typed a moment ago"_qs;
    document->fileInfo.status = u"modified"_qs;
    document->updateChangeCount();
    QVERIFY(remotePost(60).syncWithPostAtPath(folder.path(), u"zalmo"_qs, document));
    QCOMPARE(document->fileInfo.status, u"conflict"_qs);
    QVERIFY(!document->hasUnautosavedChanges());
    QVERIFY(folder.read().contains("typed a moment ago"));
    QVERIFY(folder.read().contains("<status>conflict</status>"));
    QVERIFY(folder.has(u"conflict.zalmo"_qs));
}

void TestPostSync::readsTheScreensDocumentAnew()
{
    const PostFolder folder;
    const DocumentPtr document = *ZLDocument::open(folder.write(FileText().bytes()));
    QVERIFY(remotePost(60).syncWithPostAtPath(folder.path(), u"zalmo"_qs, document));
    QCOMPARE(document->post.title, u"Remote"_qs);
    // What it held before must not come back with the next save.
    QVERIFY(document->saveDocument());
    QVERIFY(folder.read().contains("remote body"));
}

void TestPostSync::keepsADamagedFileAside()
{
    const PostFolder folder;
    const QByteArray cut = FileText().bytes().left(60);
    folder.write(cut);
    QVERIFY(remotePost(0).syncWithPostAtPath(folder.path(), u"zalmo"_qs, nullptr));
    QVERIFY(folder.read().contains("remote body"));
    QCOMPARE(folder.read(u"post.zalmo.damaged"_qs), cut);
}

void TestPostSync::failsWithoutAFile()
{
    const PostFolder folder;
    QVERIFY(!remotePost(0).syncWithPostAtPath(folder.path(), u"zalmo"_qs, nullptr));
    QVERIFY(!folder.has(u"post.zalmo"_qs));
}

static const RegisteredTest<TestPostSync> registered;
#include "TestPostSync.moc"
