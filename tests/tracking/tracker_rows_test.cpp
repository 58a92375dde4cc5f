/// The position rows as a working set: order, edits, what is written and what is not.

#include "tracking/tracker_rows.h"

#include "account_file.h"

#include <gtest/gtest.h>

namespace
{

class PositionRows : public testing::Test
{
protected:
    PositionRows()
    {
        m_account.Open(m_file.Path());
        for (const char *symbol : {"ACME", "BOLT", "CORE", "DELL"})
            m_account.Execute("INSERT INTO DailyTracker (Symbol, Name, Shares, Time) "
                              "VALUES (?, 'Company', 10, '10:15:00.000')",
                              QString(symbol));
        // Every write of a row leaves its symbol here.
        m_account.ExecuteScript("CREATE TABLE Written (Symbol);"
                                "CREATE TRIGGER Updated AFTER UPDATE ON DailyTracker "
                                "BEGIN INSERT INTO Written VALUES (new.Symbol); END;"
                                "CREATE TRIGGER Inserted AFTER INSERT ON DailyTracker "
                                "BEGIN INSERT INTO Written VALUES ('+' || new.Symbol); END;");
        m_rows.Open(m_account, "ORDER BY Symbol");
    }

    std::string Text(const QString &sql)
    {
        QStringList texts;
        Statement row = m_account.Prepare(sql);
        while (row.Step())
            texts << row.Text(0);
        return texts.join(" ").toStdString();
    }
    std::string Written() { return Text("SELECT Symbol FROM Written"); }
    std::string InMemory() const
    {
        QStringList symbols;
        for (int i = 0; i < m_rows.RecordCount(); ++i)
            symbols << m_rows.At(i).Symbol;
        return symbols.join(" ").toStdString();
    }
    void RefuseUpdateOf(const QString &symbol)
    {
        m_account.ExecuteScript("CREATE TRIGGER Refuse BEFORE UPDATE ON DailyTracker WHEN "
                                "new.Symbol = '" +
                                symbol + "' BEGIN SELECT RAISE(ABORT, 'refused'); END");
    }
    void PriceAll(const char *price)
    {
        for (m_rows.MoveFirst(); !m_rows.AtEnd(); m_rows.MoveNext())
            m_rows.Edit().CurrPrice = Currency(price);
    }

    AccountFile m_file;
    Connection m_account;
    TrackerRecordset m_rows;
};

} // namespace

TEST_F(PositionRows, ComeInTheOrderOfTheQuery)
{
    EXPECT_EQ(InMemory(), "ACME BOLT CORE DELL");
    EXPECT_EQ(m_rows.Position(), 0);
    m_rows.SetOrderBy("ORDER BY Symbol DESC");
    EXPECT_EQ(InMemory(), "ACME BOLT CORE DELL");
    m_rows.MoveTo(2);
    m_rows.Requery();
    EXPECT_EQ(InMemory(), "DELL CORE BOLT ACME");
    EXPECT_EQ(m_rows.Position(), 0);
}

TEST_F(PositionRows, KeepEveryColumn)
{
    TrackerRow full;
    full.Symbol = "O'NEIL";
    full.Name = QString::fromUtf8("Crédit \"Générale\"");
    full.Shares = Single::FromDouble(-1234567.89);
    full.CurrPrice = Currency("1.0001");
    full.Basis = Currency("-2.0002");
    full.AvrgPrice = Currency("3.0003");
    full.ProfitLossToday = Currency("4.0004");
    full.ProfitLossToDate = Currency("5.0005");
    full.ActualProfitLoss = Currency("6.0006");
    full.TransCostToday = Currency("-7.0007");
    full.TransCostToDate = Currency("-8.0008");
    full.NumberTransToday = Integer::FromWide(9);
    full.NumberTransToDate = Integer::FromWide(32767);
    full.InvestedValue = Currency("922337203685477.5807");
    full.InvestedToDate = Currency("12.0012");
    full.TransDate = QDate(2028, 2, 29);
    full.Time = QTime(23, 59, 59, 999);
    full.PerCentGainToday = Single::FromDouble(0.333333);
    m_rows.Edit() = full;
    m_rows.Requery();
    ASSERT_TRUE(m_rows.Find("O'NEIL"));
    EXPECT_TRUE(m_rows.Current() == full);
}

