/// The control rows of an account: what is read of each kind, what reading changes, and how a row
/// is written the first time and again.

#include "account_file.h"
#include "test_services.h"

#include "base/character_shift.h"
#include "store/control_rows.h"
#include "store/settings.h"

#include <gtest/gtest.h>

namespace
{

const QDate Today(2026, 3, 2);
const QDate Yesterday(2026, 3, 1);

class ControlRows : public testing::Test
{
protected:
    ControlRows() { m_account.Open(m_file.Path()); }

    void InsertBalance(QDate trackerDay, const QString &version = "6018", double daysOfUse = 4,
                       const QString &style = "n/a")
    {
        m_account.Execute("INSERT INTO DescriptiveTable VALUES ('Balance', 123456789, 0, 0, ?, ?, "
                          "?, ?, ?, 'n/a', 0, 0, '0')",
                          trackerDay, QDate(2026, 2, 27), version, daysOfUse, style);
    }
    void InsertStyle(const QString &style, const QString &shares = "100")
    {
        m_account.Execute("INSERT INTO DescriptiveTable VALUES (?, 79500, 125, 0, ?, ?, ?, 1000, "
                          "'n/a', 'n/a', 0, 0, '0')",
                          style, Today, Today, shares);
    }
    AccountState &Load(QDate today = Today)
    {
        LoadDescriptiveTable(m_account, m_state, today);
        return m_state;
    }
    std::string Field(const QString &row, const QString &field)
    {
        Statement statement = m_account.Prepare(
            "SELECT " + field + " FROM DescriptiveTable WHERE TableName = '" + row + "'");
        if (!statement.Step())
            return "(no row)";
        return statement.IsNull(0) ? "(null)" : statement.Text(0).toStdString();
    }
    /// All fields of a row: "Balance|1000000|0|0|2026-03-02|...".
    std::string Row(const QString &row)
    {
        Statement statement =
            m_account.Prepare("SELECT * FROM DescriptiveTable WHERE TableName = '" + row + "'");
        if (!statement.Step())
            return "(no row)";
        QStringList fields;
        for (int i = 0; i < statement.ColumnCount(); ++i)
            fields << statement.Text(i);
        return fields.join("|").toStdString();
    }
    /// From now on the file refuses every write of a control row.
    void RefuseWrites()
    {
        for (const char *when : {"INSERT", "UPDATE"})
            m_account.ExecuteScript(QString("CREATE TRIGGER Refuse%1 BEFORE %1 ON DescriptiveTable "
                                            "BEGIN SELECT RAISE(ABORT, 'no room'); END")
                                        .arg(when));
    }
    Services &Machine() { return m_machine.services; }

    AccountFile m_file;
    Connection m_account;
    AccountState m_state;
    TestServices m_machine;
};

using LoadControlRows = ControlRows;
using WriteControlRows = ControlRows;

} // namespace

TEST_F(LoadControlRows, OfAnAccountWithoutAnyLeavesTheStateAsTheCallerSetIt)
{
    m_state.AccountBalance = Currency("5");
    m_state.CommissionStyle = "Style3";
    m_state.LogoffMinutes = 15;
    Load();
    EXPECT_EQ(m_state.AccountBalance, Currency("5"));
    EXPECT_EQ(m_state.CommissionStyle, "Style3");
    EXPECT_EQ(m_state.LogoffMinutes, 15);
}

TEST_F(LoadControlRows, TakesBalanceAndDaysFromTheBalanceRow)
{
    InsertBalance(Yesterday);
    Load();
    EXPECT_EQ(m_state.AccountBalance, Currency("12345.6789"));
    EXPECT_EQ(m_state.DayBalance, Currency("12345.6789"));
    EXPECT_EQ(m_state.TrackerDay, Yesterday);
    EXPECT_EQ(m_state.LastPriceUpdate, QDate(2026, 2, 27));
    EXPECT_EQ(m_state.CommissionStyle, "n/a");
}

