#include "support/TestClasses.h"
#include "wordpress/ServiceFixture.h"
#include "wordpress/TestPictures.h"

#include <QFile>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

/// The gate: local pictures go up before the content does.
class UploadTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void uploadsAllPicturesAtOnceAndThenTheContent();
    void uploadsThumbnailAndFullSize();
    void uploadsAPictureOnlyOnce();
    void leavesRemotePicturesAlone();
    void turnsCachedCopiesBackWithoutAnUpload_data();
    void turnsCachedCopiesBackWithoutAnUpload();
    void sendsTheFeaturedPicture_data();
    void sendsTheFeaturedPicture();
    void findsTheFileOfAnAddress_data();
    void findsTheFileOfAnAddress();
    void readsNothingOutsideTheCacheFolder_data();
    void readsNothingOutsideTheCacheFolder();
    void leavesForeignLocalAddressesOfABodyAlone();
    void triesAgainAfterAReplyWithoutAddress();
    void sendsTheContentOnce_data();
    void sendsTheContentOnce();
    void waitsAfterAFailureUntilItIsCancelled_data();
    void waitsAfterAFailureUntilItIsCancelled();
    void sendsNoPictureOfAnotherKind();
    void dropsCancelledUploads();
    void leavesTheUploadsOfAnotherPostAlone();
    void forgetsUploadsWithTheBlog();
    void tellsHowFarItHasCome();
};

namespace {
const QString mediaCall = u"metaWeblog.newMediaObject"_s;

QString image(const QString &address)
{
    return u"<p><img src=\"%1\" /></p>"_s.arg(address);
}

struct UploadFixture : ServiceFixture {
    QString cached(const QString &name) { return environment.addCachedFile(name, TestPictures::png(2, 3)); }
    void publish(const PostPtr &post, int kind = ZLWordpressService::NewPost)
    {
        service->syncCategoriesAndPublishPost(post, kind);
        settle();
    }
    QString contentOnBlog() const { return blog.posts.isEmpty() ? QString() : blog.posts.last().content; }
    bool hasFailed() const { return !delegate.journal.filter(u"failed"_s).isEmpty(); }
};
} // namespace

void UploadTest::uploadsAllPicturesAtOnceAndThenTheContent()
{
    UploadFixture f;
    f.blog.answerLate(mediaCall);
    f.blog.answerLate(mediaCall);
    const QString one = f.cached(u"one.png"_s);
    const QString two = f.environment.addCachedFile(u"two.JPG"_s, TestPictures::jpeg(3, 2));
    const PostPtr post = f.post(u"T"_s, image(one) + image(two));
    f.publish(post);
    QCOMPARE(f.blog.methods(), (QStringList{mediaCall, mediaCall}));
    QCOMPARE(f.environment.network.heldCount(), 2);
    QCOMPARE(post->content, image(one) + image(two));

    f.environment.network.release();
    QTRY_VERIFY(f.journal().contains(u"note: published T"_s));
    QCOMPARE(f.blog.methods(), (QStringList{mediaCall, mediaCall, u"wp.newPost"_s, u"wp.getPost"_s}));
    QCOMPARE(f.blog.media.size(), 2);
    QStringList sent;
    for (const FakeBlog::Media &media : std::as_const(f.blog.media))
        sent.append(media.name + u' ' + media.type);
    sent.sort();
    QCOMPARE(sent, (QStringList{u"one.png image/png"_s, u"two.JPG image/jpeg"_s}));
    QVERIFY(!f.contentOnBlog().contains(u"file:"));
    for (const FakeBlog::Media &media : std::as_const(f.blog.media))
        QVERIFY(f.contentOnBlog().contains(media.url));
    QCOMPARE(post->content, f.contentOnBlog());
}

void UploadTest::uploadsThumbnailAndFullSize()
{
    UploadFixture f;
    const QString thumb = f.cached(u"x_thumb.png"_s);
    const QString full = f.cached(u"x_full.png"_s);
    f.cached(u"y_full.png"_s);
    const QString alone = f.cached(u"y_thumb.png"_s); // its full size is not in the body
    f.publish(f.post(u"T"_s, u"<a href=\"%1\">%2</a>"_s.arg(full, image(thumb)) + image(alone)));
    QCOMPARE(f.blog.media.size(), 3);
    QVERIFY(!f.contentOnBlog().contains(u"file:"));
}

void UploadTest::uploadsAPictureOnlyOnce()
{
    UploadFixture f;
    const QString one = f.cached(u"one.png"_s);
    f.publish(f.post(u"T"_s, image(one) + image(one)));
    QCOMPARE(f.blog.count(mediaCall), 1);
    f.publish(f.post(u"U"_s, image(one)));
    QCOMPARE(f.blog.count(mediaCall), 1);
    QCOMPARE(f.contentOnBlog(), image(f.blog.media[0].url));
}

