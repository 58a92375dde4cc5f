/// The reports that list a table: columns, forms, choices, totals.

#include "report_account.h"

#include "reports/list_reports.h"

namespace
{

const std::string historyHead = "DATE|SECURITY|N A M E|DESCRIPTION|QUANTITY|PRICE PER|TRANSACTION";
const std::string historyHead2 = "|||||UNIT|AMOUNT";
const std::string profitHead = "DATE|SECURITY|N A M E|PROFIT/LOSS";
const std::string priceHead = "DATE|SECURITY|OPEN|DAY HIGH|DAY LOW|CLOSE|VOLUME";

ReportChoice InRange(ReportChoice choice, const char *from, const char *to)
{
    choice.byDateRange = true;
    choice.from = ReportAccount::Day(from);
    choice.to = ReportAccount::Day(to);
    return choice;
}

ReportChoice OfSymbol(ReportChoice choice, const QString &symbol)
{
    choice.rows = ReportRows::SelectedSecurity;
    choice.symbol = symbol;
    return choice;
}

ReportChoice BySymbol(ReportChoice choice)
{
    choice.sort = ReportSort::BySymbol;
    return choice;
}

ReportChoice WithTotals(ReportChoice choice)
{
    choice.printTotals = true;
    return choice;
}

struct ProfitAccount : ReportAccount
{
    ProfitAccount()
    {
        ProfitLoss("ZETA", "-50", "2026-03-02", "11:00:00")
            .ProfitLoss("ACME", "250.5", "2026-03-02")
            .ProfitLoss("ACME", "0.0049", "2026-03-03")
            .ProfitLoss("ZETA", "100", "2026-03-05");
    }
};

/// HistPrices.mdb of a folder.
class PriceFile
{
public:
    PriceFile()
    {
        QFile::copy(m_folder.File("HistPrices.xxx"), m_folder.File("HistPrices.mdb"));
        prices.Open(m_folder.File("HistPrices.mdb"));
    }
    PriceFile &Day(const QString &symbol, const char *date, const char *close, qint64 volume)
    {
        prices.Execute("INSERT INTO HistoricalPrices VALUES (?, ?, ?, ?, ?, ?, ?, ?)", symbol,
                       ReportAccount::Day(date), Currency("10"), Currency("12.345"),
                       Currency("9.5"), Currency(close), volume, Currency("1"));
        return *this;
    }
    Lines Rows(const ReportChoice &choice) const
    {
        return ReportAccount()
            .Read([&](Report &report) { WriteHistoricalPriceList(report, prices, choice); })
            .Rows();
    }

private:
    TestAppFolder m_folder;

public:
    Connection prices;
};

} // namespace

// --- transaction history ----------------------------------------------------------------------------

TEST(TransactionHistoryReport, WritesEachColumnInItsForm)
{
    ReportAccount account;
    account.History("ACME", "Bought", "100.5", "10.125", "-1022.5125", "2026-01-05", "-4.95");
    const ReadBack book = account.Read(
        [&](Report &report) { WriteTransactionHistory(report, account.account, ReportChoice()); });
    EXPECT_EQ(book.Rows(), Lines({historyHead, historyHead2,
                                  "@2026-01-05|ACME|ACME Inc.|Bought|=100.5|=10.13|=-1022.51"}));
    EXPECT_EQ(book.Format(3, 1), "m/d/yyyy");
    EXPECT_EQ(book.Format(3, 5), "General");
    EXPECT_EQ(book.Format(3, 6), "General"); // which shows 10.13 as well
    EXPECT_EQ(book.Format(3, 7), "#,##0.00");
}

TEST(TransactionHistoryReport, ComesByDateTimeAndSymbolOrBySymbol)
{
    ReportAccount account;
    account.History("B", "Bought", "1", "1", "-1", "2026-01-06")
        .History("A", "Bought", "2", "1", "-2", "2026-01-06")
        .History("C", "Bought", "3", "1", "-3", "2026-01-05", "0", "23:59:59")
        .History("B", "Sold", "-4", "1", "4", "2026-01-06", "0", "09:00:00");
    const auto quantities = [&](const ReportChoice &choice) {
        std::string all;
        const Lines rows = account.Rows(WriteTransactionHistory, choice);
        for (size_t row = 2; row < rows.size(); ++row)
            all += rows[row].substr(rows[row].find('=') + 1, 2) + " ";
        return all;
    };
    EXPECT_EQ(quantities(ReportChoice()), "3| -4 2| 1| ");
    EXPECT_EQ(quantities(BySymbol(ReportChoice())), "2| -4 1| 3| ");
}

