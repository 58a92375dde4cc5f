/// The wizard from the first question to the last box, with the real screens.

#include "entry_screen.h"

#include "platform/command_groups.h"
#include "program/input_hold.h"
#include "program/list_refresh.h"
#include "program/rebuild_wizard.h"

#include <QMainWindow>
#include <QRegularExpression>

namespace
{

const QString BackupQuestion =
    QStringLiteral("Caution! You're about to re-build your portfolio from History,\n"
                   "the operation can not be backed out after it is completed.\n\n"
                   "A backup is highly recommended! Start Backup procedure?");
const QString ContinueQuestion = QStringLiteral("Continue to re-build from history?");
const QString Built = QStringLiteral("Portfolio successfully built!");

/// A list that notes its refreshes, and how many lots the file shows it when it loads.
class WatchingList : public PlainScreen, public ListScreen
{
public:
    WatchingList(Program &program, const QString &name, QStringList &log)
        : PlainScreen(program, name, name, Placement::Child, log), m_log(log)
    {}
    void RefreshList() override { m_log << "refresh " + objectName(); }

private:
    QStringList &m_log;
};

} // namespace

/// ACME: 100 @ 10 on 5 January, 40 sold @ 12 on 6 January, commission 5 each; a deposit between
/// them.
class RebuildWizard : public EntryScreen
{
protected:
    using Reply = ::Answer;

    RebuildWizard()
    {
        State().settings.LastBackup = QDate(2026, 2, 27);
        folder.Execute(
            folder.SampleAccount(),
            "INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, Price, "
            "Amount, TransDate, Time) VALUES "
            "('ACME', 'Acme Inc.', 'Bought', 100, -50000, 100000, -10050000, '2026-01-05', "
            "'10:00:00.000'), "
            "('SHRT', 'Short Corp.', ' Short  Sale', -100, 0, 500000, 50000000, '2026-01-05', "
            "'10:00:01.000'), "
            "('ACME', 'Acme Inc.', 'Sold', -40, -50000, 120000, 4750000, '2026-01-06', "
            "'10:00:00.000'), "
            "('NEWC', 'New Corp.', 'Bought', 5, 0, 70000, -350000, '2026-01-06', "
            "'11:00:00.000')");
    }
    void Backup(Reply answer) { Answer("A backup is highly recommended!", answer); }
    void Continue(Reply answer) { Answer("Continue to re-build", answer); }
    void PressWizard() { StartRebuildFromHistory(State()); }
    /// Asked nothing but whether to go on, which is agreed to.
    void Rebuild()
    {
        State().run.BackupOffered = true;
        Continue(Reply::Yes);
        PressWizard();
    }
    bool Enabled(const QString &command) { return run.Commands().Enabled(command); }
    /// Every row of every table of the account.
    QString Dump() const
    {
        QString all;
        for (const char *table : {"DailyTracker", "PriceHistory", "History", "DailyProfitLoss",
                                  "PortfolioDailyBalance", "DescriptiveTable"}) {
            const QString columns = folder.Value(
                folder.SampleAccount(),
                QStringLiteral("SELECT group_concat('quote(\"' || name || '\")', '||') "
                               "FROM pragma_table_info('%1')")
                    .arg(table));
            all += folder.Value(folder.SampleAccount(),
                                QStringLiteral("SELECT group_concat(%1, char(10)) FROM %2")
                                    .arg(columns, table)) +
                   "\n--\n";
        }
        return all;
    }
};

// --- questions ----------------------------------------------------------------------------------

TEST_F(RebuildWizard, AsksForABackupOnceInARun)
{
    Backup(Reply::No);
    Continue(Reply::No);
    PressWizard();
    ASSERT_EQ(run.boxes.boxes.size(), 2U);
    EXPECT_EQ(run.boxes.boxes[0].text, BackupQuestion);
    EXPECT_EQ(run.boxes.boxes[0].title, "Quillon Wizard");
    EXPECT_EQ(run.boxes.boxes[0].buttonsValue, Box::YesNo);
    EXPECT_EQ(run.boxes.boxes[1].text, ContinueQuestion);
    EXPECT_EQ(run.boxes.boxes[1].buttonsValue, Box::YesNo);
    Boxes();
    Continue(Reply::No);
    PressWizard();
    EXPECT_EQ(Boxes(), QStringList(ContinueQuestion));
}

