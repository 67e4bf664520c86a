#pragma once

#include "app/AppComposeHost.h"
#include "compose/ZLMainWindowCreateViewController.h"
#include "editor/ZLEditorPage.h"
#include "mainwindow/ZLPostListViewControllerDelegate.h"

#include <future>

class ZLAppDelegate;
class ZLComposeWidget;
class ZLSheetHost;

/// The compose screen put together: its widget, its page, its controller. The web engine joins by makeWebView().
class ComposeArea : public QObject, public ZLPostListViewControllerDelegate {
    Q_OBJECT
public:
    ComposeArea(ZLAppDelegate &app, Prompts &prompts, ZLSheetHost &sheets);
    ~ComposeArea() override;

    QWidget *view() const;
    ZLMainWindowCreateViewController &controller() { return m_controller; }
    /// Has the web engine's module loaded while something else goes on. A second call does nothing.
    void loadEngine();
    /// Starts the web engine. A second call does nothing.
    void makeWebView();
    /// Null before makeWebView().
    EditorView *webView() const { return m_page.view(); }
    /// Whether the text cursor is in the page, so that there is something to format.
    bool canFormatSelectedDOMRange() const;

    // ZLPostListViewControllerDelegate
    void loadPost(const LocalPostPtr &post, PostAction action) override;
    void doActionForCurrentPost(PostAction action) override;
    void makeTitleBecomeFirstResponder() override;
    void cleanEditorForNewPost() override;
    void cleanUndoStack() override;
    bool isOnScreen(const LocalPostPtr &post) const override;

private:
    ZLAppDelegate &m_app;
    AppComposeHost m_host;
    ZLEditorPage m_page;
    ZLComposeWidget *m_widget; ///< the window's
    ZLMainWindowCreateViewController m_controller;
    std::future<void> m_engine; ///< being loaded
};
