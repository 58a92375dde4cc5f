#pragma once

/// The state of one running program, gathered. Screens hold a reference to it; an engine takes just
/// the parts it uses. Two programs can live side by side in one process.

#include "platform/services.h"
#include "program/account_routines.h"
#include "program/screens.h"
#include "store/databases.h"
#include "tracking/recompute.h"
#include "transactions/entry.h"

/// The row selected last, which most commands act on.
struct Selection
{
    QString CurrentSymbol; ///< empty: none
    QString CurrentName;
    qint64 SelectedRowID = 0; ///< of a list screen
};

struct PriceUpdateState
{
    bool PriceUpdateActive = false; ///< frmInternetTran is loaded
    bool UpdateInProgress = false;  ///< a cycle is running
    Integer MinutesSinceUpdate;
    bool HistoricalRetryNeeded = false; ///< the next cycle loads daily prices, whatever the date
    int ConnectionState = 0;            ///< 1 connecting, 2 connected, 3 disabled, 4 error
};

/// Flags and counts of the run.
struct RunState
{
    bool NewAccount = false;
    bool SignOnCancelled = false;
    bool ExitInProgress = false;
    bool ExcelServerFound = false;
    bool BrowserAlive = false;
    bool AccountInvalid = false;
    bool OpeningExisting = false;
    bool BackupOffered = false; ///< the wizard asked for a backup in this run
    QString BackupMode;         ///< "Backup", "Restore", "AutoCompact" or empty
    int IdleMinutes = 0;        ///< ticks since the last action of the user
    int ScreenWidth = 0; ///< inner size of the main window, by which screens place themselves
    int ScreenHeight = 0;
    QDate ListFrom = NoDate(); ///< date range shared by the list screens
    QDate ListTo = NoDate();

    void ClearListDateRange() { ListFrom = ListTo = NoDate(); }
};

struct Program
{
    Program(Services services, Screens &screens) : services(std::move(services)), screens(screens)
    {}
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    Services services;
    Screens &screens;
    AccountRoutines *accountRoutines = nullptr; ///< the shell's; there whenever a screen is
    std::unique_ptr<ClockTimer> tmrLogoff;      ///< counts the minutes (of 65 s) without an action

    Settings settings;
    RunState run;
    Selection selection;
    PriceUpdateState priceUpdate;

    Databases databases;
    AccountState account;
    PortfolioTotals totals;
    TrackerRecordset AdodcStockHistory; ///< open while the Daily Tracker is loaded
    PurchaseLots gRsLots;               ///< open while the Daily Tracker is loaded
    UndoState undo;
    EntryState entry;

    // Set by the Daily Tracker while it is loaded; nothing happens without it.
    std::function<void()> UpdatePortfolioTotals; ///< shows the totals, and the rows anew
    std::function<void()> ReloadDataGrid;        ///< values the rows, totals and grid follow

    /// Set by the entry screen while it is loaded: the user chose another row.
    std::function<void()> SelectionChanged;
    /// Set while a rebuild reopens the account: the Daily Tracker calls it on its fresh recordsets.
    std::function<void()> BeginRebuild;

    /// A user did something: the idle logoff counts anew.
    void UserActed() { run.IdleMinutes = 0; }

    PostingWork Posting()
    {
        return {AdodcStockHistory,      gRsLots, totals, account, undo, entry,
                databases.gConnAccount, services};
    }
    RecomputeWork Recompute(const QString &boxTitle)
    {
        return {AdodcStockHistory,     totals,   account, settings, gRsLots,
                undo.UndoLast.Balance, services, boxTitle};
    }
};
