/// What a delete takes from each ledger, and what it leaves.

#include "lists/delete_rows.h"

#include "support/account_file.h"
#include "support/print_qt.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace
{

const QDate January31(2026, 1, 31);

class DeleteRowsTest : public testing::Test
{
protected:
    DeleteRowsTest() { account.Open(m_file.Path()); }

    /// Buys cost 5, whatever their size.
    void Trade(const QString &symbol, const char *description, double shares, const char *date,
               const char *price = "10")
    {
        account.Execute(QStringLiteral("INSERT INTO History (Symbol, Name, Description, Shares, "
                                       "TransactionCost, Price, Amount, TransDate, Time) "
                                       "VALUES (?, 'Name', ?, ?, -50000, ?, 0, ?, '10:00:00.000')"),
                        symbol, QString::fromUtf8(description), shares, Currency(price),
                        QDate::fromString(QString::fromUtf8(date), Qt::ISODate));
    }
    void Lot(const QString &symbol, double shares, const char *date)
    {
        account.Execute(QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, "
                                       "TransDate, Time) VALUES (?, ?, 100000, ?, NULL)"),
                        symbol, shares, QDate::fromString(QString::fromUtf8(date), Qt::ISODate));
    }
    void Profit(const QString &symbol, const char *date)
    {
        account.Execute(QStringLiteral("INSERT INTO DailyProfitLoss (Symbol, Name, ProfitLoss, "
                                       "TransDate, Time) VALUES (?, 'Name', 10000, ?, NULL)"),
                        symbol, QDate::fromString(QString::fromUtf8(date), Qt::ISODate));
    }
    int Delete(DeleteTable table, DeleteOption option, const QString &symbol, QDate upTo = {},
               qint64 id = 0)
    {
        return DeleteRows(account, {table, option, symbol, id, upTo});
    }
    /// "ACME Bought 100, ACME Sold -50" in the order of the IDs.
    QString History() { return List("Symbol || ' ' || Description || ' ' || Shares", "History"); }
    /// "ACME 2026-01-05"
    QString Rows(const char *table) { return List("Symbol || ' ' || TransDate", table); }
    QString List(const char *expression, const char *table)
    {
        QStringList rows;
        Statement select =
            account.Prepare(QStringLiteral("SELECT %1 FROM %2 ORDER BY ID")
                                .arg(QString::fromUtf8(expression), QString::fromUtf8(table)));
        while (select.Step())
            rows << select.Text(0).replace(QLatin1String(".0"), QString());
        return rows.join(QStringLiteral(", "));
    }

    Connection account;

private:
    AccountFile m_file;
};

using enum DeleteOption;

} // namespace

// --- history up to a date -----------------------------------------------------------------------

TEST_F(DeleteRowsTest, TakesASaleWithThePurchasesItUsedUpAndLowersTheLast)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("ACME", "Bought", 100, "2026-01-06");
    Trade("ACME", "Sold", -150, "2026-01-20");
    EXPECT_EQ(Delete(DeleteTable::History, SymbolDate, "ACME", January31), 2);
    EXPECT_EQ(History(), "ACME Bought 50"); // 200 - 150; its commission went with the sale
    EXPECT_EQ(List("TransactionCost", "History"), "0");
}

TEST_F(DeleteRowsTest, LeavesSalesAfterTheDateAndThePurchasesTheyNeed)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("ACME", "Sold", -40, "2026-01-31"); // the day itself goes
    Trade("ACME", "Sold", -60, "2026-02-01");
    EXPECT_EQ(Delete(DeleteTable::History, SymbolDate, "ACME", January31), 1);
    EXPECT_EQ(History(), "ACME Bought 60, ACME Sold -60");
}

TEST_F(DeleteRowsTest, TakesCoversWithTheShortSalesTheyClosed)
{
    Trade("ACME", " Short  Sale", -100, "2026-01-05");
    Trade("ACME", " Short  Sale", -100, "2026-01-06");
    Trade("ACME", " Short Cover", 120, "2026-01-20");
    EXPECT_EQ(Delete(DeleteTable::History, SymbolDate, "ACME", January31), 2);
    EXPECT_EQ(History(), "ACME  Short  Sale -80");
}

