#include "platform/ZLDefaults.h"

#include "platform/ZLAtomicFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

ZLDefaults::ZLDefaults(const QString &file, QObject *parent)
    : QObject(parent)
    , m_settings(file, QSettings::IniFormat)
{
}

void ZLDefaults::registerDefaults(const QVariantMap &values)
{
    m_registered.insert(values);
}

void ZLDefaults::registerDefaultsFromFile(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        registerDefaults(QJsonDocument::fromJson(file.readAll()).object().toVariantMap());
}

bool ZLDefaults::boolForKey(const QString &key) const
{
    return objectForKey(key).toBool();
}

QString ZLDefaults::stringForKey(const QString &key) const
{
    return objectForKey(key).toString();
}

QVariant ZLDefaults::objectForKey(const QString &key) const
{
    return m_settings.value(key, m_registered.value(key));
}

void ZLDefaults::setObjectForKey(const QVariant &value, const QString &key)
{
    if (objectForKey(key) == value && m_settings.contains(key))
        return;
    ZLAtomicFile::makePrivate(m_settings.fileName());
    m_settings.setValue(key, value);
    Q_EMIT didChange(key, value);
}

void ZLDefaults::synchronize()
{
    m_settings.sync();
}
