/// The dialog that deletes rows of a ledger: which one, what is asked, what is told afterwards.

#include "tracking/tracker_screen_run.h"

#include "platform/widgets/date_field.h"
#include "program/delete_options.h"

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

namespace
{

const QString Dialog = QStringLiteral("frmDeleteOptions");

class DeleteScreen : public TrackerScreenRun
{
protected:
    void Profit(const QString &symbol, const char *date)
    {
        Execute(QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, TransDate, "
                               "Time) VALUES (%1, 'Name', 10000, '%2', NULL)")
                    .arg(Quoted(symbol), QString::fromUtf8(date)));
    }
    void Trade(const QString &symbol, const char *description, int shares, const char *date)
    {
        Execute(QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, Price, "
                               "TransDate, Time) VALUES (%1, 'Name', '%2', %3, 100000, '%4', "
                               "'10:00:00.000')")
                    .arg(Quoted(symbol), QString::fromUtf8(description))
                    .arg(shares)
                    .arg(QString::fromUtf8(date)));
    }
    void SelectRow(const QString &symbol, qint64 id)
    {
        State().selection.CurrentSymbol = symbol;
        State().selection.SelectedRowID = id;
    }
    /// Opens the dialog for this popup entry, or for none, and runs `act` in it.
    void InDialog(const char *popupEntry, std::function<void()> act)
    {
        run.WhenModal(Dialog, std::move(act));
        if (*popupEntry)
            OpenDeleteOptions(State(), QString::fromUtf8(popupEntry));
        else
            State().screens.ShowModal(Dialog);
    }
    void PickOption(const char *option)
    {
        run.Control<QRadioButton>(Dialog, QString::fromUtf8(option))->click();
    }
    void Press(const char *button)
    {
        run.Control<QPushButton>(Dialog, QString::fromUtf8(button))->click();
    }
    /// Picks the option, agrees, and comes back with the status that was shown meanwhile.
    QString Delete(const char *popupEntry, const char *option)
    {
        QString told;
        auto watch = run.clock.CreateTimer([&] { told = Status(); });
        watch->SetInterval(std::chrono::seconds(2));
        InDialog(popupEntry, [&] {
            run.boxes.Prepare("deleted", Answer::Ok);
            run.boxes.Prepare("Continue?", Answer::Ok);
            PickOption(option);
            watch->SetEnabled(true);
            Press("cmdOK");
        });
        return told;
    }
    /// The boxes without the questions: "title|buttons value|text".
    QStringList Reminders()
    {
        QStringList texts;
        for (const auto &box : run.boxes.boxes)
            if (box.title != "Delete Editor")
                texts << box.title + QLatin1Char('|') + QString::number(box.buttonsValue) +
                             QLatin1Char('|') + box.text;
        return texts;
    }
    int Count(const char *table)
    {
        Statement select = State().databases.gConnAccount.Prepare(
            QStringLiteral("SELECT COUNT(*) FROM %1").arg(QString::fromUtf8(table)));
        select.Step();
        return int(select.Int64(0));
    }
};

const QString WizardReminder =
    QStringLiteral("Delete History Transactions Editor|64|REMINDER! When manually deleting "
                   "transaction history, it may be\nnescessary to run the Wizard to get your "
                   "portfolio in 'sink' with buy\nand sell orders.");

} // namespace

struct Opened
{
    const char *popupEntry;
    const char *caption;
};

TEST_F(DeleteScreen, IsNamedAfterTheEntryThatStandsChecked)
{
    Open();
    const Opened cases[] = {{"popHLDelete", "Delete History Transactions"},
                            {"popPPDelete", "Delete Purchase Price"},
                            {"popPLDelete", "Delete Profit and Loss"},
                            {"", "Delete Options"}};
    for (const Opened &opened : cases)
        InDialog(opened.popupEntry, [&] {
            EXPECT_EQ(run.App().Host().Find(Dialog)->Caption(), opened.caption);
            Press("cmdCancel");
        });
}

TEST_F(DeleteScreen, ChoosesTheOptionWhoseDateIsPicked)
{
    Open();
    SelectRow("ACME", 1);
    InDialog("popHLDelete", [&] {
        for (const auto &[picker, option] : std::vector<std::pair<QString, QString>>{
                 {"dtpSelSymTo", "optSymbolDate"}, {"dtpAllTo", "optAllDate"}}) {
            auto *field = run.Control<DateField>(Dialog, picker);
            field->setFocus();
            QTest::keyClick(field, Qt::Key_Down);
            EXPECT_TRUE(run.Control<QRadioButton>(Dialog, option)->isChecked())
                << qPrintable(picker);
        }
        Press("cmdCancel");
    });
}

