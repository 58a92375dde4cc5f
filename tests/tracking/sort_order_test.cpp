/// The ORDER BY clauses of the Daily Tracker's grid.

#include "tracking/sort_order.h"

#include "account_file.h"
#include "tracking/tracker_rows.h"

#include <gtest/gtest.h>

namespace
{

const char *PlainFields[] = {"Symbol",
                             "Shares",
                             "AvrgPrice",
                             "CurrPrice",
                             "Basis",
                             "PerCentGainToday",
                             "ProfitLossToday",
                             "ProfitLossToDate",
                             "ActualProfitLoss",
                             "InvestedValue",
                             "InvestedToDate",
                             "TransCostToday",
                             "TransCostToDate",
                             "NumberTransToday",
                             "NumberTransToDate",
                             "Name"};

} // namespace

TEST(GridOrder, BeginsWithTheLargestPositions)
{
    EXPECT_EQ(InitialGridOrder(), "ORDER BY Shares DESC, Symbol, TransDate DESC, Time DESC");
}

TEST(GridOrder, OfAPlainColumnHasTheLatestTransactionBehindIt)
{
    for (const char *field : PlainFields) {
        EXPECT_EQ(GridOrderFor(field, false),
                  QString("ORDER BY %1, TransDate DESC, Time DESC").arg(field));
        EXPECT_EQ(GridOrderFor(field, true),
                  QString("ORDER BY %1 DESC, TransDate DESC, Time DESC").arg(field));
    }
}

TEST(GridOrder, OfTheDateHasTheTimeBehindItAndTheTimeNothing)
{
    EXPECT_EQ(GridOrderFor("TransDate", false), "ORDER BY TransDate, Time DESC");
    EXPECT_EQ(GridOrderFor("TransDate", true), "ORDER BY TransDate DESC, Time DESC");
    EXPECT_EQ(GridOrderFor("Time", false), "ORDER BY Time");
    EXPECT_EQ(GridOrderFor("Time", true), "ORDER BY Time DESC");
}

TEST(GridOrder, IsNotThereForAColumnThatIsNotStored)
{
    EXPECT_FALSE(GridOrderFor("SecurityType", false));
    EXPECT_FALSE(GridOrderFor("", true));
    EXPECT_FALSE(GridOrderFor("symbol; DROP TABLE History", true));
}

TEST(GridOrder, IsUnderstoodByTheStoreInEachDirection)
{
    AccountFile file;
    Connection account;
    account.Open(file.Path());
    account.Execute("INSERT INTO DailyTracker (Symbol, Name, Shares) "
                    "VALUES ('ACME', 'B', -5), ('BOLT', 'A', 7)");
    TrackerRecordset rows;
    for (const bool descending : {false, true}) {
        for (const char *field : PlainFields)
            EXPECT_NO_THROW(rows.Open(account, *GridOrderFor(field, descending))) << field;
        for (const char *field : {"TransDate", "Time"})
            EXPECT_NO_THROW(rows.Open(account, *GridOrderFor(field, descending))) << field;
    }
    rows.Open(account, *GridOrderFor("Name", false));
    EXPECT_EQ(rows.Current().Symbol, "BOLT");
    rows.Open(account, *GridOrderFor("Name", true));
    EXPECT_EQ(rows.Current().Symbol, "ACME");
    rows.Open(account, InitialGridOrder());
    EXPECT_EQ(rows.Current().Symbol, "BOLT");
}
