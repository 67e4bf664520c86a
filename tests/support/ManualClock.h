#pragma once

#include "platform/ZLClock.h"

/// A clock that stands still until a test moves it.
class ManualClock : public ZLClock {
public:
    QDateTime present = QDateTime(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC);
    QDateTime now() const override { return present; }
};
