#include "mainwindow/ZLMainWindow.h"

#include "app/ZLAppDelegate.h"
#include "editor/ZLComposeBar.h"
#include "mainwindow/ComposeArea.h"
#include "mainwindow/FullScreenColumn.h"
#include "mainwindow/KeyHold.h"
#include "mainwindow/WindowPlacement.h"
#include "mainwindow/ZLPostListView.h"
#include "mainwindow/ZLPostListViewController.h"
#include "mainwindow/ZLPrompts.h"
#include "mainwindow/ZLSelectorView.h"
#include "mainwindow/ZLSideBarView.h"
#include "mainwindow/ZLTitleBarView.h"
#include "widgets/ZLIconButton.h"
#include "widgets/ZLIcons.h"
#include "widgets/ZLSheetHost.h"
#include "widgets/ZLTheme.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QWindowStateChangeEvent>

namespace {
const QString toolViewKey = u"postListShouldBeOpen"_qs;
const QString frameKey = u"mainWindowFrame"_qs;
constexpr QSize sizeWithOpenList(1180, 780);
constexpr QSize smallestSize(640, 480);
/// What a desktop draws around a window, as long as that cannot be asked.
constexpr QMargins likelyFrame(4, 40, 4, 4);
} // namespace

ZLMainWindow::ZLMainWindow(ZLAppDelegate &app)
    : m_app(app)
    , m_leaveFullScreen(new QShortcut(Qt::Key_Escape, this))
    , m_grownBy(ZLTheme::toolViewWidth)
    , m_keyHold(new KeyHold(this))
{
    ZLTheme::applyOnce(*qApp);
    setObjectName(u"mainWindow"_qs);
    setWindowTitle(u"Zalmo"_qs);
    setWindowIcon(ZLIcons::application());
    setContextMenuPolicy(Qt::NoContextMenu);
    makeViews();
    makeMenus();
    connectViews();
    restorePreviousToolViewStatus();
    updateButtons();
}

ZLMainWindow::~ZLMainWindow()
{
    // The parts that talk to views go before the views.
    m_postList->delegate = nullptr;
    m_compose->controller().setRowUpdates(nullptr);
}

void ZLMainWindow::makeViews()
{
    m_mainView = new QWidget(this);
    m_mainView->setAutoFillBackground(true);
    m_mainView->setBackgroundRole(QPalette::Base);
    setCentralWidget(m_mainView);
    m_sideBarView = new ZLSideBarView(m_mainView);
    m_titleBarView = new ZLTitleBarView(m_mainView);
    m_selectorView = new ZLSelectorView(m_titleBarView);
    m_titleBarView->layout()->addWidget(m_selectorView);
    m_sheets = new ZLSheetHost(m_mainView);
    m_prompts = std::make_unique<ZLPrompts>(*m_sheets);
    m_postList = std::make_unique<ZLPostListViewController>(m_app, *m_prompts, m_mainView);
    m_compose = std::make_unique<ComposeArea>(m_app, *m_prompts, *m_sheets);
    m_compose->setParent(this);
    m_toolView = m_postList->view();
    m_currentView = m_compose->view();

    auto *body = new QHBoxLayout;
    body->setSpacing(0);
    body->addWidget(m_toolView);
    body->addWidget(m_currentView, 1);
    auto *right = new QVBoxLayout;
    right->setSpacing(0);
    right->addWidget(m_titleBarView);
    right->addLayout(body, 1);
    m_column = new QHBoxLayout(m_mainView);
    m_column->setContentsMargins({});
    m_column->setSpacing(0);
    m_column->addWidget(m_sideBarView);
    m_column->addLayout(right, 1);
}

void ZLMainWindow::makeMenus()
{
    for (const MenuOfCommands &commands : menuCommands()) {
        QMenu *menu = menuBar()->addMenu(commands.title);
        for (const MenuCommand &command : commands.commands)
            addCommand(menu, command);
        // An item is grey only while its menu is open. Its shortcut asks again when it is pressed: a key must not be
        // dead because of what was so when the menu was last looked at.
        connect(menu, &QMenu::aboutToShow, this, [this] { updateMenus(true); });
        connect(menu, &QMenu::aboutToHide, this, [this] { updateMenus(false); });
    }
    m_selectorView->setConnectAction(m_actions.value(u"newBlogMenuItem"_qs));
    m_actions.value(u"postListMenuItem"_qs)->setCheckable(true);
    m_actions.value(u"fullScreenMenuItem"_qs)->setCheckable(true);
    hintAtShortcuts();
}

