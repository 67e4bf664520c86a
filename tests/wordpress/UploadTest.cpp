#include "support/Files.h"
#include "wordpress/ServiceFixture.h"
#include "wordpress/TestPictures.h"

namespace {
const QString mediaCall = u"metaWeblog.newMediaObject"_qs;

QString image(const QString &address)
{
    return u"<p><img src=\"%1\" /></p>"_qs.arg(address);
}

struct UploadFixture : ServiceFixture {
    QString cached(const QString &name) { return environment.addCachedFile(name, TestPictures::png(2, 3)); }
    void publish(const PostPtr &post, Upload::Kind kind = Upload::NewPost)
    {
        service->syncCategoriesAndPublishPost(post, kind);
        settle();
    }
    QString contentOnBlog() const { return blog.posts.isEmpty() ? QString() : blog.posts.last().content; }
};
} // namespace

/// The gate: local pictures go up before the content does.
class UploadTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void uploadsAllPicturesAtOnceAndThenTheContent()
    {
        UploadFixture f;
        f.blog.answerLate(mediaCall);
        f.blog.answerLate(mediaCall);
        const QString one = f.cached(u"one.png"_qs);
        const QString two = f.environment.addCachedFile(u"two.JPG"_qs, TestPictures::jpeg(3, 2));
        const PostPtr post = f.post(u"T"_qs, image(one) + image(two));
        f.publish(post);
        QCOMPARE(f.blog.methods(), (QStringList{mediaCall, mediaCall}));
        QCOMPARE(f.environment.network.heldCount(), 2);
        QCOMPARE(post->content, image(one) + image(two));

        f.environment.network.release();
        QTRY_VERIFY(f.journal().contains(u"note: published T"_qs));
        QCOMPARE(f.blog.methods(), (QStringList{mediaCall, mediaCall, u"wp.newPost"_qs, u"wp.getPost"_qs}));
        QCOMPARE(f.blog.media.size(), 2);
        QStringList sent;
        for (const FakeBlog::Media &media : std::as_const(f.blog.media))
            sent.append(media.name + u' ' + media.type);
        sent.sort();
        QCOMPARE(sent, (QStringList{u"one.png image/png"_qs, u"two.JPG image/jpeg"_qs}));
        QVERIFY(!f.contentOnBlog().contains(u"file:"));
        for (const FakeBlog::Media &media : std::as_const(f.blog.media))
            QVERIFY(f.contentOnBlog().contains(media.url));
        QCOMPARE(post->content, f.contentOnBlog());
    }

    void uploadsThumbnailAndFullSize()
    {
        UploadFixture f;
        const QString thumb = f.cached(u"x_thumb.png"_qs);
        const QString full = f.cached(u"x_full.png"_qs);
        f.cached(u"y_full.png"_qs);
        const QString alone = f.cached(u"y_thumb.png"_qs); // its full size is not in the body
        f.publish(f.post(u"T"_qs, u"<a href=\"%1\">%2</a>"_qs.arg(full, image(thumb)) + image(alone)));
        QCOMPARE(f.blog.media.size(), 3);
        QVERIFY(!f.contentOnBlog().contains(u"file:"));
    }

    void uploadsAPictureOnlyOnce()
    {
        UploadFixture f;
        const QString one = f.cached(u"one.png"_qs);
        f.publish(f.post(u"T"_qs, image(one) + image(one)));
        QCOMPARE(f.blog.count(mediaCall), 1);
        f.publish(f.post(u"U"_qs, image(one)));
        QCOMPARE(f.blog.count(mediaCall), 1);
        QCOMPARE(f.contentOnBlog(), image(f.blog.media[0].url));
    }

    void leavesOtherPicturesAlone()
    {
        UploadFixture f;
        const QString remote =
            image(u"http://x.test/a.png"_qs) + image(u"https://x.test/b.png"_qs) + image(u"c.png"_qs);
        f.publish(f.post(u"T"_qs, remote));
        QCOMPARE(f.contentOnBlog(), remote);
        const PostPtr foreign = f.post(u"U"_qs, image(u"file:///C:/Users/ada/word.png"_qs));
        foreign->storedContent = foreign->content; // so it came from the blog
        f.publish(foreign);
        QCOMPARE(f.contentOnBlog(), foreign->storedContent);
        QCOMPARE(f.blog.count(mediaCall), 0);
    }

    void turnsCachedCopiesBackWithoutAnUpload()
    {
        for (const QString &stored : {image(u"http://x.test/up/a.png"_qs),
                 u"<img src=\"http://x.test/up/a.png\" srcset=\"http://x.test/up/a.png 2x\" />"_qs,
                 u"<a href='http://x.test/up/a.png'>http://x.test/up/a.png</a>"_qs,
                 image(u"http://x.test/a.png"_qs) + image(u"http://y.test/a.png"_qs)}) {
            UploadFixture f;
            const QString local = f.cached(u"a.png"_qs);
            QHash<QString, QString> images;
            const QString shown = ContentConversion::postContentWithLocalImagesURL(stored, f.environment.files, images);
            QVERIFY(shown.contains(local));
            f.service->postContentForZalmoEditor(stored);
            f.publish(f.post(u"T"_qs, shown + u"<p>more</p>"_qs));
            QCOMPARE(f.blog.count(mediaCall), 0);
            QCOMPARE(f.contentOnBlog(), stored + u"<p>more</p>"_qs);
        }
    }

    void sendsTheFeaturedPicture_data()
    {
        // %1: a cached file, and the number of its upload
        const TestTable<QString, QString, int, QString> row({"id", "address", "uploads", "thumbnail"});
        row("none", {}, {}, 0, u"0"_qs);
        row("by number", u"77"_qs, u"%1"_qs, 0, u"77"_qs);
        row("local", {}, u"%1"_qs, 1, u"%1"_qs);
        row("remote and unknown", {}, u"http://x.test/a.png"_qs, 0, u""_qs);
    }
    void sendsTheFeaturedPicture()
    {
        QFETCH(QString, id);
        QFETCH(QString, address);
        QFETCH(QString, thumbnail);
        UploadFixture f;
        const QString local = f.cached(u"best one.png"_qs).replace(u' ', u"%20"_qs);
        const PostPtr post = f.post(u"T"_qs, u"text"_qs);
        post->featuredImageId = id;
        post->featuredImageURL = address.contains(u"%1") ? address.arg(local) : address;
        if (id.isEmpty() && address.contains(u"%1")) // the same picture in the body goes up only once
            post->content = image(local);
        f.publish(post);
        QTEST(f.blog.count(mediaCall), "uploads");
        for (const FakeBlog::Media &media : std::as_const(f.blog.media))
            thumbnail.replace(u"%1"_qs, media.id);
        QCOMPARE(f.blog.last(u"wp.newPost"_qs).parameters[3][u"post_thumbnail"].string(), thumbnail);
    }

    void findsTheFileOfAnAddress()
    {
        const std::vector<std::pair<QString, QString>> names{{u"my photo.png"_qs, u"my photo.png"_qs},
            {u"my photo.png"_qs, u"my%20photo.png"_qs}, {u"it's.png"_qs, u"it%27s.png"_qs},
            {u"a&b.png"_qs, u"a&amp;b.png"_qs}, {u"größe 🫖.png"_qs, u"größe 🫖.png"_qs},
            {u"größe.png"_qs, u"gr%C3%B6%C3%9Fe.png"_qs}, {u"100%.png"_qs, u"100%.png"_qs},
            {u"a%20b.png"_qs, u"a%20b.png"_qs}, {u"no#1.png"_qs, u"no%231.png"_qs}};
        for (const auto &[file, address] : names) {
            UploadFixture f;
            f.cached(file);
            f.cached(u"a.png"_qs);
            const QString folder = u"://"_qs + f.environment.files.cacheFolder() + u'/';
            f.publish(f.post(u"T"_qs,
                image(u"file://localhost"_qs + folder.mid(3) + address) + image(u"file"_qs + folder + u"a.png"_qs)));
            QCOMPARE(f.blog.media.size(), 2);
            QStringList shown{image(f.blog.media[0].url), image(f.blog.media[1].url)};
            QVERIFY2(f.contentOnBlog() == shown.join(QString()) || f.contentOnBlog() == shown[1] + shown[0],
                qPrintable(address));
        }
    }

    void readsNothingOutsideTheCacheFolder()
    {
        UploadFixture f;
        const QString outside = f.environment.folder.filePath(u"private.png"_qs);
        writeFile(outside, TestPictures::png(1, 1));
        const QString cache = f.environment.files.cacheFolder();
        QVERIFY(QFile::link(outside, cache + u"/link.png"_qs));
        QVERIFY(QDir(cache).mkdir(u"folder.png"_qs));
        for (const QString &path :
            {outside, u"localhost"_qs + outside, u"localhost"_qs + cache + u"/../../private.png"_qs,
                u"localhost"_qs + cache + u"/%2e%2e/%2e%2e/private.png"_qs, u"localhost"_qs + cache + u"/link.png"_qs,
                u"localhost"_qs + cache + u"/missing.png"_qs, u"localhost"_qs + cache + u"/folder.png"_qs}) {
            const PostPtr post = f.post(u"T"_qs, image(u"file://"_qs + path));
            const QString before = post->content;
            f.journal().clear();
            f.publish(post);
            QCOMPARE(f.blog.calls.size(), 0);
            QCOMPARE(f.journal().filter(u"failed"_qs),
                (QStringList{u"upload failed: T"_qs, u"request 9 failed: ZLFile 2"_qs}));
            QCOMPARE(post->content, before);
        }
    }

    void sendsTheContentOnce()
    {
        UploadFixture f;
        f.blog.answerLate(mediaCall);
        f.blog.answerLate(mediaCall);
        const QString one = image(f.cached(u"one.png"_qs));
        const PostPtr post = f.post(u"T"_qs, one + image(f.cached(u"two.png"_qs)));
        f.publish(post);
        f.publish(post); // is on its way
        QCOMPARE(f.service->uploads().size(), 1);
        f.environment.network.release();
        f.settle();
        QCOMPARE(f.blog.count(u"wp.newPost"_qs), 1);
        QCOMPARE(f.blog.count(mediaCall), 2);
        QCOMPARE(f.service->uploads().size(), 0);
    }

    void endsWithAPictureThatFails_data()
    {
        const TestTable<QString, std::function<void(FakeBlog &)>> row({"failure", "spoil"});
        row("fault", u"Response error 500"_qs, [](FakeBlog &b) { b.answerWithFault(mediaCall, 500, u"full"_qs); });
        row("unreadable", u"NSURLErrorDomain -1017"_qs,
            [](FakeBlog &b) { b.answerWithBytes(mediaCall, "Warning: disk\n<?xml"); });
        row("no address", u"ZLUpload 3"_qs, [](FakeBlog &b) { b.answerWith(mediaCall, XMLRPCStruct()); });
        row("a place on this computer", u"ZLUpload 4"_qs, [](FakeBlog &b) {
            b.answerWith(mediaCall, XMLRPCStruct{{u"url"_qs, u"file:///etc/passwd"_qs}});
        });
    }
    void endsWithAPictureThatFails()
    {
        QFETCH(QString, failure);
        QFETCH(std::function<void(FakeBlog &)>, spoil);
        UploadFixture f;
        spoil(f.blog);
        const PostPtr post =
            f.post(u"T"_qs, image(f.cached(u"a.png"_qs)) + image(f.cached(u"b.png"_qs)) + image(f.cached(u"c.png"_qs)));
        f.publish(post);
        QCOMPARE(f.journal().filter(u"failed"_qs),
            (QStringList{u"upload failed: T"_qs, u"request 9 failed: "_qs + failure})); // once
        QCOMPARE(f.blog.count(u"wp.newPost"_qs), 0);
        f.publish(post);
        QVERIFY(f.journal().contains(u"note: published T"_qs));
        QVERIFY(!f.contentOnBlog().contains(u"file:"));
    }

    void failsAtOnceForAPictureOfAnotherKind()
    {
        UploadFixture f;
        const PostPtr post = f.post(u"T"_qs, image(f.environment.addCachedFile(u"picture.tiff"_qs, "II*")));
        QVERIFY(f.service->syncCategoriesAndPublishPost(post, Upload::NewPost)->hasEnded());
        QCOMPARE(f.journal().filter(u"failed"_qs),
            (QStringList{u"upload failed: T"_qs, u"request 9 failed: ZLUpload 5"_qs}));
        post->content = u"no picture"_qs;
        f.publish(post);
        QCOMPARE(f.contentOnBlog(), u"no picture"_qs);
    }

    void dropsCancelledUploads()
    {
        UploadFixture f;
        f.blog.answerLate(mediaCall);
        const QString one = f.cached(u"one.png"_qs);
        const PostPtr post = f.post(u"T"_qs, image(one));
        f.publish(post);
        f.service->cancelUploadOfPost(post);
        f.environment.network.release();
        f.settle();
        QCOMPARE(f.blog.methods(), QStringList{mediaCall});
        // Cancelled while the picture is still on its worker: nothing goes out.
        f.service->syncCategoriesAndPublishPost(post, Upload::NewPost);
        f.service->cancelUploadOfPost(post);
        f.settle();
        QCOMPARE(f.blog.methods(), QStringList{mediaCall});
        f.publish(post);
        QCOMPARE(f.contentOnBlog(), image(f.blog.media.last().url));
    }

    void leavesTheUploadsOfAnotherPostAlone()
    {
        UploadFixture f;
        f.blog.answerLate(mediaCall);
        f.blog.answerLate(mediaCall);
        const QString shared = f.cached(u"shared.png"_qs);
        const PostPtr first = f.post(u"First"_qs, image(shared));
        const PostPtr second = f.post(u"Second"_qs, image(shared));
        f.publish(first);
        f.publish(second);
        f.service->cancelUploadOfPost(second);
        f.environment.network.release();
        QTRY_VERIFY(f.journal().contains(u"note: published First"_qs));
        f.publish(second);
        QCOMPARE(f.blog.posts.size(), 2);
        QVERIFY(!f.contentOnBlog().contains(u"file:"));
    }

    void tellsHowFarItHasCome()
    {
        UploadFixture f;
        f.blog.answerLate(mediaCall);
        f.publish(f.post(u"T"_qs, image(f.cached(u"one.png"_qs)) + image(f.cached(u"two.png"_qs))));
        QCOMPARE(f.delegate.progress.last(), 0.5F);
        f.environment.network.release();
        QTRY_VERIFY(f.journal().contains(u"note: published T"_qs));
        QVERIFY(std::is_sorted(f.delegate.progress.begin(), f.delegate.progress.end()));
        QCOMPARE(f.delegate.progress.last(), 1.0F);
    }
};

static const RegisteredTest<UploadTest> registered;
#include "UploadTest.moc"
