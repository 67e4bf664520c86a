#include "support/TestClasses.h"
#include "support/TestEnvironment.h"
#include "wordpress/MediaUpload.h"
#include "wordpress/ServiceFixture.h"
#include "wordpress/TestPictures.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;
using TestPictures::Facts;

/// Pictures are written anew on their way to the blog.
class MediaTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void writesPicturesAnew_data();
    void writesPicturesAnew();
    void sendsAGifAsItIs();
    void refusesWhatIsNoPicture_data();
    void refusesWhatIsNoPicture();
    void uploadsAPictureFromMemory();
};

void MediaTest::writesPicturesAnew_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("loader");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("PNG") << u"a.png"_s << TestPictures::png(4, 3) << QByteArray("pngload_buffer") << 4 << 3;
    QTest::newRow("JPEG") << u"a.jpeg"_s << TestPictures::jpeg(4, 3) << QByteArray("jpegload_buffer") << 4 << 3;
    QTest::newRow("on its side") << u"a.JPG"_s << TestPictures::jpeg(4, 3, 6) << QByteArray("jpegload_buffer") << 3
                                 << 4;
    QTest::newRow("the name decides") << u"a.png"_s << TestPictures::jpeg(4, 3) << QByteArray("pngload_buffer") << 4
                                      << 3;
    QTest::newRow("options in the name") << u"a[shrink=2].jpg"_s << TestPictures::jpeg(4, 4)
                                         << QByteArray("jpegload_buffer") << 4 << 4;
    QTest::newRow("one pixel") << u"a.png"_s << TestPictures::png(1, 1) << QByteArray("pngload_buffer") << 1 << 1;
}

void MediaTest::writesPicturesAnew()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, loader);
    QFETCH(int, width);
    QFETCH(int, height);
    TestEnvironment environment;
    environment.addCachedFile(name, bytes);
    const auto sent = MediaUpload::encodedFile(environment.files.cacheFolder() + u'/' + name);
    QVERIFY(sent);
    QVERIFY(TestPictures::facts(*sent) == (Facts{loader, width, height, false}));
    QVERIFY(TestPictures::facts(TestPictures::jpeg(4, 3)).hasCameraData); // so that its absence says something
}

void MediaTest::sendsAGifAsItIs()
{
    TestEnvironment environment;
    environment.addCachedFile(u"a.GIF"_s, TestPictures::gif());
    const auto sent = MediaUpload::encodedFile(environment.files.cacheFolder() + u"/a.GIF"_s);
    QVERIFY(sent);
    QCOMPARE(*sent, TestPictures::gif());
}

void MediaTest::refusesWhatIsNoPicture_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("root:x:0:0");
    QTest::newRow("cut off") << TestPictures::png(40, 30).left(30);
    QTest::newRow("a drawing that could load files") << QByteArray(
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><image href='file:///etc/passwd'/></svg>");
}

void MediaTest::refusesWhatIsNoPicture()
{
    QFETCH(QByteArray, bytes);
    TestEnvironment environment;
    environment.addCachedFile(u"a.png"_s, bytes);
    QVERIFY(!MediaUpload::encodedFile(environment.files.cacheFolder() + u"/a.png"_s));
}

void MediaTest::uploadsAPictureFromMemory()
{
    ServiceFixture f;
    f.service->uploadImage(TestPictures::png(4, 3));
    QTRY_COMPARE(f.blog.media.size(), 1);
    QCOMPARE(f.parameters(f.blog.calls[0]),
        u"[\"\", \"ada\", \"secret\", {\"name\": \"base64img.jpg\", \"type\": \"image/jpeg\", "
        "\"bits\": <%1 bytes>, \"overwrite\": \"0\"}]"_s.arg(f.blog.media[0].bytes.size()));
    QCOMPARE(TestPictures::facts(f.blog.media[0].bytes).loader, QByteArray("jpegload_buffer"));
    QTRY_COMPARE(f.journal(), QStringList{u"uploaded "_s + f.blog.media[0].url});
}

static const RegisteredTest<MediaTest> registered;
#include "MediaTest.moc"
