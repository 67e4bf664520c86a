#pragma once

#include "compose/ComposePage.h"

#include <array>

/// A format of the text, as the menu, the bar and the page know it.
struct FormatCommand {
    const char *command; ///< its name in the page
    const char *item; ///< object name of its menu item
    const char *label; ///< of the menu item; the bar has it as a tool tip
    const char *icon;
    const char *shortcut;
    bool SelectionStyle::*isOn; ///< in the text around the cursor
    bool isAlwaysOffered; ///< in the menu, even while the cursor is not in the text
    bool endsGroup;
};

inline constexpr std::array<FormatCommand, 6> formatCommands{{
    {"Bold", "boldMenuItem", "&Bold", "menu_bold", "Ctrl+B", &SelectionStyle::bold, true, false},
    {"Italic", "italicMenuItem", "&Italic", "menu_italic", "Ctrl+I", &SelectionStyle::italic, true, false},
    {"Underline", "underlineMenuItem", "&Underline", "menu_underline", "Ctrl+U", &SelectionStyle::underline, true,
        false},
    {"Strikethrough", "strikethroughMenuItem", "&Strikethrough", "menu_strikethrough", "Ctrl+Shift+X",
        &SelectionStyle::strikethrough, false, true},
    {"InsertUnorderedList", "unorderedListMenuItem", "Bulleted &List", "menu_unordered_list", "Ctrl+Shift+8",
        &SelectionStyle::unorderedList, false, false},
    {"InsertOrderedList", "orderedListMenuItem", "&Numbered List", "menu_ordered_list", "Ctrl+Shift+7",
        &SelectionStyle::orderedList, false, true},
}};
