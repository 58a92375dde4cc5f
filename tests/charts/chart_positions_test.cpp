/// The pies: their slices, the cash and the margin, and the classes of securities.

#include "chart_series_run.h"

namespace
{

using PositionsChart = ChartSeriesRun;
using AllocationChart = ChartSeriesRun;
using enum ChartKind;

} // namespace

// --- positions ----------------------------------------------------------------------------------

TEST_F(PositionsChart, ShowsEachPositionAsItsPartOfTheBalanceAndTheRestAsCash)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "700");
    Position("ZETA", "200");
    Position("NONE", "0");
    EXPECT_EQ(Slices(Positions), "ZETA 0.2, ACME 0.7, Cash 0.1"); // 1000 - 900
    EXPECT_EQ(grid->RowCount(), 1);
    EXPECT_EQ(grid->RowLabel(1), "Portfolio Positions");
    EXPECT_TRUE(grid->PercentLabels);
    EXPECT_EQ(grid->PercentLabelSize, 10);
    EXPECT_TRUE(grid->ShowLegend);
}

TEST_F(PositionsChart, WritesQuotientsInFifteenDigits)
{
    account.AccountBalance = Currency("3000");
    Position("ACME", "1000");
    Position("DUST", "0.0003");
    EXPECT_EQ(Slices(Positions), "DUST 1E-07, ACME 0.333333333333333, Cash 0.666666566666667");
}

TEST_F(PositionsChart, ShowsAShortPositionAsANegativeSlice)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "700");
    Position("SHORT", "-100");
    EXPECT_EQ(Slices(Positions), "SHORT -0.1, ACME 0.7, Cash 0.4"); // 1000 - 600
}

TEST_F(PositionsChart, ShowsANegativeMarginSliceWhenMoreIsInvestedThanTheBalance)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "1250");
    EXPECT_EQ(Slices(Positions), "ACME 1.25, Margin -0.25");
    EXPECT_EQ(Readout(Positions, 2, 1), "Symbol: Margin   Value: -250.00");
}

TEST_F(PositionsChart, CallsARestOfZeroMargin)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "1000");
    EXPECT_EQ(Slices(Positions), "ACME 1, Margin 0");
}

TEST_F(PositionsChart, ShowsOneSliceOfCashWithoutPositions)
{
    account.AccountBalance = Currency("1000");
    EXPECT_EQ(Slices(Positions), "Cash 1");
    EXPECT_EQ(Readout(Positions, 1, 1), "Symbol: Cash   Value: 1,000.00");
    account.AccountBalance = Currency("-5"); // all that there is, even a debt
    EXPECT_EQ(Slices(Positions), "Cash 1");
    account.AccountBalance = Currency();
    EXPECT_EQ(Slices(Positions), "Cash 0");
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
}

TEST_F(PositionsChart, ShowsZerosForABalanceOfZero)
{
    Position("ACME", "700");
    EXPECT_EQ(Slices(Positions), "ACME 0, Margin 0");
    EXPECT_EQ(Readout(Positions, 1, 1), "Symbol: ACME   Value: 700.00");
    EXPECT_EQ(Readout(Positions, 2, 1), "Symbol: Margin   Value: -700.00");
}

TEST_F(PositionsChart, ReadsOutTheAmountAndNotThePercentage)
{
    account.AccountBalance = Currency("10000000");
    Position("O'NEIL", "1234567.885");
    Slices(Positions);
    EXPECT_EQ(Readout(Positions, 1, 1), "Symbol: O'NEIL   Value: 1,234,567.89");
    EXPECT_EQ(Readout(Positions, 2, 1), "Symbol: Cash   Value: 8,765,432.12"); // ...432.115
}

TEST_F(PositionsChart, KeepsASecurityNamedCashApartFromTheCash)
{
    account.AccountBalance = Currency("1000");
    Position("Cash", "700");
    const qint64 before = ChangeCount();
    EXPECT_EQ(Slices(Positions), "Cash 0.7, Cash 0.3");
    EXPECT_EQ(Readout(Positions, 1, 1), "Symbol: Cash   Value: 700.00");
    EXPECT_EQ(Readout(Positions, 2, 1), "Symbol: Cash   Value: 300.00");
    EXPECT_EQ(ChangeCount(), before);
    EXPECT_EQ(folder.Value(folder.SampleAccount(), "SELECT group_concat(Symbol) FROM DailyTracker"),
              "Cash");
}

TEST_F(PositionsChart, NeverWritesToTheAccount)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "700");
    const qint64 before = ChangeCount();
    for (const ChartKind kind : {Positions, AssetAllocation})
        Slices(kind);
    EXPECT_EQ(ChangeCount(), before);
}

