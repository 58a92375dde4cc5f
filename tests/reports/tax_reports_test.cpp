/// The two tax reports: what a sale brought and cost, by security and by sale.

#include "report_account.h"

#include "reports/tax_reports.h"

namespace
{

const std::string summaryHead = "|DATE|DATE|SALES";
const std::string summaryHead2 = "SECURITY|ACQUIRED|SOLD|PRICE|COST|GAIN/LOSS";
const std::string costHead = "|DATE|DATE|SALES PRICE|||SALES";
const std::string costHead2 = "SECURITY|ACQUIRED|OF SALE|PER UNIT||QUANTITY|PRICE|COST|GAIN/LOSS";

ReportChoice InRange(const char *from, const char *to)
{
    ReportChoice choice;
    choice.rows = ReportRows::DateRange;
    choice.from = ReportAccount::Day(from);
    choice.to = ReportAccount::Day(to);
    return choice;
}

/// The lines between header and grand total.
Lines Body(const Lines &rows)
{
    Lines body;
    for (size_t row = 2; row < rows.size() && rows[row].rfind("G R A N D", 0) != 0; ++row)
        if (!rows[row].empty())
            body.push_back(rows[row]);
    return body;
}

Lines Summary(const ReportAccount &account, const ReportChoice &choice = {})
{
    return Body(account.Rows(WriteSummary, choice));
}

Lines CostBasis(const ReportAccount &account, const ReportChoice &choice = {})
{
    return Body(account.Rows(WriteCostBasis, choice));
}

/// Bought 100 at 10 and 100 at 20, sold 150 at 30 and 50 at 40; commissions of 5.
struct TwoLots : ReportAccount
{
    TwoLots()
    {
        History("ACME", "Bought", "100", "10", "-1005", "2025-01-06", "-5");
        History("ACME", "Bought", "100", "20", "-2005", "2025-06-02", "-5");
        History("ACME", "Sold", "-150", "30", "4495", "2025-09-01", "-5");
        History("ACME", "Sold", "-50", "40", "1995", "2026-02-02", "-5");
    }
};

struct ShortTrade : ReportAccount
{
    ShortTrade()
    {
        History("ZETA", " Short  Sale", "-100", "50", "4995", "2025-03-03", "-5");
        History("ZETA", " Short Cover", "100", "40", "-4005", "2025-04-01", "-5");
    }
};

/// Every row of the account, as another program would read it.
std::string AllRows(const QString &path)
{
    Connection account;
    account.Open(path);
    std::string all;
    for (const char *table : {"History", "DailyTracker", "DailyProfitLoss", "PortfolioDailyBalance",
                              "PriceHistory", "DescriptiveTable"}) {
        Statement rows =
            account.Prepare(QString("SELECT * FROM %1 ORDER BY rowid").arg(QString(table)));
        while (rows.Step())
            for (int column = 0; column < rows.ColumnCount(); ++column)
                all += rows.Text(column).toStdString() +
                       (column + 1 < rows.ColumnCount() ? "|" : "\n");
    }
    return all;
}

} // namespace

// --- summary ----------------------------------------------------------------------------------------

TEST(SummaryReport, HasOneLineForASecuritySoldInSeveralLots)
{
    // sales 4,495 + 1,995; cost 1,000 + 2,000 and both commissions
    EXPECT_EQ(
        TwoLots().Rows(WriteSummary, ReportChoice()),
        Lines({summaryHead, summaryHead2, "ACME Inc.|@2025-01-06|@2026-02-02|=6490|=-3010|=3480",
               "", "G R A N D   T O T A L|||=6490|=-3010|=3480"}));
}

TEST(SummaryReport, WritesDatesAndAmountsInTheirForms)
{
    const TwoLots account;
    const ReadBack book = account.Read(
        [&](Report &report) { WriteSummary(report, account.account, ReportChoice()); });
    EXPECT_EQ(book.Format(3, 2), "m/d/yyyy");
    EXPECT_EQ(book.Format(3, 4), "#,##0.00");
    EXPECT_EQ(book.Format(5, 6), "#,##0.00");
}

TEST(SummaryReport, HasALineForEachSecurityByItsSymbolAndAGrandTotal)
{
    ReportAccount account;
    account.History("B", "Bought", "10", "10", "-100", "2025-01-06")
        .History("A", "Bought", "10", "10", "-100", "2025-01-07")
        .History("B", "Sold", "-10", "11", "110", "2025-02-03")
        .History("A", "Sold", "-10", "9", "90", "2025-02-04");
    EXPECT_EQ(account.Rows(WriteSummary, ReportChoice()),
              Lines({summaryHead, summaryHead2, "A Inc.|@2025-01-07|@2025-02-04|=90|=-100|=-10",
                     "B Inc.|@2025-01-06|@2025-02-03|=110|=-100|=10", "",
                     "G R A N D   T O T A L|||=200|=-200|=0"}));
}

