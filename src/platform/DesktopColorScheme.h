#pragma once

#include <QDBusVariant>
#include <QObject>

/// Whether the user's desktop asks for a dark look, from org.freedesktop.portal.Settings. Silent on a desktop without
/// it, and until it has an opinion.
class DesktopColorScheme : public QObject {
    Q_OBJECT
public:
    enum Preference : uint {
        NoPreference, ///< the look of the desktop's own palette
        Dark,
        Light,
    };

    /// Asks at once; the answer comes by didChange().
    explicit DesktopColorScheme(QObject *parent = nullptr);

Q_SIGNALS:
    void didChange(Preference preference);

private Q_SLOTS:
    void settingDidChange(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void ask();
    void tell(const QVariant &value);

    Preference m_preference = NoPreference; ///< what was told last
};
