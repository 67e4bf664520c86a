#pragma once

#include <QObject>
#include <QSettings>
#include <QString>
#include <QVariantMap>

/// The user's settings by key, over the starting values that the program registers. Kept in one INI file.
class ZLDefaults : public QObject {
    Q_OBJECT
public:
    /// `file` is the path of the INI file; it and its folder are made at the first write, for the user alone.
    explicit ZLDefaults(const QString &file, QObject *parent = nullptr);

    /// Starting values: what a key reads while the user has not set it.
    void registerDefaults(const QVariantMap &values);
    /// Starting values from a JSON object, as in resources/defaultPrefs.json; a missing or broken file registers
    /// nothing.
    void registerDefaultsFromFile(const QString &path);

    bool boolForKey(const QString &key) const; ///< false for a key without any value
    QString stringForKey(const QString &key) const; ///< null for a key without any value
    QVariant objectForKey(const QString &key) const; ///< invalid for a key without any value
    void setObjectForKey(const QVariant &value, const QString &key);
    void synchronize();

Q_SIGNALS:
    void didChange(const QString &key, const QVariant &value);

private:
    QSettings m_settings;
    QVariantMap m_registered;
};
