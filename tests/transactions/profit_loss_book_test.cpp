#include "transactions/profit_loss_book.h"

#include "test_account.h"

#include "transactions/history.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

TrackerRow RowOf(const QString &symbol, const char *profitLossToday, const QString &name = "Name")
{
    TrackerRow row;
    row.Symbol = symbol;
    row.Name = name;
    row.ProfitLossToday = Currency(profitLossToday);
    return row;
}

} // namespace

TEST(ProfitLossBook, InsertsADayOnce)
{
    TestAccount account;
    ProfitLossBook book;
    book.Post(RowOf("O'NEIL", "-5"), QDate(2026, 1, 5), QTime(9, 0));
    book.Write(account.gConnAccount());
    EXPECT_EQ(account.ProfitLoss(),
              std::vector<std::string>{"O'NEIL|Name|-5|2026-01-05|09:00:00.000"});
}

TEST(ProfitLossBook, TheLaterPostingOfADayGivesFigureAndTimeAndTheFirstTheName)
{
    TestAccount account;
    ProfitLossBook book;
    book.Post(RowOf("ACME", "-5", "Acme"), QDate(2026, 1, 5), QTime(9, 0));
    book.Post(RowOf("ACME", "70", "Acme Inc."), QDate(2026, 1, 5), QTime(10, 0));
    book.Write(account.gConnAccount());
    EXPECT_EQ(account.ProfitLoss(),
              std::vector<std::string>{"ACME|Acme|70|2026-01-05|10:00:00.000"});
}

TEST(ProfitLossBook, ADayThatComesToZeroIsRemoved)
{
    TestAccount account;
    ProfitLossBook book;
    book.Post(RowOf("ACME", "-5"), QDate(2026, 1, 5), QTime(9, 0));
    book.Post(RowOf("ACME", "0"), QDate(2026, 1, 5), QTime(10, 0));
    book.Post(RowOf("BETA", "0"), QDate(2026, 1, 5), QTime(10, 0));
    book.Write(account.gConnAccount());
    EXPECT_TRUE(account.ProfitLoss().empty());
}

TEST(ProfitLossBook, ADayThatComesBackIsInsertedAnew)
{
    TestAccount account;
    ProfitLossBook book;
    book.Post(RowOf("ACME", "-5", "Before"), QDate(2026, 1, 5), QTime(9, 0));
    book.Post(RowOf("ACME", "0"), QDate(2026, 1, 5), QTime(10, 0));
    book.Post(RowOf("ACME", "3", "After"), QDate(2026, 1, 5), QTime(11, 0));
    book.Write(account.gConnAccount());
    EXPECT_EQ(account.ProfitLoss(),
              std::vector<std::string>{"ACME|After|3|2026-01-05|11:00:00.000"});
}

TEST(ProfitLossBook, ComesOutAsIfEachPostingHadWrittenItsOwn)
{
    std::mt19937 random(20260302);
    const auto pick = [&](int from, int to) {
        return std::uniform_int_distribution(from, to)(random);
    };
    TestAccount gathered;
    TestAccount direct;
    ProfitLossBook book;
    for (int i = 0; i < 500; ++i) {
        TrackerRow row = RowOf(QStringLiteral("S%1").arg(pick(1, 5)), "0",
                               QStringLiteral("Name %1").arg(pick(1, 3)));
        row.ProfitLossToday = Currency::FromDouble(pick(-2, 2));
        const QDate day(2026, 1, pick(1, 9));
        book.Post(row, day, direct.Clock().TimeOfDay());
        PostDailyProfitLoss(direct.gConnAccount(), row, day, direct.MachineServices());
        direct.Clock().Advance(std::chrono::seconds(1));
    }
    book.Write(gathered.gConnAccount());
    EXPECT_EQ(gathered.ProfitLoss(), direct.ProfitLoss());
    EXPECT_FALSE(direct.ProfitLoss().empty());
}
