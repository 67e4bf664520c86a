#include "ConnectedBlog.h"
#include "platform/ZLAtomicFile.h"

#include <QCoroTask>

class DeletionTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void deletes()
    {
        ConnectedBlog fixture;
        const QString id = fixture.blog.addPost(u"Old"_qs, u"<p>text</p>"_qs).id;
        fixture.start();
        const LocalPostPtr row = fixture.rowTitled(u"Old"_qs);
        const PostPtr post = fixture.postOf(row);
        const DocumentPtr open =
            QCoro::waitFor(fixture.app().documentController().openDocumentWithContentsOfURL(row->localFile)).value();
        fixture.service()->deletePost(post);
        fixture.app().posts().loadLocalPosts(); // other rows stand for the files now
        QTRY_COMPARE(fixture.list.deleted, QList<LocalPostPtr>{row});
        QCOMPARE(fixture.rows().size(), 0);
        QCOMPARE(fixture.postFiles(u"Blog"_qs), QStringList());
        QVERIFY(QDir(fixture.postsFolder(u"Blog"_qs) + u"/p"_qs + id).exists());
    }

    void offersToDeleteTheCopyOfAPostThatIsGone_data()
    {
        QTest::addColumn<int>("fault"); // 0: the whole page is missing
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<int>("questions");
        QTest::addColumn<bool>("isDeleted");
        QTest::newRow("delete") << 404 << QList<int>{0} << 1 << true;
        QTest::newRow("return keeps it") << 404 << QList<int>{} << 1 << false;
        QTest::newRow("refused") << 401 << QList<int>{0} << 0 << false;
        QTest::newRow("no blog there") << 0 << QList<int>{0} << 0 << false;
    }

    void offersToDeleteTheCopyOfAPostThatIsGone()
    {
        QFETCH(int, fault);
        ConnectedBlog fixture;
        fixture.blog.addPost(u"Old"_qs, u"<p>text</p>"_qs);
        fixture.start();
        if (fault)
            fixture.blog.answerWithFault(u"wp.deletePost"_qs, fault, u"refused"_qs);
        else
            fixture.blog.answerWithStatus(u"wp.deletePost"_qs, 404);
        QFETCH(QList<int>, answers);
        fixture.prompts.answers = answers;
        fixture.service()->deletePost(fixture.postOf(fixture.rowTitled(u"Old"_qs)));
        QTRY_COMPARE(fixture.prompts.journal.size(), 1);
        QTEST(int(fixture.prompts.journal.filter(u"ask: Delete the copy"_qs).size()), "questions");
        QTEST(fixture.postFiles(u"Blog"_qs).isEmpty(), "isDeleted");
    }

    void deletesWithoutSavingFirst()
    {
        ConnectedBlog fixture;
        fixture.blog.addPost(u"Old"_qs, u"<p>text</p>"_qs);
        fixture.start();
        const QUrl file = fixture.rowTitled(u"Old"_qs)->localFile;
        QVERIFY(ZLAtomicFile::write(file.toLocalFile(), "damaged"));
        const DocumentPtr open =
            QCoro::waitFor(fixture.app().documentController().openDocumentWithContentsOfURL(file)).value();
        open->post.content = u"<p>typed</p>"_qs;
        open->updateChangeCount();
        fixture.app().posts().deletePostAtLocalURL(file);
        QCOMPARE(fixture.postFiles(u"Blog"_qs), QStringList()); // not even a copy of the damaged one

        QVERIFY(QDir().mkpath(file.toLocalFile() + u"/in the way"_qs));
        fixture.prompts.takeJournal();
        fixture.app().posts().deletePostAtLocalURL(file);
        QCOMPARE(fixture.prompts.journal, QStringList{u"alert: The post could not be deleted from this computer."_qs});
    }
};

static const RegisteredTest<DeletionTest> registered;

#include "DeletionTest.moc"
