#include "mainwindow/ZLTitleBarView.h"

#include "widgets/ZLTheme.h"

#include <QHBoxLayout>
#include <QPainter>

ZLTitleBarView::ZLTitleBarView(QWidget *parent)
    : QWidget(parent)
{
    setFixedHeight(ZLTheme::titleBarHeight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(ZLTheme::spacing / 2, 0, ZLTheme::spacing, 1);
    row->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void ZLTitleBarView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(QRect(0, height() - 1, width(), 1), ZLTheme::separator(palette()));
}
