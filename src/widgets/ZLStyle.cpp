#include "widgets/ZLStyle.h"

#include "widgets/ZLIcons.h"
#include "widgets/ZLTheme.h"

#include <QPainter>
#include <QStyleOption>
#include <QWidget>

namespace {

void fillRounded(
    QPainter *painter, const QRectF &rect, const QColor &fill, const QColor &border = QColor(), qreal borderWidth = 1.0)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const qreal inset = border.isValid() ? borderWidth / 2 : 0;
    painter->setPen(border.isValid() ? QPen(border, borderWidth) : QPen(Qt::NoPen));
    painter->setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter->drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), ZLTheme::radius, ZLTheme::radius);
    painter->restore();
}

bool hasKeyboardFocus(const QStyleOption *option)
{
    return option->state.testFlag(QStyle::State_HasFocus) && option->state.testFlag(QStyle::State_KeyboardFocusChange);
}

void drawFocusRing(const QStyleOption *option, QPainter *painter)
{
    fillRounded(painter, option->rect, QColor(), ZLTheme::accent(option->palette), 2);
}

void drawField(const QStyleOption *option, QPainter *painter)
{
    const QPalette &palette = option->palette;
    const bool focus = option->state.testFlag(QStyle::State_HasFocus);
    fillRounded(painter, option->rect, palette.color(QPalette::Base),
        focus ? ZLTheme::accent(palette) : ZLTheme::separator(palette), focus ? 2 : 1);
}

bool isDefault(const QStyleOption *option)
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    return button && button->features.testFlag(QStyleOptionButton::DefaultButton)
        && option->state.testFlag(QStyle::State_Enabled);
}

void drawPushButton(const QStyleOption *option, QPainter *painter)
{
    const QPalette &palette = option->palette;
    const bool down = option->state & (QStyle::State_Sunken | QStyle::State_On);
    const bool over = option->state.testFlag(QStyle::State_MouseOver) && option->state.testFlag(QStyle::State_Enabled);
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    if (isDefault(option)) {
        const QColor accent = palette.color(QPalette::Highlight);
        fillRounded(painter, option->rect, down ? accent.darker(120) : over ? accent.lighter(108) : accent);
    } else if (button && button->features.testFlag(QStyleOptionButton::Flat)) {
        fillRounded(painter, option->rect, down || over ? ZLTheme::hover(palette) : QColor());
    } else {
        const QColor fill = down || over ? ZLTheme::hover(palette) : palette.color(QPalette::Button);
        fillRounded(painter, option->rect, fill, ZLTheme::separator(palette));
    }
    if (hasKeyboardFocus(option))
        fillRounded(painter,
            QRectF(option->rect)
                .adjusted(isDefault(option) ? 2 : 0, isDefault(option) ? 2 : 0, isDefault(option) ? -2 : 0,
                    isDefault(option) ? -2 : 0),
            QColor(), isDefault(option) ? palette.color(QPalette::HighlightedText) : ZLTheme::accent(palette), 2);
}

void drawToolButton(const QStyleOption *option, QPainter *painter)
{
    const bool enabled = option->state.testFlag(QStyle::State_Enabled);
    const bool over = enabled && option->state.testFlag(QStyle::State_MouseOver);
    const bool down = option->state & (QStyle::State_Sunken | QStyle::State_On);
    if (over || down)
        fillRounded(painter, option->rect, ZLTheme::hover(option->palette));
}

void drawThumb(const QStyleOptionSlider *option, const QRect &rect, QPainter *painter)
{
    QColor color = option->palette.color(QPalette::PlaceholderText);
    const bool active = option->state & (QStyle::State_MouseOver | QStyle::State_Sunken);
    color.setAlphaF(active ? 0.75F : 0.4F);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    const QRectF thumb = QRectF(rect).adjusted(2, 2, -2, -2);
    const qreal round = qMin(thumb.width(), thumb.height()) / 2;
    painter->drawRoundedRect(thumb, round, round);
    painter->restore();
}

/// The thumb of a scroll bar that has no arrows.
QRect thumbRect(const QStyleOptionSlider *option, int minimumLength)
{
    const bool horizontal = option->orientation == Qt::Horizontal;
    const int room = horizontal ? option->rect.width() : option->rect.height();
    const qint64 range = qint64(option->maximum) - option->minimum;
    int length = room;
    if (range > 0) {
        length = int(qint64(room) * option->pageStep / (range + option->pageStep));
        length = qMin(qMax(length, minimumLength), room);
    }
    const int start = QStyle::sliderPositionFromValue(
        option->minimum, option->maximum, option->sliderPosition, room - length, option->upsideDown);
    const QRect &rect = option->rect;
    return horizontal ? QRect(rect.x() + start, rect.y(), length, rect.height())
                      : QRect(rect.x(), rect.y() + start, rect.width(), length);
}

} // namespace

