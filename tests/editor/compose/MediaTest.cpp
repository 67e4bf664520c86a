#include "ComposeFixture.h"
#include "support/TestClasses.h"

class MediaTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void insertsACopy_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("fullImageAsLink");
        QTest::addColumn<bool>("links");
        QTest::newRow("jpg") << "it's a picture.jpg" << true << true;
        QTest::newRow("without a link") << "a.PNG" << false << false;
        QTest::newRow("gif") << "a.gif" << false << true;
    }

    void insertsACopy()
    {
        QFETCH(QString, name);
        QFETCH(bool, fullImageAsLink);
        ComposeFixture screen;
        QVERIFY(screen.loadNew(ZLWordpressPost::Draft));
        screen.host.account->preferences->full_image_as_default = fullImageAsLink;
        QFile original(screen.host.folder.filePath(name));
        QVERIFY(original.open(QIODevice::WriteOnly) && original.write("picture") == 7);
        original.close();
        screen.view.media = QUrl::fromLocalFile(original.fileName());
        screen.page.body = QString("<p>Text</p><p><img></p>");
        screen.controller->insertMedia();
        screen.controller->insertMedia();
        QTRY_COMPARE(screen.page.images.size(), 2);
        const ImageInfo image = screen.page.images.first();
        QVERIFY(image.thumbUrl != screen.page.images.last().thumbUrl);
        QVERIFY(image.thumbUrl.toString().startsWith("file://localhost/" + screen.host.files.cacheFolder().mid(1)));
        QCOMPARE(QFileInfo(image.thumbUrl.path()).suffix(), QFileInfo(name).suffix());
        QTEST(image.linkTo == image.thumbUrl, "links");
        QFile copy(image.thumbUrl.path());
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), QByteArray("picture"));
        QTRY_COMPARE(screen.controller->currentDocument()->post.content, "<p>Text</p><p><img></p>");
    }

    void leavesThePostAloneWithoutAFile()
    {
        ComposeFixture screen;
        screen.controller->insertMedia(); // the panel was cancelled
        screen.view.media = QUrl::fromLocalFile(screen.host.folder.filePath("gone.png"));
        screen.controller->insertMedia();
        screen.settle();
        QCOMPARE(screen.prompts.journal, QStringList("alert: The picture could not be added."));
        QVERIFY(screen.page.images.isEmpty());
        QVERIFY(screen.host.rows.isEmpty());
    }
};

static const RegisteredTest<MediaTest> registered;

#include "MediaTest.moc"