void UploadTest::leavesRemotePicturesAlone()
{
    UploadFixture f;
    const QString body = image(u"http://x.test/a.png"_s) + image(u"https://x.test/b.png"_s) + image(u"c.png"_s);
    f.publish(f.post(u"T"_s, body));
    QCOMPARE(f.blog.count(mediaCall), 0);
    QCOMPARE(f.contentOnBlog(), body);
}

void UploadTest::turnsCachedCopiesBackWithoutAnUpload_data()
{
    QTest::addColumn<QString>("stored");
    QTest::newRow("picture") << image(u"http://x.test/up/a.png"_s);
    QTest::newRow("in another attribute")
        << u"<img src=\"http://x.test/up/a.png\" srcset=\"http://x.test/up/a.png 2x\" />"_s;
    QTest::newRow("in the text") << u"<a href='http://x.test/up/a.png'>http://x.test/up/a.png</a>"_s;
    QTest::newRow("the same name elsewhere") << image(u"http://x.test/a.png"_s) + image(u"http://y.test/a.png"_s);
}

void UploadTest::turnsCachedCopiesBackWithoutAnUpload()
{
    QFETCH(QString, stored);
    UploadFixture f;
    const QString local = f.cached(u"a.png"_s);
    QHash<QString, QString> images;
    const QString shown = ContentConversion::postContentWithLocalImagesURL(stored, f.environment.files, images);
    QVERIFY(shown.contains(local));
    f.service->postContentForZalmoEditor(stored);
    f.publish(f.post(u"T"_s, shown + u"<p>more</p>"_s));
    QCOMPARE(f.blog.count(mediaCall), 0);
    QCOMPARE(f.contentOnBlog(), stored + u"<p>more</p>"_s);
}

void UploadTest::sendsTheFeaturedPicture_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("address"); // %1: a cached file
    QTest::addColumn<int>("uploads");
    QTest::addColumn<QString>("thumbnail"); // %1: the number of the upload
    QTest::newRow("none") << QString() << QString() << 0 << u"0"_s;
    QTest::newRow("by number") << u"77"_s << u"%1"_s << 0 << u"77"_s;
    QTest::newRow("local") << QString() << u"%1"_s << 1 << u"%1"_s;
    QTest::newRow("remote and unknown") << QString() << u"http://x.test/a.png"_s << 0 << u""_s;
}

void UploadTest::sendsTheFeaturedPicture()
{
    QFETCH(QString, id);
    QFETCH(QString, address);
    QFETCH(QString, thumbnail);
    UploadFixture f;
    const QString local = f.cached(u"best one.png"_s);
    const PostPtr post = f.post(u"T"_s, u"text"_s);
    post->featuredImageId = id;
    post->featuredImageURL = QUrl(address.contains(u"%1") ? address.arg(local) : address);
    if (id.isEmpty() && address.contains(u"%1")) // the same picture, as a body names it, goes up only once
        post->content = image(QString(local).replace(u' ', u"%20"_s));
    f.publish(post);
    QTEST(f.blog.count(mediaCall), "uploads");
    const QString uploaded = f.blog.media.isEmpty() ? QString() : f.blog.media[0].id;
    QCOMPARE(f.blog.last(u"wp.newPost"_s).parameters[3][u"post_thumbnail"].string(),
        thumbnail.contains(u"%1") ? thumbnail.arg(uploaded) : thumbnail);
}

void UploadTest::findsTheFileOfAnAddress_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("address"); // %1: the cache folder
    const QString localhost = u"file://localhost%1/"_s;
    QTest::newRow("plain") << u"a.png"_s << localhost + u"a.png"_s;
    QTest::newRow("no host") << u"a.png"_s << u"file://%1/a.png"_s;
    QTest::newRow("blank as it is") << u"my photo.png"_s << localhost + u"my photo.png"_s;
    QTest::newRow("blank encoded") << u"my photo.png"_s << localhost + u"my%20photo.png"_s;
    QTest::newRow("apostrophe") << u"it's.png"_s << localhost + u"it%27s.png"_s;
    QTest::newRow("ampersand of HTML") << u"a&b.png"_s << localhost + u"a&amp;b.png"_s;
    QTest::newRow("Unicode") << u"größe 🫖.png"_s << localhost + u"größe 🫖.png"_s;
    QTest::newRow("Unicode encoded") << u"größe.png"_s << localhost + u"gr%C3%B6%C3%9Fe.png"_s;
    QTest::newRow("a real per cent sign") << u"100%.png"_s << localhost + u"100%.png"_s;
    QTest::newRow("a name that looks encoded") << u"a%20b.png"_s << localhost + u"a%20b.png"_s;
    QTest::newRow("hash encoded") << u"no#1.png"_s << localhost + u"no%231.png"_s;
}

