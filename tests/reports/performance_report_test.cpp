/// The performance of accounts by month, quarter and year.

#include "report_account.h"

#include "reports/performance_report.h"

namespace
{

const std::string head = "PORTFOLIO|FIRST|LAST|CHANGE IN|CHANGE IN|DEPOSITS LESS|CHANGE";
const std::string head2 = "PERIOD|BALANCE|BALANCE|MONEY|PERCENT|WITHDRAWALS|WITHOUT THEM";

struct PerformanceAccount : ReportAccount
{
    void Cash(const char *description, const char *amount, const char *date)
    {
        History(" ", description, "0", "0", amount, date);
    }
    Lines Performance(const ReportChoice &choice,
                      std::vector<Portfolio> portfolios = {{"Broker", true}},
                      const PortfolioFiles &files = {}) const
    {
        return Read([&](Report &report) {
                   WritePerformance(report, {portfolios, "Broker", account, files}, choice);
               })
            .Rows();
    }
};

ReportChoice Monthly()
{
    return ReportAccount::Of(ReportKind::MonthlyPerformance);
}

struct OneYear : PerformanceAccount
{
    OneYear()
    {
        Balance("Portfolio", "10000", "2025-11-03").Balance("Portfolio", "10500", "2025-11-28");
        Balance("Portfolio", "10600", "2025-12-01").Balance("Portfolio", "11000", "2025-12-31");
        Balance("Portfolio", "11000", "2026-01-02").Balance("Portfolio", "12650", "2026-01-30");
        Balance("ACME", "77", "2026-01-30");
        Cash("Deposit", "10000", "2025-11-03"); // in the first balance already
        Cash("Deposit", "1000", "2026-01-15");
        Cash("Withdrawal", "-250", "2026-01-30");
        Cash("Dividend", "42", "2026-01-20"); // what the account earned
        Cash("Deposit", "99", "2026-02-01");
    }
};

} // namespace

TEST(PerformanceReport, HasARowForEachMonthWithBalances)
{
    EXPECT_EQ(OneYear().Performance(Monthly()),
              Lines({head, head2, "", "Broker", //
                     "Nov 2025|=10000|=10500|=500|=0.05|=0|=500",
                     "Dec 2025|=10600|=11000|=400|=0.0377|=0|=400",
                     "Jan 2026|=11000|=12650|=1650|=0.15|=750|=900"})); // 1,000 - 250
}

TEST(PerformanceReport, GathersQuartersAndYears)
{
    EXPECT_EQ(OneYear().Performance(ReportAccount::Of(ReportKind::QuarterlyPerformance)),
              Lines({head, head2, "", "Broker", "Q4 2025|=10000|=11000|=1000|=0.1|=0|=1000",
                     "Q1 2026|=11000|=12650|=1650|=0.15|=750|=900"}));
    EXPECT_EQ(OneYear().Performance(ReportAccount::Of(ReportKind::YearlyPerformance)),
              Lines({head, head2, "", "Broker", "2025|=10000|=11000|=1000|=0.1|=0|=1000",
                     "2026|=11000|=12650|=1650|=0.15|=750|=900"}));
}

TEST(PerformanceReport, EndsABlockWithItsTotalWhenTotalsAreWanted)
{
    ReportChoice choice = ReportAccount::Of(ReportKind::YearlyPerformance);
    choice.printTotals = true;
    EXPECT_EQ(OneYear().Performance(choice).back(), "TOTAL|=10000|=12650|=2650|=0.265|=750|=1900");
}

TEST(PerformanceReport, TakesBothDaysOfTheRange)
{
    ReportChoice choice = Monthly();
    choice.byDateRange = true;
    choice.from = QDate(2025, 11, 28);
    choice.to = QDate(2025, 12, 1);
    EXPECT_EQ(OneYear().Performance(choice),
              Lines({head, head2, "", "Broker", "Nov 2025|=10500|=10500|=0|=0|=0|=0",
                     "Dec 2025|=10600|=10600|=0|=0|=0|=0"}));
}

