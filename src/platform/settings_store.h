#pragma once

/// The per-user settings: sections of keys and texts in an INI file. A key that is missing yields
/// the caller's default.
///
/// Several programs may share the file. Each writes only what it changed:
///
///     store.Load();
///     store.Expect("Options", "NotifyDays", "3");          what this program works with
///     store.SaveSetting("Options", "NotifyDays", "3");     the file keeps what another one wrote
///     store.SaveSetting("Options", "NotifyDays", "7");     is written
///     store.Flush();

#include <QHash>
#include <QSettings>
#include <QString>

#include <memory>

class SettingsStore
{
public:
    /// `fileName` is created at the first write.
    explicit SettingsStore(const QString &fileName);

    /// The application's own file, in the place the desktop gives for configuration.
    static QString DefaultFileName();

    QString GetSetting(const QString &section, const QString &key, const QString &fallback) const;
    /// The text that this program takes for the value of a key. Saving the same text later leaves
    /// what the file has by then; it is written when the file has no such key.
    void Expect(const QString &section, const QString &key, const QString &value);
    void SaveSetting(const QString &section, const QString &key, const QString &value);
    void DeleteSetting(const QString &section, const QString &key);

    /// Reads what the file holds now. Lines that are no settings are passed over; a file of nothing
    /// else, or one that cannot be read, throws RuntimeError.
    void Load();
    /// Whether Load has passed over lines.
    bool HasUnreadableLines() const { return m_hasUnreadableLines; }
    /// Writes what was saved, beside the file and renamed. Throws RuntimeError when that fails.
    void Flush();

private:
    /// False when the file has lines that are no settings.
    bool Synchronize();

    const QString m_fileName;
    std::unique_ptr<QSettings> m_settings;
    QHash<QString, QString> m_expected;
    bool m_hasUnreadableLines = false;
};
