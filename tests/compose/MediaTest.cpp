#include "ComposeFixture.h"

class MediaTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void insertsACopy()
    {
        for (const auto &[name, fullImageAsLink, links] : {std::tuple(u"it's a picture.jpg"_qs, true, true),
                 {u"a.PNG"_qs, false, false}, {u"a.gif"_qs, false, true}}) {
            ComposeFixture screen(ZLWordpressPost::Draft);
            screen.host.account->preferences->full_image_as_default = fullImageAsLink;
            const QString original = screen.host.folder.filePath(name);
            writeFile(original, "picture");
            screen.view.media = QUrl::fromLocalFile(original);
            screen.page.body = QString("<p>Text</p><p><img></p>");
            screen.controller->insertMedia();
            screen.controller->insertMedia();
            QTRY_COMPARE(screen.page.images.size(), 2);
            const ImageInfo image = screen.page.images.first();
            QVERIFY(image.thumbUrl != screen.page.images.last().thumbUrl);
            QVERIFY(image.thumbUrl.toString().startsWith("file://localhost/" + screen.host.files.cacheFolder().mid(1)));
            QCOMPARE(QFileInfo(image.thumbUrl.path()).suffix(), QFileInfo(name).suffix());
            QCOMPARE(image.linkTo == image.thumbUrl, links);
            QCOMPARE(contentsOf(image.thumbUrl.path()), QByteArray("picture"));
            QTRY_COMPARE(screen.controller->currentDocument()->post.content, "<p>Text</p><p><img></p>");
        }
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