TEST_F(LoadControlRows, CountsADayOfUseOnceHoweverManyDaysPassed)
{
    InsertBalance(QDate(2025, 12, 24));
    Load();
    EXPECT_EQ(m_state.ElapsedDays, Integer::FromWide(5));
    EXPECT_EQ(Field("Balance", "CAST(Field07 AS INTEGER)"), "5");
}

TEST_F(LoadControlRows, CountsADayOfUseWhenTheClockWasSetBack)
{
    InsertBalance(QDate(2026, 3, 9));
    Load();
    EXPECT_EQ(m_state.ElapsedDays, Integer::FromWide(5));
}

TEST_F(LoadControlRows, OfTheTrackerDayCountNoFurtherDay)
{
    InsertBalance(Today);
    Load();
    Load();
    EXPECT_EQ(m_state.ElapsedDays, Integer::FromWide(4));
    EXPECT_EQ(Field("Balance", "CAST(Field07 AS INTEGER)"), "4");
}

TEST_F(LoadControlRows, StampTheVersionOfThisProgram)
{
    struct
    {
        const char *stored;
        const char *why;
    } const versions[] = {
        {"0", "a new row"},
        {"5", "one digit, read as 50000"},
        {"50000", "a later version 5"},
        {"5117", "version 5.1 revision 17"},
        {"6018", "this version"},
        {"7000", "a version after this one"},
        {"9", "one digit"},
    };
    for (const auto &version : versions) {
        m_account.Execute("DELETE FROM DescriptiveTable");
        InsertBalance(Today, version.stored);
        Load();
        EXPECT_EQ(Field("Balance", "Field06"), ProgramVersion().Text().toStdString())
            << version.why;
    }
}

TEST_F(LoadControlRows, StampARowWithoutAVersion)
{
    InsertBalance(Today);
    m_account.Execute("UPDATE DescriptiveTable SET Field06 = NULL");
    Load();
    EXPECT_EQ(Field("Balance", "Field06"), ProgramVersion().Text().toStdString());
}

TEST_F(LoadControlRows, WriteNothingWhenNothingChanged)
{
    InsertBalance(Today, ProgramVersion().Text());
    RefuseWrites();
    EXPECT_NO_THROW(Load());
}

TEST_F(LoadControlRows, ReadOnlyTheCommissionStyleInForce)
{
    InsertBalance(Today, "6018", 4, "Style2");
    InsertStyle("Style1", "50");
    InsertStyle("Style2", "250.5");
    InsertStyle("Style3", "75");
    Load();
    EXPECT_EQ(m_state.CommissionStyle, "Style2");
    EXPECT_EQ(m_state.CommissionCost, Currency("7.95"));
    EXPECT_EQ(m_state.CommissionPerShare, Currency("0.0125"));
    EXPECT_EQ(m_state.CommissionShares, Single::FromDouble(250.5));
    EXPECT_EQ(m_state.CommissionShares2, Single::FromDouble(1000));
}

TEST_F(LoadControlRows, LoseAStyleThatStandsBeforeTheBalanceRow)
{
    InsertStyle("Style2");
    InsertBalance(Today, "6018", 4, "Style2");
    Load();
    EXPECT_EQ(m_state.CommissionStyle, "Style2");
    EXPECT_TRUE(m_state.CommissionCost.IsZero());
}

TEST_F(LoadControlRows, TakeTheQuoteSiteOfTheAccount)
{
    m_account.Execute("INSERT INTO DescriptiveTable (TableName, Field06, Field08) "
                      "VALUES ('WebSite', '20', 'Börse (delayed)')");
    Load();
    EXPECT_EQ(m_state.WebUpdateMinutes, Integer::FromWide(20));
    EXPECT_EQ(m_state.CurrentWebSiteName, QString::fromUtf8("Börse (delayed)"));
}

TEST_F(LoadControlRows, ThatNameNoQuoteSiteLeaveTheDefaultOne)
{
    m_account.Execute("INSERT INTO DescriptiveTable (TableName, Field06, Field08) "
                      "VALUES ('WebSite', '20', ' ')");
    m_state.CurrentWebSiteName = "Yahoo Finance UK";
    Load();
    EXPECT_EQ(m_state.CurrentWebSiteName, "Yahoo Finance UK");
    EXPECT_EQ(m_state.WebUpdateMinutes, Integer::FromWide(20));
}

