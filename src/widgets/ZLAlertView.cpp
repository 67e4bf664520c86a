#include "widgets/ZLAlertView.h"

#include <QLayout>
#include <QPushButton>

namespace {
constexpr QColor deleteColor(0xc9, 0x2a, 0x2a); // white reads on it, on light and dark ground
}

ZLAlertView::ZLAlertView()
{
    setObjectName(QStringLiteral("deleteAlert"));
    setIcon(QStringLiteral("editor_delete_button"), ZLTheme::danger);
    m_delete = addButton(QStringLiteral("Delete"));
    m_delete->setObjectName(QStringLiteral("confirmDeleteButton"));
    QPushButton *cancel = addButton(QStringLiteral("Cancel"));
    cancel->setObjectName(QStringLiteral("cancelDeleteButton"));
    setInitialFirstResponder(cancel);
    connect(cancel, &QPushButton::clicked, this, [this] { Q_EMIT didDismissWithButtonIndex(0); });
    connect(m_delete, &QPushButton::clicked, this, [this] { Q_EMIT didDismissWithButtonIndex(1); });
}

void ZLAlertView::ask(const QString &heading, const QString &title, const QString &text)
{
    const QMargins margins = layout()->contentsMargins();
    const QString quoted = u'"' + title.simplified() + u'"';
    setHeading(heading);
    setText(
        fontMetrics().elidedText(quoted, Qt::ElideMiddle, width() - margins.left() - margins.right()) + u'\n' + text);
    setAccessibleDescription(text);
    QPalette red = palette();
    red.setColor(QPalette::Highlight, deleteColor);
    m_delete->setPalette(red);
}