TEST_F(RebuildWizard, AsksForNoBackupOnTheDayOfOne)
{
    State().settings.LastBackup = QDate(2026, 3, 2);
    Continue(Reply::No);
    PressWizard();
    EXPECT_EQ(Boxes(), QStringList(ContinueQuestion));
    EXPECT_FALSE(State().run.BackupOffered);
}

TEST_F(RebuildWizard, YesToTheBackupOpensItAndRebuildsNothing)
{
    run.AddScreen("frmBackupRestore");
    const QString before = Dump();
    Backup(Reply::Yes);
    PressWizard();
    EXPECT_EQ(run.log, QStringList("load frmBackupRestore"));
    EXPECT_EQ(State().run.BackupMode, "Backup");
    EXPECT_TRUE(Entry().RebuildMode); // until the backup brings the entry screen back
    EXPECT_EQ(Boxes(), QStringList(BackupQuestion));
    EXPECT_EQ(Dump(), before);
}

TEST_F(RebuildWizard, NoToContinueUnloadsTheEntryScreenAndChangesNothing)
{
    const QString before = Dump();
    State().run.BackupOffered = true;
    Continue(Reply::No);
    PressWizard();
    EXPECT_FALSE(Screen());
    EXPECT_FALSE(Entry().RebuildMode);
    EXPECT_EQ(Dump(), before);
}

TEST_F(RebuildWizard, LoadsTheEntryScreenWithoutAMessageForAMissingType)
{
    Select("BARE");
    Entry().CurrentSecurityType = "Mutual Fund"; // of an entry some time ago
    Rebuild();
    EXPECT_EQ(Boxes(), QStringList({ContinueQuestion, Built}));
    EXPECT_TRUE(Screen());
    EXPECT_EQ(Row("ACME").TransCostToDate, Currency("-10")); // no mutual fund
}

TEST_F(RebuildWizard, StartsFromItsButtonOnTheEntryScreen)
{
    Open("ACME");
    State().run.BackupOffered = true;
    Continue(Reply::Yes);
    Click("cmdWizard");
    EXPECT_EQ(Boxes(), QStringList({ContinueQuestion, Built}));
}

TEST_F(RebuildWizard, StartsFromTheToolbar)
{
    State().run.BackupOffered = true;
    Continue(Reply::Yes);
    run.Choose("Wizard");
    EXPECT_EQ(Boxes(), QStringList({ContinueQuestion, Built}));
}

// --- the account behind it ----------------------------------------------------------------------

TEST_F(RebuildWizard, MakesRowsLotsAndDailyProfitAnew)
{
    Rebuild();
    EXPECT_EQ(run.boxes.boxes.back().title, "Quillon Wizard");
    EXPECT_EQ(run.boxes.boxes.back().buttonsValue, Box::Information);
    EXPECT_EQ(Row("ACME").Shares, Single::FromFloat(60));
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("-5"));
    EXPECT_EQ(Row("ACME").ProfitLossToday, Currency("75")); // (12-10)*40 - 5
    EXPECT_EQ(Row("ACME").Basis, Currency("120"));          // (12-10)*60
    EXPECT_EQ(Row("SHRT").Shares, Single::FromFloat(-100));
    EXPECT_EQ(Row("NEWC").Name, "New Corp.");
    EXPECT_TRUE(Row("FUND").Shares.IsZero());
    EXPECT_EQ(Stored("SELECT group_concat(Symbol || ' ' || Shares || ' @ ' || PurchasePrice, ', ') "
                     "FROM (SELECT * FROM PriceHistory ORDER BY Symbol)"),
              "ACME 60.0 @ 100000, NEWC 5.0 @ 70000, SHRT -100.0 @ 500000");
    EXPECT_EQ(Stored("SELECT Shares FROM DailyTracker WHERE Symbol = 'ACME'"), "60.0");
    EXPECT_EQ(Stored("SELECT group_concat(Symbol || ' ' || TransDate || ' ' || ProfitLoss, ', ') "
                     "FROM DailyProfitLoss"),
              "ACME 2026-01-05 -50000, ACME 2026-01-06 750000");
    EXPECT_EQ(HistoryRows(), 4);
}