TEST_F(DeleteRowsTest, LeavesOtherSymbolsDividendsCashAndReinvestments)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("ACME", "Reinvestment", 3, "2026-01-06");
    Trade("ACME", "Sold", -100, "2026-01-20");
    Trade("O'NEIL", "Bought", 10, "2026-01-05");
    Trade("O'NEIL", "Sold", -10, "2026-01-20");
    Trade(" ", "Deposit", 0, "2026-01-02");
    Trade(" ", "Dividend", 0, "2026-01-03");
    EXPECT_EQ(Delete(DeleteTable::History, SymbolDate, "ACME", January31), 2);
    EXPECT_EQ(History(), "ACME Reinvestment 3, O'NEIL Bought 10, O'NEIL Sold -10,   Deposit 0,   "
                         "Dividend 0");
}

TEST_F(DeleteRowsTest, DeletesTheSalesOfASymbolWithAnApostrophe)
{
    Trade("O'NEIL", "Bought", 10, "2026-01-05");
    Trade("O'NEIL", "Sold", -4, "2026-01-20");
    EXPECT_EQ(Delete(DeleteTable::History, SymbolDate, "O'NEIL", January31), 1);
    EXPECT_EQ(History(), "O'NEIL Bought 6");
}

TEST_F(DeleteRowsTest, DeletesTheSalesOfAllSymbolsUpToADate)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("ZETA", "Bought", 10, "2026-01-05");
    Trade("ACME", "Sold", -100, "2026-01-20");
    Trade("ZETA", "Sold", -4, "2026-01-20");
    Trade("ZETA", "Sold", -1, "2026-02-20");
    EXPECT_EQ(Delete(DeleteTable::History, AllDate, "ignored", January31), 3);
    EXPECT_EQ(History(), "ZETA Bought 6, ZETA Sold -1");
}

TEST_F(DeleteRowsTest, TakesALeapDayAsADayLikeAnyOther)
{
    Trade("ACME", "Bought", 10, "2024-01-05");
    Trade("ACME", "Sold", -4, "2024-02-29");
    EXPECT_EQ(Delete(DeleteTable::History, AllDate, "", QDate(2024, 2, 28)), 0);
    EXPECT_EQ(Delete(DeleteTable::History, AllDate, "", QDate(2024, 2, 29)), 1);
    EXPECT_EQ(History(), "ACME Bought 6");
}

TEST_F(DeleteRowsTest, DeletesASaleBeyondAllPurchasesWithEveryOneOfThem)
{
    Trade("ACME", "Bought", 10, "2026-01-05");
    Trade("ACME", "Sold", -25, "2026-01-20");
    EXPECT_EQ(Delete(DeleteTable::History, SymbolDate, "ACME", January31), 2);
    EXPECT_EQ(History(), "");
}

TEST_F(DeleteRowsTest, LeavesARowWithoutADateAlone)
{
    Trade("ACME", "Bought", 10, "2026-01-05");
    Trade("ACME", "Sold", -4, "2026-01-20");
    account.Execute("UPDATE History SET TransDate = NULL WHERE Description = 'Sold'");
    EXPECT_EQ(Delete(DeleteTable::History, AllDate, "", January31), 0);
    EXPECT_EQ(History(), "ACME Bought 10, ACME Sold -4");
}

// --- the plain deletes --------------------------------------------------------------------------

TEST_F(DeleteRowsTest, DeletesTheCurrentRowAloneWithoutMatching)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("ACME", "Sold", -40, "2026-01-20");
    EXPECT_EQ(Delete(DeleteTable::History, CurrentRow, "ACME", {}, 2), 1);
    EXPECT_EQ(History(), "ACME Bought 100");
}

