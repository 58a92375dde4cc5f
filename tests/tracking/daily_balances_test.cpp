/// The balance series: a row for each day and tracked name.

#include "tracking/daily_balances.h"

#include "account_file.h"
#include "test_services.h"

#include <gtest/gtest.h>

namespace
{

const QDate Today(2026, 3, 2);
const QString Title = "Daily Tracker Editor";

class DailyBalances : public testing::Test
{
protected:
    DailyBalances()
    {
        m_account.Open(m_file.Path());
        m_account.Execute(
            "INSERT INTO DescriptiveTable (TableName, Field01) VALUES ('Balance', 10000)");
    }
    void AddRow(const QString &symbol, const char *basis, QDate transDate)
    {
        m_account.Execute("INSERT INTO DailyTracker (Symbol, Basis, TransDate) VALUES (?, ?, ?)",
                          symbol, Currency(basis), transDate);
    }
    void UpdateBalance(const char *balance, QDate date = Today)
    {
        m_state.AccountBalance = Currency(balance);
        UpdateDailyBalance(m_account, m_state, date, m_machine.services, Title);
    }
    void UpdateSecurities(QDate date = Today)
    {
        m_rows.Open(m_account, "ORDER BY Symbol");
        UpdateDailySecurityBalance(m_account, m_rows, date, m_machine.services, Title);
    }
    /// "Portfolio 2026-03-02 1234500", by date and name, money in ten-thousandths.
    std::string Series()
    {
        QStringList rows;
        Statement row = m_account.Prepare("SELECT TrackName || ' ' || TransDate || ' ' || "
                                          "DailyBalance FROM PortfolioDailyBalance "
                                          "ORDER BY TransDate, TrackName");
        while (row.Step())
            rows << row.Text(0);
        return rows.join(", ").toStdString();
    }
    std::string Text(const QString &sql)
    {
        Statement row = m_account.Prepare(sql);
        return row.Step() ? row.Text(0).toStdString() : "(no row)";
    }
    void RefuseBalanceOf(const QString &name)
    {
        m_account.ExecuteScript("CREATE TRIGGER Refuse BEFORE INSERT ON PortfolioDailyBalance WHEN "
                                "new.TrackName = '" +
                                name + "' BEGIN SELECT RAISE(ABORT, 'refused'); END");
    }

    AccountFile m_file;
    Connection m_account;
    AccountState m_state;
    TrackerRecordset m_rows;
    TestServices m_machine;
};

using PortfolioBalance = DailyBalances;
using SecurityBalance = DailyBalances;

} // namespace

TEST_F(PortfolioBalance, WrittenTwiceOnADayLeavesOneRowWithTheLaterValue)
{
    UpdateBalance("100");
    UpdateBalance("123.45");
    EXPECT_EQ(Series(), "Portfolio 2026-03-02 1234500");
}

TEST_F(PortfolioBalance, KeepsARowForEachDay)
{
    UpdateBalance("100", QDate(2028, 2, 29));
    UpdateBalance("90", QDate(2028, 2, 28));
    UpdateBalance("-0.0001", QDate(2028, 3, 1));
    EXPECT_EQ(Series(), "Portfolio 2028-02-28 900000, Portfolio 2028-02-29 1000000, "
                        "Portfolio 2028-03-01 -1");
}

TEST_F(PortfolioBalance, ReachesTheBalanceControlRow)
{
    UpdateBalance("123.45");
    EXPECT_EQ(Text("SELECT Field01 FROM DescriptiveTable"), "1234500");
}

TEST_F(PortfolioBalance, IsWrittenWithoutABalanceControlRowToo)
{
    m_account.Execute("DELETE FROM DescriptiveTable");
    UpdateBalance("123.45");
    EXPECT_EQ(Series(), "Portfolio 2026-03-02 1234500");
    EXPECT_EQ(Text("SELECT * FROM DescriptiveTable"), "(no row)");
}

TEST_F(PortfolioBalance, KeepsTheTimeOfItsFirstWriting)
{
    UpdateBalance("100");
    m_machine.clock.Advance(std::chrono::hours(1));
    UpdateBalance("200");
    EXPECT_EQ(Text("SELECT Time FROM PortfolioDailyBalance"), "10:15:00.000");
}

TEST_F(PortfolioBalance, ThatIsRefusedIsShownAndLeavesBothRowsAsTheyWere)
{
    RefuseBalanceOf("Portfolio");
    UpdateBalance("123.45");
    const std::vector<std::string> boxes = m_machine.dialogs.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0], "Daily Tracker Editor|48|An error has occured updating Portfolio Daily "
                        "Balance. \nPlease check last action performed and notify technical "
                        "support.\nError number -2147467259\nDescription: refused");
    EXPECT_EQ(Series(), "");
    EXPECT_EQ(Text("SELECT Field01 FROM DescriptiveTable"), "10000");
}

TEST_F(SecurityBalance, OfASecurityWithoutGainAndActivityLeavesNoTrace)
{
    AddRow("ACME", "0", QDate(2026, 2, 27));
    UpdateSecurities();
    EXPECT_EQ(Series(), "");
}

TEST_F(SecurityBalance, OfASecurityTradedTodayIsWrittenAtZero)
{
    AddRow("ACME", "0", Today);
    UpdateSecurities();
    EXPECT_EQ(Series(), "ACME 2026-03-02 0");
}

TEST_F(SecurityBalance, OfASecurityWithAGainOrLossIsWrittenWhateverItsDate)
{
    AddRow("ACME", "0.0001", QDate(2020, 1, 1));
    AddRow("BOLT", "-5", QDate());
    UpdateSecurities();
    EXPECT_EQ(Series(), "ACME 2026-03-02 1, BOLT 2026-03-02 -50000");
}

TEST_F(SecurityBalance, FollowsTheDateItIsAskedFor)
{
    AddRow("ACME", "0", Today);
    AddRow("BOLT", "0", QDate(2026, 2, 27));
    UpdateSecurities(QDate(2026, 2, 27));
    EXPECT_EQ(Series(), "BOLT 2026-02-27 0");
}

TEST_F(SecurityBalance, WrittenTwiceOnADayKeepsTheLaterValue)
{
    AddRow("O'NEIL", "5", Today);
    UpdateSecurities();
    m_account.Execute("UPDATE DailyTracker SET Basis = 70000");
    UpdateSecurities();
    EXPECT_EQ(Series(), "O'NEIL 2026-03-02 70000");
}

TEST_F(SecurityBalance, TakesWhatTheRowsHoldBeforeTheyAreWritten)
{
    AddRow("ACME", "5", Today);
    m_rows.Open(m_account, "");
    m_rows.Edit().Basis = Currency("6");
    UpdateDailySecurityBalance(m_account, m_rows, Today, m_machine.services, Title);
    EXPECT_EQ(Series(), "ACME 2026-03-02 60000");
    EXPECT_EQ(m_rows.Position(), 0);
}

TEST_F(SecurityBalance, ThatIsRefusedIsShownAndNoneOfTheDayIsWritten)
{
    AddRow("ACME", "5", Today);
    AddRow("BOLT", "5", Today);
    RefuseBalanceOf("BOLT");
    UpdateSecurities();
    const std::vector<std::string> boxes = m_machine.dialogs.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0], "Daily Tracker Editor|48|An error has occured updating security Daily "
                        "Balance. \nPlease check last action performed and notify technical "
                        "support.\nError number -2147467259\nDescription: refused");
    EXPECT_EQ(Series(), "");
}
