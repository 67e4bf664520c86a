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

    void workingPostWritesStatus_data()
    {
        const TestTable<int, QByteArray, QByteArray> row({"status", "engine", "written"});
        row("none", -1, "wordpress", {});
        row("new", 0, "wordpress", "new");
        row("draft", 1, "wordpress", "draft");
        row("published", 2, "wordpress", "publish");
        row("note", 3, "evernote", "new");
    }
    void workingPostWritesStatus()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, engine);
        QFETCH(QByteArray, written);
        ZLWordpressPost post;
        post.status = status;
        QVERIFY(post.generateXMLDataFileInfo(nullptr).contains(
            "<engine>" + engine + "</engine><id></id><status>" + written + "</status>"));
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
        ZLWordpressPost post = fullPost();
        QVERIFY(!post.saveAtPath(QString() + u"/post.zalmo"_qs));
        QVERIFY(!post.saveAtPath(QString()));
        const Result<void> saved = post.saveAtPath(u"/nowhere/at/all/post.zalmo"_qs);
        QVERIFY(!saved);
        QVERIFY(saved.error().description.contains(u"/nowhere/at/all/post.zalmo"_qs));
    }

    void documentWritesWhatItRead()
    {
        const PostFolder folder;
        const QByteArray read =
            "<zalmo><post><title> Cats &amp;amp; dogs</title><content>a &amp;lt; b\r\n &lt;br&gt;\n</content><keywords>"
            "<keyword>R&amp;D</keyword><keyword>#tag</keyword></keywords></post><post_info><engine>wordpress</engine>"
            "<id>12</id><status>publish</status><type>page</type><created_at>2014-10-21 09:30:00 +0000</created_at>"
            "<updated_at>2014-10-22 23:05:07 +0000</updated_at><author_id>7</author_id>"
            "<URL>http://blog.example/?p=12&amp;x=1</URL><allow_comments>0</allow_comments>"
            "<allow_pingback>1</allow_pingback><slug>a-&amp;-b</slug><featured_image><media_id>44</media_id>"
            "<URL>http://blog.example/a.png?w=1&amp;h=2</URL></featured_image></post_info>"
            "<file_info><status></status><app_version>3</app_version></file_info></zalmo>";
        const Result<DocumentPtr> document = ZLDocument::open(folder.write(read));
        QVERIFY(document);
        QCOMPARE((*document)->data(), read);

        // An empty flag is a false one, a missing version becomes 3.
        QByteArray other = read;
        other.replace("<allow_comments>0</allow_comments>", "<allow_comments></allow_comments>");
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
        const QByteArray bytes = post.generateXMLDataFileInfo(nullptr);
        QCOMPARE(bytes.contains("<keyword_ids>"), !written.isEmpty());
        QVERIFY(written.isEmpty() || bytes.contains("</keywords><keyword_ids>" + written + "</keyword_ids></post>"));
        QStringList ids;
        for (const ZLTaxonomy &taxonomy : PostFile::fromData(bytes).taxonomies)
            ids << taxonomy.termId;
        QTEST(ids, "read");
    }

    void leavesIdsOutThatBelongToOtherKeywords()
    {
        FileText text;
        text.keywords = "<keyword>a</keyword><keyword>b</keyword>";
        QByteArray bytes = text.bytes();
        bytes.replace("</keywords>", "</keywords><keyword_ids>1,2,3</keyword_ids>");
        QCOMPARE(PostFile::fromData(bytes).taxonomies,
            (QList<ZLTaxonomy>{{u"a"_qs, {}, ZLTaxonomy::Category}, {u"b"_qs, {}, ZLTaxonomy::Category}}));
    }

    void typedKeywordsKeepTheirIds()
    {
        PostFields post;
        post.taxonomies = {{u"a"_qs, u"5"_qs, ZLTaxonomy::Category}, {u"a"_qs, u"7"_qs, ZLTaxonomy::Category},
            {u"a"_qs, u"9"_qs, ZLTaxonomy::Tag}};
        post.setTaxonomiesFromStringArray({u"#a"_qs, u"a"_qs, u"new"_qs, QString(), u"a"_qs, u"a"_qs});
        QStringList ids;
        for (const ZLTaxonomy &taxonomy : post.taxonomies)
            ids << taxonomy.keyword() + u' ' + taxonomy.termId;
        QCOMPARE(ids, (QStringList{u"#a 9"_qs, u"a 5"_qs, u"new "_qs, u"a 7"_qs, u"a "_qs}));
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
        row("plain", "a", u"a"_qs, u"a"_qs);
        row("escaped once", "&lt;p&gt;&quot;&apos;&lt;/p&gt;", u"<p>\"'</p>"_qs, u"<p>\"'</p>"_qs);
        row("bare ampersand", "a &amp; b", u"a & b"_qs, u"a & b"_qs);
        row("a literal entity is decoded twice", "3 &amp;lt; 5", u"3 < 5"_qs, u"3 &lt; 5"_qs);
        row("white space at the ends", " \n a \t", u"a"_qs, u" \n a \t"_qs);
        row("line ends", "a\r\nb\rc", u"a\nb\nc"_qs, u"a\r\nb\rc"_qs);
        row("control characters", "a\x0B\x01 b", u"a   b"_qs, u"a\u000B\u0001 b"_qs);
        row("numbers", "&#65;&#x1F600;", u"A\U0001F600"_qs, u"A\U0001F600"_qs);
        row("UTF-8", "\xC3\xBC\xF0\x9F\x98\x80", u"ü\U0001F600"_qs, u"ü\U0001F600"_qs);
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

    void readsKeywords_data()
    {
        const TestTable<QByteArray, QStringList> row({"keywords", "read"});
        row("none", {}, {});
        row("one", "<keyword>a</keyword>", {u"a"_qs});
        row("one, decoded once", "<keyword>#R&amp;amp;D</keyword>", {u"#R&amp;D"_qs});
        row("two, decoded twice", "<keyword>R&amp;amp;D</keyword><keyword>#t</keyword>", {u"R&D"_qs, u"#t"_qs});
        row("one and an empty one", "<keyword>a</keyword><keyword></keyword>", {u"a"_qs});
    }
    void readsKeywords()
    {
        QFETCH(QByteArray, keywords);
        FileText text;
        text.keywords = keywords;
        ZLAbstractPost post;
        post.taxonomies = PostFile::fromData(text.bytes()).taxonomies;
        QTEST(post.taxonomiesArray(), "read");
    }

    void readsAnyId()
    {
        ZLWordpressPost post = fullPost();
        post.id = post.authorId = post.featuredImageId = u"<7>&amp;\"'"_qs;
        const PostFile read = PostFile::fromData(post.generateXMLDataFileInfo(nullptr));
        QVERIFY(read.isWhole);
        QCOMPARE(read.id, post.id);
        QCOMPARE(read.authorId, post.id);
        QCOMPARE(read.featuredImageId, post.id);
    }

    void readsInfo()
    {
        const PostFolder folder;
        ZLWordpressPost written = fullPost();
        QVERIFY(written.saveAtPath(folder.path()));
        const PostPtr read = (*ZLDocument::open(folder.url()))->wordpressPost();
        // The test of the writer shows that every element is in it.
        QCOMPARE(read->generateXMLDataFileInfo(nullptr), written.generateXMLDataFileInfo(nullptr));
        QVERIFY(!read->localPost);

        written.status = ZLWordpressPost::Note;
        QVERIFY(written.saveAtPath(folder.path()));
        QCOMPARE((*ZLDocument::open(folder.url()))->wordpressPost()->status, int(ZLWordpressPost::Note));
    }

    void readsFlags_data()
    {
        const TestTable<QByteArray, bool> row({"written", "read"});
        row("1", "1", true);
        row("0", "0", false);
        row("empty", "", false);
        row("yes", "YES", true);
        row("true", "true", true);
        row("no", "no", false);
        row("007", "007", true);
    }
    void readsFlags()
    {
        QFETCH(QByteArray, written);
        QByteArray text = FileText().bytes();
        text.replace("<allow_pingback>0</allow_pingback>", "<allow_pingback>" + written + "</allow_pingback>");
        QTEST(PostFile::fromData(text).allowPingback, "read");
    }
};

static const RegisteredTest<TestPostFile> registered;
#include "TestPostFile.moc"