TEST(SummaryReport, LeavesASecurityWithoutASaleOut)
{
    ReportAccount account;
    account.History("A", "Bought", "10", "10", "-100", "2025-01-06")
        .History("B", "Reinvestment", "1", "10", "-10", "2025-01-06")
        .History(" ", "Deposit", "0", "0", "1000", "2025-01-06")
        .History("C", " Short  Sale", "-10", "10", "100", "2025-01-06");
    EXPECT_EQ(account.Rows(WriteSummary, ReportChoice()),
              Lines({summaryHead, summaryHead2, "", "G R A N D   T O T A L|||=0|=0|=0"}));
}

TEST(SummaryReport, OfAnEmptyAccountIsTheHeaderAndAGrandTotalOfZero)
{
    EXPECT_EQ(ReportAccount().Rows(WriteSummary, ReportChoice()),
              Lines({summaryHead, summaryHead2, "", "G R A N D   T O T A L|||=0|=0|=0"}));
}

TEST(SummaryReport, ShowsTheGainOfACoveredShortSale)
{
    EXPECT_EQ(Summary(ShortTrade()),
              Lines({"ZETA Inc.|@2025-03-03|@2025-04-01|=4995|=-4005|=990"}));
}

TEST(SummaryReport, ShowsTheNoDateForASaleWithoutAPurchase)
{
    ReportAccount account;
    account.History("A", "Reinvestment", "10", "10", "-100", "2025-01-06")
        .History("A", "Sold", "-10", "11", "110", "2025-02-03");
    // A day before March 1900 is a text in a workbook.
    EXPECT_EQ(Summary(account), Lines({"A Inc.|1/1/1900|@2025-02-03|=110|=0|=110"}));
}

TEST(SummaryReport, TakesNothingForSharesBeyondAllPurchases)
{
    ReportAccount account;
    account.History("A", "Bought", "100", "10", "-1005", "2025-01-06", "-5")
        .History("A", "Sold", "-150", "12", "1800", "2025-02-03")
        .History("A", "Sold", "-50", "12", "600", "2025-02-04");
    EXPECT_EQ(Summary(account), Lines({"A Inc.|@2025-01-06|@2025-02-04|=2400|=-1005|=1395"}));
}

TEST(SummaryReport, ComesToTheTimeOfDayForTwoSalesOnADay)
{
    ReportAccount account;
    account.History("A", "Bought", "100", "10", "-1000", "2025-01-06", "0", "09:00:00")
        .History("A", "Bought", "100", "20", "-2000", "2025-01-06", "0", "15:00:00")
        .History("A", "Sold", "-100", "40", "4000", "2025-02-03", "0", "14:00:00")
        .History("A", "Sold", "-100", "30", "3000", "2025-02-03", "0", "10:00:00");
    EXPECT_EQ(Summary(account), Lines({"A Inc.|@2025-01-06|@2025-02-03|=7000|=-3000|=4000"}));
    EXPECT_EQ(CostBasis(account),
              Lines({"A Inc.|@2025-01-06|@2025-02-03|=30||=100|=3000|=-1000|=2000",
                     "A Inc.|@2025-01-06|@2025-02-03|=40||=100|=4000|=-2000|=2000",
                     "N E T   T O T A L|||||=200|=7000|=-3000|=4000"}));
}

TEST(SummaryReport, TakesBothDaysOfTheRange)
{
    ReportAccount account;
    account.History("A", "Bought", "400", "10", "-4000", "2025-01-06");
    for (const char *date : {"2025-03-02", "2025-03-03", "2025-03-04", "2025-03-05"})
        account.History("A", "Sold", "-100", "11", "1100", date);
    EXPECT_EQ(Summary(account, InRange("2025-03-03", "2025-03-04")),
              Lines({"A Inc.|@2025-01-06|@2025-03-04|=2200|=-2000|=200"}));
    EXPECT_EQ(Summary(account, InRange("2025-03-02", "2025-03-05")),
              Lines({"A Inc.|@2025-01-06|@2025-03-05|=4400|=-4000|=400"}));
    EXPECT_EQ(Summary(account, InRange("2025-03-06", "2025-12-31")), Lines());
    EXPECT_EQ(Summary(account, InRange("2025-03-05", "2025-03-02")), Lines());
}

