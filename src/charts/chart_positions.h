#pragma once

/// The two pies: how the balance of the account is invested, by security and by asset class.
///
///     balance 1,000; ACME 700, ZETA -100            ACME 0.7   ZETA -0.1   Cash 0.4
///     ACME half Energy, half Banks; ZETA in none    Not allocated -0.1  Energy 0.35  Banks 0.35
///                                                   Cash & Money Markets 0.4
///
/// Securities stand in the order of their value, smallest first; classes in the order of their first
/// appearance. What is invested beyond the balance is a negative slice "Margin". A slice's value is
/// its part of the balance, as a fraction, in the shortest text of the double.
///
/// The slices of cash are in the chart alone: no step writes to the account. A load step gives false
/// when the store failed; its draw step must not follow then.

#include "charts/chart_work.h"

#include <vector>

class PositionSeries
{
public:
    explicit PositionSeries(const ChartWork &work) : m_work(work) {}

    bool LoadPositions();
    ChartGrid DrawPositions();
    bool LoadAssetAllocation();
    ChartGrid DrawAssetAllocation() const;

    /// The amount behind a slice of the last DrawPositions; `slice` counts from 1.
    Currency PositionValue(const QString &symbol, int slice) const;
    /// The amount behind a slice of the last DrawAssetAllocation.
    Single AllocatedAmount(const QString &assetClass) const;

    Currency InvestedTotal; ///< over the positions read by the last load step
    Currency CashResidual;  ///< the balance less InvestedTotal, of the last LoadPositions
    Currency CurrentAmount; ///< what is being allocated

private:
    struct PositionRow
    {
        QString Symbol;
        Currency InvestedValue;
    };
    struct AllocationRow
    {
        QString AssetClass;
        Single AmountAllocated;
    };
    std::vector<PositionRow> ReadPositions() const;
    void AllocateSecurityToClasses(const QString &symbol);
    void AddToAssetClass(const QString &assetClass, Single fraction);

    ChartWork m_work;
    std::vector<PositionRow> ChartRecordset;
    std::vector<AllocationRow> AllocationRecordset;
};
