#include "widgets/ZLCoverView.h"

#include "widgets/ZLFocusRing.h"
#include "widgets/ZLTheme.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QPainter>
#include <QVariantAnimation>

namespace {
constexpr int fadeDuration = 400; // ms
constexpr double veil = 0.88;

/// The card: paper with a fine edge.
class Card : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(ZLTheme::edge(palette()));
        painter.setBrush(ZLTheme::raised(palette()));
        painter.drawRoundedRect(
            QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), ZLTheme::cardRadius, ZLTheme::cardRadius);
    }
};
} // namespace

ZLCoverView::ZLCoverView(QWidget *parent)
    : QWidget(parent)
    , m_card(new Card(this))
    , m_fade(new QVariantAnimation(this))
{
    hide();
    parent->installEventFilter(this);
    m_fade->setDuration(fadeDuration);
    connect(
        m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) { setStrength(value.toReal()); });
    connect(m_fade, &QVariantAnimation::finished, this, [this] {
        m_card->setGraphicsEffect(nullptr); // text is sharper without
        if (m_isShowing)
            return Q_EMIT didFadeIn();
        hide();
        Q_EMIT didFadeOut();
    });
}

void ZLCoverView::fadeIn()
{
    if (m_isShowing)
        return;
    m_isShowing = true;
    raise();
    layOut();
    show();
    m_fade->stop();
    m_fade->setStartValue(m_strength);
    m_fade->setEndValue(1.0);
    m_fade->start();
}

void ZLCoverView::fadeOut()
{
    if (!m_isShowing)
        return;
    m_isShowing = false;
    m_fade->stop();
    m_fade->setStartValue(m_strength);
    m_fade->setEndValue(0.0);
    m_fade->start();
}

void ZLCoverView::setStrength(qreal strength)
{
    m_strength = strength;
    auto *effect = qobject_cast<QGraphicsOpacityEffect *>(m_card->graphicsEffect());
    if (!effect) {
        effect = new QGraphicsOpacityEffect(m_card);
        m_card->setGraphicsEffect(effect);
    }
    effect->setOpacity(strength);
    update();
}

void ZLCoverView::layOut()
{
    setGeometry(parentWidget()->rect());
    const QSize size = m_card->sizeHint().expandedTo(m_card->minimumSize()).boundedTo(this->size());
    m_card->setGeometry(QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size));
}

bool ZLCoverView::event(QEvent *event)
{
    // Before the window's shortcut, which would leave full screen.
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
        event->accept();
    return QWidget::event(event);
}

void ZLCoverView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && isShowing())
        return didPressEscape();
    QWidget::keyPressEvent(event);
}

bool ZLCoverView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        layOut();
    return QWidget::eventFilter(watched, event);
}

void ZLCoverView::paintEvent(QPaintEvent *)
{
    QColor color = palette().color(ZLTheme::isDark(palette()) ? QPalette::Base : QPalette::Window);
    color.setAlphaF(float(veil * m_strength));
    QPainter(this).fillRect(rect(), color);
}

void ZLCoverView::mousePressEvent(QMouseEvent *)
{
    // What lies below is out of reach.
}

bool ZLCoverView::focusNextPrevChild(bool next)
{
    ZLFocusRing::moveFocus(*this, next);
    return true; // the focus stays on the card
}