TEST(SummaryReport, LetsSalesBeforeTheRangeUseUpTheOldestLots)
{
    // The sale of September took 100 at 10 and 50 at 20: 50 at 20 are left, the commission is not.
    EXPECT_EQ(Summary(TwoLots(), InRange("2026-01-01", "2026-12-31")),
              Lines({"ACME Inc.|@2025-06-02|@2026-02-02|=1995|=-1000|=995"}));
}

TEST(SummaryReport, LeavesNothingOfAnUnprintedSaleToTheNextSecurity)
{
    ReportAccount account;
    account.History("A", "Bought", "10", "10", "-100", "2024-05-06")
        .History("A", "Sold", "-10", "11", "110", "2024-06-03")
        .History("B", "Bought", "10", "10", "-100", "2025-01-06")
        .History("B", "Sold", "-10", "11", "110", "2025-02-03")
        .History("C", "Bought", "10", "10", "-100", "2025-01-07")
        .History("C", "Sold", "-10", "11", "110", "2025-02-04");
    EXPECT_EQ(Summary(account, InRange("2025-01-01", "2025-12-31")),
              Lines({"B Inc.|@2025-01-06|@2025-02-03|=110|=-100|=10",
                     "C Inc.|@2025-01-07|@2025-02-04|=110|=-100|=10"}));
}

TEST(SummaryReport, DoesNotCountTheSaleBehindTheRange)
{
    // 150 sold in the range: 1,000 and 1,000, both commissions.
    EXPECT_EQ(
        TwoLots().Rows(WriteSummary, InRange("2025-01-01", "2025-12-31")),
        Lines({summaryHead, summaryHead2, "ACME Inc.|@2025-01-06|@2025-09-01|=4495|=-2010|=2485",
               "", "G R A N D   T O T A L|||=4495|=-2010|=2485"}));
}

TEST(SummaryReport, GoesOnBehindASecurityThatWasSoldBehindTheRangeToo)
{
    ReportAccount account;
    account.History("A", "Bought", "30", "10", "-300", "2025-01-06")
        .History("A", "Sold", "-10", "11", "110", "2025-02-03")
        .History("A", "Sold", "-10", "12", "120", "2026-02-03")
        .History("A", "Sold", "-10", "13", "130", "2026-02-04")
        .History("B", "Bought", "10", "10", "-100", "2025-01-07")
        .History("B", "Sold", "-10", "11", "110", "2025-02-04");
    EXPECT_EQ(Summary(account, InRange("2025-01-01", "2025-12-31")),
              Lines({"A Inc.|@2025-01-06|@2025-02-03|=110|=-100|=10",
                     "B Inc.|@2025-01-07|@2025-02-04|=110|=-100|=10"}));
}

TEST(SummaryReport, ShowsTheNoDateForASaleInTheRangeThatFoundNoPurchaseLeft)
{
    ReportAccount account;
    account.History("A", "Bought", "10", "10", "-100", "2024-05-06")
        .History("A", "Sold", "-10", "11", "110", "2024-06-03")
        .History("A", "Sold", "-10", "12", "120", "2025-02-03");
    EXPECT_EQ(Summary(account, InRange("2025-01-01", "2025-12-31")),
              Lines({"A Inc.|1/1/1900|@2025-02-03|=120|=0|=120"}));
}

TEST(SummaryReport, BearsTheNameOfTheFirstSaleThatItCounts)
{
    ReportAccount account;
    account.History("A", "Bought", "30", "10", "-300", "2024-05-06")
        .History("A", "Sold", "-10", "11", "110", "2024-06-03", "0", "10:00:00", "Old name")
        .History("A", "Sold", "-10", "12", "120", "2025-02-03", "0", "10:00:00", "Name then")
        .History("A", "Sold", "-10", "12", "120", "2025-02-04", "0", "10:00:00", "New name");
    EXPECT_EQ(Summary(account, InRange("2025-01-01", "2025-12-31")),
              Lines({"Name then|@2024-05-06|@2025-02-04|=240|=-200|=40"}));
}

TEST(SummaryReport, GoesByTheDatesOfTheSalesNotByTheirOrderInTheFile)
{
    ReportAccount account;
    account.History("A", "Bought", "30", "10", "-300", "2025-01-06")
        .History("A", "Sold", "-10", "11", "110", "2025-02-03")
        .History("A", "Sold", "-10", "12", "120", "2026-02-03")
        .History("A", "Sold", "-10", "13", "130", "2025-03-03");
    EXPECT_EQ(Summary(account, InRange("2025-01-01", "2025-12-31")),
              Lines({"A Inc.|@2025-01-06|@2025-03-03|=240|=-200|=40"}));
}

