#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

/// One message of the desktop.
struct ZLUserNotification {
    QString title;
    QString subtitle;
    QUrl URL; ///< opened when the user clicks the message; empty: nothing happens
};

/// The desktop's notifications.
class ZLUserNotificationCenter : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    virtual void deliver(const ZLUserNotification &notification) = 0;

Q_SIGNALS:
    void didActivateNotification(const ZLUserNotification &notification);
};

/// On org.freedesktop.Notifications; without such a service messages are dropped with a log line.
ZLUserNotificationCenter *makeSystemNotificationCenter(QObject *parent);
