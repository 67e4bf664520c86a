#include "platform/DesktopColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String interface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String colorScheme("color-scheme");

} // namespace

DesktopColorScheme::DesktopColorScheme(QObject *parent)
    : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
        SLOT(settingDidChange(QString, QString, QDBusVariant)));
    ask();
}

void DesktopColorScheme::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    call.setArguments({QString(appearance), QString(colorScheme)});
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError())
            tell(reply.value().variant());
    });
}

void DesktopColorScheme::settingDidChange(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == appearance && key == colorScheme)
        tell(value.variant());
}

void DesktopColorScheme::tell(const QVariant &value)
{
    // "Read" wraps its answer twice.
    const QVariant inner = value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    const uint told = inner.toUInt();
    const Preference preference = told == Dark || told == Light ? Preference(told) : NoPreference;
    if (std::exchange(m_preference, preference) != preference)
        Q_EMIT didChange(preference);
}
