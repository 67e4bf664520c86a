#include "widgets/ZLIconButton.h"

#include "widgets/ZLIcons.h"
#include "widgets/ZLPlainText.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

ZLIconButton::ZLIconButton(const QString &iconName, const QString &toolTip, QWidget *parent)
    : QToolButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::ArrowCursor);
    setSides(32, 18);
    setIconName(iconName);
    setName(toolTip);
}

void ZLIconButton::setIconName(const QString &iconName)
{
    if (iconName == m_iconName)
        return;
    m_iconName = iconName;
    setIcon(ZLIcons::icon(iconName));
}

void ZLIconButton::setSides(int button, int icon)
{
    setFixedSize(button, button);
    setIconSize({icon, icon});
}

void ZLIconButton::setName(const QString &toolTip)
{
    setAccessibleName(toolTip);
    setShortcutHint(m_shortcutHint);
}

void ZLIconButton::setShortcutHint(const QKeySequence &keys)
{
    m_shortcutHint = keys;
    setToolTip(ZLPlainText::toolTip(accessibleName(), keys));
}

void ZLIconButton::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    painter.drawPrimitive(QStyle::PE_PanelButtonTool, option);
    const QSize side = iconSize();
    const QRect box(QPoint((width() - side.width()) / 2, (height() - side.height()) / 2), side);
    icon().paint(&painter, box, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled,
        isChecked() ? QIcon::On : QIcon::Off);
    if (hasFocus())
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
