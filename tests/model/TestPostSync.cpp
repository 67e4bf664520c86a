#include "PostFolder.h"

#include "model/ZLDocumentController.h"

#include <QFileInfo>

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

/// A remote post meets the file of the same post.
class TestPostSync : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void decides_data()
    {
        addColumns<int, FileText, QString, int>({"seconds", "local", "name", "effect"});
        const auto row = [](const char *name, int seconds, const QByteArray &fileInfo, Effect effect,
                             const QString &file = u"post.zalmo"_qs) {
            FileText local;
            local.fileInfo = fileInfo;
            QTest::newRow(name) << seconds << local << file << int(effect);
        };
        const QByteArray version = "<app_version>3</app_version>";
        row("newer, modified", 1, "<status>modified</status>" + version, Conflict);
        row("newer, in conflict", 1, "<status>conflict</status>" + version, Conflict);
        row("newer, modified, old form", 1, "<status>modified</status>", Conflict);
        row("newer, modified, other file", 1, "<status>modified</status>" + version, Nothing,
            u"conflict-solved.zalmo"_qs);
        row("newer, in step", 1, "<status></status>" + version, Overwritten);
        row("newer, new", 1, "<status>new</status>" + version, Overwritten);
        row("same, in step", 0, version, Nothing);
        row("same, a later form", 0, "<app_version>3.1</app_version>", Nothing);
        row("same, modified", 0, "<status>modified</status>" + version, Nothing);
        row("older, modified, old form", -1, "<status>modified</status><app_version>2</app_version>", Nothing);
        row("same, in conflict, no version", 0, "<status>conflict</status>", Nothing);
        row("same, old form", 0, "<app_version>2</app_version>", Overwritten);
        row("older, no version", -1, "<status></status>", Overwritten);
    }
    void decides()
    {
        QFETCH(int, seconds);
        QFETCH(FileText, local);
        QFETCH(QString, name);
        QFETCH(int, effect);
        const PostFolder folder;
        folder.write(local.bytes(), name);
        if (local.fileInfo.contains("conflict<"))
            folder.write("an earlier copy", u"conflict.zalmo"_qs);
        ZLWordpressPost remote = remotePost(seconds);
        QVERIFY(remote.syncWithPostAtPath(folder.path(name), u"zalmo"_qs, ZLDocumentController()));
        const QByteArray copy = folder.read(u"conflict.zalmo"_qs);
        QCOMPARE(copy.contains("remote body"), effect == Conflict);
        if (effect == Nothing)
            QCOMPARE(folder.read(name), local.bytes());
        if (effect == Overwritten) {
            QVERIFY(folder.read(name).contains("<title>Remote</title><content>remote body</content>"));
            QVERIFY(folder.read(name).endsWith("<file_info><app_version>3</app_version></file_info></zalmo>"));
            QCOMPARE(QFileInfo(folder.path(name)).lastModified().toUTC(), remote.updatedAt);
        }
        if (effect == Conflict) {
            local.fileInfo = "<status>conflict</status><app_version>3</app_version>";
            QCOMPARE(folder.read(), local.bytes());
            QVERIFY(copy.contains("<title>Remote</title><content>remote body</content>"));
            QVERIFY(copy.endsWith("<file_info><status></status></file_info></zalmo>"));
        }
    }

    void takesAnOpenDocument()
    {
        const PostFolder folder;
        ZLDocumentController documents;
        const DocumentPtr document = openedBy(documents, folder.write(FileText().bytes()));
        document->post.content = u"typed a moment ago"_qs;
        document->updateChangeCount();
        QVERIFY(remotePost(60).syncWithPostAtPath(folder.path(), u"zalmo"_qs, documents));
        QCOMPARE(document->fileInfo.status, u"conflict"_qs);
        QVERIFY(!document->hasUnautosavedChanges());
        QVERIFY(folder.read().contains("typed a moment ago"));
        QVERIFY(folder.read().contains("<status>conflict</status>"));
        QVERIFY(folder.has(u"conflict.zalmo"_qs));
    }

    void readsAnOpenDocumentAnew()
    {
        const PostFolder folder;
        ZLDocumentController documents;
        const DocumentPtr document = openedBy(documents, folder.write(FileText().bytes()));
        QVERIFY(remotePost(60).syncWithPostAtPath(folder.path(), u"zalmo"_qs, documents));
        QCOMPARE(document->post.title, u"Remote"_qs);
        // What it held before must not come back with the next save.
        QVERIFY(document->saveDocument());
        QVERIFY(folder.read().contains("remote body"));
    }

    void keepsADamagedFileAside()
    {
        const PostFolder folder;
        const QByteArray cut = FileText().bytes().left(60);
        folder.write(cut);
        QVERIFY(remotePost(0).syncWithPostAtPath(folder.path(), u"zalmo"_qs, ZLDocumentController()));
        QVERIFY(folder.read().contains("remote body"));
        QCOMPARE(folder.read(u"post.zalmo.damaged"_qs), cut);
    }

    void failsWithoutAFile()
    {
        const PostFolder folder;
        QVERIFY(!remotePost(0).syncWithPostAtPath(folder.path(), u"zalmo"_qs, ZLDocumentController()));
        QVERIFY(!folder.has(u"post.zalmo"_qs));
    }
};

static const RegisteredTest<TestPostSync> registered;
#include "TestPostSync.moc"