TEST(SummaryReport, LimitsByItsOwnDateRangeAlone)
{
    ReportChoice choice;
    choice.byDateRange = true; // the lists' check box, which is not in view
    choice.printTotals = true;
    choice.sort = ReportSort::BySymbol;
    choice.from = choice.to = QDate(2020, 1, 1);
    EXPECT_EQ(TwoLots().Rows(WriteSummary, choice), TwoLots().Rows(WriteSummary, ReportChoice()));
    EXPECT_EQ(TwoLots().Rows(WriteCostBasis, choice),
              TwoLots().Rows(WriteCostBasis, ReportChoice()));
}

// --- cost basis -------------------------------------------------------------------------------------

TEST(CostBasisReport, HasALineForEachSaleAndANetTotalForEachSecurity)
{
    struct Account : TwoLots
    {
        Account()
        {
            History("ZETA", "Bought", "10", "10", "-100", "2025-01-06");
            History("ZETA", "Sold", "-10", "9", "90", "2025-02-03");
        }
    };
    EXPECT_EQ(Account().Rows(WriteCostBasis, ReportChoice()),
              Lines({costHead, costHead2,
                     "ACME Inc.|@2025-01-06|@2025-09-01|=30||=150|=4495|=-2010|=2485",
                     "ACME Inc.|@2025-06-02|@2026-02-02|=40||=50|=1995|=-1000|=995", "",
                     "N E T   T O T A L|||||=200|=6490|=-3010|=3480", "",
                     "ZETA Inc.|@2025-01-06|@2025-02-03|=9||=10|=90|=-100|=-10", "",
                     "N E T   T O T A L|||||=10|=90|=-100|=-10", "", "",
                     "G R A N D   T O T A L|||||=210|=6580|=-3110|=3470"}));
}

TEST(CostBasisReport, WritesEachColumnInItsForm)
{
    const TwoLots account;
    const ReadBack book = account.Read(
        [&](Report &report) { WriteCostBasis(report, account.account, ReportChoice()); });
    EXPECT_EQ(book.Format(3, 3), "m/d/yyyy");
    EXPECT_EQ(book.Format(3, 4), "General"); // the price as it is
    EXPECT_EQ(book.Format(3, 6), "0.0000");
    EXPECT_EQ(book.Format(3, 7), "#,##0.00");
    EXPECT_EQ(book.Format(6, 6), "0.0000");
}

TEST(CostBasisReport, MarksACoverShortAndShowsItsQuantityPositive)
{
    EXPECT_EQ(CostBasis(ShortTrade()),
              Lines({"ZETA Inc.|@2025-03-03|@2025-04-01|=40|Short|=100|=4995|=-4005|=990",
                     "N E T   T O T A L|||||=100|=4995|=-4005|=990"}));
}

TEST(CostBasisReport, ShowsCostsNegativeAndGainsAsTheSumOfBothColumns)
{
    ReportAccount account;
    account.History("A", "Bought", "10", "12.3456", "-128.456", "2025-01-06", "-5")
        .History("A", "Sold", "-4.5", "13", "53.505", "2025-02-03", "-4.995");
    // cost 4.5 x 12.3456 + 5 = 60.5552; gain 53.505 - 60.5552 = -7.0502
    EXPECT_EQ(CostBasis(account)[0],
              "A Inc.|@2025-01-06|@2025-02-03|=13||=4.5|=53.51|=-60.56|=-7.05");
}

TEST(CostBasisReport, MatchesASaleOutOfTheRangeAndDropsItsFigures)
{
    EXPECT_EQ(CostBasis(TwoLots(), InRange("2026-01-01", "2026-12-31")),
              Lines({"ACME Inc.|@2025-06-02|@2026-02-02|=40||=50|=1995|=-1000|=995",
                     "N E T   T O T A L|||||=50|=1995|=-1000|=995"}));
    EXPECT_EQ(CostBasis(TwoLots(), InRange("2025-09-01", "2025-09-01")),
              Lines({"ACME Inc.|@2025-01-06|@2025-09-01|=30||=150|=4495|=-2010|=2485",
                     "N E T   T O T A L|||||=150|=4495|=-2010|=2485"}));
}

