#pragma once

#include "widgets/ZLSheet.h"

class QVBoxLayout;

/// What the program does, in three lines, for the first start.
class ZLGetStartedWindowController : public ZLSheet {
    Q_OBJECT
public:
    ZLGetStartedWindowController();

Q_SIGNALS:
    void didClickDone();

protected:
    void didPressEscape() override;

private:
    void addTip(QVBoxLayout *column, const QString &icon, const QString &title, const QString &text);
};