TEST_F(DeleteRowsTest, DeletesNothingWhenTheRowIsOfAnotherSymbol)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Lot("ACME", 100, "2026-01-05");
    Profit("ACME", "2026-01-05");
    for (const DeleteTable table :
         {DeleteTable::History, DeleteTable::PriceHistory, DeleteTable::DailyProfitLoss})
        EXPECT_EQ(Delete(table, CurrentRow, "ZETA", {}, 1), 0);
    EXPECT_EQ(History(), "ACME Bought 100");
    EXPECT_EQ(Rows("PriceHistory"), "ACME 2026-01-05");
    EXPECT_EQ(Rows("DailyProfitLoss"), "ACME 2026-01-05");
}

TEST_F(DeleteRowsTest, DeletesAllRowsOfASymbolAndNoOther)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("O'NEIL", "Bought", 1, "2026-01-05");
    Trade("O'NEIL", "Dividend", 0, "2026-02-05");
    EXPECT_EQ(Delete(DeleteTable::History, AllSelected, "O'NEIL"), 2);
    EXPECT_EQ(History(), "ACME Bought 100");
}

struct PlainTable
{
    DeleteTable table;
    const char *name;
};

class PlainDelete : public DeleteRowsTest, public testing::WithParamInterface<PlainTable>
{
protected:
    PlainDelete()
    {
        for (const char *date : {"2024-02-29", "2026-01-31", "2026-02-01"})
            for (const char *symbol : {"ACME", "O'NEIL"}) {
                if (GetParam().table == DeleteTable::PriceHistory)
                    Lot(QString::fromUtf8(symbol), 100, date);
                else
                    Profit(QString::fromUtf8(symbol), date);
            }
    }
    int DeleteOf(DeleteOption option, const QString &symbol, QDate upTo = {}, qint64 id = 0)
    {
        return Delete(GetParam().table, option, symbol, upTo, id);
    }
    QString Left() { return Rows(GetParam().name); }
};

INSTANTIATE_TEST_SUITE_P(Tables, PlainDelete,
                         testing::Values(PlainTable{DeleteTable::PriceHistory, "PriceHistory"},
                                         PlainTable{DeleteTable::DailyProfitLoss,
                                                    "DailyProfitLoss"}),
                         [](const auto &info) { return info.param.name; });

TEST_P(PlainDelete, TakesTheCurrentRow)
{
    EXPECT_EQ(DeleteOf(CurrentRow, "O'NEIL", {}, 2), 1);
    EXPECT_EQ(Left(), "ACME 2024-02-29, ACME 2026-01-31, O'NEIL 2026-01-31, ACME 2026-02-01, "
                      "O'NEIL 2026-02-01");
}

TEST_P(PlainDelete, TakesAllRowsOfASymbol)
{
    EXPECT_EQ(DeleteOf(AllSelected, "O'NEIL"), 3);
    EXPECT_EQ(Left(), "ACME 2024-02-29, ACME 2026-01-31, ACME 2026-02-01");
    EXPECT_EQ(DeleteOf(AllSelected, "O'NEIL"), 0);
}

TEST_P(PlainDelete, TakesASymbolUpToADateIncluded)
{
    EXPECT_EQ(DeleteOf(SymbolDate, "O'NEIL", January31), 2);
    EXPECT_EQ(Left(), "ACME 2024-02-29, ACME 2026-01-31, ACME 2026-02-01, O'NEIL 2026-02-01");
}

TEST_P(PlainDelete, TakesAllSymbolsUpToADateIncluded)
{
    EXPECT_EQ(DeleteOf(AllDate, "ignored", QDate(2024, 2, 28)), 0);
    EXPECT_EQ(DeleteOf(AllDate, "ignored", QDate(2024, 2, 29)), 2);
    EXPECT_EQ(DeleteOf(AllDate, "ignored", January31), 2);
    EXPECT_EQ(Left(), "ACME 2026-02-01, O'NEIL 2026-02-01");
}

// --- all or nothing -----------------------------------------------------------------------------