TEST(TransactionHistoryReport, TakesBothDaysOfTheRange)
{
    ReportAccount account;
    for (const char *date : {"2026-01-04", "2026-01-05", "2026-01-06", "2026-01-07"})
        account.History("A", "Bought", "1", "1", "-1", date, "0", "23:59:59");
    EXPECT_EQ(
        account.Rows(WriteTransactionHistory, InRange(ReportChoice(), "2026-01-05", "2026-01-06")),
        Lines({historyHead, historyHead2, "@2026-01-05|A|A Inc.|Bought|=1|=1|=-1",
               "@2026-01-06|A|A Inc.|Bought|=1|=1|=-1"}));
}

TEST(TransactionHistoryReport, WritesItsHeaderForAnEmptyChoice)
{
    ReportAccount account;
    account.History("A", "Bought", "1", "1", "-1", "2026-01-05");
    const Lines head{historyHead, historyHead2};
    EXPECT_EQ(account.Rows(WriteTransactionHistory, OfSymbol(ReportChoice(), "")), head);
    EXPECT_EQ(account.Rows(WriteTransactionHistory, OfSymbol(ReportChoice(), "B")), head);
    EXPECT_EQ(
        account.Rows(WriteTransactionHistory, InRange(ReportChoice(), "2026-02-01", "2026-01-01")),
        head);
    EXPECT_EQ(ReportAccount().Rows(WriteTransactionHistory, ReportChoice()), head);
}

TEST(TransactionHistoryReport, FindsASymbolWithAnApostropheAndKeepsAccents)
{
    ReportAccount account;
    account
        .History("O'NEIL", "Bought", "1", "1", "-1", "2026-01-05", "0", "10:00:00",
                 "O'Neil & Café 株")
        .History("ONEIL", "Bought", "2", "1", "-2", "2026-01-05");
    EXPECT_EQ(account.Rows(WriteTransactionHistory, OfSymbol(ReportChoice(), "O'NEIL"))[2],
              "@2026-01-05|O'NEIL|O'Neil & Café 株|Bought|=1|=1|=-1");
    EXPECT_EQ(account.Rows(WriteTransactionHistory, OfSymbol(ReportChoice(), "O'NEIL")).size(), 3u);
}

TEST(TransactionHistoryReport, KeepsASymbolThatReadsAsANumberOrADateAText)
{
    ReportAccount account;
    account.History("1E5", "Bought", "1", "1", "-1", "2026-01-05", "0", "10:00:00", "12.5%")
        .History("MAR1", "Bought", "1", "1", "-1", "2026-01-06", "0", "10:00:00", "=1+1");
    const Lines rows = account.Rows(WriteTransactionHistory, ReportChoice());
    EXPECT_EQ(rows[2], "@2026-01-05|1E5|12.5%|Bought|=1|=1|=-1");
    EXPECT_EQ(rows[3], "@2026-01-06|MAR1|=1+1|Bought|=1|=1|=-1"); // a text; no formula is written
    const ReadBack book = account.Read(
        [&](Report &report) { WriteTransactionHistory(report, account.account, ReportChoice()); });
    EXPECT_EQ(book.Format(4, 3), "");
}

TEST(TransactionHistoryReport, LeavesTheCellOfAMissingDateAndNameEmpty)
{
    ReportAccount account;
    account.account.Execute("INSERT INTO History (Symbol, Description) VALUES (' ', 'Deposit')");
    EXPECT_EQ(account.Rows(WriteTransactionHistory, ReportChoice())[2], "| ||Deposit|=0|=0|=0");
}

