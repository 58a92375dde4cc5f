#include "marketdata/historical_rows.h"

#include "marketdata/portfolio_array.h"

namespace
{

/// The marks have a table of their own, which the first split makes.
bool HasReloadTable(Connection &gConnHistPrices)
{
    return gConnHistPrices
        .Prepare(QStringLiteral("SELECT 1 FROM sqlite_master WHERE name = 'PricesToReload'"))
        .Step();
}

template <class... Values>
QDate DateFound(Connection &gConnHistPrices, const QString &sql, const Values &...values)
{
    Statement statement = gConnHistPrices.Prepare(sql);
    statement.BindAll(values...);
    return statement.Step() && !statement.IsNull(0) ? statement.Date(0) : QDate();
}

} // namespace

QDate OldestPriceDate(Connection &gConnHistPrices, const QString &symbol)
{
    return DateFound(gConnHistPrices,
                     QStringLiteral("SELECT Min(PriceDate) AS MinPriceDate FROM HistoricalPrices "
                                    "WHERE HistoricalPrices.Symbol = ?"),
                     symbol);
}

QDate NewestPriceDate(Connection &gConnHistPrices, const QString &symbol, QDate last)
{
    return DateFound(gConnHistPrices,
                     QStringLiteral("SELECT Max(PriceDate) AS MaxPriceDate FROM HistoricalPrices "
                                    "WHERE HistoricalPrices.Symbol = ? AND PriceDate <= ?"),
                     symbol, last);
}

void InsertHistoricalPrice(Connection &gConnHistPrices, const HistPrice &price, Services &services)
{
    try {
        gConnHistPrices.Execute(
            QStringLiteral("INSERT INTO HistoricalPrices (Symbol, PriceDate, PriceOpen, DayHigh, "
                           "DayLow, PriceClose, Volume, AdjClose) Values (?, ?, ?, ?, ?, ?, ?, ?) "
                           "ON CONFLICT (Symbol, PriceDate) DO UPDATE SET "
                           "PriceOpen = excluded.PriceOpen, DayHigh = excluded.DayHigh, "
                           "DayLow = excluded.DayLow, PriceClose = excluded.PriceClose, "
                           "Volume = excluded.Volume, AdjClose = excluded.AdjClose"),
            price.Symbol, price.PriceDate, price.PriceOpen, price.DayHigh, price.DayLow,
            price.PriceClose, qint64{price.Volume}, price.AdjClose);
    } catch (const RuntimeError &error) {
        services.dialogs.MsgBox(
            QStringLiteral(
                "An error has been encountered while updating the Historical Price "
                "(HistPrices.mdb) \n"
                "database. Please take note of this message and contact TechSupport.\n") +
                ErrorLines(error),
            Box::Stop, EditorTitle());
        throw;
    }
}

void InsertHistoricalPrices(Connection &gConnHistPrices, const std::vector<HistPrice> &prices,
                            Services &services)
{
    if (prices.empty())
        return;
    WriteGuard guard(gConnHistPrices);
    try {
        for (const HistPrice &price : prices)
            InsertHistoricalPrice(gConnHistPrices, price, services);
    } catch (const RuntimeError &) {
        guard.Commit();
        throw;
    }
    guard.Commit();
}

void MarkPricesToReload(Connection &gConnHistPrices, const QString &symbol)
{
    gConnHistPrices.Execute(QStringLiteral("CREATE TABLE IF NOT EXISTS PricesToReload "
                                           "(Symbol TEXT NOT NULL PRIMARY KEY)"));
    gConnHistPrices.Execute(QStringLiteral("INSERT OR IGNORE INTO PricesToReload VALUES (?)"),
                            TenCharacters(symbol).trimmed()); // as the download knows it
}

QStringList PricesToReload(Connection &gConnHistPrices)
{
    QStringList symbols;
    if (!HasReloadTable(gConnHistPrices))
        return symbols;
    Statement statement =
        gConnHistPrices.Prepare(QStringLiteral("SELECT Symbol FROM PricesToReload"));
    while (statement.Step())
        symbols << statement.Text(0);
    return symbols;
}

void ReplaceHistoricalPrices(Connection &gConnHistPrices, const QString &symbol,
                             const std::vector<HistPrice> &prices, Services &services)
{
    WriteGuard guard(gConnHistPrices);
    gConnHistPrices.Execute(QStringLiteral("DELETE FROM HistoricalPrices WHERE Symbol = ?"),
                            symbol);
    for (const HistPrice &price : prices)
        InsertHistoricalPrice(gConnHistPrices, price, services);
    if (HasReloadTable(gConnHistPrices))
        gConnHistPrices.Execute(QStringLiteral("DELETE FROM PricesToReload WHERE Symbol = ?"),
                                symbol);
    guard.Commit();
}
