#pragma once

/// The commission that the account's style proposes for a trade.
///
///     Style1   1000 shares at 14.95, plus 0.02 each                       34.95
///     Style2   first 1000 at 14.95, 0.01 retroactive, 3000 shares         44.95
///     Style3   first 1000 at 14.95, 0.01 for each additional, 3000        34.95
///     Style4   first 1000 at 14.95, over 1000 at 0.01: 1300 / 2000        14.95 / 20.00
///     Style5   3500 at a factor of 0.002, plus a flat 5                   12.00
///
/// The result is positive; any other style gives zero. Products run in double precision and are
/// rounded to money before they are added; the factor of Style5 is taken as it stands, not as
/// percent.

#include "store/account_state.h"

Currency ComputeCommission(const AccountState &account, Single shares, Currency tradeAmount);
