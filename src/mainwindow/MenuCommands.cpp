#include "mainwindow/MenuCommands.h"

#include "compose/FormatCommands.h"
#include "mainwindow/ZLMainWindow.h"

#include <ZalmoServices.h>

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
            {u"revertMenuItem"_qs, tr("&Revert to the Blog's Version"), {}, MenuCommand::CanRevert,
                &Window::didClickRevertOnMenuItem},
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

MenuCommand formatItem(const FormatCommand &format)
{
    MenuCommand item;
    item.name = QString::fromLatin1(format.item);
    item.title = tr(format.label);
    item.shortcuts = key(format.shortcut);
    item.rule = format.isAlwaysOffered ? MenuCommand::Always : MenuCommand::CanFormat;
    item.icon = QString::fromLatin1(format.icon);
    item.format = QString::fromLatin1(format.command);
    return item;
}

MenuOfCommands formatMenu()
{
    MenuOfCommands menu{tr("F&ormat"), {}};
    for (const FormatCommand &format : formatCommands) {
        menu.commands << formatItem(format);
        if (format.endsGroup)
            menu.commands << separator();
    }
    menu.commands << QList<MenuCommand>{
        {u"linkMenuItem"_qs, tr("Lin&k…"), key("Ctrl+K"), MenuCommand::Always, &Window::didClickLinkOnMenuItem,
            u"menu_link"_qs},
        {u"insertImageMenuItem"_qs, tr("Insert I&mage…"), key("Ctrl+Shift+I"), MenuCommand::HasAccount,
            &Window::didClickOnImportMedia, u"sidebar_icon_media"_qs},
    };
    return menu;
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

/// Pages outside the program are offered where whoever packages it has set them.
MenuOfCommands helpMenu()
{
    MenuOfCommands menu{tr("&Help"),
        {{u"getStartedMenuItem"_qs, tr("&Get Started"), {}, MenuCommand::Always, &Window::getStartedFromMenu}}};
    if (*ZalmoServices::extensionsPage)
        menu.commands.append({u"extensionsMenuItem"_qs, tr("&Browser Extensions"), {}, MenuCommand::Always,
            &Window::didClickOnBrowserExtensions});
    if (*ZalmoServices::supportPage)
        menu.commands.append({u"supportMenuItem"_qs, tr("&Contact Support"), {}, MenuCommand::Always,
            &Window::didClickOnContactSupport});
    return menu;
}

} // namespace

QList<MenuOfCommands> menuCommands()
{
    return {fileMenu(), editMenu(), formatMenu(), viewMenu(), helpMenu()};
}
