#pragma once

/// Deletes what is older than the user wants to keep. How many rows went is told in the status bar.
///
///     HistPriceMonths 2, today 2026-03-02     prices before 2025-12-30: two months and three days
///     KeepPortfolioData 5                     profits, balances and sales before 2021-03-02
///
/// A purchase stays in History for as long as any of its shares are unsold, whatever its age: sales
/// are matched to their purchases before they go (transactions/matching.h), which lowers the
/// purchases' Shares. Purchases that are used up go at any age, and so does any other opening row
/// of zero shares. Cash transactions and dividends are never deleted.
///
/// Each routine deletes all or, when the store refuses, nothing; the error is thrown. Negative
/// months or years count as none. Cost is linear in the rows.

#include "platform/status_line.h"
#include "store/connection.h"

#include <QDate>

/// "HistPriceMonths" months and three days are kept.
void PurgeHistoricalPrices(Connection &gConnHistPrices, int histPriceMonths, QDate today,
                           StatusLine &status);
void PurgeAccountData(Connection &gConnAccount, int keepPortfolioData, QDate today,
                      StatusLine &status);
