/// The walk over all rows: valuation, day roll, balance step, imbalance of lots, reset of the
/// ToDate amounts.

#include "tracking/recompute.h"

#include "account_file.h"
#include "test_services.h"

#include "store/control_rows.h"

#include <gtest/gtest.h>

namespace
{

const QDate Today(2026, 3, 2);
const QDate Yesterday(2026, 3, 1);
const QString Title = "Daily Tracker Editor";

class Recomputed : public testing::Test
{
protected:
    Recomputed()
    {
        m_account.Open(m_file.Path());
        m_state.TrackerDay = Today;
        m_settings.ResetDate = Today.addDays(1);
        m_machine.services.showHelp = [this](const QString &topic) { m_help << topic; };
    }
    void AddRow(const QString &symbol, double shares, const char *average, const char *price)
    {
        m_account.Execute("INSERT INTO DailyTracker (Symbol, Shares, AvrgPrice, CurrPrice, "
                          "InvestedValue) VALUES (?, ?, ?, ?, 77)",
                          symbol, shares, Currency(average), Currency(price));
    }
    void AddLot(const QString &symbol, double shares)
    {
        m_account.Execute("INSERT INTO PriceHistory (Symbol, Shares) VALUES (?, ?)", symbol,
                          shares);
    }
    /// A row with the lot that belongs to it.
    void AddPosition(const QString &symbol, double shares, const char *average, const char *price)
    {
        AddRow(symbol, shares, average, price);
        AddLot(symbol, shares);
    }
    void Open()
    {
        m_rows.Open(m_account, "ORDER BY Symbol");
        m_lots.Open(m_account);
    }
    RecomputeWork Work()
    {
        return {m_rows, m_totals, m_state, m_settings, m_lots, m_undo, m_machine.services, Title};
    }
    void Load()
    {
        Open();
        RecomputeWork work = Work();
        RecomputeRows(work, true);
    }
    void Cycle()
    {
        RecomputeWork work = Work();
        RecomputeRows(work, false);
        TestToDateReset(work);
    }
    const TrackerRow &Row(const QString &symbol)
    {
        for (int i = 0; i < m_rows.RecordCount(); ++i)
            if (m_rows.At(i).Symbol == symbol)
                return m_rows.At(i);
        throw std::logic_error("no row");
    }
    TrackerRow &Edit(const QString &symbol)
    {
        m_rows.Find(symbol);
        return m_rows.Edit();
    }
    std::string Stored(const QString &sql)
    {
        Statement row = m_account.Prepare(sql);
        return row.Step() ? row.Text(0).toStdString() : "(no row)";
    }
    std::vector<std::string> Boxes() { return m_machine.dialogs.TakeBoxes(); }
    void ClockTo(QDate date, QTime time = QTime(10, 15))
    {
        m_machine.clock.Set(QDateTime(date, time));
    }

    AccountFile m_file;
    Connection m_account;
    AccountState m_state;
    Settings m_settings;
    PortfolioTotals m_totals;
    TrackerRecordset m_rows;
    PurchaseLots m_lots;
    Currency m_undo;
    TestServices m_machine;
    QStringList m_help;
};

using RecomputeWalk = Recomputed;
using NewDay = Recomputed;
using LotImbalance = Recomputed;

/// One row with amounts since the last reset; the reset falls on today.
class ToDateReset : public Recomputed
{
protected:
    ToDateReset()
    {
        AddRow("ACME", 100, "10", "10");
        AddRow("BOLT", 0, "0", "0");
        m_account.Execute("UPDATE DailyTracker SET ProfitLossToDate = 200000, TransCostToDate = "
                          "-40000, InvestedToDate = 10000000, NumberTransToDate = 7, "
                          "ProfitLossToday = 50000, TransDate = '2026-02-27'");
        AddLot("ACME", 100);
        Load();
        m_settings.ResetDate = Today;
        m_settings.NeverReset = 0;
        m_settings.ResetMonths = 1;
    }
    const std::string m_question =
        "Daily Tracker Editor|292|'ToDate' amounts will be reset according to setup \n"
        "instructions.  Continue?";
};

} // namespace

TEST_F(RecomputeWalk, ValuesLongShortAndFlatRows)
{
    AddPosition("ACME", 100, "10", "12");
    AddPosition("BOLT", -100, "10", "8");
    AddPosition("CORE", 0, "10", "8");
    Load();
    EXPECT_EQ(Row("ACME").Basis, Currency("200"));
    EXPECT_EQ(Row("ACME").InvestedValue, Currency("1200"));
    EXPECT_EQ(Row("BOLT").Basis, Currency("200"));
    EXPECT_EQ(Row("BOLT").InvestedValue, Currency("800"));
    EXPECT_TRUE(Row("CORE").Basis.IsZero());
    EXPECT_EQ(m_totals.InvestedValueTotal, Currency("2000"));
    EXPECT_EQ(m_totals.BasisTotal, Single::FromFloat(400));
}

