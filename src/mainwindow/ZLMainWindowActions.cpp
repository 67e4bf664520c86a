// What the side bar and the menu do.

#include "app/ZLAppDelegate.h"
#include "mainwindow/ComposeArea.h"
#include "mainwindow/KeyHold.h"
#include "mainwindow/ZLMainWindow.h"
#include "mainwindow/ZLPostListView.h"
#include "mainwindow/ZLPostListViewController.h"
#include "mainwindow/ZLPrompts.h"
#include "widgets/ZLSheetHost.h"

#include <QLineEdit>
#include <ZalmoServices.h>

void ZLMainWindow::didClickOnNewPost()
{
    if (std::exchange(m_isAskingForNewPost, true))
        return;
    m_keyHold->hold(); // who types on at once means the new post
    const QPointer<ZLMainWindow> self(this);
    m_compose->controller().canCreateNewPost().then([this, self](bool can) {
        if (!self)
            return;
        m_isAskingForNewPost = false;
        if (!can) {
            m_compose->makeTitleBecomeFirstResponder(); // the screen is the new post already
            m_keyHold->release();
        } else if (!m_app.posts().createNewPost()) {
            m_keyHold->drop();
        }
    });
}

void ZLMainWindow::didClickOnPostsList()
{
    if (m_isDisplayingToolView)
        hidePostListBar();
    else
        showPostListBar();
}

void ZLMainWindow::didClickOnImportMedia()
{
    m_compose->controller().insertMedia();
}

void ZLMainWindow::didClickPostOnMenuItem()
{
    if (!hasAttachedSheet())
        m_compose->controller().doActionForCurrentPost(PostAction::Publish);
}

void ZLMainWindow::didClickSaveOnMenuItem()
{
    m_compose->controller().doActionForCurrentPost(PostAction::Save);
}
void ZLMainWindow::didClickDeletePostOnMenuItem()
{
    m_compose->controller().doActionForCurrentPost(PostAction::Delete);
}
void ZLMainWindow::didClickRevertOnMenuItem()
{
    m_compose->controller().doActionForCurrentPost(PostAction::Revert);
}
void ZLMainWindow::didClickRefreshPostListOnMenuItem()
{
    m_postList->refresh();
}

void ZLMainWindow::didClickLinkOnMenuItem()
{
    if (!hasAttachedSheet())
        m_compose->controller().addLinkToCurrentSelection();
}

// Some of these items are always enabled, and yet have nothing to format while the cursor is elsewhere.
void ZLMainWindow::format(const QString &command)
{
    if (m_compose->canFormatSelectedDOMRange())
        m_compose->controller().execCommand(command);
}

void ZLMainWindow::undo()
{
    edit("undo", EditorView::Edit::Undo);
}
void ZLMainWindow::redo()
{
    edit("redo", EditorView::Edit::Redo);
}
void ZLMainWindow::cut()
{
    edit("cut", EditorView::Edit::Cut);
}
void ZLMainWindow::copy()
{
    edit("copy", EditorView::Edit::Copy);
}
void ZLMainWindow::paste()
{
    edit("paste", EditorView::Edit::Paste);
}
void ZLMainWindow::selectAll()
{
    edit("selectAll", EditorView::Edit::SelectAll);
}

void ZLMainWindow::edit(const char *method, EditorView::Edit command)
{
    QWidget *focused = focusWidget();
    if (focused && focused->metaObject()->indexOfMethod((QByteArray(method) + "()").constData()) != -1)
        QMetaObject::invokeMethod(focused, method);
    else if (m_compose->canFormatSelectedDOMRange())
        m_compose->webView()->edit(command);
}

void ZLMainWindow::searchPosts()
{
    showPostListBar();
    QLineEdit *field = m_postList->view()->searchPostsField();
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
}

void ZLMainWindow::newAccount()
{
    m_app.connection().newAccount();
}
void ZLMainWindow::getStartedFromMenu()
{
    m_prompts->showGetStartedPanel();
}
void ZLMainWindow::didClickQuit()
{
    close();
}

void ZLMainWindow::didClickOnContactSupport()
{
    m_app.platform().workspace.openURL(QUrl(QString::fromUtf16(ZalmoServices::supportPage)));
}

void ZLMainWindow::didClickOnBrowserExtensions()
{
    m_app.platform().workspace.openURL(QUrl(QString::fromUtf16(ZalmoServices::extensionsPage)));
}
