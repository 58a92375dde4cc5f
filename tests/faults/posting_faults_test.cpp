/// The steps of a working day at the Daily Tracker, on a disk that is full, and killed: an operation is
/// there whole or not at all, on the screen and in the file, and what waits to be written is not lost.

#include "faults/faulty_world.h"

#include "program/command_target.h"
#include "transactions/posting.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>

#include <csignal>

namespace
{

/// A hundred ACME in two lots, worth 1,200; a balance of 10,000.
class AccountAtWork : public testing::Test
{
protected:
    AccountAtWork()
    {
        world.folder.Execute(
            Account(),
            "DELETE FROM DailyTracker; DELETE FROM History; DELETE FROM PriceHistory; "
            "DELETE FROM DailyProfitLoss; DELETE FROM PortfolioDailyBalance; "
            "DELETE FROM DescriptiveTable; "
            "INSERT INTO DescriptiveTable VALUES ('Balance', 100000000, 0, 0, '2026-03-02', "
            "'2026-03-02', '6018', 1, 'n/a', 'n/a', 0, 0, '0'); "
            "INSERT INTO DailyTracker (Symbol, Name, Shares, CurrPrice, AvrgPrice, Basis, "
            "TransDate, "
            "Time) VALUES ('ACME', 'Acme', 100, 120000, 100000, 2000000, '2026-02-27', "
            "'10:00:00.000'); "
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES "
            "('ACME', 60, 80000, '2026-01-05', '10:00:00.000'), "
            "('ACME', 40, 130000, '2026-02-02', '10:00:00.000'); "
            "INSERT INTO History (Symbol, Name, Description, Shares, Price, TransDate, Time) "
            "VALUES "
            "('ACME', 'Acme', 'Bought', 100, 100000, '2026-02-02', '10:00:00.000')");
        world.folder.Execute(world.folder.File("ApplControl.xxx"),
                             "INSERT INTO SecurityDetail VALUES ('ACME', 'Acme', 'Stock')");
        QFile::remove(world.folder.File("ApplControl.mdb")); // that one is old
    }
    QString Account() const { return world.folder.SampleAccount(); }
    QString Value(const char *sql) const { return world.folder.Value(Account(), sql); }
    QString Lots() const
    {
        return Value("SELECT group_concat(Symbol || ' ' || CAST(Shares AS INTEGER), ', ') FROM "
                     "(SELECT * FROM PriceHistory ORDER BY TransDate, Time, ID)");
    }

    /// Runs the program with the Daily Tracker up; `act` is what happens to it there.
    RunEnd Run(std::function<void(ShellRun &)> act)
    {
        s_act = std::move(act);
        static const Operation atWork = {"at work",
                                         [](ShellRun &run, const FaultyWorld &) {
                                             run.App().Host().Show("frmDailyTracker");
                                             s_act(run);
                                         },
                                         "app", "Sample Portfolio.mdb"};
        return world.Run(atWork);
    }
    /// Opens it again, as the next start does, and closes it: nothing has to be told.
    void ExpectOpensInOrder()
    {
        const RunEnd end =
            Run([](ShellRun &run) { EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker")); });
        EXPECT_FALSE(end.Told("Message number: 100")) << end.told.join('\n').toStdString();
        EXPECT_FALSE(end.Told("rror number")) << end.told.join('\n').toStdString();
    }

    FaultyWorld world;
    static std::function<void(ShellRun &)> s_act;
};

std::function<void(ShellRun &)> AccountAtWork::s_act;

/// The commission is 5. A posting that fails ends the program.
void Post(ShellRun &run, Action action, const char *count, const char *price = "12")
{
    struct NoFiller : EntryFiller
    {
        void Focus(EntryField) override {}
        void SelectAction(Action) override {}
    } filler;
    Program &program = run.State();
    program.entry.CurrentSecurityType = "Stock";
    program.entry.Commission = Currency("5");
    TransactionEntry entry;
    entry.action = action;
    entry.Symbol = "ACME";
    entry.Name = "Acme";
    entry.TransDate = run.clock.Today();
    entry.NumberOfShares = count;
    entry.PurchasePrice = price;
    PostingWork work = program.Posting();
    FinishPosting(work, PostTransaction(work, entry, filler));
}

void Undo(ShellRun &run)
{
    run.boxes.Prepare("undo your last transaction", Answer::Yes);
    dynamic_cast<CommandTarget *>(run.App().Host().Find("frmDailyTracker"))
        ->RunCommand("popDTUndoLast");
}

std::string Shares(ShellRun &run)
{
    TrackerRecordset &rows = run.State().AdodcStockHistory;
    return rows.Find("ACME")
               ? run.State().services.formats.ToText(rows.Current().Shares).toStdString()
               : "no row";
}

QString LastBox(const ShellRun &run)
{
    return run.boxes.boxes.empty() ? QString() : run.boxes.boxes.back().text;
}

} // namespace

TEST_F(AccountAtWork, KilledAfterAPostingKeepsItsBalanceAndLots)
{
    EXPECT_TRUE(Run([](ShellRun &run) {
                    Post(run, Action::Sell, "70");
                    Post(run, Action::Buy, "10");
                    raise(SIGKILL);
                }).wasKilled);
    ExpectOpensInOrder();
    EXPECT_EQ(Lots(), "ACME 30, ACME 10");
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "99900000"); // two commissions
    EXPECT_EQ(Value("SELECT count(*) FROM PendingLots"), "0");
    EXPECT_EQ(Value("SELECT count(*) FROM PendingBalance"), "0");
}

TEST_F(AccountAtWork, KilledAfterPricesChangedKeepsTheBalanceThatFollowedThem)
{
    EXPECT_TRUE(Run([](ShellRun &run) {
                    TrackerRecordset &rows = run.State().AdodcStockHistory;
                    rows.Find("ACME");
                    rows.Edit().CurrPrice = Currency("13");
                    run.State().ReloadDataGrid(); // as each price cycle does
                    raise(SIGKILL);
                }).wasKilled);
    ExpectOpensInOrder();
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "101000000"); // 100 * (13 - 12)
    EXPECT_EQ(Value("SELECT CurrPrice FROM DailyTracker"), "130000");
}

