#pragma once

/// The per-user settings: sections of keys and texts in an INI file. A key that is missing yields
/// the caller's default.

#include <QSettings>
#include <QString>

class SettingsStore
{
public:
    /// `fileName` is created at the first write.
    explicit SettingsStore(const QString &fileName);

    /// The application's own file, in the place the desktop gives for configuration.
    static QString DefaultFileName();

    QString GetSetting(const QString &section, const QString &key, const QString &fallback) const;
    void SaveSetting(const QString &section, const QString &key, const QString &value);
    void DeleteSetting(const QString &section, const QString &key);

    /// Reads what the file holds now. Throws RuntimeError when it cannot be read or understood.
    void Load();
    /// Writes what was saved, beside the file and renamed. Throws RuntimeError when that fails.
    void Flush();

private:
    void Synchronize();

    mutable QSettings m_settings;
};
