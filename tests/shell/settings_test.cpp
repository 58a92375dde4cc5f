/// The per-user settings: every key, its default, and its way through the store.

#include "base/character_shift.h"
#include "store/settings.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{

const Formats UsFormats{QLocale(QLocale::English, QLocale::UnitedStates)};
const QDate Today(2026, 3, 2);

struct Key
{
    const char *section;
    const char *key;
    const char *byDefault; ///< as the file has it after a first run
    const char *other;     ///< another value, which must come back as it is
};

// Today is 3/2/2026. VerChkDt stands here in plain form; the file has it shifted.
const Key Keys[] = {
    {"Options", "BackupDir", "", "d:"},
    {"Options", "AverageTrans", "10", "25"},
    {"Options", "LastBackup", "3/2/2026", "2/27/2026"},
    {"Options", "LastNotify", "3/2/2026", "12/31/2025"},
    {"Options", "CheckNotify", "1", "0"},
    {"Options", "CheckAverage", "1", "0"},
    {"Options", "NotifyDays", "3", "14"},
    {"Options", "CheckCompact", "1", "0"},
    {"Options", "CompactDays", "10", "30"},
    {"Options", "DailyTracker", "1", "0"},
    {"Options", "DailyProfitLoss", "0", "1"},
    {"Options", "HistoryList", "0", "1"},
    {"Options", "PurchaseList", "0", "1"},
    {"Options", "ChartScreen", "0", "1"},
    {"Options", "BrowserScreen", "0", "1"},
    {"Options", "HistoricalPriceList", "0", "1"},
    {"Options", "ArgCascade", "False", "True"},
    {"Options", "ArgHorizontal", "False", "True"},
    {"Options", "ArgVertical", "False", "True"},
    {"Options", "ArgMaximize", "True", "False"},
    {"Options", "ArgNormal", "False", "True"},
    {"Options", "CurrentFilePath", "/app/Sample Portfolio.mdb", "/home/ann/Bröker's, Ünion.mdb"},
    {"Options", "AccountName", "Sample Portfolio", "Bröker's, Ünion"},
    {"Options", "ShowTipOfDay", "1", "0"},
    {"Options", "ShowReminderScreen", "1", "0"},
    {"Options", "CurrentTip", "0", "17"},
    {"Options", "ResetMonths", "12", "6"},
    {"Options", "ResetDate", "3/2/2026", "2/29/2028"},
    {"Options", "NeverReset", "1", "0"},
    {"Options", "ApplVersion", "6018", "6018"},
    {"Options", "NewVersion", "False", "True"},
    {"Options", "WebPriceUpdate", "True", "False"},
    {"Options", "AccessType", "2", "3"},
    {"Options", "LastRunDate", "1/1/1900", "3/1/2026"},
    {"Options", "VerChkDt", "3/2/2026", "4/15/2026"},
    {"Options", "StoreWebLogin", "1", "0"},
    {"Options", "HistPriceMonths", "2", "12"},
    {"Options", "KeepPortfolioData", "5", "7"},
    {"Colors", "ChartBackRed", "255", "1"},
    {"Colors", "ChartBackGreen", "255", "2"},
    {"Colors", "ChartBackBlue", "255", "3"},
    {"Colors", "ChartWallRed", "249", "4"},
    {"Colors", "ChartWallGreen", "247", "5"},
    {"Colors", "ChartWallBlue", "142", "6"},
    {"Colors", "ChartBaseRed", "203", "7"},
    {"Colors", "ChartBaseGreen", "206", "8"},
    {"Colors", "ChartBaseBlue", "66", "9"},
    {"Colors", "ChartSeriesRed", "128", "10"},
    {"Colors", "ChartSeriesGreen", "0", "11"},
    {"Colors", "ChartSeriesBlue", "64", "12"},
    {"Colors", "DTDataGridColor", "0", "12648447"},
    {"Colors", "DTTotalGridColor", "0", "16777215"},
    {"Colors", "DTBalanceColColor", "9109503", "255"},
    {"Colors", "DPAllRowColor", "0", "65280"},
    {"Colors", "DPTotalRowColor", "8438015", "1"},
    {"Colors", "THDataGridColor", "0", "2"},
    {"Colors", "HPDataGridColor", "0", "3"},
    {"Colors", "PPDataGridColor", "0", "4"},
    {"Colors", "QSDataGridColor", "0", "5"},
};

