#pragma once

/// The pages of the browser screen: the intraday chart of the selected security, and the map of the
/// market.
///
///     program.WebAddress = BuildIntradayChartAddress(program);
///     NavigateBrowserScreen(program, program.WebAddress);
///
/// Which of the two is shown is told by the mark of its popup entry.

#include "program/program.h"

/// The browser screen, as who sends it to a page sees it.
class BrowserScreen
{
public:
    virtual ~BrowserScreen() = default;
    /// Goes to a page on the user's behalf.
    virtual void Navigate(const QString &address) = 0;
};

/// The chart of Selection::CurrentSymbol (which may be empty), from the quote site in use; empty when
/// no address is set for charts. When that is the practice site, it is up afterwards. The cursor of
/// gRsWebParameters stays where it is.
QString BuildIntradayChartAddress(Program &program);
/// The map of the market, likewise.
QString BuildMapOfMarketAddress(Program &program);

/// Sends the open browser screen to the page, brings it to the front and waits 0.75 seconds; opens the
/// screen when it is not open: its Load goes to Program::WebAddress, which the caller has set.
void NavigateBrowserScreen(Program &program, const QString &address);
