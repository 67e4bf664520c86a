#include "widgets/ZLAlertView.h"

#include "widgets/ZLIconView.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLTheme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int textWidth = 320;
constexpr QColor deleteColor(0xc9, 0x2a, 0x2a); // white reads on it, on light and dark ground

QLabel *makeText(QWidget *card, const QFont &font)
{
    QLabel *label = ZLPlainText::label(card);
    label->setFont(font);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}
} // namespace

ZLAlertView::ZLAlertView(QWidget *parent)
    : ZLCoverView(parent)
{
    QWidget *card = this->card();
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(32, 28, 32, 24);
    column->setSpacing(ZLTheme::spacing);
    auto *icon = new ZLIconView(QStringLiteral("editor_delete_button"), 32, card, ZLTheme::danger);
    column->addWidget(icon, 0, Qt::AlignHCenter);
    column->addSpacing(ZLTheme::spacing);
    m_heading = makeText(card, ZLTheme::font(font(), 1, QFont::DemiBold));
    column->addWidget(m_heading);
    m_title = makeText(card, font());
    m_title->setForegroundRole(QPalette::PlaceholderText);
    m_title->setFixedWidth(textWidth);
    column->addWidget(m_title);
    m_text = makeText(card, font());
    m_text->setFixedWidth(textWidth);
    m_text->setWordWrap(true);
    column->addWidget(m_text);
    column->addSpacing(ZLTheme::spacing);
    auto *buttons = new QHBoxLayout;
    m_cancel = new QPushButton(QStringLiteral("Cancel"), card);
    m_cancel->setObjectName(QStringLiteral("cancelDeleteButton"));
    m_delete = new QPushButton(QStringLiteral("Delete"), card);
    m_delete->setObjectName(QStringLiteral("confirmDeleteButton"));
    m_delete->setDefault(true);
    buttons->addWidget(m_cancel, 1);
    buttons->addWidget(m_delete, 1);
    column->addLayout(buttons);
    connect(m_cancel, &QPushButton::clicked, this, [this] { dismiss(0); });
    connect(m_delete, &QPushButton::clicked, this, [this] { dismiss(1); });
}

void ZLAlertView::ask(const QString &heading, const QString &title, const QString &text)
{
    m_heading->setText(heading);
    const QString quoted = QStringLiteral("\"%1\"").arg(title);
    m_title->setText(m_title->fontMetrics().elidedText(quoted, Qt::ElideMiddle, textWidth));
    m_text->setText(text);
    setAccessibleName(heading);
    setAccessibleDescription(text);
    QPalette red = palette();
    red.setColor(QPalette::Highlight, deleteColor);
    m_delete->setPalette(red);
    layOut();
    fadeIn();
    m_cancel->setFocus(Qt::OtherFocusReason);
}

void ZLAlertView::dismiss(int index)
{
    if (!isShowing())
        return;
    fadeOut();
    Q_EMIT didDismissWithButtonIndex(index);
}

void ZLAlertView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return dismiss(m_delete->hasFocus() ? 1 : 0);
    ZLCoverView::keyPressEvent(event);
}
