#pragma once

/// The user's preferences, which hold for all accounts. The program works on this struct alone;
/// LoadSettings fills it at the start, SaveSettings writes back in one piece what has changed.
///
/// Flags that are 0 or 1 in the file are whole numbers here too; dates are written in the short form
/// of the user's locale.

#include "base/dates.h"
#include "base/formats.h"
#include "platform/dialogs.h"
#include "platform/settings_store.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <array>

struct Settings
{
    // Section "Options".
    QString BackupDir;     ///< drive of the last backup, two characters
    int AverageTrans = 10; ///< usual number of transactions a day, a moving value
    QDate LastBackup;
    QDate LastNotify;
    int CheckNotify = 1;
    int CheckAverage = 1;
    int NotifyDays = 3;
    int CheckCompact = 1;
    int CompactDays = 10;
    int DailyTracker = 1;
    int DailyProfitLoss = 0;
    int HistoryList = 0;
    int PurchaseList = 0;
    int ChartScreen = 0;
    int BrowserScreen = 0;
    int HistoricalPriceList = 0;
    bool ArgCascade = false;
    bool ArgHorizontal = false;
    bool ArgVertical = false;
    bool ArgMaximize = true;
    bool ArgNormal = false;
    QString CurrentFilePath; ///< full path of the account
    QString AccountName;
    int ShowTipOfDay = 1;
    int ShowReminderScreen = 1;
    int CurrentTip = 0;
    int ResetMonths = 12;
    QDate ResetDate;
    int NeverReset = 1;
    int ApplVersion = 0; ///< major, minor and revision written together
    bool NewVersion = false;
    bool WebPriceUpdate = true;
    int AccessType = 2; ///< 1 default, 2 proxy, 3 direct
    QDate LastRunDate = NoDate();
    QDate VerChkDt; ///< next check for a new version
    int StoreWebLogin = 1;
    int HistPriceMonths = 2;
    int KeepPortfolioData = 5;

    // Section "Colors": components of the chart's colours, 0 to 255.
    struct Components
    {
        int Red = 0, Green = 0, Blue = 0;
    };
    Components ChartBack{255, 255, 255};
    Components ChartWall{249, 247, 142};
    Components ChartBase{203, 206, 66};
    Components ChartSeries{128, 0, 64};
    // Whole colours as the file keeps them (blue, green, red from the highest byte down); 0: the
    // grid keeps the colour of its design.
    double DTDataGridColor = 0;
    double DTTotalGridColor = 0;
    double DTBalanceColColor = 0x8AFFFF;
    double DPAllRowColor = 0;
    double DPTotalRowColor = 0x80C0FF;
    double THDataGridColor = 0;
    double HPDataGridColor = 0;
    double PPDataGridColor = 0;
    double QSDataGridColor = 0;
};

/// The program's own version, as it is stamped into accounts and settings.
struct Version
{
    int major, minor, revision;
    QString Text() const;   ///< "6018"
    QString Dotted() const; ///< "6.0.18"
};
Version ProgramVersion();

/// Reads every key, defaults for missing ones: the sample account in `appPath`, dates of today. A value
/// that cannot be read, or that its key cannot have, yields the default too; its key goes into
/// `unreadable`. Throws RuntimeError when the store itself cannot be read.
Settings LoadSettings(SettingsStore &store, const Formats &formats, const QString &appPath,
                      QDate today, QStringList *unreadable = nullptr);
/// Writes the keys that differ from what `store` loaded or saved last, and those that its file does not
/// have: what another program changed meanwhile stays.
void SaveSettings(SettingsStore &store, const Formats &formats, const Settings &settings);

/// Between a stored colour (0xBBGGRR) and 0xRRGGBB.
Rgb RgbFromStored(double stored);
double StoredFromRgb(Rgb color);
