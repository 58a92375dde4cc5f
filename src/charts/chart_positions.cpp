#include "charts/chart_positions.h"

#include <utility>

namespace
{

const Single whole = Single::FromFloat(1);

/// One row of slices, each of which bears its percentage.
ChartGrid PieGrid(const QString &title, size_t slices)
{
    ChartGrid grid(int(slices), 1);
    grid.RowLabel(1) = title;
    grid.PercentLabels = true;
    grid.PercentLabelSize = 10;
    return grid;
}

} // namespace

std::vector<PositionSeries::PositionRow> PositionSeries::ReadPositions() const
{
    std::vector<PositionRow> rows;
    Statement select = m_work.gConnAccount.Prepare(
        QStringLiteral("SELECT Symbol, InvestedValue FROM DailyTracker WHERE InvestedValue <> 0 "
                       "ORDER BY InvestedValue"));
    while (select.Step())
        rows.push_back({select.Text(0), select.Money(1)});
    return rows;
}

// --- positions ----------------------------------------------------------------------------------

bool PositionSeries::LoadPositions()
{
    return LoadStep([&] {
        std::vector<PositionRow> rows = ReadPositions();
        Currency total;
        for (const PositionRow &row : rows)
            total += row.InvestedValue;
        const Currency rest = m_work.account.AccountBalance - total;
        // Without positions all is cash, even a debt or nothing; with them a rest of zero is "Margin".
        const bool isCash = rows.empty() || rest > Currency();
        rows.push_back({isCash ? QStringLiteral("Cash") : QStringLiteral("Margin"), rest});
        ChartRecordset = std::move(rows);
        InvestedTotal = total;
        CashResidual = rest;
    });
}

ChartGrid PositionSeries::DrawPositions()
{
    const Currency AccountBalance = m_work.account.AccountBalance;
    ChartGrid grid = PieGrid(QStringLiteral("Portfolio Positions"), ChartRecordset.size());
    int slice = 0;
    for (const PositionRow &row : ChartRecordset) {
        grid.Data(1, ++slice) = AccountBalance.IsZero()
                                    ? QStringLiteral("0")
                                    : m_work.services.formats.ToText(row.InvestedValue.ToDouble() /
                                                                     AccountBalance.ToDouble());
        grid.ColumnLabel(slice) = row.Symbol;
    }
    ChartRecordset.pop_back(); // the cash was there for the drawing; what stays are the positions
    return grid;
}

Currency PositionSeries::PositionValue(const QString &symbol, int slice) const
{
    // By its place as well: a security may bear the name of the slice of cash.
    if (slice > int(ChartRecordset.size()))
        return CashResidual;
    for (const PositionRow &row : ChartRecordset)
        if (row.Symbol == symbol)
            return row.InvestedValue;
    return Currency();
}

// --- asset classes ------------------------------------------------------------------------------

bool PositionSeries::LoadAssetAllocation()
{
    std::vector<AllocationRow> shown = std::exchange(AllocationRecordset, {});
    const bool isLoaded = LoadStep([&] {
        InvestedTotal = Currency();
        const std::vector<PositionRow> positions = ReadPositions();
        if (positions.empty()) {
            AllocationRecordset.push_back({QStringLiteral("Not Allocated"), whole});
            return;
        }
        for (const PositionRow &position : positions) {
            CurrentAmount = position.InvestedValue;
            InvestedTotal += CurrentAmount;
            AllocateSecurityToClasses(position.Symbol);
        }
        CurrentAmount = m_work.account.AccountBalance - InvestedTotal;
        AddToAssetClass(CurrentAmount > Currency() ? QStringLiteral("Cash & Money Markets")
                                                   : QStringLiteral("Margin"),
                        whole);
    });
    if (!isLoaded) // what is shown stays, and so do the amounts behind it
        AllocationRecordset = std::move(shown);
    return isLoaded;
}

void PositionSeries::AllocateSecurityToClasses(const QString &symbol)
{
    Statement select = m_work.gConnApplControl.Prepare(
        QStringLiteral("SELECT Symbol, AssetClass, PerCentAllocated FROM SecurityAssetClass "
                       "WHERE Symbol = ? ORDER BY Symbol"));
    select.BindAll(symbol);
    bool isAllocated = false;
    while (select.Step()) {
        AddToAssetClass(select.Text(1), select.ShareCount(2));
        isAllocated = true;
    }
    if (!isAllocated)
        AddToAssetClass(QStringLiteral("Not allocated"), whole);
}

void PositionSeries::AddToAssetClass(const QString &assetClass, Single fraction)
{
    const QString name = assetClass.trimmed();
    const double amount = CurrentAmount.ToDouble() * fraction.ToDouble();
    for (AllocationRow &row : AllocationRecordset) {
        if (row.AssetClass == name) {
            row.AmountAllocated = Single::FromDouble(row.AmountAllocated.ToDouble() + amount);
            return;
        }
    }
    AllocationRecordset.push_back({name, Single::FromDouble(amount)});
}

ChartGrid PositionSeries::DrawAssetAllocation() const
{
    // Zeros by the total invested, not by the balance as with the positions: without positions the
    // one slice is no part of anything. A balance of zero has no parts either.
    const double AccountBalance = m_work.account.AccountBalance.ToDouble();
    const bool hasParts = !InvestedTotal.IsZero() && AccountBalance != 0;
    ChartGrid grid =
        PieGrid(QStringLiteral("Portfolio Asset Allocation"), AllocationRecordset.size());
    int slice = 0;
    for (const AllocationRow &row : AllocationRecordset) {
        grid.Data(1, ++slice) =
            hasParts
                ? m_work.services.formats.ToText(row.AmountAllocated.ToDouble() / AccountBalance)
                : QStringLiteral("0");
        grid.ColumnLabel(slice) = row.AssetClass;
    }
    return grid;
}

Single PositionSeries::AllocatedAmount(const QString &assetClass) const
{
    for (const AllocationRow &row : AllocationRecordset)
        if (row.AssetClass == assetClass.trimmed())
            return row.AmountAllocated;
    return Single();
}
