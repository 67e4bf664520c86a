#include "PostFolder.h"

#include "model/ZLPostCatalogue.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <sys/stat.h>
#include <unistd.h>

/// Rows of a blog from its files.
class TestCatalogue : public QObject {
    Q_OBJECT

    struct Blog {
        PostFolder home;
        ZLFileManager files{home.path(u"."_qs), home.path(u"cache"_qs)};
        ZLPostCatalogue catalogue{files, PostFolderReader(std::chrono::milliseconds(0))};

        QString name(const QString &file) const { return u"zalmo/accounts/blog/"_qs + file; }
        QString path(const QString &file) const { return home.path(name(file)); }
        QUrl write(const QString &file, const FileText &text = {}) const
        {
            return home.write(text.bytes(), name(file));
        }
        QList<LocalPostPtr> rows() { return catalogue.postsFromLocalFiles(u"blog"_qs); }
        /// The paths of the rows below the blog's folder, with their statuses.
        QStringList list()
        {
            QStringList list;
            for (const LocalPostPtr &row : rows())
                list << row->localFile.toLocalFile().section(u"/blog/"_qs, 1) + u' ' + QString::number(row->status);
            return list;
        }
        QStringList sortedList()
        {
            QStringList sorted = list();
            sorted.sort();
            return sorted;
        }
        /// Writes until the change shows in the time of it, which has its grain.
        void rewrite(const QString &file, const FileText &text) const
        {
            const QFileInfo before(path(file));
            const QDateTime changed = before.metadataChangeTime();
            do
                write(file, text);
            while (QFileInfo(before.filePath()).metadataChangeTime() == changed);
        }
        void setDate(const QString &file, const QDateTime &date) const
        {
            QFile opened(path(file));
            if (!opened.open(QIODevice::ReadWrite) || !opened.setFileTime(date, QFileDevice::FileModificationTime))
                qFatal("cannot set the date of %s", qPrintable(opened.fileName()));
        }
    };

private Q_SLOTS:
    void findsPostsBySpelling()
    {
        Blog blog;
        for (const QString &file : {u"favicon.ico"_qs, u"posts/p1/post.zalmo"_qs, u"posts/p1/post.zalmo.damaged"_qs,
                 u"posts/p2/mypost.zalmo"_qs, u"posts/p2/Post.zalmo"_qs, u"posts/p2/.post.zalmo"_qs,
                 u"posts/p3/conflict.zalmo"_qs, u"posts/p3/conflict-solved.zalmo"_qs, u"posts/p3/post.xml"_qs,
                 u"sub/blog/posts/p4/post.zalmo"_qs, u".hidden/post.zalmo"_qs, u"posts/pü \U0001F600/post.zalmo"_qs,
                 u"posts/p3/synced.zalmo"_qs, u"posts/p6/synced.zalmo"_qs, u"posts/p6/post.zalmo.tmp"_qs})
            blog.write(file);
        QVERIFY(QDir().mkpath(blog.path(u"posts/p5/post.zalmo"_qs)));
        QCOMPARE(blog.sortedList(),
            (QStringList{u".hidden/post.zalmo 0"_qs, u"posts/p1/post.zalmo 0"_qs, u"posts/p2/.post.zalmo 0"_qs,
                u"posts/p2/mypost.zalmo 0"_qs, u"posts/p3/conflict-solved.zalmo 0"_qs,
                u"posts/pü \U0001F600/post.zalmo 0"_qs, u"sub/blog/posts/p4/post.zalmo 0"_qs}));
        QVERIFY(!QFile::exists(blog.path(u"posts/p6/post.zalmo.tmp"_qs))); // a kill left it
    }

    void givesRowsByFilesPresent()
    {
        const QString post = u"p/post.zalmo"_qs, conflict = u"p/conflict.zalmo"_qs,
                      solved = u"p/conflict-solved.zalmo"_qs;
        for (const auto &[files, rows] : {std::pair(QStringList{post}, QStringList{post + u" 4"_qs}),
                 {{post, conflict}, {post + u" 5"_qs}}, {{post, solved}, {solved + u" 4"_qs, post + u" 4"_qs}},
                 {{post, conflict, solved}, {solved + u" 4"_qs, post + u" 5"_qs}}, {{conflict}, {}}}) {
            Blog blog;
            FileText text;
            text.fileInfo = "<status>modified</status>";
            for (const QString &file : files)
                blog.write(file, text);
            QCOMPARE(blog.sortedList(), rows);
            QCOMPARE(blog.sortedList(), rows); // once more, from what is kept
        }
    }

