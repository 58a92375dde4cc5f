/// Values in tables that are not what their columns hold: the error names table, row and column.

#include "account_file.h"

#include "store/control_rows.h"
#include "store/recordset.h"

#include <gtest/gtest.h>

namespace
{

class UnreadableValues : public testing::Test
{
protected:
    UnreadableValues()
    {
        m_account.Open(m_file.Path());
        m_account.ExecuteScript(
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate) VALUES "
            "('ACME', 1, 10000, '2026-01-05'), ('O''NEIL', 2, 'a lot', '2026-02-02'), "
            "('INF', 9e999, 10000, '2026-02-03'), ('HUGE', 1, 1e300, '2026-02-04'), "
            "('WORD', 'ten', 10000, '2026-02-05')");
    }
    static QString ErrorOf(const std::function<void()> &act)
    {
        try {
            act();
        } catch (const RuntimeError &error) {
            return QStringLiteral("%1 %2").arg(error.Number()).arg(error.Description());
        }
        return {};
    }

    AccountFile m_file;
    Connection m_account;
};

const QString Lot = QStringLiteral("Table PriceHistory, row %1, column %2");

} // namespace

TEST_F(UnreadableValues, OfAStatementAreNamed)
{
    Statement row =
        m_account.Prepare("SELECT Symbol, Shares, PurchasePrice, TransDate FROM PriceHistory "
                          "ORDER BY ID");
    const auto shares = [&] { row.ShareCount(1); };
    const auto price = [&] { row.Money(2); };
    row.Step();
    EXPECT_EQ(ErrorOf(shares) + ErrorOf(price), "");
    row.Step();
    EXPECT_EQ(ErrorOf(shares), "");
    EXPECT_EQ(ErrorOf(price),
              "13 " + Lot.arg("O'NEIL, 2026-02-02", "PurchasePrice: 'a lot' is no number."));
    row.Step();
    EXPECT_EQ(ErrorOf(shares), "6 " + Lot.arg("INF, 2026-02-03", "Shares: 'Inf' does not fit."));
    row.Step();
    EXPECT_EQ(ErrorOf(price),
              "6 " + Lot.arg("HUGE, 2026-02-04", "PurchasePrice: '1.0e+300' does not fit."));
    row.Step();
    EXPECT_EQ(ErrorOf(shares), "13 " + Lot.arg("WORD, 2026-02-05", "Shares: 'ten' is no number."));
}

TEST_F(UnreadableValues, OfARecordsetAreNamedWhenTheyAreAskedForAndStayAsTheyAre)
{
    Recordset rows;
    rows.Open(m_account, {"*", "PriceHistory", "ORDER BY ID"});
    ASSERT_EQ(rows.RecordCount(), 5);
    rows.MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows.Money(rows.Column("PurchasePrice")); }),
              "13 " + Lot.arg("O'NEIL", "PurchasePrice: 'a lot' is no number."));
    rows.Set("Shares", Single::FromFloat(7));
    rows.MoveNext();
    EXPECT_EQ(ErrorOf([&] { rows.ShareCount(rows.Column("Shares")); }),
              "6 " + Lot.arg("INF", "Shares: 'Inf' does not fit."));
    Statement stored = m_account.Prepare("SELECT Shares, PurchasePrice FROM PriceHistory "
                                         "WHERE Symbol = 'O''NEIL'");
    stored.Step();
    EXPECT_EQ(stored.Text(0), "7.0");
    EXPECT_EQ(stored.Text(1), "a lot");
}

TEST_F(UnreadableValues, OfTheControlRowsAreNamedCountAsZeroAndStayAsTheyAre)
{
    m_account.ExecuteScript(
        "INSERT INTO DescriptiveTable VALUES ('Balance', 'much', 0, 0, '2026-03-02', '2026-03-02', "
        "'6018', 1e300, 'Style1', 'n/a', 0, 0, '0'), ('Style1', 'ten', 20000, 0, '2026-03-02', "
        "'2026-03-02', '5', 0, 'n/a', 'n/a', 0, 0, '0')");
    AccountState state;
    EXPECT_EQ(
        LoadDescriptiveTable(m_account, state, QDate(2026, 3, 2)),
        QStringList({"Table DescriptiveTable, row Balance, column Field01: 'much' is no number.",
                     "Table DescriptiveTable, row Balance, column Field07: '1.0e+300' does not "
                     "fit.",
                     "Table DescriptiveTable, row Style1, column Field01: 'ten' is no number."}));
    EXPECT_EQ(state.AccountBalance, Currency());
    EXPECT_EQ(state.CommissionPerShare, Currency("2"));
    Statement stored = m_account.Prepare("SELECT Field01 FROM DescriptiveTable");
    stored.Step();
    EXPECT_EQ(stored.Text(0), "much");
}

TEST_F(UnreadableValues, AMissingBalanceRowIsNamed)
{
    m_account.ExecuteScript(
        "INSERT INTO DescriptiveTable VALUES ('WebSite', 0, 0, 0, '2026-03-02', '2026-03-02', '5', "
        "0, 'Quotes', 'n/a', 0, 0, '0')");
    AccountState state;
    const auto load = [&] { return LoadDescriptiveTable(m_account, state, QDate(2026, 3, 2)); };
    EXPECT_EQ(load(), QStringList()); // it is being set up
    m_account.ExecuteScript("INSERT INTO History (Symbol) VALUES ('ACME')");
    EXPECT_EQ(load(),
              QStringList("Table DescriptiveTable: the row Balance, with the balance of the "
                          "account in its column Field01, is missing."));
}
