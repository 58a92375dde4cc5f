/// The working copy of the positions: made from the rows of the tracker and written back to them.

#include "print_qt.h"
#include "test_account.h"
#include "test_app_folder.h"

#include "marketdata/portfolio_array.h"

#include <gtest/gtest.h>

#include <QFile>

namespace
{

class WorkingCopy : public testing::Test
{
protected:
    WorkingCopy()
    {
        const QString control = m_folder.File("ApplControl.mdb");
        EXPECT_TRUE(QFile::copy(m_folder.File("ApplControl.xxx"), control));
        m_control.Open(control);
    }

    void Security(const QString &symbol, const QString &type)
    {
        m_control.Execute(
            QStringLiteral("INSERT INTO SecurityDetail (Symbol, SecurityType) VALUES (?, ?)"),
            symbol, type);
    }
    PortfolioArray Load() { return LoadCurrPortfolioArray(m_account.Rows(), m_control); }
    /// "Symbol price time" of the rows, as another program reads them from the file.
    std::vector<std::string> StoredRows()
    {
        m_account.Rows().UpdateBatch(); // as the valuation does
        Connection file;
        file.Open(m_account.gConnAccount().Path());
        Statement select = file.Prepare(
            QStringLiteral("SELECT Symbol, CurrPrice, Time FROM DailyTracker ORDER BY rowid"));
        std::vector<std::string> rows;
        while (select.Step())
            rows.push_back(QStringLiteral("%1 %2 %3")
                               .arg(select.Text(0))
                               .arg(select.Money(1).ToDouble())
                               .arg(select.Time(2).toString("HH:mm:ss"))
                               .toStdString());
        return rows;
    }
    /// Prices 1, 2, 3, ... and the time 11:00:00 for every entry.
    static void Price(PortfolioArray &entries)
    {
        for (size_t i = 0; i < entries.size(); ++i) {
            entries[i].CurrPrice = Currency::FromWhole(int(i) + 1);
            entries[i].Time = QTime(11, 0);
        }
    }

    TestAccount m_account;
    TestAppFolder m_folder;
    Connection m_control;
};

using UpdatedRows = WorkingCopy;

using Texts = std::vector<std::string>;

} // namespace

TEST_F(WorkingCopy, HasOneEntryForEachRowInTheirOrder)
{
    m_account.Rows().SetOrderBy("ORDER BY Symbol DESC");
    m_account.Row("BOLT", "10", "5", "7").Row("ACME", "20", "1");
    Security("ACME", "Mutual Fund");
    const PortfolioArray entries = Load();
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].Symbol, "BOLT      ");
    EXPECT_EQ(entries[0].Shares.Value(), 10);
    EXPECT_EQ(entries[0].CurrPrice, Currency("7"));
    EXPECT_EQ(entries[0].Time, m_account.Of("BOLT").Time);
    EXPECT_EQ(entries[0].SecurityType, "          "); // not in the list of securities
    EXPECT_EQ(entries[0].PriceDate, NoDate());
    EXPECT_FALSE(entries[0].IsDealtWith);
    EXPECT_EQ(entries[1].Symbol, "ACME      ");
    EXPECT_EQ(entries[1].SecurityType, "Mutual Fun");
    EXPECT_EQ(m_account.Rows().Position(), 0);
}

TEST_F(WorkingCopy, CutsALongSymbolAtTenCharactersAndKnowsItsTypeNonetheless)
{
    m_account.Row("ABCDEFGHIJKL", "1", "1");
    Security("ABCDEFGHIJKL", "Option");
    const PortfolioArray entries = Load();
    EXPECT_EQ(entries[0].Symbol, "ABCDEFGHIJ");
    EXPECT_TRUE(entries[0].IsOption());
}

TEST_F(WorkingCopy, KnowsAnOptionByTheTypeInThisWriting)
{
    m_account.Row("A", "1", "1").Row("B", "1", "1");
    Security("A", "Option");
    Security("B", "option");
    const PortfolioArray entries = Load();
    EXPECT_EQ(entries[0].SecurityType, "Option    ");
    EXPECT_TRUE(entries[0].IsOption());
    EXPECT_FALSE(entries[1].IsOption());
}

