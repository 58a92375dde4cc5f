#pragma once

/// The state of one running program, gathered. Screens hold a reference to it; an engine takes just
/// the parts it uses. Two programs can live side by side in one process.

#include "marketdata/practice_server.h"
#include "marketdata/price_update_state.h"
#include "marketdata/web_addresses.h"
#include "platform/services.h"
#include "program/account_routines.h"
#include "program/chart_state.h"
#include "program/screens.h"
#include "store/databases.h"
#include "tracking/recompute.h"
#include "transactions/entry.h"

#include <QTemporaryDir>

class BrowserView;
class QWidget;

/// The row selected last, which most commands act on.
struct Selection
{
    QString CurrentSymbol; ///< empty: none
    QString CurrentName;
    qint64 SelectedRowID = 0; ///< of a list screen
};

/// Flags and counts of the run.
struct RunState
{
    QString AccountToOpen; ///< named at the start, in place of the one of the last run; or empty
    bool NewAccount = false;
    bool SignOnCancelled = false;
    bool ExitInProgress = false;    ///< an exit was tried, even if it was refused
    bool ProgramClosing = false;    ///< an exit is on its way that nothing refuses any more
    bool Ended = false;             ///< the databases are closed for good: no handler runs any more
    bool DateSelectOpen = false;    ///< the options of a report are up
    bool ExcelServerFound = false;  ///< a program took the last report's workbook to show it
    bool BrowserAlive = false;      ///< the user's browser took a page of ours
    bool BrowserScreenOpen = false; ///< frmWebBrowser is loaded
    bool AccountInvalid = false;
    bool OpeningExisting = false;
    bool BackupOffered = false;       ///< the wizard asked for a backup in this run
    bool WizardReminderShown = false; ///< after a delete of history
    QString BackupMode;               ///< "Backup", "Restore", "AutoCompact" or empty
    int IdleMinutes = 0;              ///< ticks since the last action of the user
    int ScreenWidth = 0; ///< inner size of the main window, by which screens place themselves
    int ScreenHeight = 0;
    QDate ListDateFrom = NoDate(); ///< date range shared by the list screens
    QDate ListDateTo = NoDate();
    bool OneSymbolOnly = false; ///< the historical price list is restricted to CurrentSymbol

    void ClearListDateRange() { ListDateFrom = ListDateTo = NoDate(); }
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
    ChartState chart;
    PriceUpdateState priceUpdate;
    PracticeServer practiceServer{services.clock};
    WebAddresses webAddresses; ///< read at the start
    QString WebAddress;        ///< the page that the browser screen goes to next
    /// Makes the view of web pages; without it, or when it gives nothing, they are shown outside.
    std::function<BrowserView *(QWidget *parent)> CreateBrowserView;

    /// Of workbooks that are shown and not saved; they go with the program.
    std::unique_ptr<QTemporaryDir> unsavedReports;

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
    std::function<void()> ShowSelection;         ///< marks the row of CurrentSymbol, if it has one

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
