#include "account_file.h"

#include "platform/status_line.h"
#include "transactions/purge.h"

#include <gtest/gtest.h>

namespace
{

const QDate Today(2026, 3, 2);

struct RecordedStatus : StatusLine
{
    void Post(const QString &text) override { lines << text; }
    QStringList lines;
};

class Purge : public testing::Test
{
protected:
    Purge() { account.Open(m_file.Path()); }

    /// 10 a share, commission 5; a sale is stored with a negative count, a cover with a positive.
    void Row(const QString &description, double shares, const char *day,
             const QString &symbol = "ACME")
    {
        account.Execute("INSERT INTO History (Symbol, Name, Description, Shares, TransactionCost, "
                        "Price, TransDate, Time) VALUES (?, 'Name', ?, ?, -50000, 100000, ?, "
                        "'10:00:00.000')",
                        symbol, description, shares, QString::fromUtf8(day));
    }
    void PurgeAccount(int years = 5, QDate today = Today)
    {
        PurgeAccountData(account, years, today, status);
    }
    /// "Bought 40 cost 0; ..." in the order of entry.
    std::string History()
    {
        std::string text;
        Statement row = account.Prepare("SELECT Description, Shares, TransactionCost / 10000 "
                                        "FROM History ORDER BY ID");
        while (row.Step())
            text += (text.empty() ? "" : "; ") + row.Text(0).toStdString() + " " +
                    QString::number(row.Double(1)).toStdString() + " cost " +
                    row.Text(2).toStdString();
        return text;
    }
    std::string Days(const QString &table, const QString &column)
    {
        std::string text;
        Statement row =
            account.Prepare(QStringLiteral("SELECT %1 FROM %2 ORDER BY 1").arg(column, table));
        while (row.Step())
            text += row.Text(0).toStdString() + " ";
        return text;
    }

    AccountFile m_file;
    Connection account;
    RecordedStatus status;
};

class PurgeOfPrices : public testing::Test
{
protected:
    PurgeOfPrices()
    {
        TestAppFolder app;
        AccountFile::Write(m_file.In("HistPrices.mdb"),
                           AccountFile::Bytes(app.File("HistPrices.xxx")));
        prices.Open(m_file.In("HistPrices.mdb"));
    }
    void Price(const char *day)
    {
        prices.Execute("INSERT INTO HistoricalPrices (Symbol, PriceDate, PriceClose) "
                       "VALUES ('ACME', ?, 10000)",
                       QString::fromUtf8(day));
    }
    std::string Left()
    {
        std::string text;
        Statement row = prices.Prepare("SELECT PriceDate FROM HistoricalPrices ORDER BY 1");
        while (row.Step())
            text += row.Text(0).toStdString() + " ";
        return text;
    }

    AccountFile m_file;
    Connection prices;
    RecordedStatus status;
};

} // namespace

// --- daily prices --------------------------------------------------------------------------------

TEST_F(PurgeOfPrices, KeepsTheMonthsAndThreeDaysMore)
{
    for (const char *day : {"2025-12-29", "2025-12-30", "2026-03-02"})
        Price(day);
    PurgeHistoricalPrices(prices, 2, Today, status); // 2026-01-02 less three days
    EXPECT_EQ(Left(), "2025-12-30 2026-03-02 ");
    EXPECT_EQ(status.lines, QStringList("Deleted 1 rows of old Historical Price information."));
}

TEST_F(PurgeOfPrices, OfNoMonthsKeepsTheLastThreeDays)
{
    for (const char *day : {"2026-02-26", "2026-02-27", "2026-02-28", "2026-03-01", "2026-03-02"})
        Price(day);
    PurgeHistoricalPrices(prices, 0, Today, status);
    EXPECT_EQ(Left(), "2026-02-27 2026-02-28 2026-03-01 2026-03-02 ");
}

TEST_F(PurgeOfPrices, GoesToTheEndOfAShorterMonth)
{
    for (const char *day : {"2026-02-24", "2026-02-25"})
        Price(day);
    PurgeHistoricalPrices(prices, 1, QDate(2026, 3, 31), status); // 28 February less three days
    EXPECT_EQ(Left(), "2026-02-25 ");
}

TEST_F(PurgeOfPrices, NeverTakesANegativeCountForTheFuture)
{
    Price("2026-03-02");
    PurgeHistoricalPrices(prices, -12, Today, status);
    EXPECT_EQ(Left(), "2026-03-02 ");
}

TEST_F(PurgeOfPrices, OfManyYearsDeletesNothing)
{
    Price("1999-01-04");
    PurgeHistoricalPrices(prices, 32767, Today, status);
    EXPECT_EQ(Left(), "1999-01-04 ");
}

TEST_F(PurgeOfPrices, OfAnEmptyTableCountsZero)
{
    PurgeHistoricalPrices(prices, 2, Today, status);
    EXPECT_EQ(status.lines, QStringList("Deleted 0 rows of old Historical Price information."));
}

// --- the account ---------------------------------------------------------------------------------

TEST_F(Purge, DeletesProfitsAndBalancesBeforeTheDayAndSaysHowMany)
{
    account.ExecuteScript(
        "INSERT INTO DailyProfitLoss (Symbol, TransDate) VALUES ('A', '2021-03-01'), "
        "('B', '2021-03-01'), ('A', '2021-03-02');"
        "INSERT INTO PortfolioDailyBalance VALUES (1, '2021-03-01', NULL, 'x'), "
        "(1, '2021-03-02', NULL, 'x'), (1, '2026-03-02', NULL, 'x');");
    PurgeAccount();
    EXPECT_EQ(Days("DailyProfitLoss", "TransDate"), "2021-03-02 ");
    EXPECT_EQ(Days("PortfolioDailyBalance", "TransDate"), "2021-03-02 2026-03-02 ");
    EXPECT_EQ(status.lines,
              QStringList({"Deleted 2 rows of old Profit and Loss information.",
                           "Deleted 1 rows of old Historical Gain Price information.",
                           "Deleted 0 rows of old Transaction History information."}));
}