TEST_F(PositionRows, AreNotMovedByAnEdit)
{
    m_rows.Edit().Symbol = "ZETA";
    m_rows.UpdateBatch();
    EXPECT_EQ(InMemory(), "ZETA BOLT CORE DELL");
    m_rows.Requery();
    EXPECT_EQ(InMemory(), "BOLT CORE DELL ZETA");
}

TEST_F(PositionRows, AreWrittenOnlyWhereTheyDiffer)
{
    PriceAll("0"); // as it is stored
    m_rows.MoveTo(1);
    m_rows.Edit().CurrPrice = Currency("12");
    m_rows.MoveTo(3);
    m_rows.Edit().Shares = Single::FromFloat(11);
    EXPECT_EQ(Written(), "");
    m_rows.UpdateBatch();
    EXPECT_EQ(Written(), "BOLT DELL");
    m_rows.UpdateBatch();
    EXPECT_EQ(Written(), "BOLT DELL");
}

TEST_F(PositionRows, ThatWereSetBackAreNotWritten)
{
    m_rows.Edit().CurrPrice = Currency("12");
    m_rows.Edit().CurrPrice = Currency("0");
    m_rows.UpdateBatch();
    EXPECT_EQ(Written(), "");
}

TEST_F(PositionRows, AreWrittenAllOrNone)
{
    RefuseUpdateOf("CORE");
    PriceAll("12");
    EXPECT_THROW(m_rows.UpdateBatch(), RuntimeError);
    EXPECT_EQ(Text("SELECT CurrPrice FROM DailyTracker"), "0 0 0 0");
    EXPECT_FALSE(m_account.InTransaction());
    EXPECT_EQ(m_rows.At(0).CurrPrice, Currency("12")); // still to be written

    m_account.ExecuteScript("DROP TRIGGER Refuse");
    m_rows.UpdateBatch();
    EXPECT_EQ(Text("SELECT CurrPrice FROM DailyTracker"), "120000 120000 120000 120000");
}

TEST_F(PositionRows, AddedBeforeARefusedBatchAreInsertedByTheNextOne)
{
    RefuseUpdateOf("DELL");
    m_rows.AddNew("AAA", "First", QDate(2026, 3, 2), QTime(10, 15));
    PriceAll("12");
    EXPECT_THROW(m_rows.UpdateBatch(), RuntimeError);
    m_account.ExecuteScript("DROP TRIGGER Refuse");
    m_rows.UpdateBatch();
    EXPECT_EQ(Text("SELECT Symbol FROM DailyTracker ORDER BY Symbol"), "AAA ACME BOLT CORE DELL");
}

TEST_F(PositionRows, AreGivenBackByCancelBatch)
{
    PriceAll("12");
    m_rows.AddNew("AAA", "First", QDate(2026, 3, 2), QTime(10, 15));
    m_rows.CancelBatch();
    EXPECT_EQ(InMemory(), "ACME BOLT CORE DELL");
    EXPECT_TRUE(m_rows.At(2).CurrPrice.IsZero());
    EXPECT_TRUE(m_rows.AtEnd());
    EXPECT_FALSE(m_rows.Find("AAA"));
    m_rows.UpdateBatch();
    EXPECT_EQ(Written(), "");
}

TEST_F(PositionRows, AddedStandAtTheEndWithAllAmountsZero)
{
    m_rows.AddNew("AAA", "First", QDate(2026, 3, 2), QTime(10, 15));
    EXPECT_EQ(InMemory(), "ACME BOLT CORE DELL AAA");
    TrackerRow expected;
    expected.Symbol = "AAA";
    expected.Name = "First";
    expected.TransDate = QDate(2026, 3, 2);
    expected.Time = QTime(10, 15);
    EXPECT_TRUE(m_rows.Current() == expected);
    EXPECT_EQ(Written(), "");
    m_rows.UpdateBatch();
    EXPECT_EQ(Written(), "+AAA");
    m_rows.Edit().CurrPrice = Currency("5");
    m_rows.UpdateBatch();
    EXPECT_EQ(Written(), "+AAA AAA");
}

TEST_F(PositionRows, OfOneSymbolCannotBeTwo)
{
    m_rows.AddNew("ACME", "Again", QDate(2026, 3, 2), QTime(10, 15));
    EXPECT_THROW(m_rows.UpdateBatch(), RuntimeError);
    m_rows.CancelBatch();
    EXPECT_NO_THROW(m_rows.UpdateBatch());
}