TEST_F(LoadControlRows, TakeSignOnAndLogoff)
{
    m_account.Execute(
        "INSERT INTO DescriptiveTable (TableName, Field06, Field08, Field09, Field10, "
        "Field11) VALUES ('Security', '30', 'ann', 'def', 1, 1)");
    Load();
    EXPECT_EQ(m_state.LogoffMinutes, 30);
    EXPECT_EQ(m_state.LoginID, "ann");
    EXPECT_EQ(m_state.LoginPassword, "abc");
    EXPECT_EQ(m_state.PasswordProtected, 1);
    EXPECT_EQ(m_state.LogoffEnabled, 1);
}

TEST_F(LoadControlRows, TakeLoginAndPasswordOnlyWhenBothAreThere)
{
    m_state.LoginID = "before";
    m_account.Execute(
        "INSERT INTO DescriptiveTable (TableName, Field06, Field08, Field10, Field11) "
        "VALUES ('Security', '30', 'ann', 0, 0)");
    Load();
    EXPECT_EQ(m_state.LoginID, "before");
    EXPECT_EQ(m_state.PasswordProtected, 0);
    EXPECT_EQ(m_state.LogoffEnabled, 0);
}

TEST_F(LoadControlRows, CannotBeReadFromAFileWithoutTheTable)
{
    m_account.ExecuteScript("DROP TABLE DescriptiveTable");
    EXPECT_THROW(Load(), RuntimeError);
}

TEST_F(WriteControlRows, BalanceIsInsertedWithItsInitialValues)
{
    InsertBalanceRow(m_account, Currency("1234.5"), Machine());
    EXPECT_EQ(Row("Balance"), "Balance|12345000|0|0|2026-03-02|2026-03-02|0|0.0|n/a|n/a|0|0|0");
}

TEST_F(WriteControlRows, BalanceThatIsThereGetsANewAmountAlone)
{
    InsertBalance(Yesterday, "5117", 4, "Style2");
    const std::string before = Row("Balance");
    InsertBalanceRow(m_account, Currency("-0.0001"), Machine());
    EXPECT_EQ(Field("Balance", "Field01"), "-1");
    EXPECT_EQ(Row("Balance").substr(strlen("Balance|-1")),
              before.substr(strlen("Balance|123456789")));
}

TEST_F(WriteControlRows, CommissionStyleGoesIntoTheBalanceRow)
{
    InsertBalance(Today);
    UpdateCommissionStyle(m_account, "Style4", Machine());
    EXPECT_EQ(Field("Balance", "Field08"), "Style4");
}

TEST_F(WriteControlRows, StyleIsInsertedAndThenUpdated)
{
    m_state.CommissionStyle = "Style5";
    m_state.CommissionCost = Currency("0.375"); // percent
    m_state.CommissionPerShare = Currency("9.95");
    InsertStyleRow(m_account, m_state, Machine());
    EXPECT_EQ(Row("Style5"), "Style5|3750|99500|0|2026-03-02|2026-03-02|0|0.0|n/a|n/a|0|0|0");

    m_machine.clock.Set(QDateTime(QDate(2026, 4, 1), QTime(9, 0)));
    m_state.CommissionCost = Currency("0.5");
    m_state.CommissionShares = Single::FromDouble(1234567);
    m_state.CommissionShares2 = Single::FromDouble(0.5);
    InsertStyleRow(m_account, m_state, Machine());
    EXPECT_EQ(Row("Style5"), "Style5|5000|99500|0|2026-03-02|2026-03-02|1234567|0.5|n/a|n/a|0|0|0");
}

TEST_F(WriteControlRows, StylesOfEarlierDaysStay)
{
    for (const char *style : {"Style1", "Style2"}) {
        m_state.CommissionStyle = style;
        InsertStyleRow(m_account, m_state, Machine());
    }
    EXPECT_NE(Row("Style1"), "(no row)");
    EXPECT_NE(Row("Style2"), "(no row)");
}