TEST(TransactionHistoryReport, HasNoTotalsHoweverTheyAreAskedFor)
{
    ReportAccount account;
    account.History("A", "Bought", "1", "1", "-1", "2026-01-05");
    EXPECT_EQ(account.Rows(WriteTransactionHistory, WithTotals(ReportChoice())).size(), 3u);
}

TEST(TransactionHistoryReport, WritesNumbersAndDatesWithADecimalComma)
{
    ReportAccount account;
    account.History("ACME", "Bought", "100.5", "1234.5", "-124067.25", "2026-01-05");
    const ReadBack book = account.Read(
        [&](Report &report) { WriteTransactionHistory(report, account.account, ReportChoice()); },
        QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(book.Rows()[2], "@2026-01-05|ACME|ACME Inc.|Bought|=100.5|=1234.5|=-124067.25");
    EXPECT_EQ(book.Format(3, 7), "#,##0.00"); // a workbook's formats are in no locale
}

// --- daily profit and loss --------------------------------------------------------------------------

TEST(ProfitLossReport, ListsTheEntriesWithoutTotalsUnlessTheyAreWanted)
{
    const ProfitAccount account;
    EXPECT_EQ(
        account.Rows(WriteProfitLoss, ReportChoice()),
        Lines({profitHead, "@2026-03-02|ACME|ACME Inc.|=250.5", "@2026-03-02|ZETA|ZETA Inc.|=-50",
               "@2026-03-03|ACME|ACME Inc.|=0", "@2026-03-05|ZETA|ZETA Inc.|=100"}));
}

TEST(ProfitLossReport, ShowsATotalBehindEachDateAndBehindTheLastRow)
{
    const ProfitAccount account;
    EXPECT_EQ(account.Rows(WriteProfitLoss, WithTotals(ReportChoice())),
              Lines({profitHead,                                              //
                     "@2026-03-02|ACME|ACME Inc.|=250.5",                     //
                     "@2026-03-02|ZETA|ZETA Inc.|=-50", "||TOTAL|=200.5", "", // 250.5 - 50
                     "@2026-03-03|ACME|ACME Inc.|=0", "||TOTAL|=0.0049", "",  // exact
                     "@2026-03-05|ZETA|ZETA Inc.|=100", "||TOTAL|=100"}));
}

TEST(ProfitLossReport, ShowsATotalBehindEachSecurityWhenSortedByThese)
{
    const ProfitAccount account;
    EXPECT_EQ(
        account.Rows(WriteProfitLoss, WithTotals(BySymbol(ReportChoice()))),
        Lines({profitHead, "@2026-03-02|ACME|ACME Inc.|=250.5", "@2026-03-03|ACME|ACME Inc.|=0",
               "||TOTAL|=250.5049", "", "@2026-03-02|ZETA|ZETA Inc.|=-50",
               "@2026-03-05|ZETA|ZETA Inc.|=100", "||TOTAL|=50"}));
}

TEST(ProfitLossReport, TotalsTheRowsOfTheChoiceAlone)
{
    const ProfitAccount account;
    EXPECT_EQ(account.Rows(WriteProfitLoss,
                           WithTotals(OfSymbol(InRange(ReportChoice(), "2026-03-02", "2026-03-03"),
                                               "ACME"))),
              Lines({profitHead, "@2026-03-02|ACME|ACME Inc.|=250.5", "||TOTAL|=250.5", "",
                     "@2026-03-03|ACME|ACME Inc.|=0", "||TOTAL|=0.0049"}));
}

TEST(ProfitLossReport, HasNoTotalWithoutRows)
{
    const Lines head{profitHead};
    EXPECT_EQ(ReportAccount().Rows(WriteProfitLoss, WithTotals(ReportChoice())), head);
    EXPECT_EQ(ProfitAccount().Rows(WriteProfitLoss, WithTotals(OfSymbol(ReportChoice(), ""))),
              head);
}

TEST(ProfitLossReport, WritesATotalRawAndAnAmountInItsFormat)
{
    const ProfitAccount account;
    const ReadBack book = account.Read([&](Report &report) {
        WriteProfitLoss(report, account.account, WithTotals(ReportChoice()));
    });
    EXPECT_EQ(book.Format(2, 4), "0.00");
    EXPECT_EQ(book.Format(4, 4), "General");
}

TEST(ProfitLossReport, RefusesATotalThatLeavesTheRangeOfMoney)
{
    ReportAccount account;
    account.ProfitLoss("A", "900000000000000", "2026-03-02")
        .ProfitLoss("B", "900000000000000", "2026-03-02");
    EXPECT_THROW(account.Rows(WriteProfitLoss, WithTotals(ReportChoice())), RuntimeError);
    EXPECT_EQ(account.Rows(WriteProfitLoss, ReportChoice()).size(), 3u);
}

TEST(ProfitLossReport, GoesOnPastTheRowsOfASixteenBitCounterAndOfASheet)
{
    ReportAccount account;
    account.account.ExecuteScript(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 22000) "
        "INSERT INTO DailyProfitLoss (Symbol, ProfitLoss, TransDate) "
        "SELECT printf('S%05d', i), 10000 * i, '2026-01-05' FROM n");
    const ReadBack book = account.Read([&](Report &report) {
        WriteProfitLoss(report, account.account, WithTotals(BySymbol(ReportChoice())));
    });
    const Lines rows = book.Rows();
    EXPECT_EQ(book.Sheets(), 2); // each entry has a total and a blank row behind it
    for (const size_t entry : {size_t(10922), size_t(10923), size_t(21845), size_t(22000)}) {
        const std::string number = std::to_string(entry);
        EXPECT_EQ(rows.at(3 * entry - 2),
                  "@2026-01-05|S" + std::string(5 - number.size(), '0') + number + "||=" + number);
        EXPECT_EQ(rows.at(3 * entry - 1), "||TOTAL|=" + number);
    }
}

