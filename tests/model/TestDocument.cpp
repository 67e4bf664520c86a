#include "PostFolder.h"

#include "model/PostFile.h"

#include <QElapsedTimer>
#include <QSignalSpy>

static DocumentPtr opened(const QUrl &url)
{
    const Result<DocumentPtr> document = ZLDocument::open(url);
    return document.value_or(nullptr);
}

/// What an open file remembers, and when it is written.
class TestDocument : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void givesBackTheTextsAsStored()
    {
        const PostFolder folder;
        FileText text;
        text.title = " 3 &amp;lt; 5 ";
        text.content = "\n&lt;p&gt;3 &amp;lt; 5&lt;/p&gt;\r\n";
        const DocumentPtr document = opened(folder.write(text.bytes()));
        QCOMPARE(document->post.title, u"3 < 5"_qs);
        QCOMPARE(document->post.content, u"<p>3 < 5</p>"_qs);
        QCOMPARE(document->storedTitle(), u" 3 &lt; 5 "_qs);
        QCOMPARE(document->storedContent(), u"\n<p>3 &lt; 5</p>\r\n"_qs);
        QCOMPARE(document->wordpressPost()->storedContent, document->storedContent());
        QCOMPARE(document->storedTitle(u"3 < 5"_qs), u" 3 &lt; 5 "_qs);
        QCOMPARE(document->storedTitle(u"3 < 6"_qs), u"3 < 6"_qs);

        document->post.content = u"<p>3 < 6</p>"_qs;
        QCOMPARE(document->storedContent(), u"<p>3 < 6</p>"_qs);
        document->post.content = u"<p>3 < 5</p>"_qs;
        QCOMPARE(document->storedContent(), u"\n<p>3 &lt; 5</p>\r\n"_qs);

        text.content.clear();
        const PostPtr empty = opened(folder.write(text.bytes()))->wordpressPost();
        QVERIFY(empty->content.contains(u"<p><br></p>"_qs));
        QVERIFY(empty->storedContent.isEmpty() && !empty->storedContent.isNull());
    }

    void writesEditsAndKeepsTheRest()
    {
        const PostFolder folder;
        FileText text;
        text.title = "A &amp;amp; B";
        text.content = "a\x0B&amp;nbsp;b";
        text.fileInfo = "<status></status><app_version>3</app_version>";
        const DocumentPtr document = opened(folder.write(text.bytes()));
        document->fileInfo.status = u"modified"_qs;
        QVERIFY(document->saveDocument());
        text.fileInfo = "<status>modified</status><app_version>3</app_version>";
        QCOMPARE(folder.read(), text.bytes());
        document->post.title = u"C"_qs;
        QVERIFY(document->saveDocument());
        text.title = "C";
        QCOMPARE(folder.read(), text.bytes());
    }

    void takesARemoteState()
    {
        const PostFolder folder;
        FileText text;
        text.title = "a &amp;lt; b";
        text.fileInfo = "<status>new</status><app_version>3</app_version>";
        text.id = "q7Tz0kLm";
        text.status = "new";
        const DocumentPtr document = opened(folder.write(text.bytes()));
        ZLWordpressPost remote;
        remote.title = u"a < b"_qs; // reads as the old title did, and is not the same
        remote.content = u"<p>editor</p>"_qs;
        remote.storedContent = u"stored"_qs;
        remote.status = ZLWordpressPost::Draft;
        remote.id = u"31"_qs;
        remote.slug = u"other"_qs;
        remote.type = ZLWordpressPost::Page;
        remote.URL = u"http://b/31"_qs;
        document->setRecentlySyncedWordpressPost(remote);
        QVERIFY(document->saveDocument());
        const QByteArray written = folder.read();
        QVERIFY(written.contains("<title>a &lt; b</title><content>stored</content>"));
        QVERIFY(written.contains("<id>31</id><status>draft</status><type>page</type><created_at></created_at>"));
        QVERIFY(written.contains("<URL>http://b/31</URL><allow_comments>1</allow_comments>"));
        QVERIFY(written.contains("<slug>other</slug><featured_image></featured_image>"));
        QVERIFY(written.endsWith("<file_info><status></status><app_version>3</app_version></file_info></zalmo>"));
    }

    void autosavesWhileChangesGoOn()
    {
        const PostFolder folder;
        const DocumentPtr document = opened(folder.write(FileText().bytes()));
        QTimer typing;
        connect(&typing, &QTimer::timeout, document.get(), [&] {
            document->post.title += u"x"_qs;
            document->updateChangeCount();
        });
        typing.start(100);
        QElapsedTimer time;
        time.start();
        QTRY_VERIFY_WITH_TIMEOUT(folder.read().contains("Titlexxxxx"), 8000);
        QVERIFY(time.elapsed() > 1500); // not at each key press
    }

    void savesWhenItIsLeft()
    {
        const PostFolder folder;
        DocumentPtr document = opened(folder.write(FileText().bytes()));
        QSignalSpy closed(document.get(), &ZLDocument::didClose);
        document->post.title = u"Changed"_qs; // which nobody noted
        document->close();
        QVERIFY(folder.read().contains("<title>Changed</title>"));
        QCOMPARE(closed.count(), 1);

        document->post.title = u"Later"_qs;
        document->updateChangeCount();
        QVERIFY(document->hasUnautosavedChanges() && !folder.read().contains("Later"));
        QTRY_VERIFY_WITH_TIMEOUT(folder.read().contains("<title>Later</title>"), 4000);
        QVERIFY(!document->hasUnautosavedChanges());

        document->post.title = u"Last words"_qs;
        document->updateChangeCount();
        document.reset();
        QVERIFY(folder.read().contains("<title>Last words</title>"));
    }

    void keepsTheTextWhenSavingFails()
    {
        const PostFolder folder;
        const QUrl url = folder.write(FileText().bytes(), u"p/post.zalmo"_qs);
        const DocumentPtr document = opened(url);
        QSignalSpy failed(document.get(), &ZLDocument::didFailToSave);
        QVERIFY(QDir().rename(folder.path(u"p"_qs), folder.path(u"q"_qs)));
        document->post.title = u"Kept"_qs;
        document->updateChangeCount();
        const Result<void> saved = document->saveDocument();
        QVERIFY(!saved);
        QVERIFY(saved.error().description.contains(folder.path(u"p/post.zalmo"_qs)));
        QCOMPARE(failed.count(), 1);
        QVERIFY(document->hasUnautosavedChanges());
        QCOMPARE(document->post.title, u"Kept"_qs);

        QVERIFY(QDir().rename(folder.path(u"q"_qs), folder.path(u"p"_qs)));
        document->updateChangeCount();
        QTRY_VERIFY_WITH_TIMEOUT(folder.read(u"p/post.zalmo"_qs).contains("Kept"), 4000);
        QVERIFY(!document->hasUnautosavedChanges());
    }

    void opensDamagedFiles_data()
    {
        const TestTable<QByteArray, QString> row({"bytes", "title"});
        row("empty", {}, u""_qs);
        row("no XML", "a picture \\xFF\\xD8", u""_qs);
        row("cut off in the body", FileText().bytes().left(45), u"Title"_qs);
        row("cut off at the end", FileText().bytes().chopped(1), u"Title"_qs);
    }
    void opensDamagedFiles()
    {
        QFETCH(QByteArray, bytes);
        const PostFolder folder;
        folder.write("an earlier one", u"post.zalmo.damaged"_qs);
        const DocumentPtr document = opened(folder.write(bytes));
        QVERIFY(document && document->isDamaged());
        QTEST(document->post.title, "title");
        document->updateChangeCount();
        QVERIFY(document->saveDocument());
        document->close();
        QCOMPARE(folder.read(), bytes);

        document->post.content = u"written anew"_qs;
        document->updateChangeCount();
        document->close();
        QVERIFY(folder.read().contains("<content>written anew</content>"));
        QCOMPARE(folder.read(u"post.zalmo.damaged-2"_qs), bytes);
        QCOMPARE(folder.read(u"post.zalmo.damaged"_qs), QByteArray("an earlier one"));
        QVERIFY(!document->isDamaged());
        QVERIFY(ZLDocument::open(folder.url(u"none"_qs)).error().description.contains(folder.path(u"none"_qs)));
    }

    void moves_data()
    {
        addColumns<QByteArray, QByteArray, QString>(
            {"there", "copyThere", "kept"}); // what is in the place, what stays of it
        const auto row = [](const char *name, const QByteArray &there, const QByteArray &copy, const QString &kept) {
            QTest::newRow(name) << there << copy << kept;
        };
        FileText text;
        row("nothing there", {}, {}, {});
        row("a file in step", text.bytes(), {}, {});
        row("a damaged file", "<zalmo><post>", {}, u"p12/post.zalmo.damaged"_qs);
        text.fileInfo = "<status>modified</status>";
        row("local changes", text.bytes(), {}, u"p12/conflict-solved.zalmo"_qs);
        row("local changes and a copy", text.bytes(), "copy", u"p12/2-conflict-solved.zalmo"_qs);
    }
    void moves()
    {
        QFETCH(QByteArray, there);
        QFETCH(QByteArray, copyThere);
        QFETCH(QString, kept);
        const PostFolder folder;
        if (!there.isEmpty())
            folder.write(there, u"p12/post.zalmo"_qs);
        if (!copyThere.isEmpty())
            folder.write(copyThere, u"p12/conflict-solved.zalmo"_qs);
        FileText text;
        text.title = "Mine";
        const DocumentPtr document = opened(folder.write(text.bytes(), u"pq7Tz0kLm/post.zalmo"_qs));
        QVERIFY(document->moveToURL(folder.url(u"p12/post.zalmo"_qs)));
        QCOMPARE(document->fileURL(), folder.url(u"p12/post.zalmo"_qs));
        QVERIFY(!folder.has(u"pq7Tz0kLm/post.zalmo"_qs));
        QCOMPARE(folder.read(u"p12/post.zalmo"_qs), text.bytes());
        QCOMPARE(QDir(folder.path(u"p12"_qs)).entryList(QDir::Files).size(),
            1 + (kept.isEmpty() ? 0 : 1) + (copyThere.isEmpty() ? 0 : 1));
        if (kept.endsWith(u"damaged"))
            QCOMPARE(folder.read(kept), there);
        if (kept.endsWith(u"solved.zalmo")) {
            const PostFile copy = PostFile::fromData(folder.read(kept));
            QCOMPARE(copy.title, u"Title"_qs);
            QCOMPARE(copy.fileInfo.status, u"conflict-solved"_qs);
            QCOMPARE(copy.id + copy.URL, QString()); // it leads to no post of the blog
        }
        if (!copyThere.isEmpty())
            QCOMPARE(folder.read(u"p12/conflict-solved.zalmo"_qs), copyThere);
        document->post.title = u"Moved"_qs;
        QVERIFY(document->saveDocument());
        QVERIFY(folder.read(u"p12/post.zalmo"_qs).contains("Moved"));
    }

    void failsToMoveAndStays()
    {
        const PostFolder folder;
        const DocumentPtr document = opened(folder.write(FileText().bytes(), u"p/post.zalmo"_qs));
        folder.write("a file where a folder should be", u"p12"_qs);
        QVERIFY(!document->moveToURL(folder.url(u"p12/post.zalmo"_qs)));
        QCOMPARE(document->fileURL(), folder.url(u"p/post.zalmo"_qs));
        QCOMPARE(folder.read(u"p/post.zalmo"_qs), FileText().bytes());
    }
};

static const RegisteredTest<TestDocument> registered;
#include "TestDocument.moc"
