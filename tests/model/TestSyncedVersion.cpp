#include "PostFolder.h"

#include "model/PostSync.h"

namespace {
const QString synced = u"synced.zalmo"_qs;

QByteArray postFile(const QByteArray &status, const QByteArray &mark)
{
    FileText text;
    text.status = status;
    text.fileInfo = "<status>" + mark + "</status><app_version>3</app_version>";
    return text.bytes();
}

/// A post as the blog last gave it.
QByteArray inStep()
{
    return postFile("publish", "");
}

void type(const DocumentPtr &document, const QString &title)
{
    document->post.title = title;
    document->updateChangeCount();
    (void)document->saveDocument();
}

ZLWordpressPost remotePost(const QDateTime &updatedAt)
{
    ZLWordpressPost post;
    post.id = u"12"_qs;
    post.title = u"Remote"_qs;
    post.content = u"theirs"_qs;
    post.status = PostFields::Publish;
    post.updatedAt = updatedAt;
    return post;
}
} // namespace

/// What the blog last gave, kept beside a post for as long as it has local changes.
class TestSyncedVersion : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void marksEveryEdit_data()
    {
        const TestTable<QByteArray, QByteArray, QString, bool> row({"status", "mark", "expected", "isKnown"});
        row("published", "publish", "", u"modified"_qs, true);
        row("draft", "draft", "", u"modified"_qs, true);
        row("on no blog", "new", "", u"new"_qs, false);
        row("new", "new", "new", u"new"_qs, false);
        row("modified before", "publish", "modified", u"modified"_qs, false);
        row("in conflict before", "publish", "conflict", u"conflict"_qs, false);
        row("a kept copy", "publish", "conflict-solved", u"conflict-solved"_qs, false);
    }
    void marksEveryEdit()
    {
        QFETCH(QByteArray, status);
        QFETCH(QByteArray, mark);
        QFETCH(bool, isKnown); // what the blog last gave
        const QList<std::function<void(PostFields &)>> edits{
            [](PostFields &post) { post.content = u"typed"_qs; },
            [](PostFields &post) { post.setTaxonomiesFromStringArray({u"#tag"_qs}); },
            [](PostFields &post) { post.createdAt = post.createdAt.addDays(1); },
        };
        for (const auto &edit : edits) {
            const PostFolder folder;
            ZLDocumentController documents;
            const DocumentPtr document = openedBy(documents, folder.write(postFile(status, mark)));
            document->updateChangeCount(); // that nothing has changed is no edit
            QCOMPARE(document->fileInfo.status, QString::fromLatin1(mark));
            edit(document->post);
            document->updateChangeCount();
            QTEST(document->fileInfo.status, "expected");
            QVERIFY(document->saveDocument());
            QCOMPARE(folder.has(synced), isKnown);
            QCOMPARE(document->hasSyncedVersion(), isKnown);
            QCOMPARE(bool(document->wordpressPost()->synced), isKnown);
            QCOMPARE(bool(document->revertToSyncedVersion()), isKnown);
        }
    }

    void keepsTheFileAsItWas()
    {
        const PostFolder folder;
        folder.write("a left-over", synced);
        ZLDocumentController documents;
        const DocumentPtr document = openedBy(documents, folder.write(inStep()));
        QVERIFY(!document->hasSyncedVersion());
        QCOMPARE(document->wordpressPost()->synced->content, u"Body"_qs);
        type(document, u"Mine"_qs);
        QCOMPARE(folder.read(synced), inStep());
        type(document, u"Mine, longer"_qs);
        QCOMPARE(folder.read(synced), inStep());
        QVERIFY(folder.read().contains("Mine, longer"));
        QVERIFY(document->hasSyncedVersion());

        // Another start.
        const PostPtr read = (*ZLDocument::open(folder.url()))->wordpressPost();
        QCOMPARE(read->title, u"Mine, longer"_qs);
        QCOMPARE(read->synced->title, u"Title"_qs);
    }

    void goesWithTheUploadThatHeld()
    {
        const PostFolder folder;
        ZLDocumentController documents;
        const DocumentPtr document = openedBy(documents, folder.write(inStep()));
        type(document, u"Mine"_qs);
        document->post.firstPublishBegan = QDateTime::currentDateTimeUtc();
        document->setRecentlySyncedWordpressPost(*document->wordpressPost());
        QVERIFY(document->saveDocument());
        QVERIFY(!folder.has(synced));
        QCOMPARE(document->wordpressPost()->synced->title, u"Mine"_qs);
        QVERIFY(!document->post.firstPublishBegan.isValid());
    }

    void takesItsOwnUploadForNoConflict()
    {
        const QDateTime uploaded = QDateTime::currentDateTimeUtc().addDays(-1);
        for (const bool isNewer : {false, true}) {
            const PostFolder folder;
            ZLDocumentController documents;
            const DocumentPtr document = openedBy(documents, folder.write(inStep()));
            QVERIFY(remotePost(isNewer ? uploaded.addSecs(1) : uploaded).putConflictBeside(*document));
            document->setRecentlySyncedWordpressPost(remotePost(uploaded));
            QCOMPARE(document->isInConflict(), isNewer);
        }
    }

    void takesAnUpdateWithoutAnswerForNoConflict()
    {
        for (const bool isOther : {false, true}) {
            const PostFolder folder;
            ZLDocumentController documents;
            const DocumentPtr document = openedBy(documents, folder.write(inStep()));
            type(document, u"Mine"_qs);
            ZLWordpressPost remote = *document->wordpressPost();
            remote.updatedAt = remote.updatedAt.addDays(1);
            if (isOther)
                remote.title = u"Theirs"_qs;
            QVERIFY(remote.syncWithPostAtPath(folder.path(), u"wordpress"_qs, documents));
            QCOMPARE(document->isInConflict(), isOther);
            QCOMPARE(document->fileInfo.status.isEmpty(), !isOther);
        }
    }

    void goesBack()
    {
        for (const bool isSaved : {true, false}) {
            const PostFolder folder;
            ZLDocumentController documents;
            const DocumentPtr document = openedBy(documents, folder.write(inStep()));
            document->post.title = u"Mine"_qs;
            document->updateChangeCount();
            if (isSaved)
                QVERIFY(document->saveDocument());
            folder.write("another version", u"conflict.zalmo"_qs);
            QVERIFY(document->isInConflict() && !document->revertToSyncedVersion());
            QVERIFY(QFile::remove(folder.path(u"conflict.zalmo"_qs)));
            QVERIFY(document->revertToSyncedVersion());
            QCOMPARE(document->post.title, u"Title"_qs);
            QVERIFY(!document->hasUnautosavedChanges() && !folder.has(synced));
            const DocumentPtr again = *ZLDocument::open(folder.url());
            QCOMPARE(again->post.title, u"Title"_qs);
            QVERIFY(again->fileInfo.status.isEmpty());
        }
    }

    void tellsWhetherTheBlogHasChanged()
    {
        // The local version won a conflict a while after the blog's last change; the clock here is late.
        const PostFolder folder;
        FileText text;
        text.updatedAt = "2014-10-22 08:00:00 +0000";
        text.fileInfo = "<status>modified</status><app_version>3</app_version>";
        folder.write(text.bytes());
        folder.write(inStep(), synced);
        const QDateTime known(QDate(2014, 10, 22), QTime(9, 30), Qt::UTC);
        const ZLDocumentController documents;
        QVERIFY(remotePost(known).syncWithPostAtPath(folder.path(), u"zalmo"_qs, documents));
        QVERIFY(!folder.has(u"conflict.zalmo"_qs));
        QVERIFY(remotePost(known.addSecs(1)).syncWithPostAtPath(folder.path(), u"zalmo"_qs, documents));
        QVERIFY(folder.has(u"conflict.zalmo"_qs));
    }

    void goesWithASyncThatWritesThePost()
    {
        // a newer version, and one that is private now
        for (const auto &[mark, seconds, isTaken] : {std::tuple("", 1, true), {"", 0, true}, {"modified", 0, false}}) {
            const PostFolder folder;
            folder.write(postFile("publish", mark));
            folder.write(inStep(), synced);
            ZLWordpressPost remote = remotePost(QDateTime(QDate(2014, 10, 22), QTime(9, 30, seconds), Qt::UTC));
            remote.blogStatus = seconds == 0 ? u"private"_qs : QString();
            QVERIFY(remote.syncWithPostAtPath(folder.path(), u"zalmo"_qs, ZLDocumentController()));
            QCOMPARE(folder.read().contains("theirs"), isTaken);
            QCOMPARE(folder.read().contains("<blog_status>private</blog_status>"), isTaken && seconds == 0);
            QCOMPARE(folder.has(synced), !isTaken);
        }
    }

    void notesAFirstPublish()
    {
        const PostFolder folder;
        ZLDocumentController documents;
        const QByteArray before = postFile("new", "new");
        const DocumentPtr document = openedBy(documents, folder.write(before));
        const QDateTime began(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
        QVERIFY(document->setFirstPublishBegan(began));
        QCOMPARE((*ZLDocument::open(folder.url()))->wordpressPost()->firstPublishBegan, began);
        QVERIFY(document->setFirstPublishBegan({}));
        QCOMPARE(folder.read(), before);
    }
};

static const RegisteredTest<TestSyncedVersion> registered;
#include "TestSyncedVersion.moc"
