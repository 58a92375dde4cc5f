/// The list of daily gains: of one security, and of all of them together.

#include "report_account.h"

#include "reports/gain_list_report.h"

namespace
{

const std::string head = "DATE|SECURITY|GAIN";

struct GainAccount : ReportAccount
{
    GainAccount()
    {
        Balance("Portfolio", "10000", "2026-02-26").Balance("Portfolio", "10100", "2026-03-02");
        Balance("O'NEIL", "100", "2026-02-26").Balance("O'NEIL", "150.505", "2026-03-02");
        Balance("ZETA", "-40", "2026-02-26").Balance("ZETA", "10", "2026-02-27");
    }
};

ReportChoice Portfolio()
{
    return ReportAccount::Of(ReportKind::PortfolioGain);
}

ReportChoice OfSecurity(const QString &symbol)
{
    ReportChoice choice = ReportAccount::Of(ReportKind::SelectedSecurityGain);
    choice.symbol = symbol;
    return choice;
}

} // namespace

TEST(GainList, SumsTheSecuritiesOfADayAndLeavesTheBalanceOut)
{
    EXPECT_EQ(GainAccount().Rows(WriteGainList, Portfolio()),
              Lines({head, "@2026-02-26|Portfolio|=60", "@2026-02-27|Portfolio|=10",
                     "@2026-03-02|Portfolio|=150.51", "|TOTAL|=220.51", "|CHANGE|=90.51"}));
}

TEST(GainList, ListsTheSelectedSecurityByItsExactSymbol)
{
    EXPECT_EQ(GainAccount().Rows(WriteGainList, OfSecurity("O'NEIL")),
              Lines({head, "@2026-02-26|O'NEIL|=100", "@2026-03-02|O'NEIL|=150.51",
                     "|TOTAL|=250.51", "|CHANGE|=50.51"}));
    EXPECT_EQ(GainAccount().Rows(WriteGainList, OfSecurity("ONEIL")), Lines({head}));
    EXPECT_EQ(GainAccount().Rows(WriteGainList, OfSecurity("")), Lines({head}));
}

TEST(GainList, OfThePortfolioCanBeLimitedToTheSelectedSecurity)
{
    ReportChoice choice = Portfolio();
    choice.rows = ReportRows::SelectedSecurity;
    choice.symbol = "ZETA";
    EXPECT_EQ(GainAccount().Rows(WriteGainList, choice),
              GainAccount().Rows(WriteGainList, OfSecurity("ZETA")));
}

TEST(GainList, TakesBothDaysOfTheRange)
{
    ReportChoice choice = Portfolio();
    choice.byDateRange = true;
    choice.from = QDate(2026, 2, 27);
    choice.to = QDate(2026, 3, 2);
    EXPECT_EQ(GainAccount().Rows(WriteGainList, choice),
              Lines({head, "@2026-02-27|Portfolio|=10", "@2026-03-02|Portfolio|=150.51",
                     "|TOTAL|=160.51", "|CHANGE|=140.51"}));
    choice.to = QDate(2026, 2, 26);
    EXPECT_EQ(GainAccount().Rows(WriteGainList, choice), Lines({head}));
}

TEST(GainList, TotalsEachMonthWhenTotalsAreWanted)
{
    ReportChoice choice = Portfolio();
    choice.printTotals = true;
    EXPECT_EQ(GainAccount().Rows(WriteGainList, choice),
              Lines({head, "@2026-02-26|Portfolio|=60", "@2026-02-27|Portfolio|=10", "|TOTAL|=70",
                     "", "@2026-03-02|Portfolio|=150.51", "|TOTAL|=150.51", "", "|TOTAL|=220.51",
                     "|CHANGE|=90.51"}));
}

TEST(GainList, OfAnEmptyAccountIsItsHeader)
{
    ReportChoice choice = Portfolio();
    choice.printTotals = true;
    EXPECT_EQ(ReportAccount().Rows(WriteGainList, choice), Lines({head}));
}

TEST(GainList, WritesDatesAndAmountsInTheirForms)
{
    ReportAccount account;
    account.Balance("A", "1234.5", "2024-02-29");
    const ReadBack book =
        account.Read([&](Report &report) { WriteGainList(report, account.account, Portfolio()); });
    EXPECT_EQ(book.Rows()[1], "@2024-02-29|Portfolio|=1234.5");
    EXPECT_EQ(book.Format(2, 1), "m/d/yyyy");
    EXPECT_EQ(book.Format(2, 3), "#,##0.00");
}
