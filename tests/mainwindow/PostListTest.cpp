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

struct ListFixture : WindowFixture {
    explicit ListFixture(const QStringList &titles = {"A", "B", "C"})
    {
        seedPosts(titles);
        // The start asks for categories and tags. Their arrival would rebuild the list at any time.
        blog.answerLate("wp.getTerms");
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
        return rows.isEmpty() ? "-" : rows.first().data().toString();
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
        const TestTable<QStringList, QString, Act> row; // what the screen is asked, the row that is selected then
        const auto post = [](ListFixture &f, const char *title) { return f.row(QLatin1String(title)); };
        const QStringList blank{"clean", "clean undo"}, loadA{"load A", "clean undo"};
        // Each begins with B selected and loaded.
        row("another row", loadA, "A", [](ListFixture &f) { f.list().selectRow(0); });
        row("the same row", {}, "B", [](ListFixture &f) { f.list().selectRow(1); });
        row("by keyboard", {"load C", "clean undo"}, "C", [](ListFixture &f) {
            f.show();
            const auto isInPlace = [&f] { return f.table()->visualRect(f.table()->model()->index(2, 0)).height() > 0; };
            QTRY_VERIFY(isInPlace());
            QTest::keyClick(f.table(), Qt::Key_Down);
        });
        row("delete key", {"do 8"}, "B", [](ListFixture &f) { QTest::keyClick(f.table(), Qt::Key_Delete); });
        row("action on another row", {"load C and do 8"}, "C",
            [post](ListFixture &f) { f.list().selectPost(post(f, "C"), PostAction::Delete); });
        row("action on this row", {"do 1"}, "B",
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
        const auto remove = [post](ListFixture &f, const char *title) {
            f.app->posts().removeLocalPostFromList(post(f, title));
        };
        row("deleted", blank, "-", [remove](ListFixture &f) { remove(f, "B"); });
        row("another one deleted", {}, "B", [remove](ListFixture &f) { remove(f, "A"); });
        row("new post", {"load ", "title"}, "No title", [](ListFixture &f) { f.app->posts().createNewPost(); });
        row("kept from another blog", {}, "-", [vanish](ListFixture &f) { vanish(f, false); });
    }

    void selects()
    {
        const auto [asked, selected, act] = testRow<QStringList, QString, Act>();
        ListFixture f;
        f.select(1);

        act(f);
        f.settle();
        QCOMPARE(f.compose.takeJournal(), asked);
        QCOMPARE(f.selectedInTable(), selected);
        const LocalPostPtr post = f.list().selectedLocalPost();
        QCOMPARE(post ? post->title : "-", selected == "No title" ? "" : selected);
        QCOMPARE(f.list().awaitingAction(), PostAction::None);
        QCOMPARE(f.shownTitles().contains("B"), !f.app->posts().getPostsForSearch("B").isEmpty());
    }

    void followsAMovedFile()
    {
        ListFixture f;
        f.select(0);

        // An upload has given the post its number: same place in the list, another file.
        const QUrl before = f.row("A")->localFile;
        const auto moved = std::make_shared<ZLLocalPostRepresentation>(*f.row("A"));
        moved->localFile = QUrl::fromLocalFile(f.folder.filePath("moved/post.zalmo"));
        f.app->posts().remove(f.row("A"));
        f.app->posts().insert(0, moved);
        f.list().didUpdatePost(nullptr, moved, before);
        f.settle();
        QCOMPARE(f.list().selectedLocalFile(), moved->localFile);
        QCOMPARE(f.selectedInTable(), "A");

        const QUrl other = f.row("C")->localFile;
        f.list().didUpdatePost(nullptr, f.row("C"), other);
        f.settle();
        QCOMPARE(f.selectedInTable(), "A");
        QCOMPARE(f.compose.takeJournal(), QStringList()); // the screen takes its own outcome
    }

    void keepsTheRowCurrentWhileTyping_data()
    {
        const TestTable<int, int> row; // the status before and after
        row("published", 0, 4);
        row("scheduled", 8, 4);
        row("new stays new", 3, 3);
        row("solved stays solved", 6, 6);
    }

    void keepsTheRowCurrentWhileTyping()
    {
        const auto [before, after] = testRow<int, int>();
        ListFixture f;
        f.select(1);
        const LocalPostPtr row = f.row("B");

        row->status = before;
        f.list().setTitleToSelectedPost("Better");
        QCOMPARE(f.selectedInTable(), "Better");
        QCOMPARE(row->status, after);

        row->status = before;
        const QString start(500, u'x'); // more than the row shows
        f.list().setContentToSelectedPost("<p>" + start + " one</p>");
        QCOMPARE(row->status, after);
        const QModelIndex index = f.table()->model()->index(1, 0);
        QVERIFY(index.data(ZLPostListModel::DetailRole).toString().startsWith(start.left(300)));
        // Deep in a long post a key press changes nothing that the row shows.
        QSignalSpy reloads(f.table()->model(), &QAbstractItemModel::dataChanged);
        f.list().setContentToSelectedPost("<p>" + start + " one two</p>");
        QCOMPARE(reloads.size(), 0);
        f.list().view()->searchPostsField()->setText("nothing has this");
        f.list().setTitleToSelectedPost("Best");
        QCOMPARE(row->title, "Best");
    }

    void searches()
    {
        ListFixture f({"Bread", "Tram bells", "More BREAD"});
        f.select(1);
        const LocalPostPtr row = f.row("Tram bells");
        QLineEdit *field = f.list().view()->searchPostsField();
        QTest::keyClicks(field, "bread");
        QCOMPARE(f.shownTitles(), QStringList({"Bread", "More BREAD"}));
        QTest::keyClicks(field, "s");
        QCOMPARE(f.shownTitles(), QStringList());
        QCOMPARE(f.textOf("emptyHeading"), "No matches");

        // A sync brings rows; the search stands, and the post on the screen is where it was.
        f.app->posts().loadLocalPosts();
        QCOMPARE(f.shownTitles().size(), 0);
        QCOMPARE(f.list().selectedLocalFile(), row->localFile);
        QTest::keyClick(field, Qt::Key_Backspace);
        QCOMPARE(f.shownTitles(), QStringList({"Bread", "More BREAD"}));
        f.list().didUpdatePost(nullptr, row, row->localFile);
        f.settle();
        QCOMPARE(f.list().selectedLocalFile(), row->localFile);
        QCOMPARE(f.selectedInTable(), "-");
        QTest::keyClick(field, Qt::Key_Escape);
        QCOMPARE(field->text(), QString());
        // The post on the screen stayed there, and is the selected one again.
        QCOMPARE(f.compose.takeJournal(), QStringList());
        QCOMPARE(f.selectedInTable(), "Tram bells");
        QTest::keyClicks(field, "bread");
        QTest::keyClick(field, Qt::Key_Down);
        QCOMPARE(f.selectedInTable(), "Bread");

        // What the compose screen makes of a blank post is the first of all rows, not of those found.
        f.list().selectRowWithoutLoad(1);
        QCOMPARE(f.list().selectedLocalFile(), row->localFile);
        f.app->posts().createNewPost();
        QCOMPARE(f.selectedInTable(), "No title");
    }

    void showsSomethingForEveryRow()
    {
        ZLPostListModel model;
        for (const auto &[title, content, shownTitle, shownDetail] :
            {std::tuple("T", "<p>Fish &amp;<br>chips</p>", "T", "Fish & chips"),
                std::tuple("", "<img src=\"a.png\">", "No title", "No content")}) {
            auto post = std::make_shared<ZLLocalPostRepresentation>();
            post->title = title;
            post->content = content;
            model.setPosts({post});
            QCOMPARE(model.index(0).data().toString(), shownTitle);
            QCOMPARE(model.index(0).data(ZLPostListModel::DetailRole).toString(), shownDetail);
        }
    }

    void hasADrawingForEveryState()
    {
        QStringList icons;
        for (const bool plain : {true, false})
            for (int status = 0; status <= 8; ++status)
                icons.append(ZLPostListCellView::statusImageForPostStatus(status, plain));
        for (const QString mark : {"private", "pending", "upload"})
            icons << "postlist_" + mark + "_icon"
                  << "postlist_" + mark + "_icon_selected";
        for (const QString &icon : icons)
            QVERIFY2(!ZLIcons::pixmap(icon, 16, Qt::black, 1).isNull(), qPrintable(icon));
    }

    void marksWhatTheBlogKeepsToItself_data()
    {
        const TestTable<int, QString, bool, QString> row; // status here and on the blog, whether it goes up, the word
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
        const auto [status, blogStatus, isOnItsWay, word] = testRow<int, QString, bool, QString>();
        ZLPostListModel model;
        model.setIsOnItsWay([goesUp = isOnItsWay](const QUrl &) { return goesUp; });
        auto post = std::make_shared<ZLLocalPostRepresentation>();
        post->status = status;
        post->blogStatus = blogStatus;
        model.setPosts({post});
        const QString mark = model.index(0).data(ZLPostListModel::MarkRole).toString();
        QCOMPARE(ZLPostListCellView::wordForPostStatus(status, mark), word);
    }

    void triesAgain()
    {
        ListFixture f;
        f.list().refresh();
        QVERIFY(f.textOf("syncFailureText").startsWith("You are offline."));
        f.reachability.reachable = true;
        auto *again = f.find<QAbstractButton>("tryAgainButton");
        again->setFocus();
        again->click();
        QCOMPARE(f.window->focusWidget(), f.table());
        QVERIFY(f.list().view()->syncingView()->isShowing() && f.textOf("syncFailureText").isNull());
    }
};

static const RegisteredTest<PostListTest> registered;

#include "PostListTest.moc"
