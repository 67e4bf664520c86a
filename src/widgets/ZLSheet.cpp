#include "widgets/ZLSheet.h"

#include "widgets/ZLFocusRing.h"
#include "widgets/ZLPlainText.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

ZLSheet::ZLSheet(int width)
    : m_column(new QVBoxLayout(this))
    , m_head(new QVBoxLayout)
    , m_contents(new QVBoxLayout)
    , m_buttons(new QHBoxLayout)
{
    setFixedWidth(width);
    setFocusPolicy(Qt::ClickFocus); // keeps key presses here when the pointer hits nothing in particular
    m_column->setContentsMargins(32, 28, 32, 24);
    m_column->setSpacing(ZLTheme::spacing);
    m_contents->setSpacing(ZLTheme::spacing + 4);
    m_contents->setContentsMargins(0, ZLTheme::spacing, 0, 0);
    m_buttons->setSpacing(ZLTheme::spacing);
    m_buttons->setContentsMargins(0, 2 * ZLTheme::spacing, 0, 0);
    m_buttons->setDirection(QBoxLayout::RightToLeft);
    m_column->addLayout(m_head);
    m_column->addLayout(m_contents);
    m_column->addLayout(m_buttons);
}

QLabel *ZLSheet::addLabel(int step)
{
    QLabel *label = ZLPlainText::label(this);
    label->setFont(ZLTheme::font(font(), step, step > 0 ? QFont::DemiBold : QFont::Normal));
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignHCenter);
    label->setMinimumWidth(1);
    return label;
}

void ZLSheet::setIcon(const QString &name, ZLIconView::Tone tone)
{
    if (!m_icon) {
        m_icon = new ZLIconView(name, 36, this);
        m_head->addWidget(m_icon, 0, Qt::AlignHCenter);
        m_head->setContentsMargins(0, 0, 0, ZLTheme::spacing);
    }
    m_icon->setIcon(name, tone);
}

QLabel *ZLSheet::setHeading(const QString &text)
{
    if (!m_heading) {
        m_heading = addLabel(1);
        m_column->insertWidget(1, m_heading);
    }
    m_heading->setText(text);
    setAccessibleName(text);
    return m_heading;
}

QLabel *ZLSheet::setText(const QString &text)
{
    if (!m_text) {
        m_text = addLabel(0);
        m_text->setForegroundRole(QPalette::PlaceholderText);
        m_column->insertWidget(m_heading ? 2 : 1, m_text);
    }
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    return m_text;
}

void ZLSheet::addContent(QWidget *widget)
{
    m_contents->addWidget(widget);
}

QPushButton *ZLSheet::addButton(const QString &title, bool canBeDefault)
{
    auto *button = new QPushButton(title, this);
    button->setAutoDefault(false);
    if (!m_default && canBeDefault) {
        m_default = button;
        button->setDefault(true);
    }
    m_buttons->addWidget(button, 1);
    return button;
}

void ZLSheet::didPressReturn()
{
    if (m_default && m_default->isEnabled())
        m_default->click();
}

bool ZLSheet::event(QEvent *event)
{
    // Before the window's shortcuts: Escape would leave full screen, Return would publish.
    if (event->type() == QEvent::ShortcutOverride) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter)
            event->accept();
    }
    return QFrame::event(event);
}

void ZLSheet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        return didPressEscape();
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return;
    auto *focused = qobject_cast<QPushButton *>(focusWidget());
    if (focused)
        focused->click();
    else
        didPressReturn();
}

bool ZLSheet::focusNextPrevChild(bool next)
{
    ZLFocusRing::moveFocus(*this, next);
    return true; // also with nowhere to go the focus stays in the sheet
}

void ZLSheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(ZLTheme::edge(palette()));
    painter.setBrush(ZLTheme::raised(palette()));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), ZLTheme::cardRadius, ZLTheme::cardRadius);
}
