#pragma once

#include <QStyledItemDelegate>

/// Paints one row of the post list: a title, a short extract, an icon for the post's state.
class ZLPostListCellView : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// The icon of a state: `darkBackground` is true for the plain row and false for the selected one.
    static QString statusImageForPostStatus(int status, bool darkBackground);
    /// What the icon tells, for a tool tip. `mark` is ZLPostListModel's.
    static QString wordForPostStatus(int status, const QString &mark = {});

protected:
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;
};