TEST_F(RecomputeWalk, OfAFlatRowShowsZerosAndStillTheProfitToDate)
{
    AddPosition("ACME", 0, "10", "12");
    m_account.Execute("UPDATE DailyTracker SET Basis = 5, PerCentGainToday = 0.5, "
                      "ProfitLossToDate = 250000, ProfitLossToday = 10000");
    Load();
    EXPECT_TRUE(Row("ACME").InvestedValue.IsZero());
    EXPECT_TRUE(Row("ACME").Basis.IsZero());
    EXPECT_TRUE(Row("ACME").PerCentGainToday.IsZero());
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("25"));
    EXPECT_EQ(Row("ACME").ActualProfitLoss, Currency("26"));
}

TEST_F(RecomputeWalk, AtAPriceOfZeroKeepsTheInvestedValueAndLosesTheCost)
{
    AddPosition("ACME", 100, "10", "0");
    Load();
    EXPECT_EQ(Row("ACME").InvestedValue, Currency("0.0077"));
    EXPECT_EQ(Row("ACME").Basis, Currency("-1000"));
}

TEST_F(RecomputeWalk, AtLoadLeavesTheBalanceAndTakesTheGainsAsKnown)
{
    AddPosition("ACME", 100, "10", "12");
    m_state.AccountBalance = Currency("5000");
    Load();
    EXPECT_EQ(m_state.AccountBalance, Currency("5000"));
    EXPECT_EQ(m_totals.PriorBasisTotal, m_totals.BasisTotal);
    EXPECT_EQ(m_totals.PriorBasisTotal, Single::FromFloat(200));
}

TEST_F(RecomputeWalk, OfTheNextCycleMovesTheBalanceByTheChange)
{
    AddPosition("ACME", 100, "10", "12");
    AddPosition("BOLT", -100, "10", "8");
    m_state.AccountBalance = Currency("5000");
    Load();
    Edit("ACME").CurrPrice = Currency("12.5"); // +50
    Edit("BOLT").CurrPrice = Currency("8.2");  // -20
    Cycle();
    EXPECT_EQ(m_state.AccountBalance, Currency("5030"));
    EXPECT_EQ(m_undo, Currency("5030"));
    Cycle();
    EXPECT_EQ(m_state.AccountBalance, Currency("5030"));
}

TEST_F(RecomputeWalk, PassesTheRoundingOfEightDigitsToTheBalance)
{
    AddPosition("ACME", 1, "0", "12345678");
    Load();
    Edit("ACME").CurrPrice = Currency("12345678.4");
    Cycle();
    EXPECT_EQ(Row("ACME").Basis, Currency("12345678.4"));
    EXPECT_TRUE(m_state.AccountBalance.IsZero()); // 0.4 is beyond the eighth digit
}

TEST_F(RecomputeWalk, ForgetsTheCostOfAnEarlierPosting)
{
    Load();
    m_totals.TransCost = Currency("-5");
    Cycle();
    EXPECT_TRUE(m_state.AccountBalance.IsZero());
    EXPECT_TRUE(m_totals.TransCost.IsZero());
}

TEST_F(RecomputeWalk, WritesTheRowsAndEndsOnTheFirst)
{
    AddPosition("ACME", 100, "10", "12");
    AddPosition("BOLT", 100, "10", "12");
    Load();
    m_rows.MoveTo(1);
    Cycle();
    EXPECT_EQ(m_rows.Position(), 0);
    EXPECT_EQ(Stored("SELECT group_concat(Basis) FROM DailyTracker"), "2000000,2000000");
}

TEST_F(RecomputeWalk, OfAnEmptyAccountLeavesEverythingAtZero)
{
    m_state.AccountBalance = Currency("5000");
    Load();
    Cycle();
    EXPECT_EQ(m_state.AccountBalance, Currency("5000"));
    EXPECT_TRUE(m_totals.InvestedValueTotal.IsZero());
}

