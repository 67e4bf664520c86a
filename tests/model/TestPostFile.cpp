#include "PostFolder.h"

#include "model/PostFile.h"
#include "model/ZLDocument.h"

#include <QFileInfo>

namespace {
const QDateTime createdAt(QDate(2014, 10, 21), QTime(9, 30), Qt::UTC);
const QDateTime updatedAt(QDate(2014, 10, 22), QTime(23, 5, 7), Qt::UTC);

ZLWordpressPost fullPost()
{
    ZLWordpressPost post;
    post.title = u"Cats & \"dogs\""_qs;
    post.content = u"<p class='a'>It's 3 &lt; 5</p>\nend"_qs;
    post.taxonomies = {{u"R&D"_qs, {}, ZLTaxonomy::Category}, {u"tag"_qs, {}, ZLTaxonomy::Tag}};
    post.id = u"12"_qs;
    post.status = ZLWordpressPost::Publish;
    post.type = ZLWordpressPost::Page;
    post.createdAt = createdAt;
    post.updatedAt = updatedAt;
    post.authorId = u"7"_qs;
    post.URL = u"http://blog.example/?p=12&x=1"_qs;
    post.allowComments = false;
    post.slug = u"cats-&-dogs"_qs;
    post.featuredImageId = u"44"_qs;
    post.featuredImageURL = u"http://blog.example/a.png?w=1&h=2"_qs;
    return post;
}
} // namespace

