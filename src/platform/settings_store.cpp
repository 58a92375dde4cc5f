#include "platform/settings_store.h"

#include "base/runtime_error.h"

#include <QStandardPaths>

namespace
{

QString Path(const QString &section, const QString &key)
{
    return section + QLatin1Char('/') + key;
}

} // namespace

SettingsStore::SettingsStore(const QString &fileName) : m_settings(fileName, QSettings::IniFormat)
{}

QString SettingsStore::DefaultFileName()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Quillon/Quillon.ini");
}

QString SettingsStore::GetSetting(const QString &section, const QString &key,
                                  const QString &fallback) const
{
    const QVariant value = m_settings.value(Path(section, key));
    if (!value.isValid())
        return fallback;
    // An unquoted comma makes a list of what a person wrote into the file by hand.
    return value.userType() == QMetaType::QStringList
               ? value.toStringList().join(QStringLiteral(", "))
               : value.toString();
}

void SettingsStore::SaveSetting(const QString &section, const QString &key, const QString &value)
{
    m_settings.setValue(Path(section, key), value);
}

void SettingsStore::DeleteSetting(const QString &section, const QString &key)
{
    m_settings.remove(Path(section, key));
}

void SettingsStore::Load()
{
    Synchronize();
}

void SettingsStore::Flush()
{
    Synchronize();
}

void SettingsStore::Synchronize()
{
    m_settings.sync();
    if (m_settings.status() == QSettings::AccessError)
        throw RuntimeError(RuntimeError::PathAccessNumber,
                           QStringLiteral("Path/File access error: ") + m_settings.fileName());
    if (m_settings.status() == QSettings::FormatError)
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("Not a settings file: ") + m_settings.fileName());
}
