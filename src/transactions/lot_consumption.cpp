#include "transactions/lot_consumption.h"

namespace
{

struct LongSide
{
    static Currency UnitGain(Currency transPrice, Currency lotPrice)
    {
        return transPrice - lotPrice;
    }
    static bool PartOfLot(Single open, Single lotShares)
    {
        return !open.IsZero() && open < lotShares;
    }
    static bool WholeLot(Single open, Single lotShares)
    {
        return open > lotShares && !lotShares.IsZero();
    }
};

/// Counts are negative on both sides, so that the comparisons turn.
struct ShortSide
{
    static Currency UnitGain(Currency transPrice, Currency lotPrice)
    {
        return lotPrice - transPrice;
    }
    static bool PartOfLot(Single open, Single lotShares) { return open > lotShares; }
    static bool WholeLot(Single open, Single lotShares)
    {
        return open < lotShares && !lotShares.IsZero();
    }
};

Currency GainOf(Currency unitGain, Single shares)
{
    return Currency::FromDouble(unitGain.ToDouble() * shares.ToDouble());
}

template <class Side>
LotSale Consume(PurchaseLots &gRsLots, const QString &symbol, Single open, Currency transPrice,
                Currency priorAverage)
{
    LotSale sale{Currency(), priorAverage};
    Currency remainingCost;
    Single remainingShares;
    for (Lot &lot : gRsLots.EditLotsOf(symbol)) {
        const Currency unitGain = Side::UnitGain(transPrice, lot.PurchasePrice);
        // Three tests in a row, not a chain: each sees the counts as the one before left them.
        if (open == lot.Shares) {
            sale.RealizedGain += GainOf(unitGain, open);
            lot.Shares = open = Single();
        }
        if (Side::PartOfLot(open, lot.Shares)) {
            sale.RealizedGain += GainOf(unitGain, open);
            lot.Shares = lot.Shares - open;
            open = Single();
        }
        if (Side::WholeLot(open, lot.Shares)) {
            sale.RealizedGain = Currency::FromDouble(unitGain.ToDouble() * lot.Shares.ToDouble() +
                                                     sale.RealizedGain.ToDouble());
            open = open - lot.Shares;
            lot.Shares = Single();
        }
        remainingCost = Currency::FromDouble(lot.Shares.ToDouble() * lot.PurchasePrice.ToDouble() +
                                             remainingCost.ToDouble());
        remainingShares = remainingShares + lot.Shares;
    }
    gRsLots.RemoveEmpty(symbol);
    gRsLots.Requery();
    if (!remainingShares.IsZero() && !remainingCost.IsZero())
        sale.AverageCost =
            Currency::FromDouble(remainingCost.ToDouble() / remainingShares.ToDouble());
    return sale;
}

} // namespace

LotSale ComputePriceLong(PurchaseLots &gRsLots, const QString &symbol, Single sellShares,
                         Currency transPrice, Currency priorAverage)
{
    return Consume<LongSide>(gRsLots, symbol, sellShares, transPrice, priorAverage);
}

LotSale ComputePriceShort(PurchaseLots &gRsLots, const QString &symbol, Single coverShares,
                          Currency transPrice, Currency priorAverage)
{
    return Consume<ShortSide>(gRsLots, symbol, -coverShares, transPrice, priorAverage);
}