TEST_F(NewDay, FoldsTheProfitOfTheDayBeforeAndStampsToday)
{
    AddPosition("ACME", 100, "10", "12");
    m_account.Execute("UPDATE DailyTracker SET ProfitLossToday = 50000, ProfitLossToDate = 200000, "
                      "TransCostToday = -30000, NumberTransToday = 2, NumberTransToDate = 9");
    InsertBalanceRow(m_account, Currency(), m_machine.services);
    m_account.Execute("UPDATE DescriptiveTable SET Field04 = '2026-02-27'");
    m_state.TrackerDay = QDate(2026, 2, 27);
    Load();
    UpdateTrackerDay(m_account, m_state, Today);
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("25"));
    EXPECT_TRUE(Row("ACME").ProfitLossToday.IsZero());
    EXPECT_TRUE(Row("ACME").TransCostToday.IsZero());
    EXPECT_EQ(Row("ACME").NumberTransToday, Integer());
    EXPECT_EQ(Row("ACME").NumberTransToDate, Integer::FromWide(9));
    EXPECT_EQ(Row("ACME").ActualProfitLoss, Currency("25"));
    EXPECT_EQ(m_totals.ProfitLossToDateTotal, Currency("25"));
    EXPECT_EQ(m_state.TrackerDay, Today);
    EXPECT_EQ(Stored("SELECT Field04 FROM DescriptiveTable"), "2026-03-02");
    EXPECT_EQ(Stored("SELECT ProfitLossToday || ' ' || ProfitLossToDate FROM DailyTracker"),
              "0 250000");
}

TEST_F(NewDay, OnTheSameDayFoldsNothing)
{
    AddPosition("ACME", 100, "10", "12");
    m_account.Execute("UPDATE DailyTracker SET ProfitLossToday = 50000");
    Load();
    EXPECT_EQ(Row("ACME").ProfitLossToday, Currency("5"));
}

TEST_F(NewDay, OverMidnightRollsInEveryCycleAndTakesALaterProfitAlong)
{
    AddPosition("ACME", 100, "10", "12");
    ClockTo(Today, QTime(23, 59, 59));
    Load();
    Edit("ACME").ProfitLossToday = Currency("5");
    Cycle();
    EXPECT_EQ(Row("ACME").ProfitLossToday, Currency("5"));

    m_machine.clock.Advance(std::chrono::seconds(1)); // 00:00:00
    Cycle();
    EXPECT_TRUE(Row("ACME").ProfitLossToday.IsZero());
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("5"));
    Cycle(); // zero folded again changes nothing
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("5"));

    Edit("ACME").ProfitLossToday = Currency("7"); // a transaction of the new day
    Cycle();
    EXPECT_TRUE(Row("ACME").ProfitLossToday.IsZero());
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("12"));
    EXPECT_EQ(m_state.TrackerDay, Today);
}

TEST_F(NewDay, OnALeapDayIsStampedAsItIs)
{
    InsertBalanceRow(m_account, Currency(), m_machine.services);
    UpdateTrackerDay(m_account, m_state, QDate(2028, 2, 29));
    EXPECT_EQ(Stored("SELECT Field04 FROM DescriptiveTable"), "2028-02-29");
}

TEST_F(LotImbalance, IsShownAtLoadForEachSuchRowUntilItIsMended)
{
    AddRow("ACME", 100, "10", "12");
    AddRow("BOLT", 50, "10", "12");
    AddRow("O'NEIL", 10, "10", "12");
    AddLot("ACME", 60);
    AddLot("ACME", 40);
    AddLot("BOLT", 49);
    m_machine.dialogs.AnswerRest(Answer::No);
    Load();
    const std::vector<std::string> boxes = Boxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0], "Daily Tracker Editor|276|Message number: 100\n"
                        "ATTENTION: There is an imbalance in the total number \n"
                        "of shares in the Price History and the Daily Tracker information \n"
                        "for symbol BOLT.\n"
                        "To fix this problem you must delete invalid information in the \n"
                        "Purchase Price List screen.\n\n"
                        "If you need further help click 'Yes'");
    EXPECT_NE(boxes[1].find("for symbol O'NEIL."), std::string::npos);
    EXPECT_TRUE(m_help.isEmpty());

    AddLot("BOLT", 1);
    AddLot("O'NEIL", 10);
    Load();
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(LotImbalance, AnsweredYesOpensTheHelp)
{
    AddRow("ACME", 100, "10", "12");
    m_machine.dialogs.Queue(Answer::Yes);
    Load();
    EXPECT_EQ(m_help, QStringList("ErrorMessageHelp.html"));
}

