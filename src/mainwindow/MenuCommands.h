#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

class ZLMainWindow;

/// One command of the menu bar.
struct MenuCommand {
    /// When it can be chosen.
    enum Rule {
        Always,
        NoSheet, ///< nothing hangs from the window
        HasAccount, ///< a blog is connected, and nothing hangs from the window
        CanSave, ///< the same, and it can be done with the post on the screen, as its buttons say
        CanPublish,
        CanDelete,
        CanRevert,
        CanFormat, ///< the cursor is in the page
    };
    using Action = void (ZLMainWindow::*)();

    QString name; ///< of the item; null: a separator
    QString title;
    QList<QKeySequence> shortcuts = {};
    Rule rule = Always;
    Action action = nullptr;
    QString icon = {};
    QString format = {}; ///< in place of an action: what is done to the text
};

struct MenuOfCommands {
    QString title;
    QList<MenuCommand> commands;
};

/// The whole menu bar, in order.
QList<MenuOfCommands> menuCommands();