/// The buttons that do what a menu command does.
void ZLMainWindow::hintAtShortcuts()
{
    static const QHash<QString, QString> commands{
        {u"postListButton"_qs, u"postListMenuItem"_qs},
        {u"createNewPostButton"_qs, u"newPostItem"_qs},
        {u"importButton"_qs, u"insertImageMenuItem"_qs},
        {u"insertMediaButton"_qs, u"insertImageMenuItem"_qs},
        {u"linkButton"_qs, u"linkMenuItem"_qs},
        {u"saveButton"_qs, u"saveMenuItem"_qs},
        {u"deleteButton"_qs, u"deletePostMenuItem"_qs},
        {u"refreshButton"_qs, u"refreshPostListMenuItem"_qs},
    };
    for (ZLIconButton *button : m_mainView->findChildren<ZLIconButton *>()) {
        if (const QAction *action = m_actions.value(commands.value(button->objectName())))
            button->setShortcutHint(action->shortcut());
    }
    m_mainView->findChild<ZLComposeBar *>()->setPublishShortcut(m_actions.value(u"postMenuItem"_qs)->shortcut());
}

void ZLMainWindow::addCommand(QMenu *menu, const MenuCommand &command)
{
    if (command.name.isNull()) {
        menu->addSeparator();
        return;
    }
    QAction *action = menu->addAction(command.title);
    action->setObjectName(command.name);
    action->setShortcuts(command.shortcuts);
    if (!command.icon.isEmpty())
        action->setIcon(ZLIcons::icon(command.icon));
    m_actions.insert(command.name, action);
    m_rules.insert(command.name, command.rule);
    connect(action, &QAction::triggered, this, [this, command] {
        if (isRuleMet(command.rule))
            command.action ? (this->*command.action)() : format(command.format);
    });
}

void ZLMainWindow::connectViews()
{
    m_postList->delegate = m_compose.get();
    m_compose->controller().setRowUpdates(m_postList.get());
    connect(&m_compose->controller(), &ZLMainWindowCreateViewController::didLoadedPost, m_keyHold, &KeyHold::release);
    // At once and not at the end, which a crash does not have.
    connect(&m_compose->controller(), &ZLMainWindowCreateViewController::actionsDidChange, this, [this] {
        if (m_compose->controller().currentDocument())
            m_app.openPosts().remember();
    });
    connect(m_postList.get(), &ZLPostListViewController::didClickOnNewPost, this, &ZLMainWindow::didClickOnNewPost);
    connect(m_sideBarView, &ZLSideBarView::didClickOnPostsList, this, &ZLMainWindow::didClickOnPostsList);
    connect(m_sideBarView, &ZLSideBarView::didClickOnNewPost, this, &ZLMainWindow::didClickOnNewPost);
    connect(m_sideBarView, &ZLSideBarView::didClickOnImportMedia, this, &ZLMainWindow::didClickOnImportMedia);
    connect(m_selectorView, &ZLSelectorView::selectorDidChange, this,
        [this](int index) { m_app.currentBlog().selectorDidChange(index); });
    connect(&m_app.notifications(), &ZLNotifications::didUpdatePosts, this, [this] {
        updateButtons();
        m_hasNewRows = true;
        m_compose->loadEngine(); // while they are painted
    });
    connect(m_leaveFullScreen, &QShortcut::activated, this, &ZLMainWindow::toggleFullScreen);
    m_leaveFullScreen->setEnabled(false);
    m_sheets->setSheetRect([this] { return sheetRect(); });
    connect(qApp, &QCoreApplication::aboutToQuit, this, &ZLMainWindow::saveFrame);
}

ZLWindows ZLMainWindow::windows()
{
    return {&m_compose->controller(), m_postList.get(), m_prompts.get(), m_selectorView, [this] { comeToFront(); }};
}

void ZLMainWindow::comeToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

// Frame and layout

void ZLMainWindow::restorePreviousToolViewStatus()
{
    const ZLDefaults &defaults = m_app.platform().defaults;
    const QVariant stored = defaults.objectForKey(toolViewKey); // starting values may not be registered yet
    m_isDisplayingToolView = !stored.isValid() || stored.toBool();
    m_toolView->setVisible(m_isDisplayingToolView);
    m_sideBarView->setPostListShown(m_isDisplayingToolView);
    setMinimumSize(smallestSize);
    if (restoreGeometry(QByteArray::fromBase64(defaults.stringForKey(frameKey).toLatin1()))) {
        if (windowState() == Qt::WindowNoState) // the screen may be another one today
            setGeometry(WindowPlacement::inside(roomOnScreen(), geometry()));
        return;
    }
    const int closed = m_isDisplayingToolView ? 0 : ZLTheme::toolViewWidth;
    resize((sizeWithOpenList - QSize(closed, 0)).boundedTo(roomOnScreen().size()));
}

QRect ZLMainWindow::roomOnScreen() const
{
    const QRect inner = geometry();
    const QRect outer = frameGeometry();
    const QMargins frame(inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
        outer.bottom() - inner.bottom());
    return screen()->availableGeometry().marginsRemoved(isVisible() ? frame : likelyFrame);
}

void ZLMainWindow::saveFrame()
{
    m_app.platform().defaults.setObjectForKey(QString::fromLatin1(saveGeometry().toBase64()), frameKey);
}

