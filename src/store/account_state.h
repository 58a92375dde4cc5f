#pragma once

/// What the program knows of the open account beside its tables: the control rows, as read.

#include "base/currency.h"
#include "base/dates.h"
#include "base/integer.h"
#include "base/single.h"

#include <QDate>
#include <QString>

struct AccountState
{
    /// The account's running balance: its whole value, not its cash. Moved by the change of the
    /// unrealized gains, commissions and cash actions, never by a purchase amount.
    Currency AccountBalance;
    Currency DayBalance;              ///< copy of AccountBalance, kept for the undo record
    QDate TrackerDay = NoDate();      ///< the day that the Today columns stand for
    QDate LastPriceUpdate = NoDate(); ///< last day with a finished price cycle
    /// No daily prices are asked for on this day any more; of this run.
    QDate HistoryRestsOn = NoDate();
    Integer ElapsedDays; ///< days of use since the last automatic compaction

    QString CommissionStyle = QStringLiteral("n/a"); ///< "Style1" to "Style5"
    Currency CommissionCost;     ///< flat cost; of Style5 the factor on the amount
    Currency CommissionPerShare; ///< cost of a share; of Style5 the flat cost
    Single CommissionShares;
    Single CommissionShares2;

    QString CurrentWebSiteName; ///< empty: none chosen
    qint64 CurrentWebSiteId = 0;
    Integer WebUpdateMinutes;

    QString LoginID;
    QString LoginPassword; ///< in plain form
    int PasswordProtected = 0;
    int LogoffEnabled = 0;
    int LogoffMinutes = 15;
};
