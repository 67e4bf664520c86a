#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QString>

/// The program's icons: drawings of one stroke, by the names in cmake/ZalmoIcons.cmake. Nothing is drawn before it is
/// painted, and a drawing takes its colour from the palette: a text tone, or a tone of its own for a post's state.
namespace ZLIcons {
/// Follows the application's palette, also when that changes later. Disabled, selected (on the highlight) and checked
/// (accent) states come by themselves.
QIcon icon(const QString &name);
/// The same by this palette.
QIcon icon(const QString &name, const QPalette &palette);
/// One drawing in one colour. `size` is in device-independent pixels. Null for a name that is not there.
QPixmap pixmap(const QString &name, int size, const QColor &color, qreal devicePixelRatio);
/// The colour that icon() gives this name in a plain state.
QColor tone(const QString &name, const QPalette &palette);
/// The program's own mark.
QIcon application();
} // namespace ZLIcons
