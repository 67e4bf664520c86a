#include "platform/ZLUserNotificationCenter.h"

#include "platform/ZLLog.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QHash>

namespace {

constexpr QLatin1String service("org.freedesktop.Notifications");
constexpr QLatin1String path("/org/freedesktop/Notifications");

class DesktopNotificationCenter : public ZLUserNotificationCenter {
    Q_OBJECT
public:
    explicit DesktopNotificationCenter(QObject *parent)
        : ZLUserNotificationCenter(parent)
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected())
            return;
        bus.connect(service, path, service, QStringLiteral("ActionInvoked"), this, SLOT(actionInvoked(uint, QString)));
        bus.connect(service, path, service, QStringLiteral("NotificationClosed"), this, SLOT(closed(uint, uint)));
    }

    void deliver(const ZLUserNotification &notification) override
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) {
            ZLLog(QStringLiteral("no notification service: %1").arg(notification.title));
            return;
        }
        auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message(notification)), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, notification] {
            watcher->deleteLater();
            const QDBusPendingReply<uint> reply = *watcher;
            if (reply.isError())
                ZLLog(QStringLiteral("notification not shown: %1").arg(reply.error().message()));
            else
                m_shown.insert(reply.value(), notification);
        });
    }

private Q_SLOTS:
    void actionInvoked(uint id, const QString &)
    {
        if (m_shown.contains(id))
            Q_EMIT didActivateNotification(m_shown.value(id));
    }
    void closed(uint id, uint) { m_shown.remove(id); }

private:
    static QDBusMessage message(const ZLUserNotification &notification)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
        QStringList actions;
        if (!notification.URL.isEmpty())
            actions = {QStringLiteral("default"), QStringLiteral("Open")};
        // The body may be read as markup by the service.
        call.setArguments({QStringLiteral("Zalmo"), 0U, QStringLiteral("zalmo"), notification.title,
            notification.subtitle.toHtmlEscaped(), actions,
            QVariantMap{{QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}}, -1});
        return call;
    }

    QHash<uint, ZLUserNotification> m_shown;
};

} // namespace

ZLUserNotificationCenter *makeSystemNotificationCenter(QObject *parent)
{
    return new DesktopNotificationCenter(parent);
}

#include "ZLUserNotificationCenter.moc"
