#include "WindowFixture.h"
#include "mainwindow/ZLPostListCellView.h"
#include "mainwindow/ZLPostListView.h"
#include "widgets/ZLIcons.h"
#include "widgets/ZLSyncBar.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>

namespace {

class ListFixture : public WindowFixture {
public:
    explicit ListFixture(const QStringList &titles = {u"A"_qs, u"B"_qs, u"C"_qs})
    {
        seedPosts(titles);
        // The start asks for categories and tags. Their arrival would rebuild the list at any time.
        blog.answerLate(u"wp.getTerms"_qs);
        launch();
        list().delegate = &compose;
    }

    /// Selects the row, and forgets what was asked of the screen for it.
    void select(int row)
    {
        list().selectRow(row);
        settle();
        compose.takeJournal();
    }
    QListView *table() { return list().view()->tableView(); }
    QString selectedInTable()
    {
        const QModelIndexList rows = table()->selectionModel()->selectedIndexes();
        return rows.isEmpty() ? u"-"_qs : rows.first().data().toString();
    }
    QStringList shownTitles()
    {
        QStringList titles;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            titles.append(table()->model()->index(row, 0).data().toString());
        return titles;
    }
};

using Act = std::function<void(ListFixture &)>;

} // namespace
class PostListTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void selects_data()
    {
        const TestTable<QStringList, QString, Act> row({"asked", "selected", "act"});
        const auto post = [](ListFixture &f, const char *title) { return f.row(QLatin1String(title)); };
        const QStringList blank{u"clean"_qs, u"clean undo"_qs}, loadA{u"load A"_qs, u"clean undo"_qs};
        // Each begins with B selected and loaded.
        row("another row", loadA, "A", [](ListFixture &f) { f.list().selectRow(0); });
        row("the same row", {}, "B", [](ListFixture &f) { f.list().selectRow(1); });
        row("by keyboard", {u"load C"_qs, u"clean undo"_qs}, "C", [](ListFixture &f) {
            f.show();
            const auto isInPlace = [&f] { return f.table()->visualRect(f.table()->model()->index(2, 0)).height() > 0; };
            QTRY_VERIFY(isInPlace());
            QTest::keyClick(f.table(), Qt::Key_Down);
        });
        row("delete key", {u"do 8"_qs}, "B", [](ListFixture &f) { QTest::keyClick(f.table(), Qt::Key_Delete); });
        row("action on another row", {u"load C and do 8"_qs}, "C",
            [post](ListFixture &f) { f.list().selectPost(post(f, "C"), PostAction::Delete); });
        row("action on this row", {u"do 1"_qs}, "B",
            [post](ListFixture &f) { f.list().selectPost(post(f, "B"), PostAction::Publish); });
        row("without loading", {}, "C", [](ListFixture &f) { f.list().selectRowWithoutLoad(2); });
        row("by file", loadA, "A",
            [post](ListFixture &f) { f.list().selectPostFromLocalFileURL(post(f, "A")->localFile); });
        row("none", blank, "-", [](ListFixture &f) { f.list().deselectRow(); });
        row("another blog", {}, "-", [](ListFixture &f) { Q_EMIT f.app->notifications().didChangeBlog(); });
        row("rows rebuilt", {}, "B", [](ListFixture &f) { f.app->posts().loadLocalPosts(); });
        row("rows rebuilt after a sync", {}, "B", [](ListFixture &f) { f.list().updatePostsAndSelectPreviousPost(); });
        const auto vanish = [post](ListFixture &f, bool deletesFile) {
            const LocalPostPtr row = post(f, "B");
            f.app->posts().remove(row);
            if (deletesFile)
                QVERIFY(QFile::remove(row->localFile.toLocalFile()));
            f.list().updatePostsAndSelectPreviousPost();
        };
        row("file gone after a sync", blank, "-", [vanish](ListFixture &f) { vanish(f, true); });
        row("kept from another blog", {}, "-", [vanish](ListFixture &f) { vanish(f, false); });
    }

    void selects()
    {
        QFETCH(Act, act);
        ListFixture f;
        f.select(1);

        act(f);
        f.settle();
        QTEST(f.compose.takeJournal(), "asked");
        QTEST(f.selectedInTable(), "selected");
        const QString selected = f.selectedInTable();
        QCOMPARE(f.list().selectedLocalPost() ? f.list().selectedLocalPost()->title : u"-"_qs, selected);
        QCOMPARE(f.list().awaitingAction(), PostAction::None);
    }

    void followsAMovedFile()
    {
        ListFixture f;
        f.select(0);

        // An upload has given the post its number: same place in the list, another file.
        const QUrl before = f.row(u"A"_qs)->localFile;
        const auto moved = std::make_shared<ZLLocalPostRepresentation>(*f.row(u"A"_qs));
        moved->localFile = QUrl::fromLocalFile(f.folder.filePath(u"moved/post.zalmo"_qs));
        f.app->posts().remove(f.row(u"A"_qs));
        f.app->posts().insert(0, moved);
        f.list().didUpdatePost(nullptr, moved, before);
        f.settle();
        QCOMPARE(f.list().selectedLocalFile(), moved->localFile);
        QCOMPARE(f.selectedInTable(), u"A"_qs);

        const QUrl other = f.row(u"C"_qs)->localFile;
        f.list().didUpdatePost(nullptr, f.row(u"C"_qs), other);
        f.settle();
        QCOMPARE(f.selectedInTable(), u"A"_qs);
        QCOMPARE(f.compose.takeJournal(), QStringList()); // the screen takes its own outcome
    }

    void keepsThePostOnTheScreenWhileASearchHidesIt()
    {
        ListFixture f({u"Bread"_qs, u"Tram bells"_qs});
        f.select(1);
        const LocalPostPtr row = f.row(u"Tram bells"_qs);
        f.list().view()->searchPostsField()->setText(u"bread"_qs);
        f.list().didUpdatePost(nullptr, row, row->localFile);
        f.settle();
        QCOMPARE(f.compose.takeJournal(), QStringList());
        QCOMPARE(f.list().selectedLocalFile(), row->localFile);
        QCOMPARE(f.selectedInTable(), u"-"_qs);

        // What the compose screen makes of a blank post is the first of all rows, not of those found.
        f.list().selectRowWithoutLoad(1);
        QCOMPARE(f.list().selectedLocalFile(), row->localFile);
        f.app->posts().createNewPost();
        QCOMPARE(f.selectedInTable(), u"No title"_qs);
    }

    void opensANewPost()
    {
        ListFixture f;
        f.app->posts().createNewPost();
        QCOMPARE(f.compose.takeJournal(), QStringList({u"load "_qs, u"title"_qs}));
        QCOMPARE(f.shownTitles(), QStringList({u"No title"_qs, u"A"_qs, u"B"_qs, u"C"_qs}));
        QCOMPARE(f.selectedInTable(), u"No title"_qs);
    }

    void leavesADeletedPost_data()
    {
        const TestTable<QString, QStringList, QString> row({"deleted", "asked", "selected"});
        row("on the screen", u"B"_qs, {u"clean"_qs, u"clean undo"_qs}, u"-"_qs);
        row("another one", u"A"_qs, {}, u"B"_qs);
    }

    void leavesADeletedPost()
    {
        QFETCH(QString, deleted);
        ListFixture f;
        f.select(1);
        f.app->posts().removeLocalPostFromList(f.row(deleted));
        f.settle();
        QTEST(f.compose.takeJournal(), "asked");
        QTEST(f.selectedInTable(), "selected");
        QVERIFY(!f.shownTitles().contains(deleted));
    }

    void keepsTheRowCurrentWhileTyping_data()
    {
        const TestTable<int, int> row({"before", "after"});
        row("published", 0, 4);
        row("scheduled", 8, 4);
        row("new stays new", 3, 3);
        row("solved stays solved", 6, 6);
    }

    void keepsTheRowCurrentWhileTyping()
    {
        QFETCH(int, before);
        ListFixture f;
        f.select(1);
        const LocalPostPtr row = f.row(u"B"_qs);

        row->status = before;
        f.list().setTitleToSelectedPost(u"Better"_qs);
        QCOMPARE(f.selectedInTable(), u"Better"_qs);
        QTEST(row->status, "after");

        row->status = before;
        const QString start(500, u'x'); // more than the row shows
        f.list().setContentToSelectedPost(u"<p>%1 one</p>"_qs.arg(start));
        QTEST(row->status, "after");
        const QModelIndex index = f.table()->model()->index(1, 0);
        QVERIFY(index.data(ZLPostListModel::DetailRole).toString().startsWith(start.left(300)));
        // Deep in a long post a key press changes nothing that the row shows.
        QSignalSpy reloads(f.table()->model(), &QAbstractItemModel::dataChanged);
        f.list().setContentToSelectedPost(u"<p>%1 one two</p>"_qs.arg(start));
        QCOMPARE(reloads.size(), 0);
        f.list().view()->searchPostsField()->setText(u"nothing has this"_qs);
        f.list().setTitleToSelectedPost(u"Best"_qs);
        QCOMPARE(row->title, u"Best"_qs);
    }

    void searches()
    {
        ListFixture f({u"Bread"_qs, u"Tram bells"_qs, u"More BREAD"_qs});
        f.select(1);
        QLineEdit *field = f.list().view()->searchPostsField();

        QTest::keyClicks(field, u"bread"_qs);
        QCOMPARE(f.shownTitles(), QStringList({u"Bread"_qs, u"More BREAD"_qs}));
        QTest::keyClicks(field, u"s"_qs);
        QCOMPARE(f.shownTitles(), QStringList());
        QVERIFY(f.find<QLabel>(u"emptyHeading"_qs));
        QCOMPARE(f.textOf(u"emptyHeading"_qs), u"No matches"_qs);

        // A sync brings rows; the search stands, and the post on the screen is where it was.
        f.app->posts().loadLocalPosts();
        QCOMPARE(f.shownTitles().size(), 0);
        const QUrl file = f.row(u"Tram bells"_qs) ? QUrl() : f.list().selectedLocalFile();
        QVERIFY(!file.isEmpty());
        QTest::keyClick(field, Qt::Key_Backspace);
        QCOMPARE(f.shownTitles(), QStringList({u"Bread"_qs, u"More BREAD"_qs}));
        QTest::keyClick(field, Qt::Key_Escape);
        QCOMPARE(field->text(), QString());
        // The post on the screen stayed there, and is the selected one again.
        QCOMPARE(f.compose.takeJournal(), QStringList());
        QCOMPARE(f.selectedInTable(), u"Tram bells"_qs);
        QTest::keyClicks(field, u"bread"_qs);
        QTest::keyClick(field, Qt::Key_Down);
        QCOMPARE(f.selectedInTable(), u"Bread"_qs);
    }

    void showsSomethingForEveryRow_data()
    {
        const TestTable<QString, QString, QString, QString> row({"title", "content", "shownTitle", "shownDetail"});
        row("text", u"T"_qs, u"<p>One<br>two&nbsp;three</p>"_qs, u"T"_qs, u"One two three"_qs);
        row("entities", u"T"_qs, u"<p>Fish &amp; chips</p>"_qs, u"T"_qs, u"Fish & chips"_qs);
        row("nothing", {}, {}, u"No title"_qs, u"No content"_qs);
        row("only a picture", u"T"_qs, u"<img src=\"a.png\">"_qs, u"T"_qs, u"No content"_qs);
    }

    void showsSomethingForEveryRow()
    {
        QFETCH(QString, title);
        QFETCH(QString, content);
        ZLPostListModel model;
        auto post = std::make_shared<ZLLocalPostRepresentation>();
        post->title = title;
        post->content = content;
        model.setPosts({post});
        QTEST(model.index(0).data().toString(), "shownTitle");
        QTEST(model.index(0).data(ZLPostListModel::DetailRole).toString(), "shownDetail");
        // Every state has a drawing, on the plain and on the selected row.
        for (int status = 0; status <= 8; ++status) {
            for (const bool plain : {true, false}) {
                const QString icon = ZLPostListCellView::statusImageForPostStatus(status, plain);
                QVERIFY2(!ZLIcons::pixmap(icon, 16, Qt::black, 1).isNull(), qPrintable(icon));
            }
        }
    }

    void marksWhatTheBlogKeepsToItself_data()
    {
        const TestTable<int, QString, bool, QString> row({"status", "blogStatus", "isOnItsWay", "says"});
        row("published", 0, {}, false, "Published");
        row("private", 0, "private", false, "Private");
        row("private page", 2, "private", false, "Private");
        row("pending", 1, "pending", false, "Pending review");
        row("changed since", 4, "private", false, "Changed since it was sent to the blog");
        row("in conflict", 5, "private", false, "Changed here and on the blog");
        row("on its way", 0, "private", true, "On its way to the blog");
    }

    void marksWhatTheBlogKeepsToItself()
    {
        QFETCH(int, status);
        QFETCH(QString, blogStatus);
        QFETCH(bool, isOnItsWay);
        ZLPostListModel model;
        model.setIsOnItsWay([isOnItsWay](const QUrl &) { return isOnItsWay; });
        auto post = std::make_shared<ZLLocalPostRepresentation>();
        post->status = status;
        post->blogStatus = blogStatus;
        model.setPosts({post});
        const QString mark = model.index(0).data(ZLPostListModel::MarkRole).toString();
        QTEST(ZLPostListCellView::wordForPostStatus(status, mark), "says");
        for (const QString &ending : {u""_qs, u"_selected"_qs}) {
            const QString icon = u"postlist_%1_icon%2"_qs.arg(mark, ending);
            QVERIFY2(mark.isEmpty() || !ZLIcons::pixmap(icon, 16, Qt::black, 1).isNull(), qPrintable(icon));
        }
    }

    void refreshesOnlyOnline()
    {
        ListFixture f;
        f.list().refresh();
        QVERIFY(f.textOf(u"syncFailureText"_qs).startsWith(u"You are offline."));
        QVERIFY(f.textOf(u"alertMessage"_qs).isNull()); // nothing that stands in the way
        QVERIFY(!f.list().view()->syncingView()->isShowing());

        f.reachability.reachable = true;
        f.blog.addPost(u"From the blog"_qs, u"<p>Hello</p>"_qs);
        auto *again = f.find<QAbstractButton>(u"tryAgainButton"_qs);
        again->setFocus();
        again->click();
        QCOMPARE(f.window->focusWidget(), f.table());
        QVERIFY(f.list().view()->syncingView()->isShowing());
        QVERIFY(f.textOf(u"syncFailureText"_qs).isNull());
        QTRY_VERIFY(f.network.heldCount() > 0);
        f.network.release();
        QTRY_VERIFY(!f.list().view()->syncingView()->isShowing());
        QVERIFY(f.shownTitles().contains(u"From the blog"_qs));
    }
};

static const RegisteredTest<PostListTest> registered;

#include "PostListTest.moc"