TEST_F(PositionsChart, StaysAsItIsWhenTheStoreFailsOrTheSumDoesNotFit)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "700");
    Slices(Positions);
    const ChartGrid shown = *grid;
    Position("HUGE", "922337203685477");
    EXPECT_EQ(Slices(Positions), "(stays)");
    EXPECT_EQ(series.Readout(Positions, shown, 1, 1), "Symbol: ACME   Value: 700.00");
    EXPECT_EQ(series.Readout(Positions, shown, 2, 1), "Symbol: Cash   Value: 300.00");
    gConnAccount.Execute("DROP TABLE DailyTracker");
    EXPECT_EQ(Slices(Positions), "(stays)");
    EXPECT_EQ(Slices(AssetAllocation), "(stays)");
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
}

// --- asset allocation ---------------------------------------------------------------------------

TEST_F(AllocationChart, AddsUpTheClassesThatSecuritiesHaveInCommon)
{
    account.AccountBalance = Currency("2000");
    Position("ACME", "1000");
    Position("BETA", "400");
    InClass("ACME", "Energy", 0.25);
    InClass("ACME", "Banks", 0.75);
    InClass("BETA", "Energy", 1);
    // BETA first, as the smaller one: Energy 400 + 250, Banks 750, the rest 600.
    EXPECT_EQ(Slices(AssetAllocation), "Energy 0.325, Banks 0.375, Cash & Money Markets 0.3");
    EXPECT_EQ(grid->RowLabel(1), "Portfolio Asset Allocation");
    EXPECT_TRUE(grid->PercentLabels);
    EXPECT_EQ(Readout(AssetAllocation, 1, 1), "Asset Class: Energy   Value: 650.00");
    EXPECT_EQ(Readout(AssetAllocation, 3, 1), "Asset Class: Cash & Money Markets   Value: 600.00");
}

TEST_F(AllocationChart, CountsASecurityWithoutClassesWhollyUnderNotAllocated)
{
    account.AccountBalance = Currency("2000");
    Position("ACME", "1000");
    Position("BETA", "500");
    EXPECT_EQ(Slices(AssetAllocation), "Not allocated 0.75, Cash & Money Markets 0.25");
}

TEST_F(AllocationChart, ShowsOneSliceOfZeroNotAllocatedWithoutPositions)
{
    account.AccountBalance = Currency("2000");
    EXPECT_EQ(Slices(AssetAllocation), "Not Allocated 0");
    EXPECT_EQ(Readout(AssetAllocation, 1, 1), "Asset Class: Not Allocated   Value: 1.00");
}

TEST_F(AllocationChart, AddsTheRestToTheClassOfCashWhereSecuritiesAreInItToo)
{
    account.AccountBalance = Currency("1000");
    Position("FUND", "500");
    Position("ZETA", "100");
    InClass("FUND", "Cash & Money Markets", 1);
    InClass("ZETA", "Banks", 1);
    EXPECT_EQ(Slices(AssetAllocation), "Banks 0.1, Cash & Money Markets 0.9"); // 500 + 400
}

TEST_F(AllocationChart, ShowsANegativeMarginWhenMoreIsInvestedThanTheBalance)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "1250");
    InClass("ACME", "Banks", 1);
    EXPECT_EQ(Slices(AssetAllocation), "Banks 1.25, Margin -0.25");
    account.AccountBalance = Currency("1250");
    EXPECT_EQ(Slices(AssetAllocation), "Banks 1, Margin 0");
}

TEST_F(AllocationChart, ShowsZerosWhenTheTotalInvestedOrTheBalanceIsZero)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "500");
    Position("SHORT", "-500");
    InClass("ACME", "Banks", 1);
    EXPECT_EQ(Slices(AssetAllocation), "Not allocated 0, Banks 0, Cash & Money Markets 0");
    gConnAccount.Execute("DELETE FROM DailyTracker WHERE Symbol = 'SHORT'");
    account.AccountBalance = Currency();
    EXPECT_EQ(Slices(AssetAllocation), "Banks 0, Margin 0");
}

TEST_F(AllocationChart, TrimsTheNamesOfClasses)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "500");
    Position("BETA", "250");
    InClass("ACME", "Banks   ", 1);
    InClass("BETA", "Banks", 1);
    EXPECT_EQ(Slices(AssetAllocation), "Banks 0.75, Cash & Money Markets 0.25");
}

TEST_F(AllocationChart, KeepsSharesWithoutANameOrASize)
{
    account.AccountBalance = Currency("1000");
    Position("O'NEIL", "500");
    InClass("O'NEIL", "Banks", 0);
    gConnApplControl.Execute("INSERT INTO SecurityAssetClass VALUES ('O''NEIL', NULL, 0.5)");
    EXPECT_EQ(Slices(AssetAllocation), "Banks 0,  0.25, Cash & Money Markets 0.5");
}

TEST_F(AllocationChart, KeepsItsAmountsWhenTheStoreFails)
{
    account.AccountBalance = Currency("1000");
    Position("ACME", "500");
    InClass("ACME", "Banks", 1);
    Slices(AssetAllocation);
    const ChartGrid shown = *grid;
    gConnApplControl.Execute("DROP TABLE SecurityAssetClass");
    EXPECT_EQ(Slices(AssetAllocation), "(stays)");
    EXPECT_EQ(series.Readout(AssetAllocation, shown, 1, 1), "Asset Class: Banks   Value: 500.00");
}
