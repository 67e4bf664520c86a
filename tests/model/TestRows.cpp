#include "PostFolder.h"

#include "model/PostRow.h"
#include "model/PostRowScanner.h"
#include "model/ZLWordpressPost.h"
#include "text/ContentPasses.h"

#include <QRandomGenerator>

static const QDateTime now(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);

/// Rows of the post list, as both readers make them.
class TestRows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void takesItsStatusFromTheFile_data()
    {
        addColumns<FileText, int, bool>({"file", "row", "published"});
        const QByteArray past = "2014-10-21 09:30:00 +0000";
        const QByteArray future = "2021-01-01 00:00:00 +0000";
        const auto row = [](const char *name, const char *fileStatus, const char *engine, const char *status,
                             const char *type, const QByteArray &createdAt, int expected, bool published) {
            FileText file;
            file.fileInfo = QByteArray("<status>") + fileStatus + "</status>";
            file.engine = engine;
            file.status = status;
            file.type = type;
            file.createdAt = createdAt;
            QTest::newRow(name) << file << expected << published;
        };
        row("modified draft", "modified", "wordpress", "draft", "post", past, 4, false);
        row("modified, published", "modified", "wordpress", "publish", "post", past, 4, true);
        row("new", "new", "wordpress", "new", "post", "", 3, false);
        row("new note", "new", "evernote", "publish", "post", "", 7, false);
        row("conflict", "conflict", "wordpress", "publish", "post", past, 5, true);
        row("conflict solved", "conflict-solved", "wordpress", "draft", "post", past, 6, false);
        row("note", "", "evernote", "publish", "post", past, 7, false);
        row("published post", "", "wordpress", "publish", "post", past, 0, true);
        row("published page", "", "wordpress", "publish", "page", past, 2, true);
        row("scheduled", "", "wordpress", "publish", "post", future, 8, true);
        row("this very moment", "", "wordpress", "publish", "post", "2020-01-01 12:00:00 +0000", 0, true);
        row("published, no date", "", "wordpress", "publish", "post", "", 0, true);
        row("draft", "", "wordpress", "draft", "post", future, 1, false);
        row("anything else", "", "wordpress", "new", "post", past, 3, false);
        row("unknown file status", "odd", "wordpress", "draft", "post", past, 1, false);
    }
    void takesItsStatusFromTheFile()
    {
        QFETCH(FileText, file);
        const PostFolder folder;
        const LocalPostPtr row = ZLLocalPostRepresentation::initWithContentsOfFileURL(folder.write(file.bytes()), now);
        QTEST(row->status, "row");
        QTEST(row->published, "published");
    }

    void hasTextsOrNone()
    {
        const PostFolder folder;
        FileText text;
        text.title = "A &amp;amp; B";
        text.content = " &lt;p&gt;&amp;lt;b&gt;&amp;amp;amp;&lt;/p&gt; ";
        LocalPostPtr row = ZLLocalPostRepresentation::initWithContentsOfFileURL(folder.write(text.bytes()), now);
        QCOMPARE(row->title, u"A & B"_qs);
        QCOMPARE(row->content, u"<p>&lt;b>&amp;amp;</p>"_qs);
        QCOMPARE(row->postURL, QUrl(u"http://blog.example/?p=12&x=1"_qs));
        QCOMPARE(row->localFile, folder.url());

        text.title.clear();
        text.content = " ";
        row = ZLLocalPostRepresentation::initWithContentsOfFileURL(folder.write(text.bytes()), now);
        QVERIFY(row->title.isNull() && row->content.isNull());

        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(u"error-The post file .* is damaged"_qs));
        row = ZLLocalPostRepresentation::initWithContentsOfFileURL(folder.write(FileText().bytes().left(45)), now);
        QVERIFY(row->title == u"Title"_qs && row->status == 3 && !row->published);
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(u"error-.*nothing\\.zalmo"_qs));
        QCOMPARE(ZLLocalPostRepresentation::initWithContentsOfFileURL(folder.url(u"nothing.zalmo"_qs), now)->status, 3);
    }

    void showsTheSameExtractAsTheWholeBody_data()
    {
        const TestTable<QString> row({"body"});
        row("short", u"<p>A short <b>one</b>.</p>"_qs);
        row("long text", u"word "_qs.repeated(5000));
        row("long markup", u"<p class=\"a\"><b>some</b> words<br></p>"_qs.repeated(500));
        row("images only", u"<p><img src=\"http://b/1.png\" alt=\"\"></p>"_qs.repeated(400));
        row("images, then a word", u"<img src=\"http://b/1.png\">"_qs.repeated(400) + u"word"_qs);
        row("one huge tag", u"<img src=\"data:"_qs + u"A"_qs.repeated(5000) + u"\">words"_qs);
        row("a tag that never ends", u"text <img "_qs + u"A "_qs.repeated(5000));
        row("empty tags", u"<><b>"_qs.repeated(600) + u"words"_qs);
        row("emoji", u"\U0001F600"_qs.repeated(2000));
        row("blanks", u"&nbsp; "_qs.repeated(2000) + u"end"_qs);
    }
    void showsTheSameExtractAsTheWholeBody()
    {
        QFETCH(QString, body);
        const QString extract = ZLLocalPostRepresentation::contentExtract(body);
        QVERIFY(body.startsWith(extract));
        const QString shown = ContentPasses::removeHTMLFromString(extract);
        QCOMPARE(shown.left(200), ContentPasses::removeHTMLFromString(body).left(200));
        QCOMPARE(shown.isEmpty(), ContentPasses::removeHTMLFromString(body).isEmpty());
        QVERIFY(extract.isEmpty() || !extract.back().isHighSurrogate());
    }

    void scannerAgreesWithTheReader_data()
    {
        const TestTable<QByteArray, bool> row({"bytes", "scans"});
        const auto content = [&row](const char *name, const QByteArray &bytes, bool scans) {
            FileText text;
            text.content = bytes;
            row(name, text.bytes(), scans);
        };
        content("plain", "text", true);
        content("empty", "", true);
        content("blank", " \n\t ", true);
        content("no-break space at the ends", "\xC2\xA0x\xC2\xA0", true);
        content("escaped", "&lt;p&gt;&amp;amp;&amp;lt;&quot;&apos;", true);
        content("long", QByteArray("&lt;p&gt;some words &amp;amp; more&lt;/p&gt;\n").repeated(300), true);
        content("long, joined at every cut", QByteArray("&amp;lt;").repeated(3000), true);
        content("long, no visible text", QByteArray("&lt;img src=&quot;x&quot;&gt;").repeated(3000), true);
        content("long, a tag without end", "a &lt;b" + QByteArray(9000, 'x'), true);
        content("long, then blanks", "a" + QByteArray(9000, ' '), true);
        content("blanks, then long", QByteArray(9000, ' ') + QByteArray(9000, 'y'), true);
        content("UTF-8", QByteArray("\xF0\x9F\x98\x80\xC3\xBC").repeated(2000), true);
        content("carriage return", "a\r\nb", false);
        content("control character", "a\x0B b", false);
        content("NUL", QByteArray("a\0b", 3), false);
        for (const char *broken : {"\xFF", "\xC0\x80", "\xED\xA0\x80"})
            content("broken UTF-8", QByteArray("a") + broken + "b", false);
        content("no character", "a\xEF\xBF\xBF", false);
        content("number", "a&#65;b", false);
        content("unknown entity", "a&nbsp;b", false);
        content("bare ampersand", "a & b", false);
        content("child", "a<b>c</b>", false);
        content("CDATA", "<![CDATA[x]]>", false);
        content("comment", "a<!-- x -->b", false);
        content("end of CDATA in text", "a]]>b", false);
        content("instruction", "a<?php ?>b", false);
        const QByteArray whole = FileText().bytes();
        row("indented", QByteArray(whole).replace("><", ">\n  <"), true);
        row("blanks around", "\n" + whole + "\n\n", true);
        for (const QByteArray &other :
            {"<?xml version=\"1.0\"?>" + whole, "\xEF\xBB\xBF" + whole, whole + "x", whole + whole, QByteArray()})
            row("another file: " + other.left(20), other, false);
        for (const char *odd : {"x", "<title>x</title>", "<odd>x</odd>", "<slug/>", "<odd></slog>", "<odd ></odd>",
                 "<odd></odd >", "<odd a=\"b\"></odd>"})
            row(odd, QByteArray(whole).replace("<content>", odd + QByteArray("<content>")), false);
    }
    void scannerAgreesWithTheReader()
    {
        QFETCH(QByteArray, bytes);
        const PostRow read = PostRow::fromFile(PostFile::fromData(bytes));
        const std::optional<PostRow> scanned = PostRowScanner(bytes).scan();
        QTEST(scanned.has_value(), "scans");
        QVERIFY(PostRow::fromData(bytes) == read);
        QCOMPARE(PostRow::fromData(bytes).content.isNull(), read.content.isNull());
        QCOMPARE(PostRow::fromData(bytes).title.isNull(), read.title.isNull());
    }

    void scannerAgreesOnMangledFiles()
    {
        FileText text;
        text.content = "&lt;p&gt;a &amp;amp; b&lt;/p&gt;\xC3\xBC";
        text.keywords = "<keyword>one</keyword><keyword>#two</keyword>";
        const QByteArray whole = text.bytes();
        QRandomGenerator random(7);
        for (int round = 0; round < 20000; ++round) {
            QByteArray bytes = whole;
            for (int change = random.bounded(3); change >= 0; --change) {
                const int at = random.bounded(int(bytes.size()));
                const QByteArrayView characters("<>/&;!?]a \n\x0B\xFF\xBC");
                if (random.bounded(4) == 0)
                    bytes.remove(at, 1 + random.bounded(8));
                else
                    bytes[at] = characters[random.bounded(int(characters.size()))];
            }
            if (!(PostRow::fromData(bytes) == PostRow::fromFile(PostFile::fromData(bytes))))
                QFAIL(bytes.constData());
        }
        for (qsizetype length = 0; length < whole.size(); ++length)
            QVERIFY(PostRow::fromData(whole.left(length)) == PostRow::fromFile(PostFile::fromData(whole.left(length))));
    }

    void scannerReadsWhatTheProgramWrites()
    {
        ZLWordpressPost post;
        post.title = u"A & B"_qs;
        post.content = u"<p>\n</p>"_qs;
        post.taxonomies = {{u"x"_qs, {}, ZLTaxonomy::Tag}, {u"y"_qs, {}, ZLTaxonomy::Category}};
        post.featuredImageId = u"4"_qs;
        post.featuredImageURL = u"http://b/x?y&z"_qs;
        post.taxonomies[0].termId = u"7"_qs;
        post.blogStatus = u"pending"_qs;
        post.firstPublishBegan = now;
        const ZLFileInfo info{u"modified"_qs, u"3"_qs};
        QVERIFY(PostRowScanner(post.generateXMLDataFileInfo(&info)).scan());
        const std::optional<PostRow> row = PostRowScanner(post.generateXMLDataFileInfo(nullptr)).scan();
        QVERIFY(row);
        QCOMPARE(row->row({}, now).blogStatus, u"pending"_qs);
    }
};

static const RegisteredTest<TestRows> registered;
#include "TestRows.moc"
