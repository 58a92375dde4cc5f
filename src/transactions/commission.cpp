#include "transactions/commission.h"

Currency ComputeCommission(const AccountState &account, Single shares, Currency tradeAmount)
{
    const Currency flat = account.CommissionCost;
    const double perShare = account.CommissionPerShare.ToDouble();
    const bool beyondFirst = shares > account.CommissionShares;
    const auto costOf = [perShare](double count) { return Currency::FromDouble(perShare * count); };

    if (account.CommissionStyle == QLatin1String("Style1"))
        return flat + costOf(shares.ToDouble());
    if (account.CommissionStyle == QLatin1String("Style2"))
        return beyondFirst ? flat + costOf(shares.ToDouble()) : flat;
    if (account.CommissionStyle == QLatin1String("Style3"))
        return beyondFirst ? flat + costOf((shares - account.CommissionShares).ToDouble()) : flat;
    if (account.CommissionStyle == QLatin1String("Style4")) {
        const bool dearer = perShare * shares.ToDouble() > flat.ToDouble();
        return beyondFirst && dearer ? costOf(shares.ToDouble()) : flat;
    }
    if (account.CommissionStyle == QLatin1String("Style5")) {
        if (tradeAmount > Currency())
            return MultiplyCurrency(flat, tradeAmount) + account.CommissionPerShare;
    }
    return Currency();
}
