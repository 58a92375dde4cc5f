/// The rows of the profit list: their groups, totals and orders.

#include "lists/profit_loss_list.h"

#include "base/formats.h"
#include "support/account_file.h"
#include "support/print_qt.h"

#include <gtest/gtest.h>

namespace
{

class ProfitLossListTest : public testing::Test
{
protected:
    ProfitLossListTest() { account.Open(m_file.Path()); }

    void Profit(const QString &symbol, QDate day, const char *amount)
    {
        account.Execute(QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, "
                                       "TransDate, Time) VALUES (?, ?, ?, ?, NULL)"),
                        symbol, symbol + QStringLiteral(" Inc."), Currency(amount), day);
    }
    /// "A 1.5, B 2, = 3.5": the first letter of the symbol and the amount; a total has an equals sign.
    QString Lines(int column = 1, bool descending = true, QDate from = QDate(1900, 1, 1),
                  QDate to = QDate(2026, 3, 2))
    {
        const Formats neutral{QLocale::c()};
        QStringList lines;
        for (const ProfitLossLine &line :
             ReadProfitLoss(account, from, to, *ProfitLossOrderFor(column, descending)))
            lines << (line.IsTotal() ? QStringLiteral("=") : line.Symbol.left(1)) +
                         QLatin1Char(' ') + neutral.ToText(line.ProfitLoss);
        return lines.join(QStringLiteral(", "));
    }

    Connection account;
    const QDate friday{2026, 2, 27}, monday{2026, 3, 2}, leapDay{2024, 2, 29};

private:
    AccountFile m_file;
};

} // namespace

TEST_F(ProfitLossListTest, EndsEachDayInItsTotalTheNewestDayFirst)
{
    Profit("ZETA", friday, "-2.25");
    Profit("ACME", friday, "10.5");
    Profit("ACME", monday, "1");
    EXPECT_EQ(Lines(1, true), "A 1, = 1, A 10.5, Z -2.25, = 8.25"); // 10.5 - 2.25
    EXPECT_EQ(Lines(1, false), "A 10.5, Z -2.25, = 8.25, A 1, = 1");
}

TEST_F(ProfitLossListTest, EndsEachSymbolInItsTotal)
{
    Profit("ZETA", friday, "-2.25");
    Profit("ACME", monday, "1");
    Profit("ACME", friday, "10.5");
    EXPECT_EQ(Lines(2, false), "A 10.5, A 1, = 11.5, Z -2.25, = -2.25"); // the oldest day first
    EXPECT_EQ(Lines(2, true), "Z -2.25, = -2.25, A 10.5, A 1, = 11.5");
}

TEST_F(ProfitLossListTest, HasOneTotalOfZeroWithoutEntries)
{
    EXPECT_EQ(Lines(), "= 0");
    Profit("ACME", monday, "1");
    EXPECT_EQ(Lines(1, true, friday, friday), "= 0");
    EXPECT_EQ(Lines(2, true, monday, friday), "= 0"); // a range that ends before it begins
}

TEST_F(ProfitLossListTest, TakesBothEndsOfTheRangeALeapDayToo)
{
    Profit("ACME", leapDay, "1");
    Profit("BETA", friday, "2");
    Profit("CETA", monday, "4");
    EXPECT_EQ(Lines(1, true, leapDay, friday), "B 2, = 2, A 1, = 1");
    EXPECT_EQ(Lines(1, true, QDate(2024, 3, 1), monday), "C 4, = 4, B 2, = 2");
}

TEST_F(ProfitLossListTest, SumsToTheTenThousandthWithoutLoss)
{
    for (int i = 0; i < 3; ++i)
        Profit(QStringLiteral("S%1").arg(i), monday, "0.3333");
    EXPECT_EQ(Lines(), "S 0.3333, S 0.3333, S 0.3333, = 0.9999");
}

TEST_F(ProfitLossListTest, RefusesATotalBeyondTheRangeOfMoney)
{
    Profit("ACME", monday, "900000000000000");
    Profit("BETA", monday, "900000000000000");
    EXPECT_THROW(Lines(), RuntimeError);
}

TEST_F(ProfitLossListTest, KeepsSymbolsAndNamesWithApostrophesAndAccents)
{
    Profit("O'NEIL", monday, "1");
    Profit(QStringLiteral("Ärzte"), monday, "2");
    const auto lines = ReadProfitLoss(account, monday, monday, *ProfitLossOrderFor(1, true));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].Name, "O'NEIL Inc.");
    EXPECT_EQ(lines[1].Symbol, QStringLiteral("Ärzte"));
    EXPECT_EQ(lines[0].ID, 1);
}

TEST(ProfitLossOrderFor, KnowsDateAndSymbolAlone)
{
    EXPECT_EQ(ProfitLossOrderFor(1, false)->clause, "ORDER BY TransDate ASC, Symbol ASC");
    EXPECT_EQ(ProfitLossOrderFor(1, true)->clause, "ORDER BY TransDate DESC, Symbol ASC");
    EXPECT_EQ(ProfitLossOrderFor(2, false)->clause, "ORDER BY Symbol ASC, TransDate ASC");
    EXPECT_EQ(ProfitLossOrderFor(2, true)->clause, "ORDER BY Symbol DESC, TransDate ASC");
    for (const int column : {-1, 0, 3, 4})
        EXPECT_FALSE(ProfitLossOrderFor(column, false));
}
