#pragma once

#include "app/ZLWindows.h"
#include "editor/EditorView.h"
#include "mainwindow/MenuCommands.h"

#include <QHash>
#include <QMainWindow>
#include <memory>

class ComposeArea;
class KeyHold;
class QShortcut;
class QHBoxLayout;
class ZLAppDelegate;
class ZLPostListViewController;
class ZLPrompts;
class ZLSelectorView;
class ZLSheetHost;
class ZLSideBarView;

/// The one document window: side bar, post list, compose screen, and the menu bar that drives them.
///
/// The post list opens and closes by making the window wider and narrower, so that the compose screen keeps its width,
/// as far as the desktop's screen has room. In full screen the window cannot grow, and all of it stands in a column in
/// the middle instead.
///
/// Nothing here starts the web engine before the window has been painted: that is what a start waits for.
class ZLMainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit ZLMainWindow(ZLAppDelegate &app);
    ~ZLMainWindow() override;

    /// The windows as the application controller asks for them.
    ZLWindows windows();
    void comeToFront();
    ZLPostListViewController &postListViewController() { return *m_postList; }
    ComposeArea &composeArea() { return *m_compose; }
    ZLSheetHost &sheets() { return *m_sheets; }

    bool isDisplayingToolView() const { return m_isDisplayingToolView; }
    void showPostListBar();
    void hidePostListBar();
    bool inFullScreenMode() const { return isFullScreen(); }
    /// Whether this command can be chosen now.
    bool validateMenuItem(const QString &name) const;

    // actions of side bar and menu
    void didClickOnNewPost();
    void didClickOnPostsList();
    void didClickOnImportMedia();
    void didClickPostOnMenuItem();
    void didClickSaveOnMenuItem();
    void didClickDeletePostOnMenuItem();
    void didClickRevertOnMenuItem();
    void didClickRefreshPostListOnMenuItem();
    void didClickLinkOnMenuItem();
    void undo();
    void redo();
    void cut();
    void copy();
    void paste();
    void selectAll();
    void searchPosts();
    void newAccount();
    void toggleFullScreen();
    void getStartedFromMenu();
    void didClickOnContactSupport();
    void didClickOnBrowserExtensions();
    void didClickQuit();

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeViews();
    void makeMenus();
    void hintAtShortcuts();
    void addCommand(QMenu *menu, const MenuCommand &command);
    void connectViews();
    void restorePreviousToolViewStatus();
    QRect roomOnScreen() const;
    void saveFrame();
    void setToolViewShown(bool shown);
    void layOutColumn();
    void updateMenus(bool validate);
    void updateButtons();
    void makeWebViewSoon(int milliseconds);
    bool isRuleMet(MenuCommand::Rule rule) const;
    bool hasAttachedSheet() const;
    void edit(const char *method, EditorView::Edit command);
    void format(const QString &command);
    QRect sheetRect() const;

    ZLAppDelegate &m_app;
    QWidget *m_mainView;
    QHBoxLayout *m_column;
    ZLSideBarView *m_sideBarView;
    QWidget *m_titleBarView;
    ZLSelectorView *m_selectorView;
    QWidget *m_toolView;
    QWidget *m_currentView;
    ZLSheetHost *m_sheets;
    std::unique_ptr<ZLPrompts> m_prompts;
    std::unique_ptr<ComposeArea> m_compose;
    std::unique_ptr<ZLPostListViewController> m_postList;
    QShortcut *m_leaveFullScreen;
    QHash<QString, QAction *> m_actions;
    QHash<QString, MenuCommand::Rule> m_rules;
    bool m_isDisplayingToolView = false;
    int m_grownBy; ///< by so much the open list has made the window wider
    bool m_wasPainted = false;
    bool m_hasNewRows = false;
    bool m_isAskingForNewPost = false;
    KeyHold *m_keyHold;
};
