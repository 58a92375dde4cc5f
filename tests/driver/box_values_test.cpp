/// The buttons and the icon of every box that a user meets on the way through the screens, as one
/// value: 16 stop, 32 question, 48 exclamation, 64 information; 0 OK, 1 OK and Cancel, 3 Yes, No and
/// Cancel, 4 Yes and No; 256 the second button is the default. The boxes of the price update have
/// their values in the tests of the market data.

#include "driver/driver_run.h"

#include <QDir>

#include <gtest/gtest.h>

namespace
{

struct BoxCase
{
    const char *name;
    int value;
    const char *part;     ///< of the box's text
    const char *script;   ///< brings the box up; FOLDER is the application folder
    const char *sql = ""; ///< on the account, before
};

/// 100 ACME bought at 10.0000, 100 SHRT sold short at 10.0000, two without shares.
constexpr char Positions[] = R"(
INSERT INTO DescriptiveTable VALUES
    ('Balance', 100000000, 0, 0, '2026-03-02', '2026-02-27', '6018', 1, 'Style1', 'n/a', 0, 0, '0'),
    ('Style1', 99500, 0, 0, '2026-01-05', '2026-01-05', '0', 0, 'n/a', 'n/a', 0, 0, '0'),
    ('WebSite', 0, 0, 0, '2026-01-05', '2026-01-05', '20', 0, 'Test Quotes', 'n/a', 0, 0, '0');
INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, AvrgPrice, TransDate, Time) VALUES
    ('ACME', 'Acme Corp', 100, 100000, 100000, '2026-02-02', '10:00:00.000'),
    ('FLAT', 'Flat Inc', 0, 0, 0, '2026-02-02', '10:00:00.000'),
    ('INDX', 'Index 100', 0, 0, 0, '2026-02-02', '10:00:00.000'),
    ('SHRT', 'Short Ltd', -100, 100000, 100000, '2026-02-02', '10:00:00.000');
INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES
    ('ACME', 100, 100000, '2026-02-02', '10:00:00.000'),
    ('SHRT', -100, 100000, '2026-02-02', '10:00:00.000');
INSERT INTO History (Symbol, Name, Description, Shares, Price, Amount, TransDate, Time) VALUES
    ('ACME', 'Acme Corp', 'Bought', 100, 100000, 10000000, '2026-02-02', '10:00:00.000');
INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, Time) VALUES
    ('ACME', 'Acme Corp', 70000, '2026-02-02', '10:00:00.000');
)";
constexpr char Securities[] = R"(
INSERT INTO SecurityDetail VALUES ('ACME', 'Acme Corp', 'Stock'), ('FLAT', 'Flat Inc', 'Stock'),
    ('INDX', 'Index 100', 'Index'), ('SHRT', 'Short Ltd', 'Stock');
INSERT INTO ApplicationTable (TableName, Field08) VALUES ('AssetClass', 'Energy');
)";
constexpr char NoPositions[] = "DELETE FROM DailyTracker; DELETE FROM PriceHistory;";

// Beginnings of scripts. No backup is due unless the script says so.
#define TRACKER "set Options DailyTracker 1\nlaunch\n"
#define ENTRY(symbol) TRACKER "rowdblclick frmDailyTracker.DataGridStock Symbol " symbol "\n"
#define SETTINGS TRACKER "menu mnuFLUserSetup\n"
#define SECURITY(entry)                                                                            \
    TRACKER "select frmDailyTracker.DataGridStock Symbol ACME\n"                                   \
            "popup frmDailyTracker.DataGridStock " entry "\n"
#define BACKUP "launch\nmenu mnuFLBackup\nclick frmBackupRestore.cmdOK\n"
#define RESTORE                                                                                    \
    BACKUP "click frmBackupRestore.cmdCancel\nanswer OK \"Put last backup\"\nmenu mnuFLRestore\n"
#define DELETE_HISTORY(option)                                                                     \
    "launch\nmenu mnuVWHistory\nselect frmHistoryList.DataGridHistoryList Symbol ACME\n"           \
    "popup frmHistoryList.DataGridHistoryList popHLDelete\nclick frmDeleteOptions." option "\n"