TEST_F(WorkingCopy, OfAnAccountWithoutRowsIsAnErrorOfItsOwn)
{
    try {
        Load();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::NoCurrentRecordNumber);
    }
}

TEST_F(WorkingCopy, OfAnAccountThatWasClosedIsAnErrorOfItsOwn)
{
    m_account.Row("ACME", "1", "1");
    m_account.Rows().Close();
    try {
        Load();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::ObjectClosedNumber);
    }
}

TEST_F(WorkingCopy, OverflowsAboveThirtyTwoThousandShares)
{
    m_account.Row("ACME", "32767", "1");
    EXPECT_EQ(Load()[0].Shares.Value(), 32767);
    m_account.Row("BOLT", "32768", "1");
    try {
        Load();
        ADD_FAILURE() << "no error";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::OverflowNumber);
        EXPECT_EQ(error.Description(), "Overflow");
    }
}

TEST(WholeShares, AreRoundedToTheNearestEvenNumberAtAHalf)
{
    const struct
    {
        float shares;
        int whole;
    } rows[] = {
        {0.0f, 0},    {0.49f, 0}, {0.5f, 0},           {0.51f, 1},         {1.5f, 2},
        {2.5f, 2},    {-0.5f, 0}, {-1.5f, -2},         {-2.5f, -2},        {32767.4f, 32767},
        {100.f, 100}, {-7.f, -7}, {-32768.5f, -32768}, {-32768.f, -32768},
    };
    for (const auto &row : rows)
        EXPECT_EQ(WholeShares(Single::FromFloat(row.shares)).Value(), row.whole) << row.shares;
}

TEST(WholeShares, OverflowBeyondSixteenBitsHoweverFar)
{
    for (const float shares : {32767.5f, 32768.f, -32769.f, 3e38f, -3e38f})
        EXPECT_THROW(WholeShares(Single::FromFloat(shares)), RuntimeError) << shares;
}

TEST(TenCharacters, CutAndFill)
{
    EXPECT_EQ(TenCharacters(""), "          ");
    EXPECT_EQ(TenCharacters("ACME"), "ACME      ");
    EXPECT_EQ(TenCharacters("ABCDEFGHIJK"), "ABCDEFGHIJ");
}

TEST_F(UpdatedRows, TakePriceAndTimeOfTheirEntriesAndNothingElse)
{
    m_account.Row("ACME", "10", "5").Row("BOLT", "10", "5");
    const TrackerRow before = m_account.Of("BOLT");
    PortfolioArray entries = Load();
    Price(entries);
    UpdateDTRecordset(m_account.Rows(), entries, "None", "");
    EXPECT_EQ(StoredRows(), Texts({"ACME 1 11:00:00", "BOLT 2 11:00:00"}));
    TrackerRow after = m_account.Of("BOLT");
    after.CurrPrice = before.CurrPrice;
    after.Time = before.Time;
    EXPECT_EQ(after, before);
    EXPECT_EQ(m_account.Rows().Position(), 0);
}

TEST_F(UpdatedRows, KeepTheirPricesFromTheFirstThatIsNotWhereItWas)
{
    m_account.Row("BOLT", "1", "50").Row("CORE", "1", "60").Row("DUNE", "1", "70");
    PortfolioArray entries = Load();
    Price(entries);
    m_account.ExecuteElsewhere("DELETE FROM DailyTracker WHERE Symbol = 'CORE'");
    m_account.Rows().Requery();
    UpdateDTRecordset(m_account.Rows(), entries, "None", "");
    EXPECT_EQ(StoredRows(), Texts({"BOLT 1 11:00:00", "DUNE 70 09:30:00"}));
}

TEST_F(UpdatedRows, AreMatchedOnBehindARowThatWasAddedAmongThem)
{
    m_account.Row("BOLT", "1", "50").Row("DUNE", "1", "70");
    PortfolioArray entries = Load();
    Price(entries);
    m_account.Row("CORE", "1", "60");
    UpdateDTRecordset(m_account.Rows(), entries, "None", "");
    EXPECT_EQ(StoredRows(), Texts({"BOLT 1 11:00:00", "DUNE 2 11:00:00", "CORE 60 09:30:00"}));
}