// --- historical prices ------------------------------------------------------------------------------

TEST(HistoricalPriceReport, WritesEachColumnInItsFormAndLeavesTheAdjustedCloseOut)
{
    PriceFile file;
    file.Day("ACME", "2026-03-02", "1234.5", 1234567);
    EXPECT_EQ(file.Rows(ReportChoice()),
              Lines({priceHead, "@2026-03-02|ACME|=10|=12.35|=9.5|=1234.5|=1234567"}));
    const ReadBack book = ReportAccount().Read(
        [&](Report &report) { WriteHistoricalPriceList(report, file.prices, ReportChoice()); });
    EXPECT_EQ(book.Format(2, 1), "m/d/yyyy");
    EXPECT_EQ(book.Format(2, 6), "#,##0.00");
    EXPECT_EQ(book.Format(2, 7), "General");
}

TEST(HistoricalPriceReport, ComesByDateOrBySymbolAndTakesBothDaysOfTheRange)
{
    PriceFile file;
    file.Day("B", "2026-03-02", "1", 1)
        .Day("A", "2026-03-03", "2", 2)
        .Day("A", "2026-03-02", "3", 3)
        .Day("A", "2026-03-04", "4", 4);
    const std::string a2 = "@2026-03-02|A|=10|=12.35|=9.5|=3|=3";
    const std::string a3 = "@2026-03-03|A|=10|=12.35|=9.5|=2|=2";
    const std::string b2 = "@2026-03-02|B|=10|=12.35|=9.5|=1|=1";
    const ReportChoice choice = InRange(ReportChoice(), "2026-03-02", "2026-03-03");
    EXPECT_EQ(file.Rows(choice), Lines({priceHead, a2, b2, a3}));
    EXPECT_EQ(file.Rows(BySymbol(choice)), Lines({priceHead, a2, a3, b2}));
    EXPECT_EQ(file.Rows(WithTotals(OfSymbol(choice, "B"))), Lines({priceHead, b2}));
    EXPECT_EQ(file.Rows(OfSymbol(choice, "C")), Lines({priceHead}));
}

TEST(HistoricalPriceReport, LeavesWhatIsNotKnownEmpty)
{
    PriceFile file;
    file.prices.Execute("INSERT INTO HistoricalPrices (Symbol, PriceDate, PriceClose) VALUES "
                        "('A', '2026-03-02', 25000)");
    EXPECT_EQ(file.Rows(ReportChoice()), Lines({priceHead, "@2026-03-02|A||||=2.5"}));
}
