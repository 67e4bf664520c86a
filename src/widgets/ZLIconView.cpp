#include "widgets/ZLIconView.h"

#include "widgets/ZLIcons.h"

#include <QPainter>

ZLIconView::ZLIconView(const QString &iconName, int side, QWidget *parent, Tone tone)
    : QWidget(parent)
    , m_iconName(iconName)
    , m_side(side)
    , m_tone(tone)
{
    setFixedSize(side, side);
}

void ZLIconView::setIcon(const QString &iconName, Tone tone)
{
    m_iconName = iconName;
    m_tone = tone;
    update();
}

void ZLIconView::paintEvent(QPaintEvent *)
{
    const QColor color = m_tone ? m_tone(palette()) : ZLIcons::tone(m_iconName, palette());
    QPainter(this).drawPixmap(rect(), ZLIcons::pixmap(m_iconName, m_side, color, devicePixelRatioF()));
}
