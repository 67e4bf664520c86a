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
        QCOMPARE(document->storedTitle(u"3 < 5"_qs), u" 3 &lt; 5 "_qs);
        QCOMPARE(document->storedTitle(u"3 < 6"_qs), u"3 < 6"_qs);

        document->post.content = u"<p>3 < 6</p>"_qs;
        QCOMPARE(document->storedContent(), u"<p>3 < 6</p>"_qs);
        document->post.content = u"<p>3 < 5</p>"_qs;
        QCOMPARE(document->storedContent(), u"\n<p>3 &lt; 5</p>\r\n"_qs);
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

    void handsTheStoredBodyToTheEditor()
    {
        const PostFolder folder;
        FileText text;
        text.content = "&lt;p&gt;3 &amp;lt; 5&lt;/p&gt;";
        const PostPtr post = opened(folder.write(text.bytes()))->wordpressPost();
        QCOMPARE(post->storedContent, u"<p>3 &lt; 5</p>"_qs);
        QVERIFY(post->content.contains(u"3 &lt; 5"_qs));

        text.content.clear();
        const PostPtr empty = opened(folder.write(text.bytes()))->wordpressPost();
        QVERIFY(empty->content.contains(u"<p><br></p>"_qs));
        QVERIFY(empty->storedContent.isEmpty() && !empty->storedContent.isNull());
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

    void autosavesAMomentAfterAChange()
    {
        const PostFolder folder;
        const DocumentPtr document = opened(folder.write(FileText().bytes()));
        document->post.title = u"Changed"_qs;
        document->updateChangeCount();
        QVERIFY(document->hasUnautosavedChanges());
        QVERIFY(!folder.read().contains("Changed"));
        QTRY_VERIFY_WITH_TIMEOUT(folder.read().contains("Changed"), 4000);
        QVERIFY(!document->hasUnautosavedChanges());
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

    void savesOnClose_data()
    {
        const TestTable<bool> row({"isNoted"});
        row("noted change", true);
        row("change that nobody noted", false);
    }
    void savesOnClose()
    {
        QFETCH(bool, isNoted);
        const PostFolder folder;
        const DocumentPtr document = opened(folder.write(FileText().bytes()));
        QSignalSpy closed(document.get(), &ZLDocument::didClose);
        document->post.title = u"Changed"_qs;
        if (isNoted)
            document->updateChangeCount();
        document->close();
        QVERIFY(folder.read().contains("<title>Changed</title>"));
        QCOMPARE(closed.count(), 1);
    }

    void savesEditsAfterClose()
    {
        const PostFolder folder;
        const DocumentPtr document = opened(folder.write(FileText().bytes()));
        document->close();
        document->post.title = u"Later"_qs;
        document->updateChangeCount();
        QTRY_VERIFY_WITH_TIMEOUT(folder.read().contains("<title>Later</title>"), 4000);
    }

    void savesWhenLetGo()
    {
        const PostFolder folder;
        DocumentPtr document = opened(folder.write(FileText().bytes()));
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
        row("no XML", "a picture \xFF\xD8", u""_qs);
        row("cut off in the body", FileText().bytes().left(45), u"Title"_qs);
        row("cut off at the end", FileText().bytes().chopped(1), u"Title"_qs);
    }
    void opensDamagedFiles()
    {
        QFETCH(QByteArray, bytes);
        const PostFolder folder;
        {
            const DocumentPtr document = opened(folder.write(bytes));
            QVERIFY(document && document->isDamaged());
            QTEST(document->post.title, "title");
            document->updateChangeCount();
            QVERIFY(document->saveDocument());
            document->close();
        }
        QCOMPARE(folder.read(), bytes);
    }

    void failsToOpenAMissingFile()
    {
        const PostFolder folder;
        const Result<DocumentPtr> document = ZLDocument::open(folder.url());
        QVERIFY(!document);
        QVERIFY(document.error().description.contains(folder.path()));
    }

    void setsADamagedFileAside()
    {
        const PostFolder folder;
        folder.write("an earlier one", u"post.zalmo.damaged"_qs);
        const DocumentPtr document = opened(folder.write("<zalmo><post><title>Ti"));
        document->post.content = u"written anew"_qs;
        document->updateChangeCount();
        document->close();
        QVERIFY(folder.read().contains("<content>written anew</content>"));
        QCOMPARE(folder.read(u"post.zalmo.damaged-2"_qs), QByteArray("<zalmo><post><title>Ti"));
        QCOMPARE(folder.read(u"post.zalmo.damaged"_qs), QByteArray("an earlier one"));
        QVERIFY(!document->isDamaged());
    }

    void moves()
    {
        const PostFolder folder;
        const DocumentPtr document = opened(folder.write(FileText().bytes(), u"pq7Tz0kLm/post.zalmo"_qs));
        QVERIFY(document->moveToURL(folder.url(u"p12/post.zalmo"_qs)));
        QCOMPARE(document->fileURL(), folder.url(u"p12/post.zalmo"_qs));
        QVERIFY(!folder.has(u"pq7Tz0kLm/post.zalmo"_qs));
        document->post.title = u"Moved"_qs;
        QVERIFY(document->saveDocument());
        QVERIFY(folder.read(u"p12/post.zalmo"_qs).contains("Moved"));
    }

    void movesOverAFileInStep()
    {
        const PostFolder folder;
        FileText text;
        folder.write(text.bytes(), u"p12/post.zalmo"_qs);
        text.title = "Mine";
        const DocumentPtr document = opened(folder.write(text.bytes(), u"pq7Tz0kLm/post.zalmo"_qs));
        QVERIFY(document->moveToURL(folder.url(u"p12/post.zalmo"_qs)));
        QCOMPARE(folder.read(u"p12/post.zalmo"_qs), text.bytes());
        QCOMPARE(QDir(folder.path(u"p12"_qs)).entryList(QDir::Files), QStringList{u"post.zalmo"_qs});
    }

    void movesBesideLocalChanges_data()
    {
        const TestTable<bool, QString> row({"hasCopy", "kept"});
        row("no copy yet", false, u"p12/conflict-solved.zalmo"_qs);
        row("a copy", true, u"p12/2-conflict-solved.zalmo"_qs);
    }
    void movesBesideLocalChanges()
    {
        QFETCH(bool, hasCopy);
        QFETCH(QString, kept);
        const PostFolder folder;
        FileText text;
        text.fileInfo = "<status>modified</status>";
        folder.write(text.bytes(), u"p12/post.zalmo"_qs);
        if (hasCopy)
            folder.write("copy", u"p12/conflict-solved.zalmo"_qs);
        text.title = "Mine";
        const DocumentPtr document = opened(folder.write(text.bytes(), u"pq7Tz0kLm/post.zalmo"_qs));
        QVERIFY(document->moveToURL(folder.url(u"p12/post.zalmo"_qs)));
        QCOMPARE(folder.read(u"p12/post.zalmo"_qs), text.bytes());
        const PostFile copy = PostFile::fromData(folder.read(kept));
        QCOMPARE(copy.title, u"Title"_qs);
        QCOMPARE(copy.fileInfo.status, u"conflict-solved"_qs);
        QCOMPARE(copy.id + copy.URL, QString()); // it leads to no post of the blog
        if (hasCopy)
            QCOMPARE(folder.read(u"p12/conflict-solved.zalmo"_qs), QByteArray("copy"));
    }

    void movesBesideADamagedFile()
    {
        const PostFolder folder;
        folder.write("<zalmo><post>", u"p12/post.zalmo"_qs);
        const DocumentPtr document = opened(folder.write(FileText().bytes(), u"pq7Tz0kLm/post.zalmo"_qs));
        QVERIFY(document->moveToURL(folder.url(u"p12/post.zalmo"_qs)));
        QCOMPARE(folder.read(u"p12/post.zalmo.damaged"_qs), QByteArray("<zalmo><post>"));
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
