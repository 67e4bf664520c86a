#include "PostFolder.h"

#include "model/ZLDocumentController.h"

#include <QSignalSpy>

/// Who shares a document, and for how long.
class TestDocumentController : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void givesOneObjectToAll()
    {
        const PostFolder folder;
        const QUrl url = folder.write(FileText().bytes());
        ZLDocumentController controller;
        const DocumentPtr first = openedBy(controller, url);
        QVERIFY(first);
        QCOMPARE(openedBy(controller, url), first);
        QCOMPARE(openedBy(controller, QUrl(u"file://localhost"_qs + folder.path())), first);
        QCOMPARE(controller.documents(), QList<DocumentPtr>{first});

        // An outcome is done with it, the screen still holds it: edits and later outcomes meet in it as before.
        first->close();
        QCOMPARE(openedBy(controller, url), first);
        QVERIFY(first->moveToURL(folder.url(u"p12/post.zalmo"_qs)));
        QCOMPARE(controller.documentForURL(folder.url(u"p12/post.zalmo"_qs)), first);
        QVERIFY(!controller.documentForURL(url));
    }

    void opensOnALaterTurn()
    {
        const PostFolder folder;
        auto controller = std::make_unique<ZLDocumentController>();
        const QUrl url = folder.write(FileText().bytes());
        auto opening = controller->openDocumentWithContentsOfURL(url);
        QVERIFY(!opening.isReady());
        QTRY_VERIFY(opening.isReady());
        QVERIFY(!openedBy(*controller, folder.url(u"missing.zalmo"_qs)));
        QCOMPARE(controller->documents().size(), 1);
        auto openingAtItsEnd = controller->openDocumentWithContentsOfURL(url);
        controller.reset();
        QVERIFY(!QCoro::waitFor(openingAtItsEnd));
    }

    void savesAllAndForgetsWhatNobodyHolds()
    {
        const PostFolder folder;
        ZLDocumentController controller;
        QList<DocumentPtr> documents;
        for (const QString &name : {u"a.zalmo"_qs, u"b.zalmo"_qs}) {
            documents << openedBy(controller, folder.write(FileText().bytes(), name));
            documents.last()->post.title = u"Changed"_qs;
            documents.last()->updateChangeCount();
        }
        controller.saveAll();
        QVERIFY(folder.read(u"a.zalmo"_qs).contains("Changed"));
        QVERIFY(folder.read(u"b.zalmo"_qs).contains("Changed"));
        documents.clear();
        QTRY_VERIFY(controller.documents().isEmpty());
    }

    void keepsWhatCouldNotBeSaved()
    {
        for (const bool isDeleted : {false, true}) {
            const PostFolder folder;
            const QUrl url = folder.write(FileText().bytes(), u"p/post.zalmo"_qs);
            ZLDocumentController controller;
            QSignalSpy failed(&controller, &ZLDocumentController::didFailToSave);
            {
                const DocumentPtr document = openedBy(controller, url);
                QVERIFY(QDir().rename(folder.path(u"p"_qs), folder.path(u"q"_qs)));
                document->post.title = u"Kept"_qs;
                document->updateChangeCount();
                document->close();
            }
            QCOMPARE(failed.count(), 1);
            failed.clear(); // it holds the document too
            QVERIFY(QDir().rename(folder.path(u"q"_qs), folder.path(u"p"_qs)));
            if (isDeleted)
                controller.forget(url);
            else
                QCOMPARE(openedBy(controller, url)->post.title, u"Kept"_qs);
            controller.saveAll();
            QTRY_VERIFY(controller.documents().isEmpty());
            QCOMPARE(folder.read(u"p/post.zalmo"_qs).contains("Kept"), !isDeleted);
        }
    }

    void letsNoTwoWriteToOnePlace()
    {
        for (const bool isChanged : {true, false}) { // the other one, whose place it is
            const PostFolder folder;
            FileText text;
            text.fileInfo = "<status></status><app_version>3</app_version>";
            ZLDocumentController controller;
            const QUrl place = folder.write(text.bytes(), u"p12/post.zalmo"_qs);
            const DocumentPtr other = openedBy(controller, place);
            text.title = "Mine";
            const DocumentPtr mine = openedBy(controller, folder.write(text.bytes(), u"pq7Tz0kLm/post.zalmo"_qs));
            if (isChanged) {
                other->post.title = u"Typed"_qs;
                other->fileInfo.status = u"modified"_qs;
                other->updateChangeCount();
            }
            QVERIFY(controller.move(mine, place));
            QCOMPARE(other->post.title, isChanged ? u"Typed"_qs : u"Mine"_qs);
            other->updateChangeCount();
            controller.saveAll();
            QCOMPARE(folder.read(u"p12/post.zalmo"_qs), text.bytes());
            QCOMPARE(folder.read(u"p12/conflict-solved.zalmo"_qs).contains("Typed"), isChanged);
        }
    }

    void readsAReplacedFileAnew()
    {
        const PostFolder folder;
        FileText text;
        const QUrl url = folder.write(text.bytes());
        ZLDocumentController controller;
        const DocumentPtr document = openedBy(controller, url);
        text.title = "Another";
        folder.write(text.bytes());
        QCOMPARE(openedBy(controller, url), document);
        QCOMPARE(document->post.title, u"Another"_qs);

        document->post.title = u"Unsaved"_qs;
        document->updateChangeCount();
        text.title = "A third one";
        folder.write(text.bytes());
        QCOMPARE(openedBy(controller, url)->post.title, u"Unsaved"_qs);
    }
};

static const RegisteredTest<TestDocumentController> registered;
#include "TestDocumentController.moc"
