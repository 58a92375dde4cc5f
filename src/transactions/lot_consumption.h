#pragma once

/// What a sale takes from the lots of a symbol, and what a cover takes from its short lots.
///
///     lots 100 @ 10, 100 @ 20; sell 150 @ 30          RealizedGain 2,500, AverageCost 20
///     lots -100 @ 50, -100 @ 60; cover 50 @ 40        RealizedGain -500, AverageCost 56.6667
///
/// The gain comes from the prices of the lots taken, not from the average. Shares beyond the open
/// lots are dropped. A lot that reaches zero is removed, and with it any lot of no shares that an
/// edit left behind. Afterwards the lots are requeried.

#include "transactions/lots.h"

struct LotSale
{
    Currency RealizedGain; ///< sum over the lots taken, before commission
    Currency AverageCost;  ///< price a share of the lots left; with none left the prior average
};

/// `sellShares` is a positive count, `transPrice` a price a share.
LotSale ComputePriceLong(PurchaseLots &gRsLots, const QString &symbol, Single sellShares,
                         Currency transPrice, Currency priorAverage);

/// `coverShares` is a positive count. RealizedGain comes back with its sign turned: negative for a
/// cover below the price of the short sale.
LotSale ComputePriceShort(PurchaseLots &gRsLots, const QString &symbol, Single coverShares,
                          Currency transPrice, Currency priorAverage);
