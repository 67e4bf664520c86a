#include "PostFolder.h"

#include "model/ConflictResolver.h"
#include "model/ConflictSides.h"
#include "model/PostFile.h"

namespace {
const QDateTime now(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
using Resolver = ConflictResolver;

/// A post folder with a conflict.
struct Conflict {
    PostFolder folder;
    FileText local;
    FileText remote;
    std::shared_ptr<ZLDocumentController> documents = std::make_shared<ZLDocumentController>();
    LocalPostPtr row = std::make_shared<ZLLocalPostRepresentation>();

    Conflict()
    {
        local.title = "Local";
        local.content = "local body";
        local.fileInfo = "<status>conflict</status><app_version>3</app_version>";
        remote.title = "Remote";
        remote.content = "remote body";
        remote.updatedAt = "2015-01-01 10:00:00 +0000";
        remote.fileInfo = "<status></status>";
        row->localFile = folder.url();
        row->status = ZLLocalPostRepresentation::Conflict;
    }
    void write() const
    {
        folder.write(local.bytes());
        folder.write(remote.bytes(), u"conflict.zalmo"_qs);
    }
    Resolver::Outcome resolve(int action, int selection) const
    {
        return Resolver::resolve(Resolver::Action(action), Resolver::Selection(selection), row, *documents, now);
    }
};

QByteArray textsOf(const QByteArray &file)
{
    return file.mid(file.indexOf("<title>"), file.indexOf("<keywords>") - file.indexOf("<title>"));
}
} // namespace

/// What each answer does to the files, the rows and the document on the screen.
class TestConflictResolver : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answers()
    {
        const QByteArray local = "<title>Local</title><content>local body</content>";
        const QByteArray remote = "<title>Remote</title><content>remote body</content>";
        for (const Resolver::Action action : {Resolver::Choose, Resolver::KeepBoth}) {
            for (const bool isLocal : {true, false}) {
                const Conflict conflict;
                conflict.write();
                const Resolver::Outcome outcome =
                    conflict.resolve(action, isLocal ? Resolver::Local : Resolver::Remote);
                QVERIFY(outcome.isDone);
                QCOMPARE(outcome.reloadsPosts, isLocal);
                const QByteArray post = conflict.folder.read();
                QCOMPARE(textsOf(post), isLocal ? local : remote);
                QVERIFY(post.contains(isLocal ? "<updated_at>2020-01-01 12:00:00 +0000</updated_at>"
                                              : "<updated_at>2015-01-01 10:00:00 +0000</updated_at>"));
                QCOMPARE(PostFile::fromData(post).fileInfo.status, isLocal ? u"modified"_qs : QString());
                QVERIFY(!conflict.folder.has(u"conflict.zalmo"_qs));
                const QByteArray copy = conflict.folder.read(u"conflict-solved.zalmo"_qs);
                QCOMPARE(copy.isEmpty(), action == Resolver::Choose);
                if (copy.isEmpty())
                    continue;
                QCOMPARE(textsOf(copy), "<title>[conflicted] " + (isLocal ? remote : local).mid(7));
                QVERIFY(copy.endsWith("<file_info><status>conflict-solved</status></file_info></zalmo>"));
                QVERIFY(copy.contains("<id></id><status>new</status>") && copy.contains("<URL></URL>"));
            }
        }
    }

    void tellsTheRowsOfARemoteChoice()
    {
        for (const auto &[engine, status, type, row] :
            {std::tuple("wordpress", "publish", "post", 0), {"wordpress", "publish", "page", 2},
                {"wordpress", "draft", "post", 1}, {"evernote", "new", "post", 7}}) {
            Conflict conflict;
            conflict.remote.engine = engine;
            conflict.remote.status = status;
            conflict.remote.type = type;
            conflict.write();
            const Resolver::Outcome chosen = conflict.resolve(Resolver::Choose, Resolver::Remote);
            QCOMPARE(chosen.removed, conflict.row);
            QCOMPARE(chosen.insertedOnTop, QList<LocalPostPtr>{conflict.row});
            QCOMPARE(chosen.loaded, conflict.row);
            QCOMPARE(conflict.row->status, row);
            QCOMPARE(conflict.row->title, u"Remote"_qs);

            conflict.write();
            const Resolver::Outcome kept = conflict.resolve(Resolver::KeepBoth, Resolver::Remote);
            QCOMPARE(kept.removed, conflict.row);
            QCOMPARE(kept.insertedOnTop.size(), 2);
            const LocalPostPtr copy = kept.insertedOnTop.first();
            QCOMPARE(copy->status, 6);
            QCOMPARE(copy->title, u"[conflicted] Local"_qs);
            QCOMPARE(copy->localFile, conflict.folder.url(u"conflict-solved.zalmo"_qs));
            QCOMPARE(kept.loaded, kept.insertedOnTop.last());
            QCOMPARE(kept.loaded->status, row);
            QCOMPARE(kept.loaded->localFile, conflict.folder.url());
        }
    }

