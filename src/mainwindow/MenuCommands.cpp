#include "mainwindow/MenuCommands.h"

#include "mainwindow/ZLMainWindow.h"

namespace {

using Window = ZLMainWindow;
using Keys = QList<QKeySequence>;

QString tr(const char *text)
{
    return ZLMainWindow::tr(text);
}

MenuCommand separator()
{
    return {};
}

Keys key(const char *text)
{
    return {QKeySequence(QLatin1String(text))};
}

Keys key(QKeySequence::StandardKey standard)
{
    return QKeySequence::keyBindings(standard);
}

MenuOfCommands fileMenu()
{
    return {tr("&File"),
        {
            {u"newPostItem"_qs, tr("&New Post"), key(QKeySequence::New), MenuCommand::HasAccount,
                &Window::didClickOnNewPost},
            separator(),
            {u"saveMenuItem"_qs, tr("&Save"), key(QKeySequence::Save), MenuCommand::CanSave,
                &Window::didClickSaveOnMenuItem},
            {u"postMenuItem"_qs, tr("&Publish"), key("Ctrl+Return"), MenuCommand::CanPublish,
                &Window::didClickPostOnMenuItem},
            {u"deletePostMenuItem"_qs, tr("&Delete Post"), key("Ctrl+Shift+Del"), MenuCommand::CanDelete,
                &Window::didClickDeletePostOnMenuItem},
            separator(),
            {u"newBlogMenuItem"_qs, tr("&Connect a Blog…"), {}, MenuCommand::NoSheet, &Window::newAccount},
            separator(),
            {u"quitMenuItem"_qs, tr("&Quit"), key("Ctrl+Q"), MenuCommand::Always, &Window::didClickQuit},
        }};
}

MenuOfCommands editMenu()
{
    return {tr("&Edit"),
        {
            {u"undoMenuItem"_qs, tr("&Undo"), key(QKeySequence::Undo), MenuCommand::Always, &Window::undo},
            {u"redoMenuItem"_qs, tr("&Redo"), key(QKeySequence::Redo), MenuCommand::Always, &Window::redo},
            separator(),
            {u"cutMenuItem"_qs, tr("Cu&t"), key(QKeySequence::Cut), MenuCommand::Always, &Window::cut},
            {u"copyMenuItem"_qs, tr("&Copy"), key(QKeySequence::Copy), MenuCommand::Always, &Window::copy},
            {u"pasteMenuItem"_qs, tr("&Paste"), key(QKeySequence::Paste), MenuCommand::Always, &Window::paste},
            {u"selectAllMenuItem"_qs, tr("Select &All"), key(QKeySequence::SelectAll), MenuCommand::Always,
                &Window::selectAll},
            separator(),
            {u"searchPostsMenuItem"_qs, tr("&Find a Post"), key(QKeySequence::Find), MenuCommand::HasAccount,
                &Window::searchPosts},
        }};
}

MenuOfCommands formatMenu()
{
    return {tr("F&ormat"),
        {
            {u"boldMenuItem"_qs, tr("&Bold"), key(QKeySequence::Bold), MenuCommand::Always, &Window::addBold,
                u"menu_bold"_qs},
            {u"italicMenuItem"_qs, tr("&Italic"), key(QKeySequence::Italic), MenuCommand::Always, &Window::addItalic,
                u"menu_italic"_qs},
            {u"underlineMenuItem"_qs, tr("&Underline"), key(QKeySequence::Underline), MenuCommand::Always,
                &Window::addUnderline, u"menu_underline"_qs},
            {u"strikethroughMenuItem"_qs, tr("&Strikethrough"), key("Ctrl+Shift+X"), MenuCommand::CanFormat,
                &Window::didClickStrikethroughOnMenuItem, u"menu_strikethrough"_qs},
            separator(),
            {u"unorderedListMenuItem"_qs, tr("Bulleted &List"), key("Ctrl+Shift+8"), MenuCommand::CanFormat,
                &Window::didClickUnorderedListOnMenuItem, u"menu_unordered_list"_qs},
            {u"orderedListMenuItem"_qs, tr("&Numbered List"), key("Ctrl+Shift+7"), MenuCommand::CanFormat,
                &Window::didClickOrderedListOnMenuItem, u"menu_ordered_list"_qs},
            separator(),
            {u"linkMenuItem"_qs, tr("Lin&k…"), key("Ctrl+K"), MenuCommand::Always, &Window::didClickLinkOnMenuItem,
                u"menu_link"_qs},
            {u"insertImageMenuItem"_qs, tr("Insert I&mage…"), key("Ctrl+Shift+I"), MenuCommand::HasAccount,
                &Window::didClickOnImportMedia, u"sidebar_icon_media"_qs},
        }};
}

MenuOfCommands viewMenu()
{
    return {tr("&View"),
        {
            {u"postListMenuItem"_qs, tr("&Post List"), key("Ctrl+L"), MenuCommand::HasAccount,
                &Window::didClickOnPostsList},
            {u"refreshPostListMenuItem"_qs, tr("&Refresh"), {Qt::Key_F5, QKeySequence(u"Ctrl+R"_qs)},
                MenuCommand::HasAccount, &Window::didClickRefreshPostListOnMenuItem},
            separator(),
            {u"fullScreenMenuItem"_qs, tr("&Full Screen"), key("F11"), MenuCommand::Always, &Window::toggleFullScreen},
        }};
}

MenuOfCommands helpMenu()
{
    return {tr("&Help"),
        {
            {u"getStartedMenuItem"_qs, tr("&Get Started"), {}, MenuCommand::Always, &Window::getStartedFromMenu},
            {u"extensionsMenuItem"_qs, tr("&Browser Extensions"), {}, MenuCommand::Always,
                &Window::didClickOnBrowserExtensions},
            {u"supportMenuItem"_qs, tr("&Contact Support"), {}, MenuCommand::Always, &Window::didClickOnContactSupport},
        }};
}

} // namespace

QList<MenuOfCommands> menuCommands()
{
    return {fileMenu(), editMenu(), formatMenu(), viewMenu(), helpMenu()};
}
