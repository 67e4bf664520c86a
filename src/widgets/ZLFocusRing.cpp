#include "widgets/ZLFocusRing.h"

#include <QWidget>

void ZLFocusRing::moveFocus(QWidget &area, bool next)
{
    QWidget *const start = area.focusWidget() ? area.focusWidget() : &area;
    QWidget *widget = start;
    do {
        widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        const bool takesTab = widget->focusPolicy() & Qt::TabFocus;
        if (takesTab && area.isAncestorOf(widget) && widget->isVisible() && widget->isEnabled()) {
            widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return;
        }
    } while (widget != start);
}
