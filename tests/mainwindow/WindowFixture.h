#pragma once

#include "app/ZLAppDelegate.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLPostListViewController.h"
#include "support/FakePlatform.h"
#include "support/TestClasses.h"

/// The compose screen as the post list drives it: a journal of what was asked.
class FakeCompose : public ZLPostListViewControllerDelegate {
public:
    void loadPost(const LocalPostPtr &post, PostAction action) override
    {
        journal.append(u"load "_qs + post->title);
        if (action != PostAction::None)
            journal.last().append(u" and do %1"_qs.arg(int(action)));
        shown = post->localFile;
    }
    void doActionForCurrentPost(PostAction action) override { journal.append(u"do %1"_qs.arg(int(action))); }
    void makeTitleBecomeFirstResponder() override { journal.append(u"title"_qs); }
    void cleanEditorForNewPost() override { journal.append(u"clean"_qs); }
    void cleanUndoStack() override { journal.append(u"clean undo"_qs); }
    bool isOnScreen(const LocalPostPtr &post) const override { return post->localFile == shown; }
    QStringList takeJournal() { return std::exchange(journal, {}); }

    QStringList journal;
    QUrl shown;
};

/// The real controller and the real window over a pretended platform.
class WindowFixture : public FakePlatform {
public:
    WindowFixture();

    /// Writes a post file of the blog; the first one written is the newest row.
    void seedPost(const QString &alias, const ZLWordpressPost &post);
    void seedPosts(const QStringList &titles); ///< published posts of the blog "Ada"

    void launch();
    void show(); ///< and waits until the window has the focus
    /// Runs what waits for the next turn of the event loop; a single processEvents() may serve other sources only.
    static void settle() { QCoreApplication::sendPostedEvents(); }
    LocalPostPtr row(const QString &title) const;
    QString textOf(const QString &label) const; ///< of the visible label of that name; null when there is none

    template <class Widget>
    Widget *find(const QString &name) const
    {
        for (Widget *widget : window->findChildren<Widget *>(name)) {
            if (widget->isVisibleTo(window.get()))
                return widget;
        }
        return nullptr;
    }

    Prompts &prompts() { return *window->windows().prompts; }
    ZLPostListViewController &list() { return window->postListViewController(); }

    ZLDefaults defaults;
    ZLKeychain keychain;
    std::unique_ptr<ZLAppDelegate> app;
    std::unique_ptr<ZLMainWindow> window;
    FakeCompose compose;

private:
    QDateTime m_nextDate = QDateTime::currentDateTimeUtc();
    int m_nextId = 1000;
};
