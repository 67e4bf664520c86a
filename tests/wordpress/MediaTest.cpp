#include "support/TestClasses.h"
#include "support/TestEnvironment.h"
#include "wordpress/MediaUpload.h"
#include "wordpress/TestPictures.h"

/// Pictures are written anew on their way to the blog.
class MediaTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void writesPicturesAnew_data()
    {
        const TestTable<QString, QByteArray, QString> row({"name", "bytes", "facts"});
        row("PNG", u"a.png"_qs, TestPictures::png(4, 3), u"png 4x3"_qs);
        row("JPEG", u"a.jpeg"_qs, TestPictures::jpeg(4, 3), u"jpeg 4x3"_qs);
        row("on its side", u"a.JPG"_qs, TestPictures::jpeg(4, 3, 6), u"jpeg 3x4"_qs);
        row("the name decides", u"a.png"_qs, TestPictures::jpeg(4, 3), u"png 4x3"_qs);
        row("options in the name", u"a[shrink=2].jpg"_qs, TestPictures::jpeg(4, 4), u"jpeg 4x4"_qs);
        row("one pixel", u"a.png"_qs, TestPictures::png(1, 1), u"png 1x1"_qs);
    }

    void writesPicturesAnew()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        TestEnvironment environment;
        environment.addCachedFile(name, bytes);
        const auto sent = MediaUpload::encodedFile(environment.files.cacheFolder() + u'/' + name);
        QVERIFY(sent);
        QTEST(TestPictures::facts(*sent), "facts");
        // so that the absence of the camera's data says something
        QCOMPARE(TestPictures::facts(TestPictures::jpeg(4, 3)), u"jpeg 4x3 with camera data"_qs);
    }

    void sendsAGifAsItIs()
    {
        TestEnvironment environment;
        environment.addCachedFile(u"a.GIF"_qs, TestPictures::gif());
        const auto sent = MediaUpload::encodedFile(environment.files.cacheFolder() + u"/a.GIF"_qs);
        QVERIFY(sent && *sent == TestPictures::gif());
    }

    void refusesWhatIsNoPicture()
    {
        TestEnvironment environment;
        const QByteArray drawingThatLoads = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><image "
                                            "href='file:///etc/passwd'/></svg>";
        for (const QByteArray &bytes :
            {QByteArray(), QByteArray("root:x:0:0"), TestPictures::png(40, 30).left(30), drawingThatLoads}) {
            environment.addCachedFile(u"a.png"_qs, bytes);
            QVERIFY2(!MediaUpload::encodedFile(environment.files.cacheFolder() + u"/a.png"_qs), bytes);
        }
    }
};

static const RegisteredTest<MediaTest> registered;
#include "MediaTest.moc"
