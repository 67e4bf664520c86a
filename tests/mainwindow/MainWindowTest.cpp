#include "WindowFixture.h"
#include "mainwindow/ComposeArea.h"
#include "mainwindow/WindowPlacement.h"
#include "support/Files.h"
#include "widgets/ZLSheetHost.h"

#include <QAction>
#include <QMenuBar>
#include <QSet>
#include <QTextEdit>

namespace {
/// The title field of the window with the post "A" on the screen; null when that does not come.
QTextEdit *openedPost(WindowFixture &f)
{
    f.seedPosts({"A"});
    f.show();
    f.list().selectRow(0);
    auto *title = f.find<QTextEdit>("titleField");
    title->setFocus();
    return QTest::qWaitFor([title] { return title->toPlainText() == "A"; }) ? title : nullptr;
}
} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void validatesTheMenu_data()
    {
        const TestTable<QString, QStringList> row; // what is there, and which commands are off
        const QStringList needBlog{"newPostItem", "postListMenuItem", "refreshPostListMenuItem", "deletePostMenuItem",
            "insertImageMenuItem", "searchPostsMenuItem", "postMenuItem"};
        const QStringList needPage{"strikethroughMenuItem", "orderedListMenuItem", "unorderedListMenuItem"};
        const QStringList save{"saveMenuItem"}, revert{"revertMenuItem"};
        const QStringList sheet{"newBlogMenuItem"};
        row("no blog", "none", needBlog + needPage + save + revert);
        row("a blog", "blog", needPage + revert);
        row("a blog and a sheet", "sheet", needBlog + needPage + save + revert + sheet);
        row("a published post", "published", needPage + save + revert);
    }

    void validatesTheMenu()
    {
        auto [state, off] = testRow<QString, QStringList>();
        WindowFixture f;
        if (state != u"none")
            f.seedPosts({"A"});
        f.launch();
        if (state == u"sheet")
            f.window->windows().prompts->showGetStartedPanel();
        if (state == u"published") {
            f.list().selectRow(0);
            QTRY_VERIFY(!f.window->validateMenuItem("saveMenuItem"));
        }
        QStringList found;
        for (const MenuOfCommands &menu : menuCommands())
            for (const MenuCommand &command : menu.commands)
                if (!command.name.isNull() && !f.window->validateMenuItem(command.name))
                    found.append(command.name);
        found.sort();
        off.sort();
        QCOMPARE(found, off);
        QCOMPARE(f.window->findChild<QWidget *>("titleField")->isEnabled(), state != u"none");
        QVERIFY(f.window->findChild<QWidget *>("publishButton")->toolTip().endsWith("(Ctrl+Return)"));

        // What cannot be chosen does nothing, although its shortcut is alive.
        f.window->findChild<QAction *>("newPostItem")->trigger();
        WindowFixture::settle();
        const bool can = !off.contains("newPostItem") && state == u"published"; // a blank post needs no other
        QCOMPARE(f.app->posts().posts().size(), (state == u"none" ? 0 : 1) + (can ? 1 : 0));
    }

    void hasNoShortcutTwice()
    {
        QSet<QKeySequence> taken;
        for (const MenuOfCommands &menu : menuCommands())
            for (const MenuCommand &command : menu.commands)
                for (const QKeySequence &shortcut : command.shortcuts) {
                    QVERIFY2(!taken.contains(shortcut), qPrintable(command.name + ' ' + shortcut.toString()));
                    taken.insert(shortcut);
                }
    }

    void givesWhatIsTypedAtOnceToTheNewPost()
    {
        WindowFixture f;
        QTextEdit *title = openedPost(f);
        QVERIFY(title);
        f.window->didClickOnNewPost();
        f.window->didClickOnNewPost();
        QTest::keyClicks(title, "New");
        QTRY_COMPARE(title->toPlainText(), "New");
        QTRY_VERIFY(f.row("New"));
        QVERIFY(f.row("A"));
        // What is on the screen is noted at once, for the start after a crash.
        QTRY_COMPARE(
            f.defaults.objectForKey("openPosts").toMap().value("Ada").toString(), f.row("New")->localFile.toString());
    }

    void takesABlankScreenForTheNewPost()
    {
        WindowFixture f;
        f.seedPosts({});
        f.show();
        f.find("searchPostsField")->setFocus();
        f.window->didClickOnNewPost();
        QTest::keyClicks(QApplication::focusWidget(), "New");
        QTRY_COMPARE(f.find<QTextEdit>("titleField")->toPlainText(), "New");
        QVERIFY(f.find<QTextEdit>("titleField")->hasFocus());
        QCOMPARE(f.list().allPosts().size(), 1);
    }

    void keepsTheOpenPostWhenANewOneCannotBeWritten()
    {
        WindowFixture f;
        QTextEdit *title = openedPost(f);
        QVERIFY(title);
        const QString posts = f.files.blogPath("Ada") + "/posts";
        QVERIFY(QDir().rename(posts, posts + ".away"));
        writeFile(posts); // stands for a disk that takes nothing
        f.window->didClickOnNewPost();
        QTRY_VERIFY(f.textOf("alertMessage").startsWith(u"The folder of the new post could not be made"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_VERIFY(!f.window->sheets().attachedSheet());
        QTest::keyClicks(title, "B"); // nothing is held back for a post that does not come
        QCOMPARE(title->toPlainText(), "BA");
        QVERIFY(QFile::remove(posts));
        QVERIFY(QDir().rename(posts + ".away", posts));
    }

    void growsByThePostList()
    {
        WindowFixture f;
        f.seedPosts({"A"});
        f.show();
        QVERIFY(f.window->isDisplayingToolView());
        const QWidget *screen = f.window->composeArea().view();
        const int window = f.window->width();
        const int compose = screen->width();

        f.window->didClickOnPostsList();
        QTRY_COMPARE(f.window->width(), window - 300);
        QTRY_COMPARE(screen->width(), compose);
        QCOMPARE(f.defaults.objectForKey("postListShouldBeOpen").toBool(), false);
        f.window->didClickOnPostsList();
        QTRY_COMPARE(f.window->width(), window);
        QTRY_COMPARE(screen->width(), compose);
        QCOMPARE(f.defaults.boolForKey("postListShouldBeOpen"), true);

        f.window.reset();
        f.app.reset();
        f.defaults.setObjectForKey(false, "postListShouldBeOpen");
        f.launch(); // comes back narrow
        QVERIFY(!f.window->isDisplayingToolView());
        QCOMPARE(f.window->width(), window - 300);
    }

    void staysOnTheScreen_data()
    {
        const TestTable<QRect, QRect> row;
        // The room is 1000 by 700, from (50, 30) on.
        row("inside", {100, 100, 800, 500}, {100, 100, 800, 500});
        row("too wide", {100, 100, 1180, 500}, {50, 100, 1000, 500});
        row("too high", {100, 100, 800, 900}, {100, 30, 800, 700});
        row("grown over the edge", {300, 100, 900, 500}, {150, 100, 900, 500});
        row("of another screen", {2500, -900, 800, 500}, {250, 30, 800, 500});
    }

    void staysOnTheScreen()
    {
        const auto [window, placed] = testRow<QRect, QRect>();
        QCOMPARE(WindowPlacement::inside({50, 30, 1000, 700}, window), placed);
    }

    void fitsASmallScreen()
    {
        WindowFixture f;
        f.seedPosts({"A"});
        f.show();
        QCOMPARE(f.window->minimumSize(), QSize(640, 480));
        f.window->resize(640, 480); // with the list open
        for (const char *name : {"saveButton", "deleteButton", "titleField", "tokenField", "publishButton"})
            QTRY_VERIFY2(f.isInside(f.find(name)), name);
        QVERIFY(!f.find("insertMediaButton")); // has given way
        f.window->resize(1180, 700);
        QTRY_VERIFY(f.find("insertMediaButton"));
    }

    void keepsMenusAndWidthInFullScreen()
    {
        WindowFixture f;
        f.seedPosts({"A"});
        f.show();
        const QWidget *screen = f.window->composeArea().view();
        const int before = screen->width();
        f.window->toggleFullScreen();
        QTRY_VERIFY(f.window->inFullScreenMode());
        QTRY_COMPARE(screen->width(), before); // as wide as in the window
        QVERIFY(f.window->menuBar()->isVisible());
        QTest::keyClick(f.window.get(), Qt::Key_F, Qt::AltModifier);
        QTRY_VERIFY(QApplication::activePopupWidget());
        QApplication::activePopupWidget()->close();
    }
};

static const RegisteredTest<MainWindowTest> registered;

#include "MainWindowTest.moc"
