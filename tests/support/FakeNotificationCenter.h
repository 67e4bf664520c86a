#pragma once

#include "platform/ZLUserNotificationCenter.h"

#include <QList>

/// Keeps the messages instead of showing them.
class FakeNotificationCenter : public ZLUserNotificationCenter {
    Q_OBJECT
public:
    void deliver(const ZLUserNotification &notification) override { delivered.append(notification); }

    QList<ZLUserNotification> delivered;
};