TEST_F(Purge, KeepsAPurchaseThatAnOldSaleLeftPartlyOpenWithTheRest)
{
    Row("Bought", 100, "2015-01-05");
    Row("Sold", -60, "2016-01-05");
    PurgeAccount();
    EXPECT_EQ(History(), "Bought 40 cost 0"); // 100 - 60; its commission went with the sale
    EXPECT_EQ(status.lines.last(), "Deleted 1 rows of old Transaction History information.");
}

TEST_F(Purge, DeletesAPurchaseThatIsUsedUpAndCountsBoth)
{
    Row("Bought", 100, "2015-01-05");
    Row("Sold", -100, "2016-01-05");
    PurgeAccount();
    EXPECT_EQ(History(), "");
    EXPECT_EQ(status.lines.last(), "Deleted 2 rows of old Transaction History information.");
}

TEST_F(Purge, DeletesAUsedUpPurchaseOfAnyAge)
{
    Row("Sold", -100, "2016-01-05"); // before its purchase, as imported rows may be
    Row("Bought", 100, "2026-02-27");
    PurgeAccount();
    EXPECT_EQ(History(), "");
}

TEST_F(Purge, LeavesTheSalesOfTheKeptYearsAndTheirPurchases)
{
    Row("Bought", 100, "2015-01-05");
    Row("Sold", -30, "2021-03-01"); // goes
    Row("Sold", -30, "2021-03-02"); // the first day that stays
    PurgeAccount();
    EXPECT_EQ(History(), "Bought 70 cost 0; Sold -30 cost -5");
}

TEST_F(Purge, MatchesCoversToShortSales)
{
    Row(" Short  Sale", -100, "2015-01-05");
    Row("Short Cover", 40, "2016-01-05");
    PurgeAccount();
    EXPECT_EQ(History(), " Short  Sale -60 cost 0");
}

TEST_F(Purge, AlsoDeletesOpeningRowsOfZeroSharesEnteredByHand)
{
    Row("Bought", 0, "2026-02-27");
    Row(" Short  Sale", 0, "2026-02-27");
    Row("Sold", 0, "2026-02-27");
    PurgeAccount();
    EXPECT_EQ(History(), "Sold 0 cost -5");
    EXPECT_EQ(status.lines.last(), "Deleted 2 rows of old Transaction History information.");
}

TEST_F(Purge, NeverDeletesCashAndDividends)
{
    Row("Deposit", 0, "2001-01-05", " ");
    Row("Cash Withdrawal", 0, "2001-01-05", " ");
    Row("Dividend Received", 0, "2001-01-05");
    Row("Reinvestment", 5, "2001-01-05");
    PurgeAccount();
    EXPECT_EQ(History(), "Deposit 0 cost -5; Cash Withdrawal 0 cost -5; Dividend Received 0 cost "
                         "-5; Reinvestment 5 cost -5");
}

TEST_F(Purge, DeletesAnOldSaleWithoutAnyPurchase)
{
    Row("Sold", -10, "2016-01-05");
    PurgeAccount();
    EXPECT_EQ(History(), "");
}

TEST_F(Purge, KeepsAnotherSymbolsPurchasesAndASymbolWithAnApostrophe)
{
    Row("Bought", 10, "2015-01-05", "O'NEIL");
    Row("Bought", 10, "2015-01-05", "ACME");
    Row("Sold", -4, "2016-01-05", "O'NEIL");
    PurgeAccount();
    EXPECT_EQ(History(), "Bought 6 cost 0; Bought 10 cost -5");
}

TEST_F(Purge, CountsTheYearsOfALeapDayFromTheTwentyEighth)
{
    Row("Sold", -1, "2019-02-27");
    Row("Sold", -2, "2019-02-28");
    PurgeAccount(5, QDate(2024, 2, 29));
    EXPECT_EQ(History(), "Sold -2 cost -5");
}

TEST_F(Purge, KeepsASaleWithoutADate)
{
    account.ExecuteScript("INSERT INTO History (Symbol, Description, Shares) "
                          "VALUES ('ACME', 'Sold', -10)");
    PurgeAccount();
    EXPECT_EQ(History(), "Sold -10 cost 0");
}

TEST_F(Purge, ThatTheStoreRefusesDeletesNothing)
{
    Row("Bought", 100, "2015-01-05");
    Row("Sold", -100, "2016-01-05");
    account.ExecuteScript("INSERT INTO DailyProfitLoss (Symbol, TransDate) "
                          "VALUES ('A', '2001-03-01');"
                          "CREATE TRIGGER refuse BEFORE DELETE ON History WHEN old.Shares = 0 "
                          "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    EXPECT_THROW(PurgeAccount(), RuntimeError);
    EXPECT_EQ(History(), "Bought 100 cost -5; Sold -100 cost -5");
    EXPECT_EQ(Days("DailyProfitLoss", "TransDate"), "2001-03-01 ");
}

TEST_F(Purge, ASecondTimeFindsNothingMore)
{
    Row("Bought", 100, "2015-01-05");
    Row("Sold", -60, "2016-01-05");
    PurgeAccount();
    PurgeAccount();
    EXPECT_EQ(History(), "Bought 40 cost 0");
    EXPECT_EQ(status.lines.last(), "Deleted 0 rows of old Transaction History information.");
}