/// A value of the table as the file has it.
QString InFile(const Key &key, const char *value)
{
    const QString text = QString::fromUtf8(value);
    return qstrcmp(key.key, "VerChkDt") == 0 ? ShiftUp(text) : text;
}

class SettingsFile : public testing::Test
{
protected:
    Settings Load() const
    {
        SettingsStore store(m_folder.filePath("settings.ini"));
        return LoadSettings(store, UsFormats, QStringLiteral("/app"), Today);
    }
    void Save(const Settings &settings) const
    {
        SettingsStore store(m_folder.filePath("settings.ini"));
        SaveSettings(store, UsFormats, settings);
    }
    QString Get(const char *section, const char *key) const
    {
        SettingsStore store(m_folder.filePath("settings.ini"));
        store.Load();
        return store.GetSetting(QString::fromUtf8(section), QString::fromUtf8(key),
                                QStringLiteral("(none)"));
    }
    void Put(const char *section, const char *key, const QString &value) const
    {
        SettingsStore store(m_folder.filePath("settings.ini"));
        store.SaveSetting(QString::fromUtf8(section), QString::fromUtf8(key), value);
        store.Flush();
    }

    QTemporaryDir m_folder;
};
class SettingsKeys : public SettingsFile, public testing::WithParamInterface<Key>
{};

} // namespace

TEST_P(SettingsKeys, AMissingKeyYieldsItsDefault)
{
    const Key &key = GetParam();
    Save(Load());
    EXPECT_EQ(Get(key.section, key.key), InFile(key, key.byDefault));
}

TEST_P(SettingsKeys, AStoredValueIsReadAndWrittenBack)
{
    const Key &key = GetParam();
    Put(key.section, key.key, InFile(key, key.other));
    const Settings read = Load();
    Put(key.section, key.key, QStringLiteral("overwritten"));
    Save(read);
    EXPECT_EQ(Get(key.section, key.key), InFile(key, key.other));
}

INSTANTIATE_TEST_SUITE_P(Each, SettingsKeys, testing::ValuesIn(Keys),
                         [](const auto &info) { return std::string(info.param.key); });

TEST_F(SettingsFile, OfAFirstRunOpensTheSampleAccountWithTheTrackerAloneAndMaximized)
{
    const Settings settings = Load();
    EXPECT_EQ(settings.CurrentFilePath, "/app/Sample Portfolio.mdb");
    EXPECT_EQ(settings.AccountName, "Sample Portfolio");
    EXPECT_EQ(settings.DailyTracker, 1);
    EXPECT_EQ(settings.DailyProfitLoss + settings.HistoryList + settings.PurchaseList +
                  settings.ChartScreen + settings.BrowserScreen + settings.HistoricalPriceList,
              0);
    EXPECT_TRUE(settings.ArgMaximize);
}

TEST_F(SettingsFile, KeepsExactlyTwoCharactersOfTheBackupDrive)
{
    Put("Options", "BackupDir", "c:\\Backups");
    Settings settings = Load();
    EXPECT_EQ(settings.BackupDir, "c:");
    settings.BackupDir = "/media/ann";
    Save(settings);
    EXPECT_EQ(Get("Options", "BackupDir"), "/m");
}

TEST_F(SettingsFile, OfAFirstRunHasALastRunDateThatDiffersFromEveryRealDate)
{
    EXPECT_EQ(Load().LastRunDate, QDate(1900, 1, 1));
}

TEST_F(SettingsFile, StampsThisProgramsVersionOverAnOlderOne)
{
    Put("Options", "ApplVersion", "5117");
    EXPECT_EQ(Load().ApplVersion, 6018);
}

TEST_F(SettingsFile, WritesEveryKeyAndNoOther)
{
    Save(Load());
    QSettings file(m_folder.filePath("settings.ini"), QSettings::IniFormat);
    EXPECT_EQ(file.allKeys().size(), qsizetype(std::size(Keys)));
}