ZLStyle::ZLStyle()
    : QProxyStyle(QStringLiteral("fusion"))
{
}

void ZLStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_PanelLineEdit: {
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        if (frame && frame->lineWidth > 0)
            drawField(option, painter);
        return;
    }
    case PE_FrameLineEdit:
        return drawField(option, painter);
    case PE_PanelButtonTool:
        return drawToolButton(option, painter);
    case PE_FrameFocusRect:
        if (option->state.testFlag(State_KeyboardFocusChange))
            drawFocusRing(option, painter);
        return;
    case PE_PanelMenu:
        painter->fillRect(option->rect, ZLTheme::raised(option->palette));
        return;
    case PE_FrameMenu:
        painter->setPen(ZLTheme::edge(option->palette));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        return;
    case PE_PanelTipLabel:
        painter->fillRect(option->rect, option->palette.color(QPalette::ToolTipBase));
        return;
    case PE_PanelScrollAreaCorner:
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ZLStyle::drawControl(
    ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case CE_PushButtonBevel:
        return drawPushButton(option, painter);
    case CE_PushButtonLabel:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option); button && isDefault(option)) {
            QStyleOptionButton accented(*button);
            accented.palette.setColor(QPalette::ButtonText, option->palette.color(QPalette::HighlightedText));
            return QProxyStyle::drawControl(element, &accented, painter, widget);
        }
        break;
    case CE_MenuBarEmptyArea:
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        return;
    case CE_MenuBarItem:
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        if (option->state & (State_Selected | State_Sunken))
            fillRounded(painter, QRectF(option->rect).adjusted(1, 2, -1, -2), ZLTheme::hover(option->palette));
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option)) {
            const bool underline = proxy()->styleHint(SH_UnderlineShortcut, option, widget, nullptr);
            drawItemText(painter, option->rect,
                Qt::AlignCenter | (underline ? Qt::TextShowMnemonic : Qt::TextHideMnemonic), option->palette,
                option->state.testFlag(State_Enabled), item->text, QPalette::WindowText);
        }
        return;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void ZLStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const
{
    const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !slider)
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (slider->maximum > slider->minimum)
        drawThumb(slider, subControlRect(control, option, SC_ScrollBarSlider, widget), painter);
}

QRect ZLStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex *option, SubControl part, const QWidget *widget) const
{
    const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !slider)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const QRect thumb = thumbRect(slider, pixelMetric(PM_ScrollBarSliderMin, option, widget));
    const QRect all = option->rect;
    const bool horizontal = slider->orientation == Qt::Horizontal;
    switch (part) {
    case SC_ScrollBarGroove:
        return all;
    case SC_ScrollBarSlider:
        return thumb;
    case SC_ScrollBarSubPage:
        return horizontal ? QRect(all.left(), all.top(), thumb.left() - all.left(), all.height())
                          : QRect(all.left(), all.top(), all.width(), thumb.top() - all.top());
    case SC_ScrollBarAddPage:
        return horizontal ? QRect(thumb.right() + 1, all.top(), all.right() - thumb.right(), all.height())
                          : QRect(all.left(), thumb.bottom() + 1, all.width(), all.bottom() - thumb.bottom());
    default:
        return {};
    }
}

QRect ZLStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
    const bool framed = element == SE_LineEditContents && frame && frame->lineWidth > 0;
    return framed ? rect.adjusted(ZLTheme::spacing - 2, 0, 2 - ZLTheme::spacing, 0) : rect;
}

QSize ZLStyle::sizeFromContents(
    ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const
{
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_PushButton) {
        const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
        const bool hasText = button && !button->text.isEmpty();
        size.setHeight(qMax(size.height(), 32));
        if (hasText)
            size.setWidth(qMax(contents.width() + 4 * ZLTheme::spacing, 80));
    } else if (type == CT_LineEdit) {
        size.setHeight(qMax(size.height(), 34));
    } else if (type == CT_MenuItem || type == CT_MenuBarItem) {
        size.rheight() += 4;
    }
    return size;
}

int ZLStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_ScrollBarExtent:
        return 12;
    case PM_ScrollBarSliderMin:
        return 28;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return ZLTheme::spacing;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuVMargin:
        return ZLTheme::spacing / 2;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QIcon ZLStyle::standardIcon(StandardPixmap name, const QStyleOption *option, const QWidget *widget) const
{
    // Qt's own would load picture plug-ins, which the first paint would wait for.
    switch (name) {
    case SP_LineEditClearButton:
        return ZLIcons::icon(u"postlist_clear"_qs);
    case SP_ToolBarHorizontalExtensionButton: // of the menu bar
        return ZLIcons::icon(u"menu_more"_qs);
    default:
        return QProxyStyle::standardIcon(name, option, widget);
    }
}

int ZLStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const
{
    if (hint == SH_ScrollBar_LeftClickAbsolutePosition)
        return 1;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_EtchDisabledText || hint == SH_DitherDisabledText)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}