TEST(CostBasisReport, HasNoNetTotalForASecurityWithoutASaleInTheRange)
{
    struct Account : TwoLots
    {
        Account()
        {
            History("ZETA", "Bought", "10", "10", "-100", "2025-01-06");
            History("ZETA", "Sold", "-10", "9", "90", "2024-02-03");
        }
    };
    EXPECT_EQ(
        Account().Rows(WriteCostBasis, InRange("2024-01-01", "2024-12-31")),
        Lines({costHead, costHead2, "ZETA Inc.|@2025-01-06|@2024-02-03|=9||=10|=90|=-100|=-10", "",
               "N E T   T O T A L|||||=10|=90|=-100|=-10", "", "",
               "G R A N D   T O T A L|||||=10|=90|=-100|=-10"}));
}

TEST(CostBasisReport, PassesNoFirstSaleOfASecurityOver)
{
    ReportAccount account;
    for (const char *symbol : {"A", "B", "C"})
        account.History(symbol, "Bought", "10", "10", "-100", "2025-01-06")
            .History(symbol, "Sold", "-10", "11", "110", "2025-02-03");
    EXPECT_EQ(CostBasis(account).size(), 6u);
}

TEST(CostBasisReport, HandsTheMoneyOfASaleOfNoSharesOnToTheNextNetTotal)
{
    ReportAccount account;
    account.History("A", "Sold", "0", "0", "10", "2025-02-03")
        .History("B", "Bought", "10", "10", "-100", "2025-01-06")
        .History("B", "Sold", "-10", "11", "110", "2025-02-03");
    EXPECT_EQ(CostBasis(account), Lines({"A Inc.|1/1/1900|@2025-02-03|=0||=0|=10|=0|=10",
                                         "B Inc.|@2025-01-06|@2025-02-03|=11||=10|=110|=-100|=10",
                                         "N E T   T O T A L|||||=10|=120|=-100|=20"}));
}

TEST(CostBasisReport, OfAnEmptyAccountIsTheHeaderAndAGrandTotalOfZero)
{
    EXPECT_EQ(ReportAccount().Rows(WriteCostBasis, ReportChoice()),
              Lines({costHead, costHead2, "", "G R A N D   T O T A L|||||=0|=0|=0|=0"}));
}

// --- both -------------------------------------------------------------------------------------------

TEST(TaxReports, LeaveEveryRowOfTheAccountAsItWas)
{
    struct Account : TwoLots
    {
        Account()
        {
            History("ZETA", " Short  Sale", "-100", "50", "4995", "2025-03-03", "-5");
            History("ZETA", " Short Cover", "60", "40", "-2405", "2025-04-01", "-5");
            ProfitLoss("ACME", "12.5", "2025-09-01");
            Balance("Portfolio", "1000", "2025-09-01");
        }
    };
    const Account account;
    const std::string before = AllRows(account.File().Path());
    EXPECT_NE(before.find("Short Cover"), std::string::npos);
    account.Rows(WriteSummary, ReportChoice());
    account.Rows(WriteSummary, InRange("2025-01-01", "2025-12-31"));
    account.Rows(WriteCostBasis, ReportChoice());
    account.Rows(WriteCostBasis, InRange("2025-01-01", "2025-12-31"));
    EXPECT_EQ(AllRows(account.File().Path()), before);
}

TEST(TaxReports, RunBesideAnOpenTransactionOfTheAccount)
{
    TwoLots account;
    account.account.BeginTrans();
    EXPECT_EQ(Summary(account).size(), 1u);
    EXPECT_TRUE(account.account.InTransaction());
    account.account.RollbackTrans();
}

TEST(TaxReports, KeepASaleWhoseSymbolIsEmpty)
{
    ReportAccount account;
    account.History("", "Bought", "20", "10", "-200", "2025-01-06", "0", "10:00:00", "Lost")
        .History("", "Sold", "-10", "11", "110", "2025-02-03", "0", "10:00:00", "Lost")
        .History("", "Sold", "-10", "12", "120", "2025-02-04", "0", "10:00:00", "Lost");
    EXPECT_EQ(Summary(account), Lines({"Lost|@2025-01-06|@2025-02-04|=230|=-200|=30"}));
}

TEST(TaxReports, WriteAmountsWithADecimalCommaAsNumbers)
{
    const TwoLots account;
    const ReadBack book =
        account.Read([&](Report &report) { WriteSummary(report, account.account, ReportChoice()); },
                     QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(Body(book.Rows()), Lines({"ACME Inc.|@2025-01-06|@2026-02-02|=6490|=-3010|=3480"}));
}