    void keepsWhatIsUnsavedInACopyOnly()
    {
        for (const Resolver::Action action : {Resolver::Choose, Resolver::KeepBoth}) {
            const Conflict conflict;
            conflict.write();
            const DocumentPtr document = openedBy(*conflict.documents, conflict.folder.url());
            document->post.content = u"just typed"_qs;
            document->updateChangeCount();
            conflict.resolve(action, Resolver::Remote);
            QCOMPARE(document->post.content, u"remote body"_qs);
            document->close();
            QVERIFY(conflict.folder.read().contains("remote body"));
            const QByteArray copy = conflict.folder.read(u"conflict-solved.zalmo"_qs);
            QCOMPARE(copy.contains("just typed"), action == Resolver::KeepBoth);
        }
    }

    void keepsTextsAsStored()
    {
        Conflict conflict;
        conflict.remote.title = "3 &amp;lt; 5";
        conflict.remote.content = "&lt;!-- wp:paragraph --&gt;\n&lt;p&gt;3 &amp;lt; 5&lt;/p&gt;\n";
        conflict.write();
        conflict.row->localFile = conflict.folder.url(u"conflict-solved.zalmo"_qs);
        QVERIFY(!conflict.resolve(Resolver::Choose, Resolver::Remote).isDone); // that is in no conflict
        QVERIFY(conflict.folder.has(u"conflict.zalmo"_qs));
        conflict.row->localFile = conflict.folder.url();
        conflict.resolve(Resolver::Choose, Resolver::Remote);
        QCOMPARE(textsOf(conflict.folder.read()), textsOf(conflict.remote.bytes()));
        QCOMPARE(conflict.row->title, u"3 < 5"_qs);
    }

    void losesNothingWithoutTheRemoteCopy()
    {
        for (const bool isDamaged : {true, false}) {
            const Conflict conflict;
            conflict.folder.write(conflict.local.bytes());
            if (isDamaged)
                conflict.folder.write("<zalmo><post>", u"conflict.zalmo"_qs);
            for (const Resolver::Action action : {Resolver::Choose, Resolver::KeepBoth})
                QVERIFY(!conflict.resolve(action, Resolver::Remote).isDone);
            QCOMPARE(conflict.folder.read(), conflict.local.bytes());
            QVERIFY(conflict.resolve(Resolver::KeepBoth, Resolver::Local).isDone);
            QVERIFY(conflict.folder.read().contains("local body"));
            QCOMPARE(conflict.folder.has(u"conflict.zalmo"_qs), isDamaged);
            QVERIFY(!conflict.folder.has(u"conflict-solved.zalmo"_qs));
        }
    }

    void losesNothingWhenTheCopyCannotBeWritten()
    {
        for (const Resolver::Selection selection : {Resolver::Local, Resolver::Remote}) {
            const Conflict conflict;
            conflict.write();
            conflict.folder.write("a folder where it would be written", u"conflict-solved.zalmo.tmp/file"_qs);
            QCOMPARE(conflict.resolve(Resolver::KeepBoth, selection).isDone, selection == Resolver::Local);
            QVERIFY(conflict.folder.read().contains("local body"));
            QCOMPARE(conflict.folder.read(u"conflict.zalmo"_qs), conflict.remote.bytes());
        }
    }

    void tellsBothSides()
    {
        Conflict conflict;
        conflict.remote.content = "&lt;p&gt;Same&lt;/p&gt;&lt;p&gt;Theirs&lt;/p&gt;";
        conflict.local.content = "&lt;p&gt;Same&lt;/p&gt;&lt;p&gt;Mine&lt;/p&gt;";
        conflict.write();
        const DocumentPtr document = openedBy(*conflict.documents, conflict.folder.url());
        document->post.title = u"Typed"_qs;
        const ConflictSides sides = conflictSides(conflict.row, *conflict.documents);
        QCOMPARE(sides.local.title, u"Typed"_qs);
        QCOMPARE(sides.remote.title, u"Remote"_qs);
        QCOMPARE(sides.remote.date, QDateTime(QDate(2015, 1, 1), QTime(10, 0), Qt::UTC));
        QVERIFY(qAbs(sides.local.date.secsTo(QDateTime::currentDateTimeUtc())) < 60);
        QCOMPARE(sides.local.firstLines, (QStringList{u"Same"_qs, u"Mine"_qs}));
        QCOMPARE(sides.local.differingLines, QStringList{u"Mine"_qs});
        QCOMPARE(sides.remote.differingLines, QStringList{u"Theirs"_qs});
        QCOMPARE(sides.differences, (QStringList{u"Title"_qs, u"Text"_qs}));
        QVERIFY(QFile::remove(conflict.folder.path(u"conflict.zalmo"_qs)));
        QVERIFY(!conflictSides(conflict.row, *conflict.documents).remote.isThere);
    }
};

static const RegisteredTest<TestConflictResolver> registered;
#include "TestConflictResolver.moc"