TEST_F(DeleteScreen, OpensOnTheSelectedSymbolTodayAndTheOptionThatTakesTheLeast)
{
    Open();
    SelectRow("O'NEIL", 1);
    InDialog("popPLDelete", [&] {
        EXPECT_EQ(run.Control<QLineEdit>(Dialog, "txtSelectedSymbol")->text(), "O'NEIL");
        EXPECT_EQ(run.Control<QLabel>(Dialog, "lblSelectedSymbol")->text(), "Selected Symbol ");
        EXPECT_EQ(run.Control<DateField>(Dialog, "dtpSelSymTo")->date(), QDate(2026, 3, 2));
        EXPECT_EQ(run.Control<DateField>(Dialog, "dtpAllTo")->date(), QDate(2026, 3, 2));
        EXPECT_TRUE(run.Control<QRadioButton>(Dialog, "optCurrentRow")->isChecked());
        EXPECT_EQ(Status(), "Please select delete option");
        Press("cmdCancel");
    });
    EXPECT_EQ(Status(), "");
}

TEST_F(DeleteScreen, DeletesTheRowAndTellsTheCountForThreeSeconds)
{
    Profit("ACME", "2026-02-27");
    Profit("ZETA", "2026-02-27");
    Open();
    SelectRow("ZETA", 2);
    const QDateTime before = run.clock.Now();
    EXPECT_EQ(Delete("popPLDelete", "optCurrentRow"), "A total of 1 Row(s) were deleted");
    EXPECT_EQ(run.clock.Now(), before.addSecs(3));
    EXPECT_EQ(Count("DailyProfitLoss"), 1);
    EXPECT_EQ(Reminders(), QStringList());
    EXPECT_FALSE(run.App().Host().Loaded(Dialog));
    EXPECT_EQ(Status(), "");
}

TEST_F(DeleteScreen, DeletesNothingWhenTheRowIsOfAnotherSymbol)
{
    Profit("ACME", "2026-02-27");
    Open();
    SelectRow("ZETA", 1);
    EXPECT_EQ(Delete("popPLDelete", "optCurrentRow"), "A total of 0 Row(s) were deleted");
    EXPECT_EQ(Count("DailyProfitLoss"), 1);
}

TEST_F(DeleteScreen, CannotBePressedTwice)
{
    Profit("ACME", "2026-02-27");
    Open();
    SelectRow("ACME", 1);
    auto press = run.clock.CreateTimer([&] {
        Press("cmdOK");
        Press("cmdCancel");
    });
    press->SetInterval(std::chrono::seconds(1));
    press->SetEnabled(true);
    EXPECT_EQ(Delete("popPLDelete", "optAllSelected"), "A total of 1 Row(s) were deleted");
    press->SetEnabled(false);
    EXPECT_EQ(Reminders().size(), 1);
}

TEST_F(DeleteScreen, StaysOpenWhenTheUserDoesNotAgree)
{
    Profit("ACME", "2026-02-27");
    Open();
    SelectRow("ACME", 1);
    InDialog("popPLDelete", [&] {
        run.boxes.Prepare("Current row will be deleted!", Answer::Cancel);
        Press("cmdOK");
        EXPECT_TRUE(run.App().Host().Loaded(Dialog));
        Press("cmdCancel");
    });
    EXPECT_EQ(Count("DailyProfitLoss"), 1);
}

TEST_F(DeleteScreen, AsksWhatToDeleteWithoutACheckedEntry)
{
    Profit("ACME", "2026-02-27");
    Open();
    SelectRow("ACME", 1);
    InDialog("", [&] {
        run.boxes.Prepare("Current row will be deleted!", Answer::Ok);
        Press("cmdOK");
        EXPECT_EQ(run.boxes.boxes.back().text, "Delete what?");
        EXPECT_EQ(run.boxes.boxes.back().title, "Delete Options Editor");
        EXPECT_TRUE(run.App().Host().Loaded(Dialog));
        Press("cmdCancel");
    });
    EXPECT_EQ(Count("DailyProfitLoss"), 1);
}

TEST_F(DeleteScreen, RemindsOfTheHistoryBehindDeletedProfits)
{
    Profit("ACME", "2026-02-27");
    Open();
    SelectRow("ACME", 1);
    EXPECT_EQ(Delete("popPLDelete", "optAllSelected"), "A total of 1 Row(s) were deleted");
    EXPECT_EQ(Reminders(),
              QStringList("Delete Profit and Loss Editor|64|REMINDER! Make sure to delete existing "
                          "transaction history for \nACME if you do not need that information."));
}

