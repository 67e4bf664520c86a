#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

class QApplication;
class QWidget;

/// The program's look: one palette for light and one for dark, one accent, one style. Colours are functions of a
/// palette, so that a widget under another palette than the application's looks right as well.
namespace ZLTheme {
enum class Scheme {
    System, ///< light or dark as the desktop's palette is
    Light,
    Dark,
};
void apply(QApplication &app, Scheme scheme = Scheme::System);
void applyOnce(QApplication &app); ///< as the desktop is, unless apply() has been called already
QPalette palette(Scheme scheme);
bool isDark(const QPalette &palette);

constexpr int spacing = 8; ///< distances are multiples of it
constexpr int radius = 6; ///< of fields, buttons and rows
constexpr int cardRadius = 8;
constexpr int titleBarHeight = 40;
constexpr int sideBarWidth = 66;
constexpr int toolViewWidth = 300; ///< the bar of the post list

QColor accent(const QPalette &palette); ///< links, focus, what is on
QColor separator(const QPalette &palette);
QColor hover(const QPalette &palette);
QColor secondaryText(const QPalette &palette);
QColor listBackground(const QPalette &palette); ///< the post list, between the paper and the bars
QColor raised(const QPalette &palette); ///< what lies over the window: menus, sheets, completions
QColor edge(const QPalette &palette); ///< of what lies over the window; stronger than a separator
QColor good(const QPalette &palette);
QColor warning(const QPalette &palette);
QColor danger(const QPalette &palette);

/// The desktop's font at another size. `step`: -1 small print, 0 as it is, 1 heading of a sheet, 2 heading of a page.
QFont font(const QFont &base, int step, QFont::Weight weight = QFont::Normal);
} // namespace ZLTheme