TEST_F(RebuildWizard, AnEmptyLedgerSetsAllRowsToZero)
{
    folder.Execute(folder.SampleAccount(), "DELETE FROM History");
    Rebuild();
    EXPECT_EQ(Boxes(), QStringList({ContinueQuestion, Built}));
    EXPECT_TRUE(Row("ACME").Shares.IsZero());
    EXPECT_TRUE(Row("SHRT").Shares.IsZero());
    EXPECT_EQ(Stored("SELECT COUNT(*) FROM PriceHistory"), "0");
}

TEST_F(RebuildWizard, KeepsBalanceAndPriorBasis)
{
    State().totals.PriorBasisTotal = Single::FromFloat(33.25F);
    Rebuild();
    EXPECT_EQ(State().account.AccountBalance, Currency("1000"));
    EXPECT_EQ(State().totals.PriorBasisTotal, Single::FromFloat(33.25F));
}

TEST_F(RebuildWizard, TheNextPriceUpdateMovesOnFromTheKeptBalance)
{
    Rebuild();
    const Single prior = State().totals.PriorBasisTotal;
    State().ReloadDataGrid();
    // The gains of the rebuilt rows: ACME 120.
    EXPECT_EQ(State().account.AccountBalance, Currency::FromDouble(1000 + 120 - prior.ToDouble()));
}

TEST_F(RebuildWizard, APostingStillOpenIsDroppedWithAllLots)
{
    Open("FUND");
    Post("Buy", "1", "20");
    ASSERT_TRUE(State().gRsLots.InTransaction());
    Boxes();
    Rebuild();
    EXPECT_FALSE(State().undo.PostingTransactionOpen);
    EXPECT_FALSE(State().gRsLots.InTransaction());
    EXPECT_EQ(Stored("SELECT COUNT(*) || ' ' || SUM(Shares) FROM PriceHistory "
                     "WHERE Symbol = 'FUND'"),
              "1 1.0"); // the purchase posted now, from the ledger
    EXPECT_EQ(Boxes(), QStringList({ContinueQuestion, Built}));
}

TEST_F(RebuildWizard, AClearStillOpenIsDroppedWithoutAQuestion)
{
    Answer("clear the content", Reply::Yes);
    Select("ACME");
    run.Choose("popDTClear");
    ASSERT_TRUE(State().undo.RowTransactionOpen);
    Boxes();
    Rebuild();
    EXPECT_EQ(Boxes(), QStringList({ContinueQuestion, Built})); // no offer to take it back
    EXPECT_FALSE(State().undo.RowTransactionOpen);
    EXPECT_EQ(Row("ACME").Shares, Single::FromFloat(60));
}

TEST_F(RebuildWizard, TwiceGivesTheSame)
{
    const QString sums = "SELECT group_concat(Symbol || Shares || Basis || ProfitLossToday || "
                         "ProfitLossToDate || TransCostToDate || NumberTransToDate || "
                         "InvestedToDate || TransDate, '/') FROM DailyTracker";
    Rebuild();
    const QString first = Stored(sums);
    Rebuild();
    EXPECT_EQ(Stored(sums), first);
    EXPECT_EQ(Stored("SELECT COUNT(*) FROM PriceHistory"), "3");
}