TEST_F(AccountAtWork, OnAFullDiskClosesTheTrackerOnlyWhenItsLotsAreSaved)
{
    const SmallDisk disk(world.folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    Run([&disk](ShellRun &run) {
        Post(run, Action::Buy, "10");
        disk.Fill(0);
        EXPECT_FALSE(run.App().Host().Unload("frmDailyTracker"));
        EXPECT_TRUE(run.App().Host().Loaded("frmDailyTracker"));
        EXPECT_EQ(LastBox(run),
                  "The lots of the last transaction could not be saved: the disk is full.\n"
                  "Nothing is lost. Correct the problem and close the Daily Tracker again.");
        run.Choose("mnuFLExit");
        EXPECT_FALSE(run.App().Ended());
        EXPECT_FALSE(run.State().run.ProgramClosing);
        EXPECT_EQ(Shares(run), "110");
        disk.MakeRoom();
        run.Choose("mnuFLExit");
        EXPECT_TRUE(run.App().Ended());
    });
    EXPECT_EQ(Lots(), "ACME 60, ACME 40, ACME 10");
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "99950000");
    EXPECT_EQ(Value("SELECT DailyBalance FROM PortfolioDailyBalance WHERE TrackName = 'Portfolio'"),
              "99950000");
    ExpectOpensInOrder();
}

TEST_F(AccountAtWork, OnAFullDiskIsNotLeftWithABalanceThatIsNotSaved)
{
    const SmallDisk disk(world.folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    Run([&disk](ShellRun &run) {
        Post(run, Action::Deposit, "250.00");
        disk.Fill(0);
        run.Choose("mnuFLExit");
        EXPECT_FALSE(run.App().Ended());
        EXPECT_EQ(LastBox(run), "The balance of the account could not be saved: the disk is full.\n"
                                "Nothing is lost. Correct the problem and try it again.");
        EXPECT_TRUE(run.State().databases.gConnAccount.IsOpen());
        disk.MakeRoom();
        run.Choose("mnuFLExit");
        EXPECT_TRUE(run.App().Ended());
    });
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "102500000");
    EXPECT_EQ(Value("SELECT DailyBalance FROM PortfolioDailyBalance WHERE TrackName = 'Portfolio'"),
              "102500000");
    ExpectOpensInOrder();
}