void UploadTest::findsTheFileOfAnAddress()
{
    QFETCH(QString, file);
    QFETCH(QString, address);
    UploadFixture f;
    f.cached(file);
    f.publish(f.post(u"T"_s, image(QString(address).replace(u"%1"_s, f.environment.files.cacheFolder()))));
    QCOMPARE(f.blog.media.size(), 1);
    QCOMPARE(f.contentOnBlog(), image(f.blog.media[0].url));
}

void UploadTest::readsNothingOutsideTheCacheFolder_data()
{
    QTest::addColumn<QString>("address"); // %1: a file outside, %2: the cache folder
    QTest::newRow("elsewhere") << u"file://%1"_s;
    QTest::newRow("on localhost") << u"file://localhost%1"_s;
    QTest::newRow("up and down") << u"file://localhost%2/../../private.png"_s;
    QTest::newRow("encoded up and down") << u"file://localhost%2/%2e%2e/%2e%2e/private.png"_s;
    QTest::newRow("by a link") << u"file://localhost%2/link.png"_s;
    QTest::newRow("missing") << u"file://localhost%2/missing.png"_s;
    QTest::newRow("a folder") << u"file://localhost%2/folder.png"_s;
}

void UploadTest::readsNothingOutsideTheCacheFolder()
{
    QFETCH(QString, address);
    UploadFixture f;
    const QString outside = f.environment.folder.filePath(u"private.png"_s);
    QFile file(outside);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(TestPictures::png(1, 1)) > 0);
    file.close();
    const QString cache = f.environment.files.cacheFolder();
    QVERIFY(QFile::link(outside, cache + u"/link.png"_s));
    QVERIFY(QDir(cache).mkdir(u"folder.png"_s));
    address.replace(u"%1"_s, outside).replace(QRegularExpression(u"%2(?![e0-9])"_s), cache);
    const PostPtr post = f.post(u"T"_s, image(address));
    f.publish(post);
    QCOMPARE(f.blog.count(mediaCall), 1);
    QVERIFY(f.blog.calls[0].parameters[3][u"bits"].isAbsent());
    QVERIFY(f.blog.media.isEmpty());
    QVERIFY(f.hasFailed());
    QCOMPARE(f.blog.count(u"wp.newPost"_s), 0);
    QCOMPARE(post->content, image(address));
}

void UploadTest::leavesForeignLocalAddressesOfABodyAlone()
{
    UploadFixture f;
    const PostPtr post = f.post(u"T"_s, image(u"file:///C:/Users/ada/word.png"_s));
    post->storedContent = post->content;
    f.publish(post);
    QCOMPARE(f.blog.count(mediaCall), 0);
    QCOMPARE(f.contentOnBlog(), post->storedContent);
}

void UploadTest::triesAgainAfterAReplyWithoutAddress()
{
    UploadFixture f;
    f.blog.answerWith(mediaCall, XMLRPCStruct{{u"id"_s, u"5"_s}});
    f.blog.answerWithBytes(mediaCall, "Warning: disk\n<?xml");
    f.publish(f.post(u"T"_s, image(f.cached(u"a.png"_s))));
    QCOMPARE(f.blog.count(mediaCall), 3);
    QCOMPARE(f.contentOnBlog(), image(f.blog.media[0].url));

    // But not for ever.
    for (int reply = 0; reply < 3; ++reply)
        f.blog.answerWith(mediaCall, XMLRPCStruct{});
    f.publish(f.post(u"U"_s, image(f.cached(u"b.png"_s))));
    QCOMPARE(f.blog.count(mediaCall), 6);
    QCOMPARE(f.journal().filter(u"failed"_s), (QStringList{u"upload failed: U"_s, u"request 9 failed: ZLUpload 3"_s}));
}

void UploadTest::sendsTheContentOnce_data()
{
    QTest::addColumn<bool>("isCleaned");
    QTest::newRow("the blog's data is cleaned meanwhile") << true;
    QTest::newRow("the body loses a picture meanwhile") << false;
}

void UploadTest::sendsTheContentOnce()
{
    QFETCH(bool, isCleaned);
    UploadFixture f;
    f.blog.answerLate(mediaCall);
    f.blog.answerLate(mediaCall);
    const QString one = image(f.cached(u"one.png"_s));
    const PostPtr post = f.post(u"T"_s, one + image(f.cached(u"two.png"_s)));
    f.publish(post);
    if (isCleaned) {
        f.service->cleanData();
    } else {
        post->content = u"no picture"_s;
        f.publish(post);
    }
    f.environment.network.release();
    f.settle();
    QCOMPARE(f.blog.count(u"wp.newPost"_s), 1);
    QCOMPARE(f.blog.count(mediaCall), 2);
}