const BoxCase Cases[] = {
    // --- start, exit, accounts -------------------------------------------------------------------
    {"ExitOfAnUnnamedAccount", 64, "Please create a name for this account",
     "set Options AccountName Empty\nlaunch\nmenu mnuFLExit\n"},
    {"BackupAfterMuchWork", 36, "You've done more transactions today than usual.",
     "set Options LastBackup 2/1/2026\nset Options LastNotify 2/1/2026\n" TRACKER
     "answer No \"more transactions\"\nmenu mnuFLExit\n",
     "UPDATE DailyTracker SET NumberTransToday = 20"},
    {"BackupAfterDays", 36, "Last backup was done",
     "set Options LastBackup 2/1/2026\nset Options LastNotify 2/1/2026\nlaunch\n"
     "answer No \"Last backup was done\"\nmenu mnuFLExit\n"},
    {"WrongSignOn", 48, "Invalid Sigon ID and/or invalid password",
     "launch\ntype frmPassword.txtLoginID ann\ntype frmPassword.txtPassword x\n"
     "click frmPassword.cmdLogin\n",
     "INSERT INTO DescriptiveTable VALUES ('Security', 0, 0, 0, '2026-03-02', '2026-03-02', '15', "
     "0, "
     "'Ann', 'vhfuhw', 1, 0, '0')"},
    {"NoAccountFile", 48, "This is an invalid account database, please try again",
     "launch\nfile ApplControl.mdb\nmenu mnuFLOpenExisting\n"},
    {"NewAccountThatExists", 48, "This account name already exist, please select another.",
     "launch\nfile \"FOLDER/Sample Portfolio.mdb\"\nfile cancel\nmenu mnuFLNew\n"},
    {"NewAccountThatFails", 16, "An error has occured while creating a new account",
     "launch\nfile /nowhere/Other.mdb\nmenu mnuFLNew\n"},
    {"SaveAsThatFails", 16, "An error has occured while creating a new account",
     "launch\nfile /nowhere/Other.mdb\nmenu mnuFLSaveAs\n"},

    // --- settings --------------------------------------------------------------------------------
    {"HighCommission", 36, "Transaction cost seems excessive, Is this Ok?",
     SETTINGS "click frmUserSetup.chkStyle1\ntype frmUserSetup.txtStyle1Cost 40.01\n"
              "answer No \"seems excessive\"\nclick frmUserSetup.cmdApply\n"},
    {"HighCommissionOfAShare", 36, "Cost per share seems too high! Is this Ok?",
     SETTINGS "click frmUserSetup.chkStyle2\ntype frmUserSetup.txtStyle2PerShare 0.06\n"
              "answer No \"Cost per share\"\nclick frmUserSetup.cmdApply\n"},
    {"HighPercentage", 36, "Percent amount seems too high! Is this Ok?",
     SETTINGS "click frmUserSetup.chkStyle5\ntype frmUserSetup.txtStyle5Cost 0.2\n"
              "answer No \"Percent amount\"\nclick frmUserSetup.cmdApply\n"},
    {"HighFlatRate", 36, "Flat rate seems too high! Is this Ok?",
     SETTINGS "click frmUserSetup.chkStyle5\ntype frmUserSetup.txtStyle5Cost 0.01\n"
              "type frmUserSetup.txtStyle5FlatCost 50.01\n"
              "answer No \"Flat rate\"\nclick frmUserSetup.cmdApply\n"},

    // --- backup, restore, compaction -------------------------------------------------------------
    {"BackupOverAnOlderOne", 260, "Overwrite destination files in ",
     BACKUP "answer No \"Overwrite\"\nclick frmBackupRestore.cmdOK\n"},
    {"BackupWithoutADrive", 48, "No backup drive has been selected!",
     "set Options BackupDir z:\n" BACKUP},
    {"RestoreFromADrive", 65, "Put last backup on drive, click OK when ready",
     "launch\nanswer Cancel \"Put last backup\"\nmenu mnuFLRestore\n"},
    {"RestoreOverTheFiles", 259, "Overwrite destination files in ",
     RESTORE "answer Cancel \"Overwrite\"\nclick frmBackupRestore.cmdOK\n"},
    {"RestoreOfMissingFiles", 48, "Like name files will not be replaced...",
     RESTORE "answer No \"Overwrite\"\nclick frmBackupRestore.cmdOK\n"},
    {"RestoreFromAnotherFolder", 48, "The path selected is not a valid backup directory",
     "launch\nanswer OK \"Put last backup\"\nmenu mnuFLRestore\nclick frmBackupRestore.cmdOK\n"},
    {"CompactionWithoutABackup", 260, "A backup has not been done today (recommended).",
     "set Options LastBackup 2/1/2026\nlaunch\nanswer No \"Continue anyway\"\n"
     "menu mnuFLCompactDBA\n"},

    // --- transactions ----------------------------------------------------------------------------
    {"BalanceAdjustment", 308, "Balance adjustments should be done when the markets are closed",
     ENTRY("ACME") "answer No \"Balance adjustments\"\n"
                   "choose frmTransactionUpdate.lstAction \"Balance Adjustment\"\n"},
    {"ChangeOfTheBalance", 68, "NOTE: The current balance will be changed by ",
     ENTRY("ACME") "answer Yes \"Balance adjustments\"\n"
                   "choose frmTransactionUpdate.lstAction \"Balance Adjustment\"\n"
                   "type frmTransactionUpdate.txtNumberOfShares 500\n"
                   "answer No \"NOTE\"\nclick frmTransactionUpdate.cmdOK\n"},
    {"NoDeposit", 48, "Please enter deposit amount",
     ENTRY("ACME") "choose frmTransactionUpdate.lstAction Deposit\n"
                   "click frmTransactionUpdate.cmdOK\n"},
    {"NoShares", 48, "Please enter number of shares purchased or sold",
     ENTRY("ACME") "click frmTransactionUpdate.cmdOK\n"},
    {"NoPrice", 48, "Price not entered!",
     ENTRY("ACME") "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "click frmTransactionUpdate.cmdOK\n"},
    {"NoValidPrice", 48, "Please provide a valid stock price!",
     ENTRY("ACME") "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice /\nkey Tab\n"},
    {"HighPrice", 36, "Purchase price is greater than 500! Is this OK?",
     ENTRY("FLAT") "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 500\n"
                   "answer No \"greater than 500\"\nclick frmTransactionUpdate.cmdOK\n"},
    {"PriceFarAboveTheAverage", 36, "Price is over 50% greater than your average price",
     ENTRY("ACME") "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 16\n"
                   "answer No \"over 50%\"\nclick frmTransactionUpdate.cmdOK\n"},
    {"DateInTheFuture", 48, "Transaction date can not be greater than today's date!",
     ENTRY("ACME") "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "date frmTransactionUpdate.dtpTransDate 2026-03-05\n"
                   "click frmTransactionUpdate.cmdOK\n"},
    {"ActionOfAnotherType", 64,
     "Selected transaction type is invalid for this security type: Index",
     ENTRY("INDX") "choose frmTransactionUpdate.lstAction Sell\n"},
    {"PurchaseOfAShortPosition", 48, "You have existing short positions for this security!",
     ENTRY("SHRT") "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "click frmTransactionUpdate.cmdOK\n"},
    {"ShortSaleOfALongPosition", 48, "You have existing long positions for this security!",
     ENTRY("ACME") "choose frmTransactionUpdate.lstAction \"Sell short\"\n"
                   "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "click frmTransactionUpdate.cmdOK\n"},
    {"CoverOfTooMany", 48, "You're trying to cover more shares than you sold short!",
     ENTRY("SHRT") "choose frmTransactionUpdate.lstAction \"Buy to cover\"\n"
                   "type frmTransactionUpdate.txtNumberOfShares 150\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "click frmTransactionUpdate.cmdOK\n"},
    {"NothingToCover", 36, "No shares to cover for this security. Do you mean Buy long?",
     ENTRY("FLAT") "choose frmTransactionUpdate.lstAction \"Buy to cover\"\n"
                   "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "answer No \"Do you mean\"\nclick frmTransactionUpdate.cmdOK\n"},
    {"NothingToSell", 36, "No shares to sell long for this security. Do you mean Short?",
     ENTRY("FLAT") "choose frmTransactionUpdate.lstAction Sell\n"
                   "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "answer No \"Do you mean\"\nclick frmTransactionUpdate.cmdOK\n"},
    {"SaleBeforeThePurchase", 48,
     "The sell transaction entered preceeds the earliest purchase made",
     ENTRY("ACME") "choose frmTransactionUpdate.lstAction Sell\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "date frmTransactionUpdate.dtpTransDate 2026-02-01\n"
                   "click frmTransactionUpdate.cmdOK\n"},
    {"Undo", 292, "You are about to undo your last transaction. Is this OK?",
     ENTRY("ACME") "type frmTransactionUpdate.txtNumberOfShares 5\n"
                   "type frmTransactionUpdate.txtPurchasePrice 10\n"
                   "click frmTransactionUpdate.cmdOK\nanswer No \"about to undo\"\n"
                   "click frmTransactionUpdate.cmdUndoLast\n"},
    {"WizardWithoutABackup", 4, "Caution! You're about to re-build your portfolio from History,",
     "set Options LastBackup 2/1/2026\n" TRACKER
     "answer No \"Caution\"\nanswer No \"Continue to re-build\"\ntool Wizard\n"},
    {"Wizard", 4, "Continue to re-build from history?",
     TRACKER "answer No \"Continue to re-build\"\ntool Wizard\n"},
    {"WizardThatIsDone", 64, "Portfolio successfully built!",
     TRACKER "answer Yes \"Continue to re-build\"\ntool Wizard\n"},

    // --- securities ------------------------------------------------------------------------------
    {"NoSymbol", 48, "Please enter a valid symbol",
     SECURITY("popDTNew") "type frmSecurityUpdate.txtSymbol \"\"\nclick frmSecurityUpdate.cmdOK\n"},
    {"SymbolThatIsThere", 48, "The symbol you're trying to add is already in your portfolio!",
     SECURITY("popDTNew") "type frmSecurityUpdate.txtSymbol FLAT\ntab\n"
                          "click frmSecurityUpdate.cmdOK\n"},
    {"ClassesThatMissTheWhole", 48, "When selecting multiple Market Sectors, the total allocation",
     SECURITY("popDTEdit") "newrow frmSecurityUpdate.DataGridAssetClass AssetClass=Energy "
                           "PerCentAllocated=40%\nanswer No \"evenly allocate\"\n"
                           "click frmSecurityUpdate.cmdOK\n"},
    {"EvenClasses", 4, "Would you like to evenly allocate all selected sectors?",
     SECURITY("popDTEdit") "newrow frmSecurityUpdate.DataGridAssetClass AssetClass=Energy "
                           "PerCentAllocated=40%\nanswer No \"evenly allocate\"\n"
                           "click frmSecurityUpdate.cmdOK\n"},
    {"NewClass", 4, "Add this new Asset Class '",
     SECURITY("popDTEdit") "answer No \"Add this new Asset Class\"\n"
                           "newrow frmSecurityUpdate.DataGridAssetClass AssetClass=Timber "
                           "PerCentAllocated=40%\n"},
    {"ExitWithErrors", 292, "You have not corrected all your errors!",
     SECURITY("popDTNew") "type frmSecurityUpdate.txtSymbol \"\"\nclick frmSecurityUpdate.cmdOK\n"
                          "answer No \"corrected all your errors\"\n"
                          "click frmSecurityUpdate.cmdClose\n"},

    // --- Daily Tracker ---------------------------------------------------------------------------
    {"EntryWithoutASelection", 48, "You must select a security to enter transactions.",
     TRACKER "popup frmDailyTracker.DataGridStock popDTTransactionUpdate\n", NoPositions},
    {"ClearWithoutASelection", 48, "No row has been selected, please make selection.",
     TRACKER "popup frmDailyTracker.DataGridStock popDTClear\n", NoPositions},
    {"Clear", 292, "You are about to clear the content for symbol ACME",
     TRACKER "select frmDailyTracker.DataGridStock Symbol ACME\nanswer No \"about to clear\"\n"
             "popup frmDailyTracker.DataGridStock popDTClear\n"},
    {"ReminderAfterAClear", 64, "REMINDER! Make sure to delete existing transaction history for ",
     TRACKER "select frmDailyTracker.DataGridStock Symbol ACME\nanswer Yes \"about to clear\"\n"
             "popup frmDailyTracker.DataGridStock popDTClear\n"},
    {"Delete", 292, "You are about to delete the current row for symbol ACME",
     TRACKER "select frmDailyTracker.DataGridStock Symbol ACME\nanswer No \"about to delete\"\n"
             "popup frmDailyTracker.DataGridStock popDTDeleteRow\n"},
    {"SortThatIsNotThere", 48, "The selected column is not available for sorting",
     TRACKER "header frmDailyTracker.DataGridStock SecurityType\n"},
    {"LotsThatDiffer", 276, "Message number: 100", "answer No \"Message number: 100\"\n" TRACKER,
     "UPDATE DailyTracker SET Shares = 99 WHERE Symbol = 'ACME'"},
    {"ColorOfTheBalance", 4, "Apply selected color to balance column?",
     TRACKER "color #ffe0c0\nanswer No \"balance column\"\n"
             "popup frmDailyTracker.DataGridStock popDTSummaryGridColor\n"},
    {"Reset", 292, "'ToDate' amounts will be reset according to setup",
     "set Options NeverReset 0\nset Options ResetDate 3/1/2026\n"
     "answer No \"will be reset\"\n" TRACKER},
    {"ResetDeclined", 64, "Reset cancelled.",
     "set Options NeverReset 0\nset Options ResetDate 3/1/2026\n"
     "answer No \"will be reset\"\n" TRACKER},
    {"ResetDone", 64, "All 'ToDate' amounts have been reset.",
     "set Options NeverReset 0\nset Options ResetDate 3/1/2026\n"
     "answer Yes \"will be reset\"\n" TRACKER},

    // --- lists, charts, reports ------------------------------------------------------------------
    {"HistoryRow", 292, "Your are about to delete the selected row.",
     "launch\nmenu mnuVWHistory\nselect frmHistoryList.DataGridHistoryList Symbol ACME\n"
     "answer No \"about to delete\"\nkey Delete\n"},
    {"HistorySortThatIsNotThere", 48, "The selected column is not available for sorting",
     "launch\nmenu mnuVWHistory\nheader frmHistoryList.DataGridHistoryList Shares\n"},
    {"Lot", 308, "Caution! Your are about to delete the selected row.",
     "launch\nmenu mnuVWPurchaseList\nselect frmPurchaseList.DataGridPurchaseList Symbol ACME\n"
     "answer No \"Caution\"\nkey Delete\n"},
    {"ColorOfTotals", 4, "Apply selected color to the total Row?",
     "launch\nmenu mnuVWDailyProfitLoss\ncolor #ffe0c0\nanswer No \"total Row\"\n"
     "menu popPLProfitLossColor\n"},
    {"ColorThatComesLater", 64, "Close and re-open this screen for colors to take effect",
     "launch\nmenu mnuVWDailyProfitLoss\ncolor #ffe0c0\nanswer No \"total Row\"\n"
     "menu popPLProfitLossColor\n"},
    {"DeleteOfARow", 49, "Current row will be deleted!",
     DELETE_HISTORY("optCurrentRow") "answer Cancel \"will be deleted\"\n"
                                     "click frmDeleteOptions.cmdOK\n"},
    {"DeleteOfASymbol", 1, "All rows for symbol ACME will be deleted!",
     DELETE_HISTORY("optAllSelected") "answer Cancel \"will be deleted\"\n"
                                      "click frmDeleteOptions.cmdOK\n"},
    {"DeleteOfASymbolUpToADay", 1, "Delete of symbol ACME will begin with oldest date",
     DELETE_HISTORY("optSymbolDate") "answer Cancel \"will begin\"\n"
                                     "click frmDeleteOptions.cmdOK\n"},
    {"DeleteOfAllUpToADay", 1, "All history information starting with oldest date",
     DELETE_HISTORY("optAllDate") "answer Cancel \"All history\"\nclick frmDeleteOptions.cmdOK\n"},
    {"ReminderOfTheWizard", 64, "REMINDER! When manually deleting transaction history",
     DELETE_HISTORY("optAllSelected") "answer OK \"will be deleted\"\n"
                                      "click frmDeleteOptions.cmdOK\n"},
    {"ReminderOfTheHistory", 64, "REMINDER! Make sure to delete existing transaction history for ",
     "launch\nmenu mnuVWDailyProfitLoss\nselect frmDailyProfitLoss.MSHFlexGridPL Symbol ACME\n"
     "popup frmDailyProfitLoss.MSHFlexGridPL popPLDelete\nclick frmDeleteOptions.optAllSelected\n"
     "answer OK \"will be deleted\"\nclick frmDeleteOptions.cmdOK\n"},
    {"ChartOfNoSecurity", 48, "No security has been selected, select one now to chart.",
     "launch\nmenu mnuChartSelectedSecPL\n"},
    {"ChartFromLaterThanTo", 48, "'From' date can not be greater than 'To' date.",
     "launch\nmenu mnuChartPortfolioPL\ndate frmChartScreen.dtpTo 2026-02-01\n"
     "date frmChartScreen.dtpFrom 2026-02-02\nclick frmChartScreen.cmdOK\n"},
    {"ChartWithoutData", 48, "No data was found for selected symbol or in the requested",
     "launch\nmenu mnuChartPortfolioPL\n", "DELETE FROM DailyProfitLoss"},
    {"ReportOfNoSecurity", 48, "Please select a symbol by clicking on any row on the screen",
     "launch\nmenu mnuEXDetailHistory\nclick frmDateSelect.optSelectedSec\n"},
};

/// What a failure prints of its case.
void PrintTo(const BoxCase &box, std::ostream *out)
{
    *out << box.part;
}

class ABox : public testing::TestWithParam<BoxCase>
{
protected:
    ABox() : m_home(qgetenv("HOME"))
    {
        qputenv("HOME", QFile::encodeName(home.path())); // where backups go
        run.folder.Execute(run.folder.SampleAccount(), Positions);
        run.folder.Execute(run.folder.SampleAccount(), GetParam().sql);
        run.folder.Execute(run.folder.File("ApplControl.xxx"), Securities);
        run.folder.Execute(run.folder.File("WebSites.mdb"),
                           "INSERT INTO WebParameters (ID, WebSiteName, DelayTime, UpdateCount) "
                           "VALUES (1, 'Test Quotes', 20, 1)");
    }
    ~ABox() override { qputenv("HOME", m_home); }

    QTemporaryDir home;
    DriverRun run;

private:
    QByteArray m_home;
};

TEST_P(ABox, HasTheButtonsAndTheIconOfItsValue)
{
    const QByteArray script =
        QByteArray(GetParam().script).replace("FOLDER", run.folder.Path().toUtf8());
    const DriverResult result = run.Run("set Options LastBackup 3/2/2026\n"
                                        "set Options LastNotify 3/2/2026\n" +
                                        script + "boxes\n");
    ASSERT_EQ(result.status, 0) << result.errors;
    QStringList values;
    const QStringList boxes = QString::fromStdString(result.output).split('\n');
    for (const QString &box : boxes)
        if (box.section('\t', 2, 2).contains(GetParam().part))
            values << box.section('\t', 1, 1);
    EXPECT_EQ(values, QStringList(QString::number(GetParam().value))) << result.output;
}

INSTANTIATE_TEST_SUITE_P(Values, ABox, testing::ValuesIn(Cases),
                         [](const auto &info) { return info.param.name; });

} // namespace
