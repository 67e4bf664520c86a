#include "mainwindow/ZLSelectorView.h"

#include "widgets/ZLFavicon.h"
#include "widgets/ZLIcons.h"
#include "widgets/ZLPlainText.h"
#include "widgets/ZLTheme.h"

#include <QActionGroup>
#include <QMenu>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {
constexpr int selectorHeight = 30;
constexpr int iconSide = 16;
constexpr int arrowSide = 14;
constexpr int widestTitle = 320;
} // namespace

ZLSelectorView::ZLSelectorView(QWidget *parent)
    : QToolButton(parent)
    , m_menu(new QMenu(this))
{
    setObjectName(u"blogSelector"_qs);
    setToolTip(tr("Switch blog"));
    setFont(ZLTheme::font(font(), 0, QFont::DemiBold));
    setFocusPolicy(Qt::TabFocus);
    setPopupMode(QToolButton::InstantPopup);
    setMenu(m_menu);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    hide();
}

void ZLSelectorView::setItems(const QList<Item> &items)
{
    m_items = items;
    if (m_selectedIndex > items.size())
        m_selectedIndex = 0;
    rebuildMenu();
}

void ZLSelectorView::selectItem(int index)
{
    m_selectedIndex = index;
    const QList<QAction *> actions = m_group ? m_group->actions() : QList<QAction *>();
    if (index >= 1 && index <= actions.size())
        actions[index - 1]->setChecked(true);
}

void ZLSelectorView::rebuildMenu()
{
    m_menu->clear();
    delete m_group;
    m_group = new QActionGroup(this);
    for (int index = 1; index <= m_items.size(); ++index) {
        const Item &item = m_items[index - 1];
        QAction *action = m_menu->addAction(ZLFavicon::icon(item.imagePath), ZLPlainText::menuTitle(item.title));
        action->setCheckable(true);
        action->setChecked(index == m_selectedIndex);
        m_group->addAction(action);
        connect(action, &QAction::triggered, this, [this, index] {
            m_selectedIndex = index;
            Q_EMIT selectorDidChange(index);
        });
    }
    if (!m_connect)
        return;
    m_menu->addSeparator();
    m_menu->addAction(m_connect);
}

void ZLSelectorView::setConnectAction(QAction *action)
{
    m_connect = action;
    rebuildMenu();
}

void ZLSelectorView::showBlogSelector()
{
    show();
}

void ZLSelectorView::removeBlogSelector()
{
    hide();
}

void ZLSelectorView::setTitle(const QString &blogName, const QString &faviconPath)
{
    setText(blogName.trimmed());
    setAccessibleName(tr("Current blog: %1").arg(text()));
    setIcon(ZLFavicon::icon(faviconPath));
    updateGeometry();
}

QSize ZLSelectorView::sizeHint() const
{
    const int title = qMin(fontMetrics().horizontalAdvance(text()), widestTitle);
    return {title + iconSide + arrowSide + 5 * ZLTheme::spacing, selectorHeight};
}

void ZLSelectorView::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    painter.drawPrimitive(QStyle::PE_PanelButtonTool, option);
    const int middle = (selectorHeight - iconSide) / 2;
    icon().paint(&painter, 10, middle, iconSide, iconSide);
    const QRect title(
        10 + iconSide + ZLTheme::spacing, 0, width() - iconSide - arrowSide - 5 * ZLTheme::spacing, selectorHeight);
    painter.setPen(palette().color(QPalette::WindowText));
    const int room = title.width() + ZLTheme::spacing; // so that rounding elides no title that fits
    painter.drawText(title.adjusted(0, 0, ZLTheme::spacing, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        fontMetrics().elidedText(text(), Qt::ElideRight, room));
    painter.drawPixmap(width() - arrowSide - 8, (selectorHeight - arrowSide) / 2,
        ZLIcons::pixmap(u"selector_arrow"_qs, arrowSide, ZLTheme::secondaryText(palette()), devicePixelRatioF()));
    if (hasFocus())
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
