#pragma once

/// The daily price download: brings HistPrices.mdb up to date for every symbol of the portfolio, in
/// requests of about two months each.

#include "marketdata/historical_source.h"
#include "marketdata/portfolio_array.h"
#include "marketdata/price_cycle_screens.h"
#include "marketdata/price_update_state.h"
#include "platform/inet.h"
#include "platform/services.h"
#include "store/account_state.h"
#include "store/settings.h"

/// What the download works on; all of it belongs to the price cycle or the program.
struct HistoricalWork
{
    Connection &gConnHistPrices;
    const Settings &settings; ///< HistPriceMonths
    AccountState &account;
    PriceUpdateState &state;
    Services &services;
    Inet &inet;
    PriceCycleScreens &screens;
    HistoricalSource &source;  ///< asks for the pages
    const bool &StopRequested; ///< the cycle was unloaded: leave at the next look
    QString title;             ///< of the boxes
    QString host = {};         ///< of the service
};

/// Shows its progress, and comes back when all symbols are up to date, StopRequested holds, or the
/// service does not go on:
/// - a request timed out: says so and sets HistoricalRetryNeeded;
/// - the service cannot be reached: says so once and sets HistoryRestsOn to today;
/// - the service asks to be left alone for a while: notes that, and sets HistoricalRetryNeeded.
/// Other errors travel on. Rows of days that were not asked for, or that are yet to come, are left out.
void GetHistoricalPrices(HistoricalWork &work, const PortfolioArray &entries);