TEST_F(LotImbalance, IsNotLookedForInACycle)
{
    AddRow("ACME", 100, "10", "12");
    m_machine.dialogs.AnswerRest(Answer::No);
    Load();
    Boxes();
    Cycle();
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(LotImbalance, IsComparedExactlyAfterAFloatSum)
{
    AddRow("ACME", 0.3, "10", "12");
    for (int i = 0; i < 3; ++i)
        AddLot("ACME", double(0.1f));
    m_machine.dialogs.AnswerRest(Answer::No);
    Load();
    const float sum = (0.1f + 0.1f) + 0.1f;
    EXPECT_EQ(Boxes().empty(), sum == 0.3f);
}

TEST_F(ToDateReset, BeforeItsDateAsksNothing)
{
    m_settings.ResetDate = Today.addDays(1);
    Cycle();
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(m_settings.ResetDate, Today.addDays(1));
}

TEST_F(ToDateReset, AnsweredYesClearsTheAmountsOfAllRowsAndMovesTheDateOn)
{
    m_machine.dialogs.Queue(Answer::Yes);
    Cycle();
    EXPECT_EQ(Boxes(), (std::vector<std::string>{
                           m_question,
                           "Daily Tracker Editor|64|All 'ToDate' amounts have been reset. Check "
                           "'User Setups' from the file menu if you need to change this option."}));
    for (const char *symbol : {"ACME", "BOLT"}) {
        const TrackerRow &row = Row(symbol);
        EXPECT_TRUE(row.ProfitLossToDate.IsZero());
        EXPECT_TRUE(row.TransCostToDate.IsZero());
        EXPECT_TRUE(row.InvestedToDate.IsZero());
        EXPECT_EQ(row.NumberTransToDate, Integer());
        EXPECT_EQ(row.ProfitLossToday, Currency("5")); // the day goes on
        EXPECT_EQ(row.TransDate, Today);
        EXPECT_EQ(row.Time, QTime(10, 15));
    }
    EXPECT_EQ(m_rows.Position(), 0);
    EXPECT_EQ(m_settings.ResetDate, QDate(2026, 4, 2));
    EXPECT_EQ(Stored("SELECT SUM(InvestedToDate) FROM DailyTracker"), "0");
}

TEST_F(ToDateReset, ShowsTheOldTotalsUntilTheNextWalk)
{
    m_machine.dialogs.Queue(Answer::Yes);
    Cycle();
    EXPECT_EQ(m_totals.InvestedToDateTotal, Currency("2000"));
    Cycle();
    EXPECT_TRUE(m_totals.InvestedToDateTotal.IsZero());
}

TEST_F(ToDateReset, AnsweredNoLeavesTheAmountsAndStillMovesTheDateOn)
{
    m_machine.dialogs.Queue(Answer::No);
    Cycle();
    EXPECT_EQ(Boxes(),
              (std::vector<std::string>{
                  m_question, "Daily Tracker Editor|64|Reset cancelled. Check 'User Setups' from "
                              "the file menu if you need to change this option."}));
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("20"));
    EXPECT_EQ(Row("ACME").TransDate, QDate(2026, 2, 27));
    EXPECT_EQ(m_settings.ResetDate, QDate(2026, 4, 2));
}

TEST_F(ToDateReset, ThatNeverComesAsksNothingAndCatchesUpPeriodByPeriod)
{
    m_settings.NeverReset = 1;
    m_settings.ResetDate = QDate(2025, 12, 15);
    for (const QDate next :
         {QDate(2026, 1, 15), QDate(2026, 2, 15), QDate(2026, 3, 15), QDate(2026, 3, 15)}) {
        Cycle();
        EXPECT_EQ(m_settings.ResetDate, next);
    }
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(Row("ACME").ProfitLossToDate, Currency("20"));
}

TEST_F(ToDateReset, FarInThePastAsksAgainInEachCycleUntilItHasCaughtUp)
{
    m_settings.ResetDate = QDate(2026, 1, 2);
    m_machine.dialogs.AnswerRest(Answer::No);
    for (int i = 0; i < 5; ++i)
        Cycle();
    EXPECT_EQ(Boxes().size(), 6u); // January, February and March, a question and its answer each
    EXPECT_EQ(m_settings.ResetDate, QDate(2026, 4, 2));
}

TEST_F(ToDateReset, AtTheEndOfAMonthFallsOnTheLastDayOfAShorterOne)
{
    m_settings.NeverReset = 1;
    m_settings.ResetDate = QDate(2026, 1, 31);
    Cycle();
    EXPECT_EQ(m_settings.ResetDate, QDate(2026, 2, 28));

    m_settings.ResetDate = QDate(2024, 2, 29);
    m_settings.ResetMonths = 12;
    Cycle();
    EXPECT_EQ(m_settings.ResetDate, QDate(2025, 2, 28));
}

TEST_F(ToDateReset, OfAnEmptyAccountStillAsksAndMovesTheDateOn)
{
    m_account.Execute("DELETE FROM DailyTracker");
    Load();
    m_machine.dialogs.Queue(Answer::Yes);
    Cycle();
    EXPECT_EQ(Boxes().size(), 2u);
    EXPECT_EQ(m_settings.ResetDate, QDate(2026, 4, 2));
}