TEST_F(AccountAtWork, OnAFullDiskUndoesWholeOrNotAtAll)
{
    const SmallDisk disk(world.folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    Run([&](ShellRun &run) {
        Post(run, Action::Sell, "70");
        const Currency balance = run.State().account.AccountBalance;
        disk.Fill(0);
        for (int attempt = 0; attempt < 2; ++attempt) {
            Undo(run);
            EXPECT_EQ(LastBox(run),
                      "The undo could not be saved: the disk is full. Nothing was changed.");
            EXPECT_EQ(Shares(run), "30");
            EXPECT_EQ(run.State().account.AccountBalance, balance);
            EXPECT_EQ(run.State().gRsLots.SharesOf("ACME"), Single::FromFloat(30));
            EXPECT_TRUE(run.Commands().Enabled("UndoLast"));
        }
        const Connection &file = run.State().databases.gConnAccount;
        Statement rows = file.Prepare("SELECT (SELECT Shares FROM DailyTracker), "
                                      "(SELECT count(*) FROM History)");
        EXPECT_TRUE(rows.Step());
        EXPECT_EQ(rows.Double(0), 30);
        EXPECT_EQ(rows.Int64(1), 2);
        disk.MakeRoom();
        Undo(run);
        EXPECT_EQ(Shares(run), "100");
        EXPECT_FALSE(run.Commands().Enabled("UndoLast"));
    });
    EXPECT_EQ(Lots(), "ACME 60, ACME 40");
    EXPECT_EQ(Value("SELECT count(*) FROM History"), "1");
    ExpectOpensInOrder();
}

TEST_F(AccountAtWork, KilledBetweenAFailedUndoAndTheNextKeepsThePosting)
{
    const SmallDisk disk(world.folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    EXPECT_TRUE(Run([&](ShellRun &run) {
                    Post(run, Action::Sell, "70");
                    disk.Fill(0);
                    Undo(run);
                    raise(SIGKILL);
                }).wasKilled);
    disk.MakeRoom();
    ExpectOpensInOrder();
    EXPECT_EQ(Lots(), "ACME 30");
    EXPECT_EQ(Value("SELECT count(*) FROM History"), "2");
}

TEST_F(AccountAtWork, OnAFullDiskEndsAFailedPostingWithTheLotsOfThePostingBefore)
{
    const SmallDisk disk(world.folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    const RunEnd end = Run([&](ShellRun &run) {
        Post(run, Action::Sell, "70");
        disk.Fill(0);
        EXPECT_THROW(Post(run, Action::Buy, "10"), ProgramEnded);
    });
    EXPECT_TRUE(end.Told("An error has occured while performing 'OK' button logic."));
    disk.MakeRoom();
    ExpectOpensInOrder();
    EXPECT_EQ(Lots(), "ACME 30");
    EXPECT_EQ(Value("SELECT count(*) FROM History"), "2");
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "99950000");
}

TEST_F(AccountAtWork, OnAFullDiskRenamesWholeOrNotAtAll)
{
    const SmallDisk disk(world.folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    Run([&](ShellRun &run) {
        run.State().selection.CurrentSymbol = "ACME";
        run.State().selection.CurrentName = "Acme";
        run.Commands().SetChecked("popDTEdit", true);
        run.WhenModal("frmSecurityUpdate", [&] {
            QCoreApplication::processEvents(); // it comes up
            const auto control = [&run](const char *name) {
                return run.Control<QLineEdit>("frmSecurityUpdate", name);
            };
            const auto type = [&](const char *field, const char *text, const char *next) {
                control(field)->setFocus();
                control(field)->setText(text);
                control(next)->setFocus();
                QCoreApplication::processEvents();
            };
            disk.Fill(0);
            type("txtSymbol", "NEW", "txtName");
            EXPECT_EQ(LastBox(run),
                      "The new symbol could not be saved: the disk is full. Nothing was changed.");
            EXPECT_EQ(control("txtSymbol")->text(), "ACME");
            type("txtName", "Other", "txtSymbol");
            EXPECT_EQ(LastBox(run),
                      "The new name could not be saved: the disk is full. Nothing was changed.");
            EXPECT_EQ(control("txtName")->text(), "Acme");
            EXPECT_EQ(Shares(run), "100");
            disk.MakeRoom();
            type("txtSymbol", "NEW", "txtName");
            EXPECT_EQ(control("txtSymbol")->text(), "NEW");
            run.App().Host().Unload("frmSecurityUpdate");
        });
        run.App().Host().ShowModal("frmSecurityUpdate");
    });
    for (const char *table : {"DailyTracker", "History"})
        EXPECT_EQ(
            Value(qPrintable(QString("SELECT group_concat(Symbol || Name) FROM %1").arg(table))),
            "NEWAcme")
            << table;
    EXPECT_EQ(Lots(), "NEW 60, NEW 40");
    EXPECT_EQ(world.folder.Value(world.folder.File("ApplControl.mdb"),
                                 "SELECT group_concat(Symbol || Name) FROM SecurityDetail"),
              "NEWAcme");
    ExpectOpensInOrder();
}

TEST_F(AccountAtWork, OnAFullDiskClearsARowWholeOrNotAtAll)
{
    const SmallDisk disk(world.folder.Path());
    if (!disk.IsMounted())
        GTEST_SKIP() << "a small disk is mounted by root alone";
    Run([&](ShellRun &run) {
        run.State().selection.CurrentSymbol = "ACME";
        const Currency balance = run.State().account.AccountBalance;
        disk.Fill(0);
        run.boxes.Prepare("clear the content", Answer::Yes);
        EXPECT_THROW(dynamic_cast<CommandTarget *>(run.App().Host().Find("frmDailyTracker"))
                         ->RunCommand("popDTClear"),
                     RuntimeError);
        EXPECT_EQ(Shares(run), "100");
        EXPECT_EQ(run.State().gRsLots.SharesOf("ACME"), Single::FromFloat(100));
        EXPECT_EQ(run.State().account.AccountBalance, balance);
        disk.MakeRoom();
    });
    EXPECT_EQ(Lots(), "ACME 60, ACME 40");
    ExpectOpensInOrder();
}