TEST_F(DeleteScreen, RemindsOfNothingAfterCancel)
{
    Open();
    SelectRow("ACME", 1);
    for (const char *entry : {"popHLDelete", "popPPDelete", "popPLDelete"})
        InDialog(entry, [&] {
            PickOption("optAllSelected");
            Press("cmdCancel");
        });
    EXPECT_TRUE(run.boxes.boxes.empty());
    EXPECT_FALSE(State().run.WizardReminderShown);
}

TEST_F(DeleteScreen, RemindsOfTheWizardOnceInARun)
{
    Trade("ACME", "Bought", 10, "2026-02-26");
    Trade("ACME", "Bought", 10, "2026-02-27");
    Open();
    SelectRow("ACME", 1);
    Delete("popHLDelete", "optCurrentRow");
    EXPECT_EQ(Reminders(), QStringList(WizardReminder));
    SelectRow("ACME", 2);
    Delete("popHLDelete", "optCurrentRow");
    EXPECT_EQ(Reminders().size(), 1);
    EXPECT_EQ(Count("History"), 0);
}

TEST_F(DeleteScreen, LeavesAPartlySoldPurchaseWithWhatIsLeft)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("ACME", "Sold", -40, "2026-01-20");
    Open();
    SelectRow("ACME", 1);
    EXPECT_EQ(Delete("popHLDelete", "optSymbolDate"), "A total of 1 Row(s) were deleted");
    run.App().Host().Unload("frmDailyTracker");
    EXPECT_EQ(Value("SELECT Shares FROM History"), "60.0");
}

TEST_F(DeleteScreen, TakesDeletedLotsFromThePostingsToCome)
{
    TwoPositions();
    Open();
    SelectRow("ACME", 1);
    Delete("popPPDelete", "optCurrentRow");
    EXPECT_TRUE(State().gRsLots.LotsOf("ACME").empty());
    EXPECT_EQ(State().gRsLots.LotsOf("ZETA").size(), 1u);
    Post(Action::Buy, "ZETA", "10", "19"); // whose lots are written at the next commit point
    Close();
    EXPECT_EQ(Value("SELECT COUNT(*) FROM PriceHistory WHERE Symbol = 'ACME'"), "0");
}

TEST_F(DeleteScreen, LetsTheOpenListFollow)
{
    Profit("ACME", "2026-02-26");
    Profit("ZETA", "2026-02-27");
    Open();
    Choose("mnuVWDailyProfitLoss");
    auto &grid = *run.Control<FlexGrid>("frmDailyProfitLoss", "MSHFlexGridPL");
    EXPECT_EQ(grid.RowCount(), 4);
    SelectRow("ZETA", 2);
    Delete("popPLDelete", "optCurrentRow");
    EXPECT_EQ(grid.RowCount(), 2);
    EXPECT_EQ(grid.CellText(0, 1), "ACME");
}

TEST_F(DeleteScreen, SaysThatTheStoreRefusedAndDeletesNothing)
{
    Profit("ACME", "2026-02-27");
    Trade("ACME", "Bought", 10, "2026-02-27");
    Position("ACME", 10, "10", "12");
    Open();
    SelectRow("ACME", 1);
    for (const auto &[popup, table] : std::initializer_list<std::pair<const char *, QString>>{
             {"popHLDelete", "History"},
             {"popPPDelete", "PriceHistory"},
             {"popPLDelete", "DailyProfitLoss"}}) {
        SCOPED_TRACE(popup);
        State().databases.gConnAccount.ExecuteScript(
            QStringLiteral("CREATE TRIGGER Refuse%1 BEFORE DELETE ON %1 "
                           "BEGIN SELECT RAISE(ABORT, 'no room'); END")
                .arg(table));
        const QString rows = Value("SELECT count(*) FROM " + table);
        bool isOpen = false;
        InDialog(popup, [&] {
            run.boxes.Prepare("deleted", Answer::Ok);
            PickOption("optAllSelected");
            Press("cmdOK");
            isOpen = run.App().Host().Loaded(Dialog) && run.App().Host().Find(Dialog)->isEnabled();
            EXPECT_EQ(run.boxes.boxes.back().text,
                      "The deletion could not be saved: no room. Nothing was changed.");
            EXPECT_EQ(run.boxes.boxes.back().buttonsValue, Box::Exclamation);
            Press("cmdCancel");
        });
        EXPECT_TRUE(isOpen);
        EXPECT_NE(rows, "0");
        EXPECT_EQ(Value("SELECT count(*) FROM " + table), rows);
    }
}