TEST(PerformanceReport, ComparesTheGainsOfTheSelectedSecurity)
{
    ReportChoice choice = Monthly();
    choice.rows = ReportRows::SelectedSecurity;
    choice.symbol = "ACME";
    EXPECT_EQ(OneYear().Performance(choice),
              Lines({head, head2, "", "Broker|ACME", "Jan 2026|=77|=77|=0|=0|=0|=0"}));
}

TEST(PerformanceReport, HasNoPercentageOfABalanceOfZeroOrBelow)
{
    PerformanceAccount account;
    account.Balance("Portfolio", "0", "2026-01-02").Balance("Portfolio", "500", "2026-01-30");
    account.Balance("Portfolio", "-100", "2026-02-02").Balance("Portfolio", "50", "2026-02-27");
    EXPECT_EQ(account.Performance(Monthly()),
              Lines({head, head2, "", "Broker", "Jan 2026|=0|=500|=500||=0|=500",
                     "Feb 2026|=-100|=50|=150||=0|=150"}));
}

TEST(PerformanceReport, WritesMoneyAndPercentagesInTheirForms)
{
    const OneYear account;
    const ReadBack book = account.Read([&](Report &report) {
        WritePerformance(report, {{{"Broker", true}}, "Broker", account.account, {}}, Monthly());
    });
    EXPECT_EQ(book.Format(5, 2), "#,##0.00");
    EXPECT_EQ(book.Format(5, 5), "0.00%");
}

TEST(PerformanceReport, OfAnEmptyAccountIsItsHeader)
{
    EXPECT_EQ(PerformanceAccount().Performance(Monthly()), Lines({head, head2}));
    EXPECT_EQ(OneYear().Performance(Monthly(), {{"Broker", false}}), Lines({head, head2}));
    EXPECT_EQ(OneYear().Performance(Monthly(), {}), Lines({head, head2}));
}

TEST(PerformanceReport, ReadsTheOtherSelectedAccountsAndLeavesTheirFilesAsTheyAre)
{
    const OneYear open;
    AccountFile other;
    QFile::rename(other.Path(), other.In("Ann's Café.mdb"));
    const QString path = other.In("Ann's Café.mdb");
    {
        Connection account;
        account.Open(path);
        account.Execute("INSERT INTO PortfolioDailyBalance VALUES (10000, '2026-01-02', NULL, "
                        "'Portfolio'), (20000, '2026-01-03', NULL, 'Portfolio')");
    }
    const QByteArray before = AccountFile::Bytes(path);
    const Lines rows =
        open.Performance(Monthly(), {{"Ann's Café", true}, {"Broker", true}, {"Unread", false}},
                         {open.File().Path(), {path}});
    ASSERT_EQ(rows.size(), 10u);
    EXPECT_EQ(rows[3], "Ann's Café");
    EXPECT_EQ(rows[4], "Jan 2026|=1|=2|=1|=1|=0|=1");
    EXPECT_EQ(rows[6], "Broker");
    EXPECT_EQ(AccountFile::Bytes(path), before);
    EXPECT_EQ(other.Listing(), "Ann's Café.mdb");
}

TEST(PerformanceReport, FindsAnAccountBesideTheOpenOne)
{
    const OneYear open;
    AccountFile::Write(open.File().In("Savings.mdb"), AccountFile::EmptyAccount());
    const PortfolioFiles files{open.File().Path(), {"/nowhere/Savings.mdb", "/nowhere/Other.mdb"}};
    EXPECT_EQ(files.PathOf("Savings"), open.File().In("Savings.mdb"));
    EXPECT_EQ(files.PathOf("Other"), QString());
}

TEST(PerformanceReport, SaysWhichAccountCouldNotBeRead)
{
    const OneYear open;
    AccountFile::Write(open.File().In("Foreign.mdb"), "no account at all");
    const Lines rows =
        open.Performance(Monthly(), {{"Foreign", true}, {"Gone", true}}, {open.File().Path(), {}});
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(rows[3].rfind("Foreign|Unrecognized database format", 0), 0u) << rows[3];
    EXPECT_EQ(rows[5], "Gone|The file of this account was not found");
}