TEST_F(RebuildWizard, PostingsGoOnBehindIt)
{
    Rebuild();
    Open("ACME");
    Post("Sell", "60", "12");
    EXPECT_TRUE(Row("ACME").Shares.IsZero());
    EXPECT_TRUE(Enabled("UndoLast"));
    Answer("undo your last transaction", Reply::Yes);
    Click("cmdUndoLast");
    EXPECT_EQ(Row("ACME").Shares, Single::FromFloat(60));
    EXPECT_EQ(State().gRsLots.SharesOf("ACME"), Single::FromFloat(60));
}

// --- what the user sees -------------------------------------------------------------------------

TEST_F(RebuildWizard, LetsEventsBeHandledAndShowsHowFarItIs)
{
    folder.Execute(
        folder.SampleAccount(),
        "INSERT INTO History (Symbol, Name, Description, Shares, Price, TransDate, Time) "
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60000) "
        "SELECT 'S' || (i % 50), 'Name', 'Bought', 1, 10000, '2026-01-07', "
        "'10:00:00.000' FROM n");
    QStringList seen;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (Status().startsWith("Building data from history... ") && !seen.contains(Status()))
            seen << Status() + " " + Text("txtSymbol").left(1);
    });
    watch.start(0);
    Rebuild();
    ASSERT_FALSE(seen.isEmpty());
    static const QRegularExpression progress("^Building data from history... [0-9]+ S$");
    EXPECT_TRUE(progress.match(seen.last()).hasMatch()) << seen.last().toStdString();
    EXPECT_EQ(Status(), Built);
}

TEST_F(RebuildWizard, DisablesFileAndEntryButtonsMeanwhileAndEnablesThemAfterwards)
{
    Open("ACME");
    QStringList meanwhile;
    run.AddScreen("frmPurchaseList", Placement::Child, "mnuVWPurchaseList");
    State().settings.PurchaseList = 1;
    const auto timer = run.clock.CreateTimer([&] {
        for (const char *command : {"New", "Open", "SaveAs", "Setup", "UndoLast"})
            if (Enabled(command))
                meanwhile << command;
        for (const char *button : {"cmdOK", "cmdClose", "cmdWizard", "cmdUndoLast"})
            if (Button(button)->isEnabled())
                meanwhile << button;
        EXPECT_TRUE(Entry().RebuildMode);
        EXPECT_TRUE(Row("ACME").Shares.IsZero()); // emptied, and not built yet
    });
    timer->SetInterval(std::chrono::milliseconds(500)); // within the second of waiting
    timer->SetEnabled(true);
    Rebuild();
    EXPECT_EQ(meanwhile, QStringList());
    for (const char *command : {"New", "Open", "SaveAs", "Setup", "Connect", "Wizard"})
        EXPECT_TRUE(Enabled(command)) << command;
    for (const char *button : {"cmdOK", "cmdClose", "cmdWizard"})
        EXPECT_TRUE(Button(button)->isEnabled()) << button;
    EXPECT_FALSE(Button("cmdUndoLast")->isEnabled());
    EXPECT_FALSE(Enabled("UndoLast"));
    EXPECT_FALSE(Enabled("popDTUndoLast"));
    EXPECT_TRUE(State().priceUpdate.HistoricalRetryNeeded);
}

TEST_F(RebuildWizard, LeavesTheEntryOnTheLastRowWithoutItsFigures)
{
    Open("ACME");
    Rebuild();
    EXPECT_EQ(Text("txtSymbol"), "NEWC");
    EXPECT_EQ(Text("txtName"), "New Corp.");
    EXPECT_EQ(Chosen(), "Buy");
    EXPECT_EQ(Date()->date(), QDate(2026, 1, 6));
    EXPECT_EQ(Text("txtNumberOfShares") + Text("txtPurchasePrice") + Text("txtCommCost"), "");
}

