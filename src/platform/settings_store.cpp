#include "platform/settings_store.h"

#include "base/runtime_error.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <algorithm>

namespace
{

QString Path(const QString &section, const QString &key)
{
    return section + QLatin1Char('/') + key;
}

std::unique_ptr<QSettings> Opened(const QString &fileName)
{
    return std::make_unique<QSettings>(fileName, QSettings::IniFormat);
}

/// The file's name and six random letters: what is written beside the file before it takes its place.
/// A word ("Quillon.ini.backup", "Quillon.ini.Backup") is the user's own, unless the file is empty.
bool IsLeftOver(const QFileInfo &file, const QString &settingsName)
{
    const QString name = file.fileName();
    const QString letters = name.mid(settingsName.size() + 1);
    if (!name.startsWith(settingsName + QLatin1Char('.')) || letters.size() != 6 ||
        !std::all_of(letters.begin(), letters.end(),
                     [](QChar letter) { return letter.isLetter() && letter.unicode() < 128; }))
        return false;
    const bool isWord = letters.mid(1).toLower() == letters.mid(1) || letters.toUpper() == letters;
    return !isWord || file.size() == 0;
}

/// What a program has left that died while it wrote the settings. The lock would be waited for, and
/// the files beside the settings would become ever more.
void RemoveLeftOvers(const QString &fileName)
{
    const QFileInfo settings(fileName);
    const QString lockName = fileName + QStringLiteral(".lock");
    QLockFile lock(lockName);
    if (QFileInfo::exists(lockName))
        lock.removeStaleLockFile(); // leaves one that a program holds
    QFileInfoList leftOvers = settings.dir().entryInfoList(QDir::Files | QDir::Hidden);
    leftOvers.removeIf(
        [&](const QFileInfo &file) { return !IsLeftOver(file, settings.fileName()); });
    if (leftOvers.isEmpty() || !lock.tryLock(0)) // another program may be writing just now
        return;
    for (const QFileInfo &file : leftOvers)
        QFile::remove(file.filePath());
}

} // namespace

SettingsStore::SettingsStore(const QString &fileName)
    : m_fileName(fileName), m_settings(Opened(fileName))
{}

QString SettingsStore::DefaultFileName()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Quillon/Quillon.ini");
}

QString SettingsStore::GetSetting(const QString &section, const QString &key,
                                  const QString &fallback) const
{
    const QVariant value = m_settings->value(Path(section, key));
    if (!value.isValid())
        return fallback;
    // An unquoted comma makes a list of what a person wrote into the file by hand.
    return value.userType() == QMetaType::QStringList
               ? value.toStringList().join(QStringLiteral(", "))
               : value.toString();
}

void SettingsStore::Expect(const QString &section, const QString &key, const QString &value)
{
    m_expected.insert(Path(section, key), value);
}

void SettingsStore::SaveSetting(const QString &section, const QString &key, const QString &value)
{
    const QString path = Path(section, key);
    if (const auto expected = m_expected.find(path); expected != m_expected.end()) {
        if (*expected == value && m_settings->contains(path))
            return;
        *expected = value;
    }
    m_settings->setValue(path, value);
}

void SettingsStore::DeleteSetting(const QString &section, const QString &key)
{
    m_settings->remove(Path(section, key));
}

void SettingsStore::Load()
{
    m_hasUnreadableLines = !Synchronize();
    if (m_hasUnreadableLines && m_settings->childGroups().isEmpty())
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("Not a settings file: ") + m_fileName);
}

void SettingsStore::Flush()
{
    Synchronize();
}

bool SettingsStore::Synchronize()
{
    RemoveLeftOvers(m_fileName);
    m_settings->sync();
    m_settings->allKeys(); // a section is not looked at before somebody asks for it
    const bool isReadable = m_settings->status() != QSettings::FormatError;
    if (!isReadable) {
        // An error stays with its object, and would hide a later one of writing.
        std::unique_ptr<QSettings> next = Opened(m_fileName);
        m_settings = std::move(next);
        m_settings->sync();
    }
    if (m_settings->status() == QSettings::AccessError)
        throw RuntimeError(RuntimeError::PathAccessNumber,
                           QStringLiteral("Path/File access error: ") + m_fileName);
    return isReadable;
}
