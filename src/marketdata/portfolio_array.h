#pragma once

/// CurrPortfolioArray: the working copy of the positions during a price cycle, in the order of the
/// Daily Tracker's rows.

#include "base/dates.h"
#include "store/connection.h"
#include "tracking/tracker_rows.h"

#include <QTime>

#include <vector>

/// A text of ten characters, cut off or filled with blanks.
QString TenCharacters(const QString &text);
/// A whole number of shares, halves to the nearest even number; RuntimeError 6 beyond 16 bits.
Integer WholeShares(Single shares);

struct PortfolioEntry
{
    /// Ten characters; takes the form that a site wants (option prefix or suffix).
    QString Symbol;
    Integer Shares;       ///< rounded to whole shares, halves to the nearest even number
    QString SecurityType; ///< ten characters, "Option    "; blank when the security has none
    Currency CurrPrice;
    QDate PriceDate = NoDate();
    QTime Time;               ///< of the row; a pass replaces it by its stamp
    bool IsDealtWith = false; ///< asked for in this pass, found or not
    TrackerRow Row;           ///< as it was when the entry was made
    PriceMark Remark;         ///< for the row

    bool IsOption() const { return SecurityType.trimmed() == QLatin1String("Option"); }
};

using PortfolioArray = std::vector<PortfolioEntry>;

/// One entry for each row; the cursor of `rows` then stands on the first one. Throws RuntimeError
/// 3021 for an account without rows, 6 for more than 32,767 shares.
PortfolioArray LoadCurrPortfolioArray(TrackerRecordset &rows, Connection &gConnApplControl);

/// Puts price and time of the entries into the rows, in their order, for the valuation to write them;
/// the form of an option that the site wants is taken off again. From the first row whose symbol is not
/// that of its entry on, rows keep their prices, and so do rows that were added since the entries were
/// made. The cursor then stands on the first row. The remarks of the entries become marks of the rows; rows that keep
/// their prices are marked with `notReached`, and so are rows that cannot be read.
void UpdateDTRecordset(TrackerRecordset &rows, PortfolioArray &entries, const QString &optionPrefix,
                       const QString &optionSuffix, const PriceMark &notReached = {});

/// A price that is zero, or more than three times the last one or less than a third of it.
bool IsSuspicious(Currency last, Currency price);
