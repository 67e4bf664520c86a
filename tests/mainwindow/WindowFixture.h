#pragma once

#include "app/ZLAppDelegate.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLPostListViewController.h"
#include "support/FakePlatform.h"
#include "support/TestClasses.h"

#include <QLabel>

/// The compose screen as the post list drives it: a journal of what was asked.
class FakeCompose : public ZLPostListViewControllerDelegate {
public:
    void loadPost(const LocalPostPtr &post, PostAction action) override
    {
        journal.append("load " + post->title);
        if (action != PostAction::None)
            journal.last() += u" and do %1"_qs.arg(int(action));
        shown = post->localFile;
    }
    void doActionForCurrentPost(PostAction action) override { journal.append(u"do %1"_qs.arg(int(action))); }
    void makeTitleBecomeFirstResponder() override { journal.append("title"); }
    void cleanEditorForNewPost() override { journal.append("clean"); }
    void cleanUndoStack() override { journal.append("clean undo"); }
    bool isOnScreen(const LocalPostPtr &post) const override { return post->localFile == shown; }
    QStringList takeJournal() { return std::exchange(journal, {}); }

    QStringList journal;
    QUrl shown;
};

/// The real controller and the real window over a pretended platform.
class WindowFixture : public FakePlatform {
public:
    WindowFixture() { reachability.reachable = false; } // no sync unless a test asks for one

    /// Writes a post file of the blog; the first one written is the newest row.
    void seedPost(const QString &alias, ZLWordpressPost post)
    {
        m_nextDate = m_nextDate.addSecs(-60);
        post.updatedAt = m_nextDate;
        if (post.id.isEmpty())
            post.id = QString::number(m_nextId -= 60);
        QVERIFY(post.saveAtPath(files.postPathForBlogURL(alias, post.id) + "/post.zalmo"));
    }
    void seedPosts(const QStringList &titles) ///< published posts of the blog "Ada"
    {
        seedAccount("Ada", blog.url());
        for (const QString &title : titles) {
            ZLWordpressPost post;
            post.title = title;
            post.content = "<p>Text</p>";
            post.status = ZLWordpressPost::Publish;
            post.createdAt = QDateTime::currentDateTimeUtc().addDays(-1);
            seedPost("Ada", post);
        }
    }
    void launch()
    {
        app = std::make_unique<ZLAppDelegate>(
            ZLPlatform{files, defaults, keychain, reachability, notifications, workspace, clock, network});
        window = std::make_unique<ZLMainWindow>(*app);
        app->setWindows(window->windows());
        app->applicationDidFinishLaunching();
        app->goOnline();
    }
    /// Launches, and waits until the window has the focus.
    void show()
    {
        if (!window)
            launch();
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }
    /// Runs what waits for the next turn of the event loop; a single processEvents() may serve other sources only.
    static void settle() { QCoreApplication::sendPostedEvents(); }
    LocalPostPtr row(const QString &title) const
    {
        for (const LocalPostPtr &row : window->postListViewController().allPosts())
            if (row->title == title)
                return row;
        return nullptr;
    }
    template <class Widget = QWidget>
    Widget *find(const QString &name) const
    {
        for (Widget *widget : window->findChildren<Widget *>(name))
            if (widget->isVisibleTo(window.get()))
                return widget;
        return nullptr;
    }
    QString textOf(const QString &label) const ///< of the visible label of that name; null when there is none
    {
        const auto *found = find<QLabel>(label);
        return found ? found->text() : QString();
    }
    /// Whether all of the widget is inside the window.
    bool isInside(const QWidget *widget) const
    {
        return window->rect().contains(QRect(widget->mapTo(window.get(), QPoint()), widget->size()));
    }
    Prompts &prompts() { return *window->windows().prompts; }
    ZLPostListViewController &list() { return window->postListViewController(); }

    ZLDefaults defaults{folder.filePath("preferences.ini")};
    ZLKeychain keychain{std::make_unique<FakeKeychain>(secrets)};
    std::unique_ptr<ZLAppDelegate> app;
    std::unique_ptr<ZLMainWindow> window;
    FakeCompose compose;

private:
    QDateTime m_nextDate = QDateTime::currentDateTimeUtc();
    int m_nextId = 1000;
};
