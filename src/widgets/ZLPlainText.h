#pragma once

#include <QKeySequence>
#include <QString>

class QLabel;
class QWidget;

/// Text from outside (a blog, a file, a name that somebody typed) for controls that would take it for markup or for a
/// keyboard mark if it looks like that. Whatever comes in shows as it is, and nothing is fetched for it.
namespace ZLPlainText {
/// For setToolTip() and QToolTip: wrapped, and cut where it is longer than anybody reads. With the keys that do the
/// same.
QString toolTip(const QString &text, const QKeySequence &keys = {});
/// For an item of a menu.
QString menuTitle(const QString &text);
/// The only kind of label in this program.
QLabel *label(QWidget *parent, const QString &text = {});
} // namespace ZLPlainText
