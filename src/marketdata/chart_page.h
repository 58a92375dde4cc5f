#pragma once

/// The adapter for chart services ("chart-v8"): asks for a range of days as they want to be asked, and
/// turns their JSON reply into the table page of "<nobr>" cells.
///
///     timestamp 1795185000, gmtoffset -18000, close 214.3699951171875, volume 18734022 ...
///     <td><nobr>20-Nov-26</nobr></td> ... <td><nobr><b>214.3700</b></nobr></td> ...

#include "marketdata/historical_source.h"

/// "/v8/finance/chart/QLLN?period1=..&period2=..&interval=1d&events=div,splits", in seconds of
/// universal time; the end that the service counts with is exclusive, so it is the day behind.
QString ChartQuery(const HistoricalRequest &request);

/// The newest day comes first, as in every table page. Days without prices are left out; of two
/// entries for a day the last counts (the day's latest state comes beside its daily one); a day is
/// that of the exchange's time zone at the stamp, summer time included, or of its present offset where
/// the zone is unknown. Prices have four decimals, a volume is at most 2,147,483,647,
/// and 0 where the service has none; without an adjusted close the close stands for it. A reply that
/// is no JSON or says an error gives a page without rows.
QString TablePageOfChart(const QByteArray &reply);