/// The text of the files, to the byte, and what comes back out of it.
class TestPostFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void workingPostWritesEveryElement()
    {
        QCOMPARE(fullPost().generateXMLDataFileInfo(nullptr),
            QByteArray(
                "<zalmo><post><title>Cats &amp; &quot;dogs&quot;</title>"
                "<content>&lt;p class=&apos;a&apos;&gt;It&apos;s 3 &amp;lt; 5&lt;/p&gt;\nend</content>"
                "<keywords><keyword>R&amp;D</keyword><keyword>#tag</keyword></keywords></post>"
                "<post_info><engine>wordpress</engine><id>12</id><status>publish</status><type>page</type>"
                "<created_at>2014-10-21 09:30:00 +0000</created_at><updated_at>2014-10-22 23:05:07 +0000</updated_at>"
                "<author_id>7</author_id><URL>http://blog.example/?p=12&amp;x=1</URL>"
                "<allow_comments>0</allow_comments><allow_pingback>1</allow_pingback><slug>cats-&amp;-dogs</slug>"
                "<featured_image><media_id>44</media_id><URL>http://blog.example/a.png?w=1&amp;h=2</URL>"
                "</featured_image></post_info><file_info><app_version>3</app_version></file_info></zalmo>"));
    }

    void workingPostWritesEmptyElements()
    {
        const ZLFileInfo fileInfo{u"modified"_qs, {}};
        QCOMPARE(ZLWordpressPost().generateXMLDataFileInfo(&fileInfo),
            QByteArray("<zalmo><post><title></title><content></content><keywords></keywords></post>"
                       "<post_info><engine>wordpress</engine><id></id><status>new</status><type>post</type>"
                       "<created_at></created_at><updated_at></updated_at><author_id></author_id><URL></URL>"
                       "<allow_comments>1</allow_comments><allow_pingback>1</allow_pingback><slug></slug>"
                       "<featured_image></featured_image></post_info>"
                       "<file_info><status>modified</status></file_info></zalmo>"));
    }

    void workingPostWritesStatus()
    {
        const QByteArrayList written{"new", "draft", "publish", "new"};
        for (int status = -1; status <= ZLWordpressPost::Note; ++status) {
            ZLWordpressPost post;
            post.status = status;
            const QByteArray engine = status == ZLWordpressPost::Note ? "evernote" : "wordpress";
            QVERIFY(post.generateXMLDataFileInfo(nullptr).contains(
                "<engine>" + engine + "</engine><id></id><status>" + written.value(status) + "</status>"));
        }
    }

    void writerTakesTheStoredBody()
    {
        ZLWordpressPost post;
        post.content = u"<p>as the editor has it</p>"_qs;
        post.storedContent = u"as the blog has it"_qs;
        QVERIFY(post.generateXMLDataFileInfo(nullptr).contains("<content>as the blog has it</content>"));
        post.storedContent = u""_qs;
        QVERIFY(post.generateXMLDataFileInfo(nullptr).contains("<content></content>"));
    }

    void newPostHasEmptyDatesAndDatedFile()
    {
        const PostFolder folder;
        ZLWordpressPost post;
        const QDateTime before = QDateTime::currentDateTimeUtc();
        QVERIFY(post.saveAtPath(folder.path()));
        QVERIFY(folder.read().contains("<created_at></created_at><updated_at></updated_at>"));
        QVERIFY(post.createdAt >= before && post.updatedAt >= before);
        QVERIFY(qAbs(QFileInfo(folder.path()).lastModified().msecsTo(post.updatedAt)) < 1000);
    }

    void savingFailsWithoutAPlace()
    {
        QVERIFY(!fullPost().saveAtPath(u"/post.zalmo"_qs) && !fullPost().saveAtPath(QString()));
        const Result<void> saved = fullPost().saveAtPath(u"/nowhere/at/all/post.zalmo"_qs);
        QVERIFY(!saved && saved.error().description.contains(u"/nowhere/at/all/post.zalmo"_qs));
    }

    void documentWritesWhatItRead()
    {
        const PostFolder folder;
        FileText text;
        text.title = " Cats &amp;amp; dogs";
        text.content = "a &amp;lt; b\r\n &lt;br&gt;\n";
        text.keywords = "<keyword>R&amp;D</keyword><keyword>#tag</keyword>";
        text.fileInfo = "<status></status><app_version>3</app_version>";
        QByteArray read = text.bytes();
        read.replace(
            "<featured_image>", "<featured_image><media_id>44</media_id><URL>http://b/a.png?w=1&amp;h=2</URL>");
        QCOMPARE((*ZLDocument::open(folder.write(read)))->data(), read);

        // An empty flag is a false one, a missing version becomes 3.
        QByteArray other = read;
        other.replace("<allow_pingback>0</allow_pingback>", "<allow_pingback></allow_pingback>");
        other.replace("<status></status><app_version>3</app_version>", "<status></status>");
        QCOMPARE((*ZLDocument::open(folder.write(other, u"conflict.zalmo"_qs)))->data(), read);
    }

    void keepsTheIdsOfTerms_data()
    {
        const TestTable<QList<ZLTaxonomy>, QByteArray, QStringList> row({"taxonomies", "written", "read"});
        const int category = ZLTaxonomy::Category;
        row("none", {{u"a"_qs, {}, category}}, {}, {{}});
        row("two of one name", {{u"a"_qs, u"5"_qs, category}, {u"a"_qs, u"7"_qs, category}}, "5,7", {u"5"_qs, u"7"_qs});
        row("some", {{u"a"_qs, u"5"_qs, category}, {u"b"_qs, {}, ZLTaxonomy::Tag}}, "5,", {u"5"_qs, {}});
        row("a category that reads as a tag", {{u"#a"_qs, u"5"_qs, category}, {u"b"_qs, u"6"_qs, category}}, ",6",
            {{}, u"6"_qs});
        row("no id of a blog", {{u"a"_qs, u"1,2"_qs, category}}, {}, {{}});
    }
    void keepsTheIdsOfTerms()
    {
        QFETCH(QList<ZLTaxonomy>, taxonomies);
        QFETCH(QByteArray, written);
        ZLWordpressPost post;
        post.taxonomies = taxonomies;
        QByteArray bytes = post.generateXMLDataFileInfo(nullptr);
        QCOMPARE(bytes.contains("<keyword_ids>"), !written.isEmpty());
        QVERIFY(written.isEmpty() || bytes.contains("</keywords><keyword_ids>" + written + "</keyword_ids></post>"));
        const auto ids = [&bytes] {
            QStringList ids;
            for (const ZLTaxonomy &taxonomy : PostFile::fromData(bytes).taxonomies)
                ids << taxonomy.termId;
            return ids;
        };
        QTEST(ids(), "read");
        bytes.replace("</keyword_ids>", ",3</keyword_ids>"); // those of other keywords
        QCOMPARE(ids().join(QString()), QString());
    }

    void writesWhatOnlySomePostsHave()
    {
        ZLWordpressPost post = fullPost();
        post.blogStatus = u"private"_qs;
        post.firstPublishBegan = updatedAt;
        const QByteArray bytes = post.generateXMLDataFileInfo(nullptr);
        QVERIFY(bytes.contains("<status>publish</status><blog_status>private</blog_status><type>"));
        QVERIFY(
            bytes.endsWith("<file_info><app_version>3</app_version>"
                           "<first_publish_began>2014-10-22 23:05:07 +0000</first_publish_began></file_info></zalmo>"));
        const PostFile read = PostFile::fromData(bytes);
        QCOMPARE(read.blogStatus, u"private"_qs);
        QCOMPARE(read.firstPublishBegan, updatedAt);
    }

    void readsTexts_data()
    {
        const TestTable<QByteArray, QString, QString> row({"written", "read", "stored"});
        row("escaped once", "&lt;p&gt;&quot;&apos;&lt;/p&gt;", u"<p>\"'</p>"_qs, u"<p>\"'</p>"_qs);
        row("bare ampersand", "a &amp; b", u"a & b"_qs, u"a & b"_qs);
        row("a literal entity is decoded twice", "3 &amp;lt; 5", u"3 < 5"_qs, u"3 &lt; 5"_qs);
        row("white space at the ends", " \n a \t", u"a"_qs, u" \n a \t"_qs);
        row("line ends", "a\r\nb\rc", u"a\nb\nc"_qs, u"a\r\nb\rc"_qs);
        row("control characters", "a\x0B\x01 b", u"a   b"_qs, u"a\u000B\u0001 b"_qs);
        row("characters", "&#65;&#x1F600;\xC3\xBC", u"A\U0001F600ü"_qs, u"A\U0001F600ü"_qs);
        row("CDATA", "x<![CDATA[<&amp;>]]>y", u"x<&>y"_qs, u"x<&amp;>y"_qs);
        row("a comment in between", "x<!-- c -->y", u"xy"_qs, u"xy"_qs);
        row("nothing", "", QString(), u""_qs);
        row("blanks", "  ", QString(), u"  "_qs);
    }
    void readsTexts()
    {
        QFETCH(QByteArray, written);
        QFETCH(QString, read);
        QFETCH(QString, stored);
        for (const bool isTitle : {true, false}) {
            FileText text;
            (isTitle ? text.title : text.content) = written;
            const PostFile file = PostFile::fromData(text.bytes());
            QVERIFY(file.isWhole);
            QCOMPARE(isTitle ? file.title : file.content, read);
            QCOMPARE((isTitle ? file.title : file.content).isNull(), read.isNull());
            QCOMPARE(isTitle ? file.storedTitle : file.storedContent, stored);
            QCOMPARE(isTitle ? file.content : file.title, isTitle ? u"Body"_qs : u"Title"_qs);
        }
    }

    void readsKeywords()
    {
        const auto read = [](const QByteArray &keywords) {
            FileText text;
            text.keywords = keywords;
            ZLAbstractPost post;
            post.taxonomies = PostFile::fromData(text.bytes()).taxonomies;
            return post.taxonomiesArray();
        };
        QCOMPARE(read({}), QStringList());
        QCOMPARE(read("<keyword>#R&amp;amp;D</keyword>"), QStringList{u"#R&amp;D"_qs}); // alone it is decoded once
        QCOMPARE(read("<keyword>R&amp;amp;D</keyword><keyword>#t</keyword>"), (QStringList{u"R&D"_qs, u"#t"_qs}));
        QCOMPARE(read("<keyword>a</keyword><keyword></keyword>"), QStringList{u"a"_qs});
    }

    void readsInfo()
    {
        const PostFolder folder;
        ZLWordpressPost written = fullPost();
        written.id = written.authorId = written.featuredImageId = u"<7>&amp;\"'"_qs;
        QVERIFY(written.saveAtPath(folder.path()));
        const PostPtr read = (*ZLDocument::open(folder.url()))->wordpressPost();
        // The test of the writer shows that every element is in it.
        QCOMPARE(read->generateXMLDataFileInfo(nullptr), written.generateXMLDataFileInfo(nullptr));
        QVERIFY(!read->localPost);

        written.status = ZLWordpressPost::Note;
        QVERIFY(written.saveAtPath(folder.path()));
        QCOMPARE((*ZLDocument::open(folder.url()))->wordpressPost()->status, int(ZLWordpressPost::Note));
    }

    void readsFlags()
    {
        for (const QByteArray written : {"1", "YES", "true", "007", "0", "", "no"}) {
            QByteArray text = FileText().bytes();
            text.replace("<allow_pingback>0</allow_pingback>", "<allow_pingback>" + written + "</allow_pingback>");
            QVERIFY2(
                PostFile::fromData(text).allowPingback == !QByteArrayList({"0", "", "no"}).contains(written), written);
        }
    }
};

static const RegisteredTest<TestPostFile> registered;
#include "TestPostFile.moc"
