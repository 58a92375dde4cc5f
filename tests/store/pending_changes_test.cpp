/// What a run leaves to be written: kept in tables of its own, and taken up once.

#include "store/pending_changes.h"

#include "account_file.h"
#include "test_services.h"

#include "store/control_rows.h"
#include "store/databases.h"
#include "store/failed_write.h"

#include <gtest/gtest.h>

namespace
{

class PendingChanges : public testing::Test
{
protected:
    PendingChanges()
    {
        m_account.Open(m_file.Path());
        m_account.ExecuteScript(
            "INSERT INTO DescriptiveTable (TableName, Field01) VALUES ('Balance', 10000);"
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) VALUES "
            "('ACME', 60, 80000, '2026-01-05', '10:00:00.000'), "
            "('ACME', 40, 130000, '2026-02-02', '10:00:00.000')");
    }
    std::string Value(const QString &sql)
    {
        Statement row = m_account.Prepare(sql);
        return row.Step() ? row.Text(0).toStdString() : "(no row)";
    }
    std::string Lots()
    {
        return Value("SELECT group_concat(ID || ':' || CAST(Shares AS INTEGER) || '@' || "
                     "PurchasePrice || ' ' || TransDate, ', ') FROM PriceHistory");
    }
    std::string Tables()
    {
        return Value("SELECT group_concat(name) FROM sqlite_schema WHERE name LIKE 'Pending%'");
    }
    /// The first lot goes, the second is halved, a third comes.
    void SaveLots()
    {
        SavePendingLots(m_account, {{1, "ACME", {}, {}, {}, {}},
                                    {2, "ACME", Single::FromFloat(20), Currency("26"), {}, {}},
                                    {0, "ACME", Single::FromFloat(5), Currency("12"),
                                     QDate(2026, 3, 2), QTime(10, 15)}});
    }

    AccountFile m_file;
    Connection m_account;
};

} // namespace

TEST_F(PendingChanges, AreNothingInAFileThatNeverHadAny)
{
    TakeUpPendingChanges(m_account);
    ClearPendingLots(m_account);
    ClearPendingBalance(m_account);
    EXPECT_FALSE(HasPendingBalance(m_account));
    EXPECT_EQ(Tables(), ""); // looking for them makes none
}

TEST_F(PendingChanges, LeaveLotsAndBalanceAloneUntilTheyAreTakenUp)
{
    SaveLots();
    SavePendingBalance(m_account, Currency("7.5"));
    EXPECT_EQ(Lots(), "1:60@80000 2026-01-05, 2:40@130000 2026-02-02");
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "10000");
    for (int time = 0; time < 2; ++time) { // the second has nothing to do
        TakeUpPendingChanges(m_account);
        EXPECT_EQ(Lots(), "2:20@260000 2026-02-02, 3:5@120000 2026-03-02");
        EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "75000");
        EXPECT_FALSE(HasPendingBalance(m_account));
    }
}

TEST_F(PendingChanges, AreThoseOfTheLastPostingAlone)
{
    SaveLots();
    SavePendingLots(m_account, {{2, "ACME", Single::FromFloat(1), Currency("13"), {}, {}}});
    SavePendingBalance(m_account, Currency("1"));
    SavePendingBalance(m_account, Currency("2"));
    TakeUpPendingChanges(m_account);
    EXPECT_EQ(Lots(), "1:60@80000 2026-01-05, 2:1@130000 2026-02-02");
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "20000");
}

TEST_F(PendingChanges, OfLotsThatAUserDeletedMeanwhileBringNoneBack)
{
    SaveLots();
    m_account.Execute("DELETE FROM PriceHistory");
    TakeUpPendingLots(m_account);
    EXPECT_EQ(Lots(), "3:5@120000 2026-03-02");
}

TEST_F(PendingChanges, GoWithTheTransactionThatTheyBelongTo)
{
    {
        WriteGuard guard(m_account);
        SaveLots();
        SavePendingBalance(m_account, Currency("7.5"));
    }
    TakeUpPendingChanges(m_account);
    EXPECT_EQ(Lots(), "1:60@80000 2026-01-05, 2:40@130000 2026-02-02");
    EXPECT_EQ(Tables(), "");
}

TEST_F(PendingChanges, EndForTheBalanceWhenItIsSetAnew)
{
    TestServices machine;
    SavePendingBalance(m_account, Currency("7.5"));
    InsertBalanceRow(m_account, Currency("3"), machine.services);
    EXPECT_FALSE(HasPendingBalance(m_account));
    EXPECT_EQ(Value("SELECT Field01 FROM DescriptiveTable"), "30000");
}

TEST_F(PendingChanges, ThatAreRefusedStayPending)
{
    SaveLots();
    m_account.ExecuteScript("CREATE TRIGGER Refuse BEFORE INSERT ON PriceHistory "
                            "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    EXPECT_THROW(TakeUpPendingChanges(m_account), RuntimeError);
    EXPECT_EQ(Lots(), "1:60@80000 2026-01-05, 2:40@130000 2026-02-02");
    m_account.ExecuteScript("DROP TRIGGER Refuse");
    TakeUpPendingChanges(m_account);
    EXPECT_EQ(Lots(), "2:20@260000 2026-02-02, 3:5@120000 2026-03-02");
}

TEST(FailedWrite, SaysWhatWasTriedAndWhy)
{
    const FailedWrite full("The undo", RuntimeError::Store("database or disk is full"));
    EXPECT_EQ(full.Text().toStdString(),
              "The undo could not be saved: the disk is full. Nothing was changed.");
    EXPECT_EQ(full.Description().toStdString(), "database or disk is full");
    EXPECT_EQ(ReasonOf(RuntimeError(RuntimeError::PermissionDeniedNumber, "Permission denied.")),
              QString("Permission denied"));
}
