#include "widgets/ZLSheetHost.h"

#include "widgets/ZLTheme.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

ZLSheetHost::ZLSheetHost(QWidget *window)
    : QWidget(window)
{
    hide();
    setFocusPolicy(Qt::NoFocus);
    window->installEventFilter(this);
    m_fade.setDuration(160);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &now) { didFade(now.toReal()); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { holdFocus(now); });
}

ZLSheetHost::~ZLSheetHost()
{
    // The sheets go with it, and need not be followed any more.
    for (ZLSheet *sheet : findChildren<ZLSheet *>())
        sheet->disconnect(this);
}

void ZLSheetHost::setSheetRect(std::function<QRect()> rect)
{
    m_rect = std::move(rect);
    layOut();
}

void ZLSheetHost::setHidingWindow(bool hiding)
{
    m_isHidingWindow = hiding;
    layOut();
    update();
}

void ZLSheetHost::beginSheet(ZLSheet *sheet)
{
    if (!m_sheets.contains(sheet))
        m_sheets.append(sheet);
    if (sheet->parentWidget() != this) {
        sheet->setParent(this);
        connect(sheet, &QObject::destroyed, this, [this] { showFrontSheet(); });
    }
    showFrontSheet();
}

void ZLSheetHost::endSheet(ZLSheet *sheet)
{
    if (!m_sheets.removeOne(sheet))
        return;
    sheet->hide();
    showFrontSheet();
    Q_EMIT sheet->orderedOut();
}

ZLSheet *ZLSheetHost::frontSheet() const
{
    ZLSheet *front = nullptr;
    for (const QPointer<ZLSheet> &sheet : m_sheets) {
        if (!sheet)
            continue;
        if (sheet->isAlert())
            return sheet;
        if (!front)
            front = sheet;
    }
    return front;
}

void ZLSheetHost::showFrontSheet()
{
    m_sheets.removeAll(nullptr);
    ZLSheet *front = frontSheet();
    if (front == m_shown && front)
        return layOut();
    if (m_shown)
        m_shown->hide();
    const bool wasUp = isVisible() && m_shown;
    m_shown = front;
    if (!front) {
        hideAll();
    } else {
        if (!wasUp)
            m_focusBefore = window()->focusWidget();
        raise();
        show();
        layOut();
        front->show();
        layOut(); // wrapped texts know their height only now
        fade(1);
        QWidget *first = front->initialFirstResponder();
        (first ? first : front)->setFocus(Qt::OtherFocusReason);
    }
    Q_EMIT attachedSheetChanged();
}

void ZLSheetHost::hideAll()
{
    fade(0);
    if (m_focusBefore)
        m_focusBefore->setFocus(Qt::OtherFocusReason);
}

QWidget *ZLSheetHost::focusBehind() const
{
    return m_shown ? m_focusBefore.data() : window()->focusWidget();
}

void ZLSheetHost::setFocusBehind(QWidget *widget)
{
    if (m_shown)
        m_focusBefore = widget;
    else
        widget->setFocus(Qt::OtherFocusReason);
}

void ZLSheetHost::fade(qreal to)
{
    setAttribute(Qt::WA_TransparentForMouseEvents, to == 0);
    m_fade.stop();
    m_fade.setStartValue(m_dim);
    m_fade.setEndValue(to);
    m_fade.start();
}

void ZLSheetHost::didFade(qreal dim)
{
    m_dim = dim;
    if (m_dim == 0 && !m_shown)
        hide();
    layOut();
    update();
}

void ZLSheetHost::layOut()
{
    setGeometry(parentWidget()->rect());
    if (!m_shown)
        return;
    const QRect room = m_rect ? m_rect() : rect();
    const int width = m_shown->width();
    const int wanted = m_shown->hasHeightForWidth() ? m_shown->heightForWidth(width) : m_shown->sizeHint().height();
    const int height = qMin(wanted, room.height()); // a long text gives way before the buttons do
    const int rise = qRound((1 - m_dim) * 2 * ZLTheme::spacing);
    // A little above the middle, where one looks first.
    const int y = room.top() + int((room.height() - height) * 0.4) + rise;
    // A window narrower than the sheet shows its left part, where the fields are.
    const int x = qMax(0, qMin(room.left() + int((room.width() - width) * 0.5), rect().width() - width));
    m_shown->setGeometry(x, y, width, height);
}

bool ZLSheetHost::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        layOut();
    return QWidget::eventFilter(watched, event);
}

void ZLSheetHost::paintEvent(QPaintEvent *)
{
    QColor shade = m_isHidingWindow ? palette().color(QPalette::Window) : QColor(Qt::black);
    shade.setAlphaF(float((m_isHidingWindow ? 1 : ZLTheme::isDark(palette()) ? 0.55 : 0.32) * m_dim));
    QPainter(this).fillRect(rect(), shade);
}

void ZLSheetHost::mousePressEvent(QMouseEvent *)
{
    // The layer swallows clicks beside the sheet.
}

void ZLSheetHost::holdFocus(QWidget *now)
{
    if (!m_shown || !now || now->window() != window() || m_shown->isAncestorOf(now) || now == m_shown)
        return;
    m_focusBefore = now;
    QWidget *first = m_shown->initialFirstResponder();
    (first ? first : m_shown.data())->setFocus(Qt::OtherFocusReason);
}