TEST_F(WriteControlRows, WebSiteIsInsertedAndThenUpdated)
{
    m_state.WebUpdateMinutes = Integer::FromWide(20);
    m_state.CurrentWebSiteName = "Ann's quotes (free)";
    InsertWebSiteRow(m_account, m_state, Machine());
    EXPECT_EQ(Row("WebSite"),
              "WebSite|0|0|0|2026-03-02|2026-03-02|20|0.0|Ann's quotes (free)|n/a|0|0|0");

    m_machine.clock.Set(QDateTime(QDate(2026, 4, 1), QTime(9, 0)));
    m_state.WebUpdateMinutes = Integer::FromWide(5);
    m_state.CurrentWebSiteName = "Other";
    InsertWebSiteRow(m_account, m_state, Machine());
    EXPECT_EQ(Row("WebSite"), "WebSite|0|0|0|2026-03-02|2026-03-02|5|0.0|Other|n/a|0|0|0");
}

TEST_F(WriteControlRows, SecurityIsInsertedAndThenUpdatedWithItsDates)
{
    m_state.LoginID = "ann";
    m_state.LoginPassword = "abc";
    m_state.PasswordProtected = 1;
    InsertSecurityRow(m_account, m_state, Machine());
    EXPECT_EQ(Row("Security"), "Security|0|0|0|2026-03-02|2026-03-02|15|0.0|ann|def|1|0|0");

    m_machine.clock.Set(QDateTime(QDate(2026, 4, 1), QTime(9, 0)));
    m_state.LoginPassword = QString::fromUtf8("Zürich 8");
    m_state.PasswordProtected = 0;
    m_state.LogoffEnabled = 1;
    m_state.LogoffMinutes = 60;
    InsertSecurityRow(m_account, m_state, Machine());
    EXPECT_EQ(Row("Security"), "Security|0|0|0|2026-04-01|2026-04-01|60|0.0|ann|" +
                                   ShiftUp(QString::fromUtf8("Zürich 8")).toStdString() + "|0|1|0");
    EXPECT_EQ(Load().LoginPassword, QString::fromUtf8("Zürich 8"));
}

TEST_F(WriteControlRows, APasswordThatCannotBeShiftedIsError5AndWritesNothing)
{
    m_state.LoginPassword = QString::fromUtf8("ý"); // code 253
    try {
        InsertSecurityRow(m_account, m_state, Machine());
        FAIL() << "written";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), 5);
    }
    EXPECT_EQ(Row("Security"), "(no row)");
}

TEST_F(WriteControlRows, EveryRefusedWriteIsShownAndLeavesTheRowAsItWas)
{
    InsertBalance(Today);
    const std::string before = Row("Balance");
    RefuseWrites();
    m_state.CommissionStyle = "Style1";
    InsertBalanceRow(m_account, Currency("1"), Machine());
    UpdateCommissionStyle(m_account, "Style4", Machine());
    InsertStyleRow(m_account, m_state, Machine());
    InsertSecurityRow(m_account, m_state, Machine());
    const std::vector<std::string> boxes = m_machine.dialogs.TakeBoxes();
    ASSERT_EQ(boxes.size(), 4u);
    const char *const tried[] = {"The balance of the account", "The commission style",
                                 "The commission style", "The sign-on of the account"};
    for (size_t i = 0; i < boxes.size(); ++i)
        EXPECT_EQ(boxes[i], std::string("Quillon Editor|48|") + tried[i] +
                                " could not be saved: no room. Nothing was changed.");
    EXPECT_EQ(Row("Balance"), before);
    EXPECT_EQ(Row("Style1"), "(no row)");
}

TEST_F(WriteControlRows, ARefusedWebSiteNamesTheWebSiteDatabase)
{
    RefuseWrites();
    InsertWebSiteRow(m_account, m_state, Machine());
    const std::vector<std::string> boxes = m_machine.dialogs.TakeBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0], "Quillon Editor|48|An error has been encountered while updating the "
                        "WebSite.mdb \ndatabase. Please take note of this message and contact "
                        "TechSupport.\nError number -2147467259\nDescription: no room");
}