void UploadTest::waitsAfterAFailureUntilItIsCancelled_data()
{
    QTest::addColumn<QString>("failure");
    QTest::addColumn<std::function<void(FakeBlog &)>>("spoil");
    using Spoil = std::function<void(FakeBlog &)>;
    QTest::newRow("fault") << u"request 9 failed: Response error 500"_s
                           << Spoil([](FakeBlog &b) { b.answerWithFault(mediaCall, 500, u"full"_s); });
    QTest::newRow("status") << u"request 9 failed: HTTP 413"_s
                            << Spoil([](FakeBlog &b) { b.answerWithStatus(mediaCall, 413); });
    QTest::newRow("reset") << u"request 9 failed: NSURLErrorDomain -1005"_s << Spoil([](FakeBlog &b) {
        b.breakConnection(mediaCall, QNetworkReply::RemoteHostClosedError);
    });
}

void UploadTest::waitsAfterAFailureUntilItIsCancelled()
{
    QFETCH(QString, failure);
    QFETCH(std::function<void(FakeBlog &)>, spoil);
    UploadFixture f;
    spoil(f.blog);
    const PostPtr post = f.post(u"T"_s, image(f.cached(u"a.png"_s)));
    f.publish(post);
    QCOMPARE(f.journal().filter(u"failed"_s), (QStringList{u"upload failed: T"_s, failure}));
    f.publish(post); // the mark of the failed upload is still there
    QCOMPARE(f.blog.calls.size(), 1);
    f.service->cancelUploadOfPost(post);
    f.publish(post);
    QCOMPARE(f.contentOnBlog(), image(f.blog.media[0].url));
}

void UploadTest::sendsNoPictureOfAnotherKind()
{
    UploadFixture f;
    const PostPtr post = f.post(u"T"_s, image(f.environment.addCachedFile(u"picture.tiff"_s, "II*")));
    f.publish(post);
    QCOMPARE(f.blog.calls.size(), 0);
    f.service->cancelUploadOfPost(post);
    post->content = u"no picture"_s;
    f.publish(post);
    QCOMPARE(f.contentOnBlog(), u"no picture"_s);
}

void UploadTest::dropsCancelledUploads()
{
    UploadFixture f;
    f.blog.answerLate(mediaCall);
    const QString one = f.cached(u"one.png"_s);
    const PostPtr post = f.post(u"T"_s, image(one));
    f.publish(post);
    f.service->cancelUploadOfPost(post);
    f.environment.network.release();
    f.settle();
    QCOMPARE(f.blog.methods(), QStringList{mediaCall});
    // Cancelled while the picture is still on its worker: nothing goes out.
    f.service->syncCategoriesAndPublishPost(post, ZLWordpressService::NewPost);
    f.service->cancelUploadOfPost(post);
    f.settle();
    QCOMPARE(f.blog.methods(), QStringList{mediaCall});
    f.publish(post);
    QCOMPARE(f.contentOnBlog(), image(f.blog.media.last().url));
}

void UploadTest::leavesTheUploadsOfAnotherPostAlone()
{
    UploadFixture f;
    f.blog.answerLate(mediaCall);
    const QString shared = f.cached(u"shared.png"_s);
    const PostPtr first = f.post(u"First"_s, image(shared));
    const PostPtr second = f.post(u"Second"_s, image(shared));
    f.publish(first);
    f.publish(second); // waits for the upload of the first
    f.service->cancelUploadOfPost(second);
    f.publish(second);
    QCOMPARE(f.blog.count(mediaCall), 1);
    f.environment.network.release();
    QTRY_VERIFY(f.journal().contains(u"note: published First"_s));
    f.publish(second);
    QCOMPARE(f.blog.posts.size(), 2);
    QCOMPARE(f.blog.count(mediaCall), 1);
}

void UploadTest::forgetsUploadsWithTheBlog()
{
    UploadFixture f;
    const QString one = f.cached(u"one.png"_s);
    f.publish(f.post(u"T"_s, image(one)));
    f.service->cleanData();
    f.publish(f.post(u"U"_s, image(one)));
    QCOMPARE(f.blog.count(mediaCall), 2);
}

void UploadTest::tellsHowFarItHasCome()
{
    UploadFixture f;
    f.blog.answerLate(mediaCall);
    f.publish(f.post(u"T"_s, image(f.cached(u"one.png"_s)) + image(f.cached(u"two.png"_s))));
    QCOMPARE(f.delegate.progress, QList<float>{0.5F});
    f.environment.network.release();
    QTRY_VERIFY(f.journal().contains(u"note: published T"_s));
    QCOMPARE(f.delegate.progress, (QList<float>{0.5F, 1.0F, 1.0F}));
}

static const RegisteredTest<UploadTest> registered;
#include "UploadTest.moc"