TEST_F(UpdatedRows, ThatWereAddedAtTheEndKeepTheirPrices)
{
    m_account.Row("ACME", "1", "50");
    PortfolioArray entries = Load();
    Price(entries);
    m_account.Row("ZINC", "1", "60");
    UpdateDTRecordset(m_account.Rows(), entries, "None", "");
    EXPECT_EQ(StoredRows(), Texts({"ACME 1 11:00:00", "ZINC 60 09:30:00"}));
}

TEST_F(UpdatedRows, AreMatchedByTheExactSymbol)
{
    m_account.Row("O'NEIL", "1", "60").Row("acme", "1", "50");
    PortfolioArray entries = Load();
    Price(entries);
    UpdateDTRecordset(m_account.Rows(), entries, "None", "");
    EXPECT_EQ(StoredRows(), Texts({"O'NEIL 1 11:00:00", "acme 2 11:00:00"}));
    entries[1].Symbol = TenCharacters("ACME");
    entries[1].CurrPrice = Currency("99");
    UpdateDTRecordset(m_account.Rows(), entries, "None", "");
    EXPECT_EQ(StoredRows(), Texts({"O'NEIL 1 11:00:00", "acme 2 11:00:00"}));
}

TEST_F(UpdatedRows, FindOptionsWithoutTheFormOfTheSite)
{
    const struct
    {
        const char *symbol, *prefix, *suffix, *price;
    } rows[] = {
        {".ACMEC90", ".", "", "1"},      // the prefix is taken off
        {".ACMEC90", " . ", "X", "1"},   // trimmed, and the suffix does not count then
        {"ACMEC90X", "", " X ", "1"},    // else the suffix
        {"ACME.C90", ".", "", "1"},      // wherever it occurs
        {"ACMEC90", "None", "C90", "1"}, // the site takes it bare
        {"ACMEC90", "", "", "1"},        //
        {"acmec90", "ACME", "", "50"},   // letter for letter
        {".ACMEC90", "None", "", "50"},  // the form of another site stays
    };
    for (const auto &row : rows) {
        TestAccount account = TestAccount().Row("ACMEC90", "1", "50");
        PortfolioArray entries(1);
        entries[0].Symbol = TenCharacters(row.symbol);
        entries[0].SecurityType = TenCharacters("Option");
        Price(entries);
        UpdateDTRecordset(account.Rows(), entries, row.prefix, row.suffix);
        EXPECT_EQ(account.Of("ACMEC90").CurrPrice, Currency(row.price)) << row.symbol << row.prefix;
    }
}

TEST_F(UpdatedRows, LeaveTheFormOffOptionsOnly)
{
    m_account.Row("A.B", "1", "50");
    Security("A.B", "Stock");
    PortfolioArray entries = Load();
    Price(entries);
    UpdateDTRecordset(m_account.Rows(), entries, ".", "");
    EXPECT_EQ(m_account.Of("A.B").CurrPrice, Currency("1"));
}

TEST_F(UpdatedRows, NoLongerMatchAnOptionWhoseFormWasCut)
{
    m_account.Row("ABCDEFGHI", "1", "50").Row("BOLT", "1", "60");
    PortfolioArray entries = Load();
    entries[0].Symbol = TenCharacters("@OPTABCDEFGHI");
    entries[0].SecurityType = TenCharacters("Option");
    Price(entries);
    UpdateDTRecordset(m_account.Rows(), entries, "@OPT", "");
    EXPECT_EQ(StoredRows(), Texts({"ABCDEFGHI 50 09:30:00", "BOLT 60 09:30:00"}));
}

TEST_F(UpdatedRows, AreNoneInAnEmptyAccount)
{
    PortfolioArray entries;
    UpdateDTRecordset(m_account.Rows(), entries, "None", "");
    EXPECT_TRUE(StoredRows().empty());
}