TEST_F(DeleteRowsTest, LeavesTheFileAsItWasWhenTheStoreRefusesTheLastStep)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    Trade("ACME", "Bought", 100, "2026-01-06");
    Trade("ACME", "Sold", -150, "2026-01-20");
    const QString before = History();
    account.ExecuteScript("CREATE TRIGGER refuse BEFORE DELETE ON History "
                          "WHEN old.Description = 'Bought' "
                          "BEGIN SELECT RAISE(ABORT, 'no'); END;");
    EXPECT_THROW(Delete(DeleteTable::History, SymbolDate, "ACME", January31), RuntimeError);
    EXPECT_EQ(History(), before); // the sale is there again, and no purchase is lowered
    EXPECT_FALSE(account.InTransaction());
}

TEST_F(DeleteRowsTest, DeletesNothingWithoutATable)
{
    Trade("ACME", "Bought", 100, "2026-01-05");
    EXPECT_EQ(Delete(DeleteTable::None, AllSelected, "ACME"), 0);
    EXPECT_EQ(History(), "ACME Bought 100");
}

TEST_F(DeleteRowsTest, CountsNothingInAnEmptyLedger)
{
    for (const DeleteOption option : {CurrentRow, AllSelected, SymbolDate, AllDate})
        EXPECT_EQ(Delete(DeleteTable::History, option, "ACME", January31), 0);
}

// --- the words ----------------------------------------------------------------------------------

struct Words
{
    const char *name;
    DeleteOption option;
    const char *question;
    const char *reminder; ///< for lots and profits; nothing: none
};

// On March 2, 2026, for ACME.
const Words words[] = {
    {"CurrentRow", CurrentRow, "Delete Editor|49|Current row will be deleted!", nullptr},
    {"AllSelected", AllSelected, "Delete Editor|1|All rows for symbol ACME will be deleted!",
     "REMINDER! Make sure to delete existing transaction history for \nACME if you do not need "
     "that information."},
    {"SymbolDate", SymbolDate,
     "Delete Editor|1|Delete of symbol ACME will begin with oldest date and will end with date of "
     "3/2/2026, Continue?",
     "REMINDER! Make sure to delete existing transaction history for ACME in the date range "
     "selected if you do not need that information."},
    {"AllDate", AllDate,
     "Delete Editor|1|All history information starting with oldest date \nand ending with 3/2/2026 "
     "will be deleted, Continue?",
     "REMINDER! Make sure to delete existing transaction history for \nall symbols in the date "
     "range selected if you do not need that information."},
};

class DeleteWords : public testing::TestWithParam<Words>
{
protected:
    DeleteChoice ChoiceOf(DeleteTable table)
    {
        return {table, GetParam().option, "ACME", 1, QDate(2026, 3, 2)};
    }
};

INSTANTIATE_TEST_SUITE_P(Options, DeleteWords, testing::ValuesIn(words),
                         [](const auto &info) { return info.param.name; });

TEST_P(DeleteWords, AskBeforeAnythingGoes)
{
    TestServices machine;
    machine.dialogs.Queue(Answer::Ok);
    machine.dialogs.Queue(Answer::Cancel);
    const DeleteChoice choice = ChoiceOf(DeleteTable::DailyProfitLoss);
    EXPECT_TRUE(ConfirmDelete(machine.services, choice));
    EXPECT_FALSE(ConfirmDelete(machine.services, choice));
    EXPECT_EQ(machine.dialogs.Boxes().front(), GetParam().question);
}

TEST_P(DeleteWords, RemindOfTheHistoryBehindLotsAndProfits)
{
    for (const DeleteTable table : {DeleteTable::PriceHistory, DeleteTable::DailyProfitLoss}) {
        const std::optional<QString> reminder = DeleteReminder(ChoiceOf(table));
        ASSERT_EQ(reminder.has_value(), GetParam().reminder != nullptr);
        if (reminder) {
            EXPECT_EQ(*reminder, QString::fromUtf8(GetParam().reminder));
        }
    }
    EXPECT_FALSE(DeleteReminder(ChoiceOf(DeleteTable::History)));
}
