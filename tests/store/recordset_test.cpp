/// The cursor over one table: positions, edits, new and deleted rows, types of the columns.

#include "account_file.h"

#include "store/recordset.h"

#include <gtest/gtest.h>

namespace
{

const RecordsetQuery AllLots{"*", "PriceHistory", "ORDER BY Symbol, ID"};

int ErrorOf(const std::function<void()> &use)
{
    try {
        use();
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
}

class LotRows : public testing::Test
{
protected:
    LotRows() { m_account.Open(m_file.Path()); }

    void Insert(const QString &symbol, const char *shares = "0")
    {
        m_account.Execute("INSERT INTO PriceHistory (Symbol, Shares) VALUES (?, ?)", symbol,
                          QString(shares).toDouble());
    }
    void OpenThree()
    {
        for (const char *symbol : {"ACME", "BOLT", "CORE"})
            Insert(symbol);
        m_rows.Open(m_account, AllLots);
    }
    QString Symbol() const { return m_rows.Text("Symbol"); }
    /// "ACME 5, BOLT 0" as another reader finds it in the file.
    std::string Stored()
    {
        QStringList rows;
        Statement row = m_account.Prepare("SELECT Symbol, Shares FROM PriceHistory ORDER BY ID");
        while (row.Step())
            rows << row.Text(0) + " " + QString::number(row.Double(1));
        return rows.join(", ").toStdString();
    }

    AccountFile m_file;
    Connection m_account;
    Recordset m_rows;
};

using Cursor = LotRows;
using Edit = LotRows;
using NewRow = LotRows;
using DeletedRow = LotRows;
using Columns = LotRows;

const Single Five = Single::FromFloat(5);

} // namespace

TEST_F(Cursor, StandsOnTheFirstRowAfterOpen)
{
    OpenThree();
    EXPECT_EQ(m_rows.RecordCount(), 3);
    EXPECT_EQ(m_rows.Position(), 0);
    EXPECT_EQ(Symbol(), "ACME");
    EXPECT_FALSE(m_rows.AtBegin());
    EXPECT_FALSE(m_rows.AtEnd());
}

TEST_F(Cursor, IsAtBeginAndAtEndWithoutRows)
{
    m_rows.Open(m_account, AllLots);
    EXPECT_TRUE(m_rows.IsEmpty());
    const auto nowhere = [this] { return m_rows.AtBegin() && m_rows.AtEnd(); };
    EXPECT_TRUE(nowhere());
    m_rows.MoveFirst();
    EXPECT_TRUE(nowhere());
    m_rows.MoveLast();
    EXPECT_TRUE(nowhere());
    m_rows.MoveNext();
    EXPECT_TRUE(nowhere());
    EXPECT_EQ(ErrorOf([this] { Symbol(); }), 3021);
}

TEST_F(Cursor, WalksInTheOrderOfTheQueryAndStopsBehindTheLastRow)
{
    OpenThree();
    QString walk;
    for (m_rows.MoveFirst(); !m_rows.AtEnd(); m_rows.MoveNext())
        walk += Symbol() + " ";
    EXPECT_EQ(walk, "ACME BOLT CORE ");
    EXPECT_EQ(m_rows.Position(), 3);
    m_rows.MoveNext();
    EXPECT_TRUE(m_rows.AtEnd());
    EXPECT_EQ(ErrorOf([this] { Symbol(); }), 3021);
}

TEST_F(Cursor, GoesToARowByItsNumber)
{
    OpenThree();
    m_rows.MoveTo(1);
    EXPECT_EQ(Symbol(), "BOLT");
    m_rows.MoveLast();
    EXPECT_EQ(Symbol(), "CORE");
    m_rows.MoveTo(-5);
    EXPECT_TRUE(m_rows.AtBegin());
    EXPECT_EQ(ErrorOf([this] { Symbol(); }), 3021);
    m_rows.MoveNext();
    EXPECT_EQ(Symbol(), "ACME");
    m_rows.MoveTo(99);
    EXPECT_TRUE(m_rows.AtEnd());
}

TEST_F(Cursor, TakesTheValuesOfTheQuerysQuestionMarks)
{
    Insert("O'NEIL", "5");
    Insert("O'NEIL", "7");
    Insert("ACME", "5");
    m_rows.Open(m_account, {"Symbol, Shares",
                            "PriceHistory",
                            "WHERE Symbol = ? AND Shares > ?",
                            {QString("O'NEIL"), Five}});
    ASSERT_EQ(m_rows.RecordCount(), 1);
    EXPECT_EQ(m_rows.ShareCount(m_rows.Column("Shares")), Single::FromFloat(7));
}

TEST_F(Cursor, OnAClosedRecordsetIsError3704)
{
    EXPECT_FALSE(m_rows.IsOpen());
    for (const auto &use : std::initializer_list<std::function<void()>>{
             [this] { m_rows.MoveFirst(); }, [this] { m_rows.Value(0); },
             [this] { m_rows.AddNew(); }, [this] { m_rows.Delete(); }, [this] { m_rows.Requery(); },
             [this] { m_rows.Set(0, Five); }})
        EXPECT_EQ(ErrorOf(use), 3704);
    OpenThree();
    m_rows.Close();
    EXPECT_EQ(ErrorOf([this] { m_rows.MoveNext(); }), 3704);
    EXPECT_EQ(m_rows.RecordCount(), 0);
}

TEST_F(Cursor, StaysClosedWhenTheQueryFails)
{
    EXPECT_THROW(m_rows.Open(m_account, {"*", "NoSuchTable", ""}), RuntimeError);
    EXPECT_FALSE(m_rows.IsOpen());
}

TEST_F(Columns, AreFoundByNameWhateverTheCase)
{
    OpenThree();
    EXPECT_EQ(m_rows.Column("id"), 0);
    EXPECT_EQ(m_rows.Column("PURCHASEPRICE"), m_rows.Column("PurchasePrice"));
    EXPECT_EQ(ErrorOf([this] { m_rows.Column("Price"); }), 3265);
}

TEST_F(Columns, GoByTheNameThatTheQueryGivesThemAndAreWrittenToTheirField)
{
    OpenThree();
    m_rows.Open(m_account, {"ID, Symbol AS [The Symbol], Shares AS Count", "PriceHistory", ""});
    EXPECT_EQ(m_rows.ColumnNames(), QStringList({"ID", "The Symbol", "Count"}));
    EXPECT_EQ(m_rows.Type(m_rows.Column("Count")), FieldType::Single);
    m_rows.Set("The Symbol", QString("ZETA"));
    m_rows.Update();
    m_rows.AddNew();
    m_rows.Set("The Symbol", QString("DELL"));
    m_rows.Set("Count", Five);
    m_rows.Update();
    EXPECT_EQ(m_rows.Number(m_rows.Column("ID")), 4); // taken over from the store
    EXPECT_EQ(Stored(), "ZETA 0, BOLT 0, CORE 0, DELL 5");
}

TEST_F(Columns, HaveTheTypeOfTheirDeclaration)
{
    const auto typesOf = [this](const QString &table) {
        m_rows.Open(m_account, {"*", table, ""});
        QHash<QString, FieldType> types;
        for (const QString &name : m_rows.ColumnNames())
            types.insert(name, m_rows.Type(m_rows.Column(name)));
        return types;
    };
    const QHash<QString, FieldType> lots = typesOf("PriceHistory");
    EXPECT_EQ(lots["ID"], FieldType::Long);
    EXPECT_EQ(lots["Symbol"], FieldType::Text);
    EXPECT_EQ(lots["Shares"], FieldType::Single);
    EXPECT_EQ(lots["PurchasePrice"], FieldType::Currency);
    EXPECT_EQ(lots["TransDate"], FieldType::Date);
    EXPECT_EQ(lots["Time"], FieldType::Time);
    const QHash<QString, FieldType> control = typesOf("DescriptiveTable");
    EXPECT_EQ(control["Field01"], FieldType::Currency);
    EXPECT_EQ(control["Field03"], FieldType::Long);
    EXPECT_EQ(control["Field04"], FieldType::Date);
    EXPECT_EQ(control["Field06"], FieldType::Text);
    EXPECT_EQ(control["Field07"], FieldType::Single);
    EXPECT_EQ(control["Field10"], FieldType::YesNo);
    EXPECT_EQ(control["Field12"], FieldType::Text);
    EXPECT_EQ(typesOf("DailyTracker")["NumberTransToday"], FieldType::Counter);
}

TEST_F(Columns, ReadNullAsZeroFalseOrNothing)
{
    m_account.Execute("INSERT INTO DescriptiveTable (TableName) VALUES ('Balance')");
    m_rows.Open(m_account, {"*", "DescriptiveTable", ""});
    const auto at = [this](const char *name) { return m_rows.Column(name); };
    EXPECT_TRUE(m_rows.IsFieldNull(at("Field01")));
    EXPECT_FALSE(m_rows.IsFieldNull(at("TableName")));
    EXPECT_EQ(m_rows.Money(at("Field01")), Currency());
    EXPECT_EQ(m_rows.Number(at("Field03")), 0);
    EXPECT_FALSE(m_rows.Date(at("Field04")).isValid());
    EXPECT_EQ(m_rows.Text(at("Field06")), "");
    EXPECT_TRUE(m_rows.ShareCount(at("Field07")).IsZero());
    EXPECT_FALSE(m_rows.Flag(at("Field10")));
}

TEST_F(Columns, OfAnotherTypeAreATypeMismatch)
{
    OpenThree();
    EXPECT_EQ(ErrorOf([this] { m_rows.Money(m_rows.Column("Symbol")); }), 13);
    EXPECT_EQ(ErrorOf([this] { m_rows.Text(m_rows.Column("Shares")); }), 13);
}

TEST_F(Edit, IsWrittenWhenTheCursorLeavesTheRow)
{
    OpenThree();
    m_rows.Set("Shares", Five);
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0");
    m_rows.MoveNext();
    EXPECT_EQ(Stored(), "ACME 5, BOLT 0, CORE 0");
}

TEST_F(Edit, IsWrittenByUpdateAndTheRowStaysCurrent)
{
    OpenThree();
    m_rows.MoveTo(1);
    m_rows.Set("Shares", Five);
    m_rows.Update();
    EXPECT_EQ(Stored(), "ACME 0, BOLT 5, CORE 0");
    EXPECT_EQ(Symbol(), "BOLT");
}

TEST_F(Edit, MovesNoRowUntilRequery)
{
    OpenThree();
    m_rows.Set("Symbol", QString("ZETA"));
    m_rows.Update();
    m_rows.MoveFirst();
    EXPECT_EQ(Symbol(), "ZETA");
    m_rows.Requery();
    EXPECT_EQ(Symbol(), "BOLT");
    m_rows.MoveLast();
    EXPECT_EQ(Symbol(), "ZETA");
}

TEST_F(Edit, WritesOnlyTheFieldsThatDiffer)
{
    OpenThree();
    m_account.Execute("UPDATE PriceHistory SET Shares = 9"); // another writer
    m_rows.Set("Symbol", QString("ACNE"));
    m_rows.Update();
    EXPECT_EQ(Stored(), "ACNE 9, BOLT 9, CORE 9");
}

TEST_F(Edit, OfTheSameValueWritesNothing)
{
    OpenThree();
    m_account.ExecuteScript("CREATE TRIGGER Refuse BEFORE UPDATE ON PriceHistory "
                            "BEGIN SELECT RAISE(ABORT, 'written'); END");
    m_rows.Set("Symbol", QString("ACME"));
    EXPECT_NO_THROW(m_rows.Update());
}

TEST_F(Edit, IsDroppedByCancelUpdateAndByClose)
{
    OpenThree();
    m_rows.Set("Shares", Five);
    m_rows.CancelUpdate();
    EXPECT_TRUE(m_rows.ShareCount(m_rows.Column("Shares")).IsZero());
    m_rows.Set("Shares", Five);
    m_rows.Close();
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0");
}

TEST_F(Edit, IsWrittenBeforeRequery)
{
    OpenThree();
    m_rows.MoveLast();
    m_rows.Set("Shares", Five);
    m_rows.Requery();
    EXPECT_EQ(m_rows.Position(), 0);
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 5");
}

TEST_F(Edit, StaysInTheRowWhenTheStoreRefusesIt)
{
    OpenThree();
    m_rows.Set("Symbol", FieldValue()); // the column takes no null
    EXPECT_THROW(m_rows.MoveNext(), RuntimeError);
    EXPECT_EQ(m_rows.Position(), 0);
    m_rows.Set("Symbol", QString("ACNE"));
    m_rows.MoveNext();
    EXPECT_EQ(Stored(), "ACNE 0, BOLT 0, CORE 0");
}

TEST_F(Edit, KeepsNullApartFromTheEmptyText)
{
    m_account.Execute("INSERT INTO DescriptiveTable (TableName, Field08) VALUES ('Balance', 'x')");
    m_rows.Open(m_account, {"*", "DescriptiveTable", ""});
    const int name = m_rows.Column("Field08");
    m_rows.Set(name, QString());
    m_rows.Requery();
    EXPECT_FALSE(m_rows.IsFieldNull(name));
    m_rows.Set(name, FieldValue());
    m_rows.Requery();
    EXPECT_TRUE(m_rows.IsFieldNull(name));
}

TEST_F(Edit, OfANumberOutsideTheRowIsRefused)
{
    OpenThree();
    EXPECT_ANY_THROW(m_rows.Set(99, Five));
}

TEST_F(NewRow, IsTheLastOneAndIsWrittenByUpdate)
{
    OpenThree();
    m_rows.AddNew();
    EXPECT_EQ(m_rows.Position(), 3);
    EXPECT_TRUE(m_rows.IsFieldNull(m_rows.Column("Symbol")));
    m_rows.Set("Symbol", QString("AAA"));
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0");
    m_rows.Update();
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0, AAA 0");
    EXPECT_EQ(m_rows.Position(), 3);
}

TEST_F(NewRow, TakesOverItsNumberAndTheDefaultsOfTheTable)
{
    OpenThree();
    m_rows.AddNew();
    m_rows.Set("Symbol", QString("DELL"));
    m_rows.Update();
    EXPECT_EQ(m_rows.Number(m_rows.Column("ID")), 4);
    EXPECT_FALSE(m_rows.IsFieldNull(m_rows.Column("Shares")));
    EXPECT_TRUE(m_rows.IsFieldNull(m_rows.Column("TransDate")));
}

TEST_F(NewRow, CanBeEditedOnceItIsWritten)
{
    OpenThree();
    m_rows.AddNew();
    m_rows.Set("Symbol", QString("DELL"));
    m_rows.Update();
    m_rows.Set("Shares", Five);
    m_rows.MoveFirst();
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0, DELL 5");
}

TEST_F(NewRow, IsWrittenWhenTheCursorLeavesIt)
{
    OpenThree();
    m_rows.AddNew();
    m_rows.Set("Symbol", QString("DELL"));
    m_rows.AddNew();
    m_rows.Set("Symbol", QString("EDGE"));
    m_rows.MoveFirst();
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0, DELL 0, EDGE 0");
}

TEST_F(NewRow, IsDroppedByCancelUpdate)
{
    OpenThree();
    m_rows.AddNew();
    m_rows.Set("Symbol", QString("DELL"));
    m_rows.CancelUpdate();
    EXPECT_EQ(m_rows.RecordCount(), 3);
    m_rows.MoveFirst();
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0");
}

TEST_F(NewRow, IsDroppedByDeleteBeforeItWasWritten)
{
    OpenThree();
    m_rows.AddNew();
    m_rows.Delete();
    EXPECT_EQ(m_rows.RecordCount(), 3);
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0");
}

TEST_F(NewRow, StaysToBeCorrectedWhenTheStoreRefusesIt)
{
    OpenThree();
    m_rows.AddNew();
    EXPECT_THROW(m_rows.Update(), RuntimeError); // no symbol
    EXPECT_EQ(m_rows.Position(), 3);
    m_rows.Set("Symbol", QString("DELL"));
    m_rows.Update();
    EXPECT_EQ(Stored(), "ACME 0, BOLT 0, CORE 0, DELL 0");
}

TEST_F(NewRow, IsTheOnlyOneOfAnEmptyTable)
{
    m_rows.Open(m_account, AllLots);
    m_rows.AddNew();
    m_rows.CancelUpdate();
    EXPECT_TRUE(m_rows.AtBegin() && m_rows.AtEnd());
    m_rows.AddNew();
    m_rows.Set("Symbol", QString("O'NEIL"));
    m_rows.Update();
    EXPECT_EQ(Stored(), "O'NEIL 0");
}

TEST_F(DeletedRow, LeavesTheCursorOnTheRowBehindIt)
{
    OpenThree();
    m_rows.MoveTo(1);
    m_rows.Delete();
    EXPECT_EQ(Symbol(), "CORE");
    EXPECT_EQ(Stored(), "ACME 0, CORE 0");
    m_rows.Delete();
    EXPECT_TRUE(m_rows.AtEnd());
    EXPECT_EQ(ErrorOf([this] { m_rows.Delete(); }), 3021);
    m_rows.MoveFirst();
    m_rows.Delete();
    EXPECT_TRUE(m_rows.AtBegin() && m_rows.AtEnd());
    EXPECT_EQ(Stored(), "");
}

TEST_F(DeletedRow, TakesItsEditWithIt)
{
    OpenThree();
    m_rows.Set("Shares", Five);
    m_rows.Delete();
    m_rows.MoveNext();
    EXPECT_EQ(Stored(), "BOLT 0, CORE 0");
}

TEST_F(DeletedRow, StaysWhenTheStoreRefuses)
{
    OpenThree();
    m_account.ExecuteScript("CREATE TRIGGER Refuse BEFORE DELETE ON PriceHistory "
                            "BEGIN SELECT RAISE(ABORT, 'kept'); END");
    EXPECT_THROW(m_rows.Delete(), RuntimeError);
    EXPECT_EQ(m_rows.RecordCount(), 3);
    EXPECT_EQ(Symbol(), "ACME");
}
