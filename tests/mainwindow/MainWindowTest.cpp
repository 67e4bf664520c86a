#include "WindowFixture.h"
#include "mainwindow/ComposeArea.h"
#include "mainwindow/FullScreenColumn.h"
#include "mainwindow/WindowPlacement.h"
#include "mainwindow/ZLSelectorView.h"
#include "widgets/ZLSheetHost.h"
#include "widgets/ZLTheme.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QTextEdit>

namespace {
/// The title field of the window with the post "A" on the screen; null when that does not come.
QTextEdit *openedPost(WindowFixture &f)
{
    f.seedPosts({u"A"_qs});
    f.launch();
    f.show();
    f.list().selectRow(0);
    auto *title = f.find<QTextEdit>(u"titleField"_qs);
    title->setFocus();
    return QTest::qWaitFor([title] { return title->toPlainText() == u"A"_qs; }) ? title : nullptr;
}
} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void validatesTheMenu_data()
    {
        const TestTable<QString, QStringList> row({"state", "off"});
        const QStringList needBlog{u"newPostItem"_qs, u"postListMenuItem"_qs, u"refreshPostListMenuItem"_qs,
            u"deletePostMenuItem"_qs, u"insertImageMenuItem"_qs, u"searchPostsMenuItem"_qs, u"postMenuItem"_qs};
        const QStringList needPage{u"strikethroughMenuItem"_qs, u"orderedListMenuItem"_qs, u"unorderedListMenuItem"_qs};
        const QStringList save{u"saveMenuItem"_qs}, revert{u"revertMenuItem"_qs};
        const QStringList sheet{u"newBlogMenuItem"_qs};
        row("no blog", u"none"_qs, needBlog + needPage + save + revert);
        row("a blog", u"blog"_qs, needPage + revert);
        row("a blog and a sheet", u"sheet"_qs, needBlog + needPage + save + revert + sheet);
        row("a published post", u"published"_qs, needPage + save + revert);
    }

    void validatesTheMenu()
    {
        QFETCH(QString, state);
        QFETCH(QStringList, off);
        WindowFixture f;
        if (state != u"none")
            f.seedPosts({u"A"_qs});
        f.launch();
        if (state == u"sheet")
            f.window->windows().prompts->showGetStartedPanel();
        if (state == u"published") {
            f.list().selectRow(0);
            QTRY_VERIFY(!f.window->validateMenuItem(u"saveMenuItem"_qs));
        }
        QStringList found;
        for (const MenuOfCommands &menu : menuCommands()) {
            for (const MenuCommand &command : menu.commands) {
                if (!command.name.isNull() && !f.window->validateMenuItem(command.name))
                    found.append(command.name);
            }
        }
        found.sort();
        off.sort();
        QCOMPARE(found, off);
        QCOMPARE(f.window->findChild<QWidget *>(u"titleField"_qs)->isEnabled(), state != u"none");
        QVERIFY(f.window->findChild<QWidget *>(u"publishButton"_qs)->toolTip().endsWith(u"(Ctrl+Return)"));

        // What cannot be chosen does nothing, although its shortcut is alive.
        f.window->findChild<QAction *>(u"newPostItem"_qs)->trigger();
        WindowFixture::settle();
        const bool can = !off.contains(u"newPostItem"_qs) && state == u"published"; // a blank post needs no other
        QCOMPARE(f.app->posts().posts().size(), (state == u"none" ? 0 : 1) + (can ? 1 : 0));
    }

    void hasNoShortcutTwice()
    {
        QSet<QKeySequence> taken;
        for (const MenuOfCommands &menu : menuCommands()) {
            for (const MenuCommand &command : menu.commands) {
                for (const QKeySequence &shortcut : command.shortcuts) {
                    QVERIFY2(!taken.contains(shortcut), qPrintable(command.name + u' ' + shortcut.toString()));
                    taken.insert(shortcut);
                }
            }
        }
    }

    void givesWhatIsTypedAtOnceToTheNewPost()
    {
        WindowFixture f;
        QTextEdit *title = openedPost(f);
        QVERIFY(title);
        f.window->didClickOnNewPost();
        f.window->didClickOnNewPost();
        QTest::keyClicks(title, u"New"_qs);
        QTRY_COMPARE(title->toPlainText(), u"New"_qs);
        QTRY_VERIFY(f.row(u"New"_qs));
        QVERIFY(f.row(u"A"_qs));
        // What is on the screen is noted at once, for the start after a crash.
        QTRY_COMPARE(f.defaults.objectForKey(u"openPosts"_qs).toMap().value(u"Ada"_qs).toString(),
            f.row(u"New"_qs)->localFile.toString());
    }

    void takesABlankScreenForTheNewPost()
    {
        WindowFixture f;
        f.seedPosts({});
        f.launch();
        f.show();
        f.find<QWidget>(u"searchPostsField"_qs)->setFocus();
        f.window->didClickOnNewPost();
        QTest::keyClicks(QApplication::focusWidget(), u"New"_qs);
        QTRY_COMPARE(f.find<QTextEdit>(u"titleField"_qs)->toPlainText(), u"New"_qs);
        QVERIFY(f.find<QTextEdit>(u"titleField"_qs)->hasFocus());
        QCOMPARE(f.list().allPosts().size(), 1);
    }

    void keepsTheOpenPostWhenANewOneCannotBeWritten()
    {
        WindowFixture f;
        QTextEdit *title = openedPost(f);
        QVERIFY(title);
        const QString posts = f.files.blogPath(u"Ada"_qs) + u"/posts"_qs;
        QVERIFY(QDir().rename(posts, posts + u".away"_qs));
        QVERIFY(QFile(posts).open(QIODevice::WriteOnly)); // stands for a disk that takes nothing
        f.window->didClickOnNewPost();
        QTRY_VERIFY(f.textOf(u"alertMessage"_qs).startsWith(u"The folder of the new post could not be made"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_VERIFY(!f.window->sheets().attachedSheet());
        QTest::keyClicks(title, u"B"_qs); // nothing is held back for a post that does not come
        QCOMPARE(title->toPlainText(), u"BA"_qs);
        QVERIFY(QFile::remove(posts));
        QVERIFY(QDir().rename(posts + u".away"_qs, posts));
    }

    void returnsToTheDesktopsColors()
    {
        ZLTheme::apply(*qApp);
        const bool isDesktopDark = ZLTheme::isDark(QApplication::palette());
        for (const ZLTheme::Scheme scheme : {ZLTheme::Scheme::Dark, ZLTheme::Scheme::Light}) {
            ZLTheme::apply(*qApp, scheme);
            QCOMPARE(ZLTheme::isDark(QApplication::palette()), scheme == ZLTheme::Scheme::Dark);
            ZLTheme::apply(*qApp);
            QCOMPARE(ZLTheme::isDark(QApplication::palette()), isDesktopDark);
        }
    }

    void growsByThePostList()
    {
        WindowFixture f;
        f.seedPosts({u"A"_qs});
        f.launch();
        f.show();
        QVERIFY(f.window->isDisplayingToolView());
        const QWidget *screen = f.window->composeArea().view();
        const int window = f.window->width();
        const int compose = screen->width();

        f.window->didClickOnPostsList();
        QTRY_COMPARE(f.window->width(), window - 300);
        QTRY_COMPARE(screen->width(), compose);
        QCOMPARE(f.defaults.objectForKey(u"postListShouldBeOpen"_qs).toBool(), false);
        f.window->didClickOnPostsList();
        QTRY_COMPARE(f.window->width(), window);
        QTRY_COMPARE(screen->width(), compose);
        QCOMPARE(f.defaults.boolForKey(u"postListShouldBeOpen"_qs), true);
    }

    void comesBackNarrow()
    {
        WindowFixture f;
        f.seedPosts({u"A"_qs});
        f.launch();
        const int wide = f.window->width();
        f.window.reset();
        f.app.reset();
        f.defaults.setObjectForKey(false, u"postListShouldBeOpen"_qs);
        f.launch();
        QVERIFY(!f.window->isDisplayingToolView());
        QCOMPARE(f.window->width(), wide - 300);
    }

    void staysOnTheScreen_data()
    {
        const TestTable<QRect, QRect> row({"window", "placed"});
        // The room is 1000 by 700, from (50, 30) on.
        row("inside", {100, 100, 800, 500}, {100, 100, 800, 500});
        row("too wide", {100, 100, 1180, 500}, {50, 100, 1000, 500});
        row("too high", {100, 100, 800, 900}, {100, 30, 800, 700});
        row("grown over the edge", {300, 100, 900, 500}, {150, 100, 900, 500});
        row("of another screen", {2500, -900, 800, 500}, {250, 30, 800, 500});
    }

    void staysOnTheScreen()
    {
        QFETCH(QRect, window);
        QTEST(WindowPlacement::inside({50, 30, 1000, 700}, window), "placed");
    }

    void fitsASmallScreen()
    {
        WindowFixture f;
        f.seedPosts({u"A"_qs});
        f.launch();
        f.show();
        QCOMPARE(f.window->minimumSize(), QSize(640, 480));
        f.window->resize(640, 480); // with the list open
        const auto isInside = [&f](const QWidget *widget) {
            const QRect place(widget->mapTo(f.window.get(), QPoint()), widget->size());
            return f.window->rect().contains(place);
        };
        for (const QString &name : {u"saveButton"_qs, u"deleteButton"_qs, u"titleField"_qs, u"tokenField"_qs})
            QTRY_VERIFY2(isInside(f.find<QWidget>(name)), qPrintable(name));
        QTRY_VERIFY(isInside(f.find<QWidget>(u"publishButton"_qs)));
        QVERIFY(!f.find<QWidget>(u"insertMediaButton"_qs)); // has given way
        f.window->resize(1180, 700);
        QTRY_VERIFY(f.find<QWidget>(u"insertMediaButton"_qs));
    }

    void keepsTheMenusInFullScreen()
    {
        WindowFixture f;
        f.seedPosts({u"A"_qs});
        f.launch();
        f.show();
        f.window->toggleFullScreen();
        QTRY_VERIFY(f.window->inFullScreenMode());
        QVERIFY(f.window->menuBar()->isVisible());
        QTest::keyClick(f.window.get(), Qt::Key_F, Qt::AltModifier);
        QTRY_VERIFY(QApplication::activePopupWidget());
        QApplication::activePopupWidget()->close();
    }

    void standsInAColumnInFullScreen_data()
    {
        const TestTable<int, bool, int, int> row({"window", "open", "x", "width"});
        row("closed", 1920, false, 520, 880);
        row("open", 1920, true, 370, 1180);
        row("narrow screen", 800, true, 0, 800);
    }

    void standsInAColumnInFullScreen()
    {
        QFETCH(int, window);
        QFETCH(bool, open);
        const FullScreenColumn column(window, open);
        QTEST(column.x(), "x");
        QTEST(column.width(), "width");
    }

    void switchesBlogs()
    {
        WindowFixture f;
        f.seedPosts({u"A"_qs});
        f.seedAccount(u"Tom & Eve"_qs, f.blog.url());
        f.launch();
        auto *selector = f.find<ZLSelectorView>(u"blogSelector"_qs);
        QVERIFY(selector);
        QCOMPARE(selector->text(), u"Ada"_qs);
        QStringList items;
        for (const QAction *action : selector->menu()->actions())
            items.append(action->text());
        QCOMPARE(items, QStringList({u"Ada"_qs, u"Tom && Eve"_qs, QString(), u"&Connect a Blog…"_qs}));

        selector->menu()->actions()[1]->trigger();
        QCOMPARE(f.app->currentBlog().blogName(), u"Tom & Eve"_qs);
        QCOMPARE(selector->text(), u"Tom & Eve"_qs);
        QCOMPARE(f.list().allPosts().size(), 0);
    }
};

static const RegisteredTest<MainWindowTest> registered;

#include "MainWindowTest.moc"
