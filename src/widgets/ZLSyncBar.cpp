#include "widgets/ZLSyncBar.h"

#include "widgets/ZLPlainText.h"
#include "widgets/ZLSpinner.h"
#include "widgets/ZLTheme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPropertyAnimation>
#include <QPushButton>

ZLSyncBar::ZLSyncBar(const QString &text, const QString &stopTitle, QWidget *parent)
    : QWidget(parent)
    , m_spinner(new ZLSpinner(16, this))
    , m_slide(new QPropertyAnimation(this, "pos", this))
{
    hide();
    parent->installEventFilter(this);
    m_slide->setDuration(400);
    m_slide->setEasingCurve(QEasingCurve::OutCubic);
    connect(m_slide, &QPropertyAnimation::finished, this, [this] {
        if (m_showing)
            return;
        m_spinner->stopAnimation();
        hide();
    });

    QLabel *label = ZLPlainText::label(this, text);
    label->setFont(ZLTheme::font(font(), -1));
    auto *stop = new QPushButton(stopTitle, this);
    stop->setFlat(true);
    stop->setFont(label->font());
    stop->setFixedSize(stop->fontMetrics().horizontalAdvance(stopTitle) + 3 * ZLTheme::spacing, 26);
    connect(stop, &QPushButton::clicked, this, &ZLSyncBar::stopped);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(2 * ZLTheme::spacing, 0, ZLTheme::spacing / 2, 0);
    row->setSpacing(ZLTheme::spacing);
    row->addWidget(m_spinner);
    row->addWidget(label, 1);
    row->addWidget(stop);
}

int ZLSyncBar::topWhenShown() const
{
    return parentWidget()->height() - barHeight;
}

void ZLSyncBar::slideIn()
{
    if (m_showing)
        return;
    m_showing = true;
    if (isHidden())
        setGeometry(0, parentWidget()->height(), parentWidget()->width(), barHeight);
    raise();
    show();
    m_spinner->startAnimation();
    slideTo(topWhenShown());
}

void ZLSyncBar::slideOut()
{
    if (!m_showing)
        return;
    m_showing = false;
    slideTo(parentWidget()->height());
}

void ZLSyncBar::slideTo(int top)
{
    m_slide->stop();
    m_slide->setStartValue(pos());
    m_slide->setEndValue(QPoint(0, top));
    m_slide->start();
}

bool ZLSyncBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize && !isHidden()) {
        m_slide->stop();
        setGeometry(0, m_showing ? topWhenShown() : parentWidget()->height(), parentWidget()->width(), barHeight);
        if (!m_showing)
            hide();
    }
    return QWidget::eventFilter(watched, event);
}

void ZLSyncBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(QRect(0, 0, width(), 1), ZLTheme::separator(palette()));
}
