#include "widgets/ZLSpinner.h"

#include "widgets/ZLTheme.h"

#include <QPainter>
#include <QTimerEvent>

ZLSpinner::ZLSpinner(int side, QWidget *parent)
    : QWidget(parent)
    , m_side(side)
{
    setFixedSize(side, side);
}

void ZLSpinner::startAnimation()
{
    m_running = true;
    updateTimer();
    update();
}

void ZLSpinner::stopAnimation()
{
    m_running = false;
    updateTimer();
    update();
}

void ZLSpinner::updateTimer()
{
    if (m_running && isVisible())
        m_timer.start(40, this);
    else
        m_timer.stop();
}

void ZLSpinner::paintEvent(QPaintEvent *)
{
    if (!m_running)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal width = qMax(2.0, m_side / 9.0);
    const QRectF ring = QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.setPen(QPen(ZLTheme::separator(palette()), width));
    painter.drawEllipse(ring);
    painter.setPen(QPen(ZLTheme::accent(palette()), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, -m_angle * 16, 100 * 16);
}

void ZLSpinner::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QWidget::timerEvent(event);
    m_angle = (m_angle + 14) % 360;
    update();
}

void ZLSpinner::showEvent(QShowEvent *)
{
    updateTimer();
}
void ZLSpinner::hideEvent(QHideEvent *)
{
    updateTimer();
}
