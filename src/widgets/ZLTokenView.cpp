#include "widgets/ZLTokenView.h"

#include "widgets/ZLIcons.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLTheme.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>

namespace {
constexpr int chipHeight = 26;
constexpr int crossSide = 12;
constexpr int padding = 10;
constexpr int widestText = 260;

QAccessibleInterface *makeAccessible(const QString &, QObject *object)
{
    auto *token = qobject_cast<ZLTokenView *>(object);
    return token ? new QAccessibleWidget(token, QAccessible::Button) : nullptr;
}

/// A bare widget would be a nameless client area to a screen reader.
void installAccessibility()
{
    [[maybe_unused]] static const bool once = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
}
} // namespace

ZLTokenView::ZLTokenView(const QString &token, QWidget *parent)
    : QWidget(parent)
    , m_token(token)
{
    installAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(Qt::ArrowCursor);
    setAccessibleName(token);
    setAccessibleDescription(QStringLiteral("Press Delete to take it away, Return to change it."));
    setToolTip(ZLPlainText::toolTip(token));
}

QSize ZLTokenView::sizeHint() const
{
    const int text = qMin(widestText, fontMetrics().horizontalAdvance(m_token) + 2);
    return {padding + text + padding / 2 + crossSide + padding, chipHeight};
}

QRect ZLTokenView::crossRect() const
{
    return {width() - padding - crossSide, (height() - crossSide) / 2, crossSide, crossSide};
}

void ZLTokenView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = ZLTheme::accent(palette());
    const bool isTag = m_token.startsWith(u'#');
    QColor fill = hasFocus() ? palette().color(QPalette::Highlight)
        : isTag              ? accent
                             : ZLTheme::secondaryText(palette());
    if (!hasFocus())
        fill.setAlphaF(isTag ? 0.14f : 0.16f);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()), height() / 2.0, height() / 2.0);

    const QColor ink = hasFocus() ? palette().color(QPalette::HighlightedText)
        : isTag                   ? accent
                                  : palette().color(QPalette::Text);
    const QRect cross = crossRect();
    const QRect text(padding, 0, cross.left() - padding - padding / 2, height());
    painter.setPen(isEnabled() ? ink : palette().color(QPalette::Disabled, QPalette::Text));
    painter.drawText(
        text, Qt::AlignVCenter | Qt::TextSingleLine, fontMetrics().elidedText(m_token, Qt::ElideRight, text.width()));
    painter.setOpacity(m_isOverCross ? 1.0 : 0.6);
    painter.drawPixmap(cross, ZLIcons::pixmap(QStringLiteral("token_remove"), crossSide, ink, devicePixelRatioF()));
}

void ZLTokenView::setOverCross(bool over)
{
    if (m_isOverCross == over)
        return;
    m_isOverCross = over;
    update();
}

void ZLTokenView::mouseMoveEvent(QMouseEvent *event)
{
    setOverCross(crossRect().adjusted(-6, -6, 6, 6).contains(event->pos()));
}

void ZLTokenView::leaveEvent(QEvent *)
{
    setOverCross(false);
}

void ZLTokenView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && crossRect().adjusted(-6, -6, 6, 6).contains(event->pos()))
        Q_EMIT removed();
}

void ZLTokenView::mouseDoubleClickEvent(QMouseEvent *)
{
    Q_EMIT editRequested();
}

void ZLTokenView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        return Q_EMIT removed();
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
        return Q_EMIT editRequested();
    case Qt::Key_Left:
        return Q_EMIT moveRequested(-1);
    case Qt::Key_Right:
        return Q_EMIT moveRequested(1);
    default:
        QWidget::keyPressEvent(event);
    }
}