void ZLMainWindow::showPostListBar()
{
    if (!m_isDisplayingToolView)
        setToolViewShown(true);
}

void ZLMainWindow::hidePostListBar()
{
    if (m_isDisplayingToolView)
        setToolViewShown(false);
}

void ZLMainWindow::setToolViewShown(bool shown)
{
    m_isDisplayingToolView = shown;
    if (!shown && m_toolView->isAncestorOf(focusWidget()))
        m_compose->makeTitleBecomeFirstResponder();
    m_toolView->setVisible(shown);
    if (!isFullScreen() && !isMaximized()) {
        const int width = this->width();
        const QRect wanted = geometry().adjusted(0, 0, shown ? ZLTheme::toolViewWidth : -m_grownBy, 0);
        setGeometry(WindowPlacement::inside(roomOnScreen(), wanted));
        if (shown)
            m_grownBy = this->width() - width;
    }
    layOutColumn();
    m_sideBarView->setPostListShown(shown);
    m_app.platform().defaults.setObjectForKey(shown, toolViewKey);
    m_app.platform().defaults.synchronize();
    m_sheets->layOut();
}

void ZLMainWindow::layOutColumn()
{
    m_mainView->setBackgroundRole(isFullScreen() ? QPalette::Window : QPalette::Base); // what is beside the column
    if (!isFullScreen()) {
        m_column->setContentsMargins({});
        return;
    }
    const FullScreenColumn column(width(), m_isDisplayingToolView);
    m_column->setContentsMargins(column.x(), 0, width() - column.x() - column.width(), 0);
}

QRect ZLMainWindow::sheetRect() const
{
    if (m_app.currentBlog().accounts().isEmpty())
        return m_mainView->rect();
    const QPoint corner = m_currentView->mapTo(m_mainView, QPoint());
    return {corner, m_currentView->size()};
}

void ZLMainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    layOutColumn();
}

void ZLMainWindow::toggleFullScreen()
{
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void ZLMainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    const Qt::WindowStates before = static_cast<QWindowStateChangeEvent *>(event)->oldState();
    if (before.testFlag(Qt::WindowFullScreen) == isFullScreen())
        return; // no other state changes what is here
    m_compose->controller().hidePopupWindows();
    m_leaveFullScreen->setEnabled(isFullScreen());
    layOutColumn();
}

bool ZLMainWindow::event(QEvent *event)
{
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::UpdateRequest && !m_compose->webView()) {
        constexpr int patience = 500; // ms for the rows, which come first when there are any
        if (!std::exchange(m_wasPainted, true))
            makeWebViewSoon(patience);
        else if (m_hasNewRows)
            makeWebViewSoon(0);
    }
    return handled;
}

void ZLMainWindow::makeWebViewSoon(int milliseconds)
{
    QTimer::singleShot(milliseconds, this, [this] { m_compose->makeWebView(); });
}

// Menu

bool ZLMainWindow::hasAttachedSheet() const
{
    return m_sheets->attachedSheet() != nullptr;
}

bool ZLMainWindow::validateMenuItem(const QString &name) const
{
    return isRuleMet(m_rules.value(name));
}

bool ZLMainWindow::isRuleMet(MenuCommand::Rule rule) const
{
    const bool hasAccount = !m_app.currentBlog().accounts().isEmpty() && !hasAttachedSheet();
    const PostActions actions = m_compose->controller().actions();
    switch (rule) {
    case MenuCommand::NoSheet:
        return !hasAttachedSheet();
    case MenuCommand::HasAccount:
        return hasAccount;
    case MenuCommand::CanSave:
        return hasAccount && actions.testFlag(PostAction::Save);
    case MenuCommand::CanPublish:
        return hasAccount && actions.testFlag(PostAction::Publish);
    case MenuCommand::CanDelete:
        return hasAccount && actions.testFlag(PostAction::Delete);
    case MenuCommand::CanRevert:
        return hasAccount && actions.testFlag(PostAction::Revert);
    case MenuCommand::CanFormat:
        return m_compose->canFormatSelectedDOMRange();
    case MenuCommand::Always:
        break;
    }
    return true;
}

void ZLMainWindow::updateMenus(bool validate)
{
    for (auto item = m_actions.cbegin(); item != m_actions.cend(); ++item)
        item.value()->setEnabled(!validate || validateMenuItem(item.key()));
    m_actions.value(u"postListMenuItem"_qs)->setChecked(m_isDisplayingToolView);
    m_actions.value(u"fullScreenMenuItem"_qs)->setChecked(isFullScreen());
}

void ZLMainWindow::updateButtons()
{
    // Without a blog there is nothing to write for, and no editor shows behind the sheet.
    m_sheets->setHidingWindow(m_app.currentBlog().accounts().isEmpty());
    m_sideBarView->setButtonsEnabled(!m_app.currentBlog().accounts().isEmpty());
    m_postList->view()->refreshButton()->setEnabled(!m_app.currentBlog().accounts().isEmpty());
}
