#pragma once

/// What the whole program knows of the price update.

#include "base/dates.h"
#include "base/integer.h"
#include "marketdata/site_waits.h"

#include <QString>

class PriceCyclePause;

struct PriceUpdateState
{
    bool PriceUpdateActive = false;     ///< frmInternetTran is loaded
    bool UpdateInProgress = false;      ///< a cycle is running
    Integer MinutesSinceUpdate;         ///< ticks (of 65 s) since the last finished cycle
    bool HistoricalRetryNeeded = false; ///< the next cycle loads daily prices, whatever the date
    SiteWaits Waits;
    int ConnectionState = 0; ///< 1 connecting, 2 connected, 3 disabled, 4 error
    int LastError = 0;       ///< number of the error that ended a cycle last

    QString WebLoginId; ///< of the site in use, in the clear, for this run
    QString WebPassword;
    bool LoginCancelled = false; ///< the login screen was left without a login

    /// Symbols reported as missing, each with ", " behind it. One that is in here is not reported
    /// again.
    QString NotFoundList = QStringLiteral(", ");
    QDate LatestPriceDate = NoDate(); ///< newest daily price seen in this run

    bool VersionCheckedThisRun = false;
    QString WebVersionText; ///< the version that the version file named

    /// The pause that ends by loading frmInternetTran again; none once it was switched on or off by
    /// other means.
    const PriceCyclePause *Pause = nullptr;
};