TEST_F(RebuildWizard, OpensTheOtherScreensAnewAndRefreshesTheLists)
{
    run.App().Host().Register(
        "frmPurchaseList",
        [this](Program &program) {
            return std::make_unique<WatchingList>(program, "frmPurchaseList", run.log);
        },
        "mnuVWPurchaseList");
    State().settings.PurchaseList = 1;
    run.App().Host().Show("frmPurchaseList");
    Rebuild();
    EXPECT_EQ(run.log, QStringList({"load frmPurchaseList", "unload frmPurchaseList",
                                    "load frmPurchaseList", "refresh frmPurchaseList"}));
}

TEST_F(RebuildWizard, WorksWithTheDailyTrackerNeitherOpenNorOpenedAtTheStart)
{
    State().settings.DailyTracker = 0;
    run.App().Host().Unload("frmDailyTracker");
    Rebuild();
    EXPECT_EQ(Boxes(), QStringList({ContinueQuestion, Built}));
    EXPECT_EQ(Row("ACME").Shares, Single::FromFloat(60));
}

TEST_F(RebuildWizard, HoldsKeysClicksAndClosingsBack)
{
    const InputHold hold;
    Open("ACME");
    Type("txtNumberOfShares", "7");
    EXPECT_EQ(Text("txtNumberOfShares"), "");
    Screen()->close();
    run.App().MainWindow().close();
    EXPECT_TRUE(Screen());
    EXPECT_EQ(run.timesEnded, 0);
}

// --- when it fails ------------------------------------------------------------------------------

TEST_F(RebuildWizard, AFailureIsToldAndLeavesTheFileAsItWas)
{
    folder.Execute(folder.SampleAccount(),
                   "CREATE TRIGGER Refuse BEFORE INSERT ON DailyProfitLoss BEGIN "
                   "SELECT RAISE(ABORT, 'disk is full'); END");
    const QString before = Dump();
    Rebuild();
    const QStringList boxes = Boxes();
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_EQ(boxes[1], "An error has occured while using the Wizard!\n"
                        "Restore your portfolio using your backup.\n"
                        "Error number -2147467259\nDescription: disk is full");
    EXPECT_EQ(run.boxes.boxes.size(), 0U);
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(Row("ACME").Shares, Single::FromFloat(100)); // shown again
    EXPECT_EQ(State().gRsLots.SharesOf("ACME"), Single::FromFloat(100));
    EXPECT_EQ(State().account.AccountBalance, Currency("1000"));
    EXPECT_FALSE(Entry().RebuildMode);
    EXPECT_FALSE(Entry().RebuildRunning);
    EXPECT_TRUE(Enabled("Open"));
    Open("ACME");
    Post("Buy", "1", "10");
    EXPECT_EQ(HistoryRows(), 5);
}

TEST_F(RebuildWizard, AStoreThatRefusesTheDeletesIsNoInvalidAccount)
{
    folder.Execute(folder.SampleAccount(),
                   "CREATE TRIGGER Refuse BEFORE DELETE ON PriceHistory BEGIN "
                   "SELECT RAISE(ABORT, 'disk is full'); END");
    const QString before = Dump();
    Rebuild();
    const QStringList boxes = Boxes();
    ASSERT_EQ(boxes.size(), 2);
    EXPECT_TRUE(boxes[1].startsWith("An error has occured while using the Wizard!"));
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(Row("ACME").Shares, Single::FromFloat(100));
}

TEST_F(RebuildWizard, ASignOnGivenUpOnTheWayRebuildsNothing)
{
    run.GiveBalance(folder.SampleAccount(), "2026-03-02", 1);
    State().account.AccountBalance = Currency();
    run.GiveSecurity(folder.SampleAccount(), 1, 0, 15);
    const QString before = Dump();
    run.WhenModal("frmPassword", [&] { run.App().Host().Unload("frmPassword"); });
    Rebuild();
    EXPECT_EQ(Boxes(), QStringList(ContinueQuestion));
    EXPECT_FALSE(Screen());
    EXPECT_FALSE(Entry().RebuildRunning);
    EXPECT_EQ(Dump(), before);
}