TEST_F(PositionRows, AreDeletedFromTheFileAtOnce)
{
    m_rows.MoveTo(1);
    m_rows.Delete();
    EXPECT_EQ(m_rows.Current().Symbol, "CORE");
    EXPECT_EQ(Text("SELECT Symbol FROM DailyTracker ORDER BY Symbol"), "ACME CORE DELL");
    m_rows.MoveTo(2);
    m_rows.Delete();
    EXPECT_TRUE(m_rows.AtEnd());
    EXPECT_THROW(m_rows.Delete(), RuntimeError);
}

TEST_F(PositionRows, DeletedBeforeTheyWereWrittenLeaveNothing)
{
    m_rows.AddNew("AAA", "First", QDate(2026, 3, 2), QTime(10, 15));
    m_rows.Delete();
    m_rows.UpdateBatch();
    EXPECT_EQ(Text("SELECT COUNT(*) FROM DailyTracker"), "4");
}

TEST_F(PositionRows, AreFoundByTheirExactSymbol)
{
    EXPECT_TRUE(m_rows.Find("CORE"));
    EXPECT_EQ(m_rows.Position(), 2);
    EXPECT_FALSE(m_rows.Find("core"));
    EXPECT_TRUE(m_rows.AtEnd());
    EXPECT_FALSE(m_rows.Find(" CORE"));
    EXPECT_FALSE(m_rows.Find(""));
    m_rows.AddNew("O'NEIL", "New", QDate(2026, 3, 2), QTime(10, 15));
    EXPECT_TRUE(m_rows.Find("O'NEIL"));
    m_rows.MoveFirst();
    m_rows.Delete();
    EXPECT_TRUE(m_rows.Find("CORE"));
    EXPECT_EQ(m_rows.Position(), 1);
}

TEST_F(PositionRows, HaveNoCurrentRowAtTheEnd)
{
    const auto errorOf = [](const std::function<void()> &use) {
        try {
            use();
        } catch (const RuntimeError &error) {
            return error.Number();
        }
        return 0;
    };
    m_rows.MoveTo(99);
    EXPECT_EQ(m_rows.Position(), 4);
    EXPECT_EQ(errorOf([this] { m_rows.Current(); }), 3021);
    EXPECT_EQ(errorOf([this] { m_rows.Edit(); }), 3021);
    m_rows.MoveTo(-1);
    EXPECT_EQ(m_rows.Position(), 0);
    m_rows.Close();
    EXPECT_EQ(errorOf([this] { m_rows.Current(); }), 3704);
    EXPECT_EQ(errorOf([this] { m_rows.UpdateBatch(); }), 3704);
    EXPECT_EQ(errorOf([this] { m_rows.AddNew("A", "B", {}, {}); }), 3704);
}

TEST_F(PositionRows, TellWhoeverShowsThemThatTheyChanged)
{
    int changes = 0;
    m_rows.OnRowsChanged = [&changes] { ++changes; };
    m_rows.UpdateBatch(); // nothing to write
    EXPECT_EQ(changes, 0);
    m_rows.Edit().CurrPrice = Currency("12");
    m_rows.UpdateBatch();
    EXPECT_EQ(changes, 1);
    m_rows.Delete();
    EXPECT_EQ(changes, 2);
    m_rows.Requery();
    EXPECT_EQ(changes, 3);
}

TEST_F(PositionRows, OfAnEmptyAccountAreNone)
{
    m_account.Execute("DELETE FROM DailyTracker");
    m_rows.Requery();
    EXPECT_TRUE(m_rows.IsEmpty());
    EXPECT_TRUE(m_rows.AtEnd());
    m_rows.MoveFirst();
    EXPECT_TRUE(m_rows.AtEnd());
    EXPECT_FALSE(m_rows.Find("ACME"));
}

TEST(ResetDailyTrackerRow, KeepsSymbolAndNameAlone)
{
    TrackerRow row;
    row.Symbol = "ACME";
    row.Name = "Acme Inc.";
    row.Shares = Single::FromFloat(5);
    row.PerCentGainToday = Single::FromFloat(0.5f);
    row.NumberTransToDate = Integer::FromWide(3);
    row.InvestedToDate = Currency("5");
    ResetDailyTrackerRow(row, QDate(2026, 3, 2), QTime(10, 15));
    TrackerRow expected;
    expected.Symbol = "ACME";
    expected.Name = "Acme Inc.";
    expected.TransDate = QDate(2026, 3, 2);
    expected.Time = QTime(10, 15);
    EXPECT_TRUE(row == expected);
}