    void listsTheNewestFirst()
    {
        Blog blog;
        const QDateTime date(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
        const QStringList names{u"b/post.zalmo"_qs, u"a/post.zalmo"_qs, u"c/post.zalmo"_qs, u"d/post.zalmo"_qs};
        for (const QString &name : names)
            blog.write(name);
        blog.setDate(names[0], date);
        blog.setDate(names[1], date.addMSecs(1));
        blog.setDate(names[2], date);
        blog.setDate(names[3], date.addYears(-60)); // before the epoch
        QCOMPARE(blog.list(),
            (QStringList{u"a/post.zalmo 0"_qs, u"b/post.zalmo 0"_qs, u"c/post.zalmo 0"_qs, u"d/post.zalmo 0"_qs}));
    }

    void isEmptyWithoutAFolder()
    {
        Blog blog;
        blog.write(u"posts/p1/post.zalmo"_qs);
        QVERIFY(!blog.rows().isEmpty());
        for (const QString &alias : {u"never used"_qs, u"../blog"_qs, QString()})
            QVERIFY(blog.catalogue.postsFromLocalFiles(alias).isEmpty());
    }

    void goesOnPastWhatCannotBeRead()
    {
        Blog blog;
        blog.write(u"p1/post.zalmo"_qs);
        blog.home.write("", blog.name(u"p2/post.zalmo"_qs));
        blog.home.write("<zalmo><post>", blog.name(u"p3/post.zalmo"_qs));
        QVERIFY(QFile::link(blog.path(u"."_qs), blog.path(u"p1/again"_qs))
            && QFile::link(u"."_qs, blog.path(u"p1/self"_qs)));
        QVERIFY(QDir().mkpath(blog.path(u"p4"_qs)));
        QVERIFY(QFile::link(u"/nowhere"_qs, blog.path(u"p4/post.zalmo"_qs)));
        QVERIFY(QDir().mkpath(blog.path(u"p5"_qs)));
        QCOMPARE(mkfifo(blog.path(u"p5/post.zalmo"_qs).toUtf8().constData(), 0600), 0);
        QCOMPARE(blog.sortedList(),
            (QStringList{u"p1/post.zalmo 0"_qs, u"p2/post.zalmo 3"_qs, u"p3/post.zalmo 3"_qs, u"p4/post.zalmo 3"_qs,
                u"p5/post.zalmo 3"_qs}));
        for (const LocalPostPtr &row : blog.rows())
            QCOMPARE(row->title.isNull(), row->status == 3);
    }

    void agreesWithRowsReadOneByOne()
    {
        Blog blog;
        QRandomGenerator random(3);
        for (int number = 0; number < 300; ++number) {
            FileText text;
            text.title = "Title &amp;amp; " + QByteArray::number(number);
            text.content = QByteArray("&lt;p&gt;\xC3\xBC words&lt;/p&gt;\r\n").repeated(random.bounded(200));
            text.type = random.bounded(2) ? "page" : "post";
            const QString folder = blog.name(u"posts/p%1/"_qs.arg(number));
            const QByteArray bytes = text.bytes();
            const bool isCut = number % 11 == 0;
            blog.home.write(isCut ? bytes.left(random.bounded(int(bytes.size()))) : bytes, folder + u"post.zalmo"_qs);
            if (number % 7 == 0)
                blog.home.write(bytes, folder + u"conflict-solved.zalmo"_qs);
        }
        const QList<LocalPostPtr> rows = blog.rows();
        QCOMPARE(rows.size(), 343);
        for (const LocalPostPtr &row : rows) {
            const LocalPostPtr read = ZLLocalPostRepresentation::initWithContentsOfFileURL(row->localFile);
            QCOMPARE(row->title, read->title);
            QCOMPARE(row->content, read->content);
            QCOMPARE(row->status, read->status);
            QCOMPARE(row->postURL, read->postURL);
        }
    }

    void seesEveryChange_data()
    {
        using Change = std::function<void(Blog &)>;
        const TestTable<QStringList, Change> row({"expected", "change"});
        static const QString file = u"p1/post.zalmo"_qs;
        static FileText other;
        other.title = "Other";
        const QStringList same{u"Title 0"_qs, u"Title 0"_qs};
        const QStringList changed{u"Other 0"_qs, u"Title 0"_qs};
        row("nothing", same, [](Blog &) {});
        row("rewritten", changed, [](Blog &blog) { blog.rewrite(file, other); });
        row("rewritten with size and date kept", changed, [](Blog &blog) {
            const QDateTime date = QFileInfo(blog.path(file)).lastModified();
            blog.rewrite(file, other);
            blog.setDate(file, date);
        });
        row("replaced", changed, [](Blog &blog) {
            blog.write(u"p1/new"_qs, other);
            rename(blog.path(u"p1/new"_qs).toUtf8().constData(), blog.path(file).toUtf8().constData());
        });
        row("removed", {u"Title 0"_qs}, [](Blog &blog) { QFile::remove(blog.path(file)); });
        row("added", changed + same.mid(1), [](Blog &blog) { blog.write(u"p3/post.zalmo"_qs, other); });
        row("conflict put beside", {u"Title 5"_qs, u"Title 0"_qs},
            [](Blog &blog) { blog.write(u"p1/conflict.zalmo"_qs); });
        row("renamed", same, [](Blog &blog) { QDir().rename(blog.path(u"p1"_qs), blog.path(u"p0"_qs)); });
    }
    void seesEveryChange()
    {
        QFETCH(std::function<void(Blog &)>, change);
        Blog blog;
        const QDateTime date(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
        for (const int number : {1, 2}) {
            const QString file = u"p%1/post.zalmo"_qs.arg(number);
            blog.write(file);
            blog.setDate(file, date.addDays(-number));
        }
        const auto titles = [&] {
            QStringList titles;
            for (const LocalPostPtr &row : blog.rows())
                titles << u"%1 %2"_qs.arg(row->title).arg(row->status);
            return titles;
        };
        QCOMPARE(titles(), (QStringList{u"Title 0"_qs, u"Title 0"_qs}));
        change(blog);
        QTEST(titles(), "expected");
        QTEST(titles(), "expected"); // from what is kept
    }

    void givesFreshRows()
    {
        Blog blog;
        blog.write(u"p1/post.zalmo"_qs);
        const LocalPostPtr first = blog.rows().first();
        first->title = u"typed"_qs;
        QCOMPARE(blog.rows().first()->title, u"Title"_qs);
        QCOMPARE(first->title, u"typed"_qs);
    }

    void readsOnceWhatStaysTheSame()
    {
        Blog blog;
        blog.write(u"p1/post.zalmo"_qs);
        blog.write(u"p2/post.zalmo"_qs);
        const auto read = [&blog](PostFolderReader &reader) {
            QHash<QByteArray, PostFolderReader::KeptPtr> files;
            for (const PostFolderReader::Found &found : reader.read(blog.files.blogPath(u"blog"_qs)))
                files.insert(found.file->path, found.file);
            return files;
        };
        PostFolderReader reader(std::chrono::milliseconds(0));
        QTRY_VERIFY(read(reader) == read(reader)); // the same objects
        const auto before = read(reader);
        blog.rewrite(u"p2/post.zalmo"_qs, FileText());
        const auto after = read(reader);
        QCOMPARE(after.value("p1/post.zalmo"), before.value("p1/post.zalmo"));
        QVERIFY(after.value("p2/post.zalmo") != before.value("p2/post.zalmo"));

        PostFolderReader cautious(std::chrono::hours(1)); // all of it might still be changing
        QVERIFY(read(cautious).value("p1/post.zalmo") != read(cautious).value("p1/post.zalmo"));
    }

    void tellsScheduledByTheMoment()
    {
        Blog blog;
        blog.write(u"p1/post.zalmo"_qs);
        const QDateTime published(QDate(2014, 10, 21), QTime(9, 30), Qt::UTC);
        const auto statusAt = [&](const QDateTime &moment) {
            return blog.catalogue.postsFromLocalFiles(u"blog"_qs, moment).first()->status;
        };
        QCOMPARE(statusAt(published.addSecs(-1)), 8);
        QCOMPARE(statusAt(published.addSecs(1)), 0);
    }
};

static const RegisteredTest<TestCatalogue> registered;
#include "TestCatalogue.moc"
