#include "transactions/purge.h"

#include "transactions/matching.h"

#include <algorithm>

namespace
{

void PostDeleted(StatusLine &status, int count, const QString &what)
{
    status.Post(QStringLiteral("Deleted %1 rows of old %2 information.").arg(count).arg(what));
}

/// The number of sales before the day. What they used up of their purchases is taken off these.
int DeleteSalesBefore(Connection &gConnAccount, QDate day)
{
    GainMatching matching;
    matching.OpenMatchingRecordsets(gConnAccount);
    int count = 0;
    for (int sale = 0; sale < matching.SaleCount(); ++sale) {
        const QDate sold = matching.Sale(sale).TransDate;
        if (!sold.isValid() || sold >= day)
            continue;
        MatchResult result;
        matching.MatchCurrentSale(sale, result);
        matching.DeleteSale(sale);
        ++count;
    }
    matching.WriteBack(gConnAccount);
    return count;
}

} // namespace

void PurgeHistoricalPrices(Connection &gConnHistPrices, int histPriceMonths, QDate today,
                           StatusLine &status)
{
    const QDate day = today.addMonths(-std::max(0, histPriceMonths)).addDays(-3);
    const int count = gConnHistPrices.Execute(
        QStringLiteral("DELETE FROM HistoricalPrices WHERE PriceDate < ?"), day);
    PostDeleted(status, count, QStringLiteral("Historical Price"));
}

void PurgeAccountData(Connection &gConnAccount, int keepPortfolioData, QDate today,
                      StatusLine &status)
{
    const QDate day = today.addYears(-std::max(0, keepPortfolioData));
    WriteGuard guard(gConnAccount);
    const int profits = gConnAccount.Execute(
        QStringLiteral("DELETE FROM DailyProfitLoss WHERE TransDate < ?"), day);
    PostDeleted(status, profits, QStringLiteral("Profit and Loss"));
    const int balances = gConnAccount.Execute(
        QStringLiteral("DELETE FROM PortfolioDailyBalance WHERE TransDate < ?"), day);
    PostDeleted(status, balances, QStringLiteral("Historical Gain Price"));
    const int sales = DeleteSalesBefore(gConnAccount, day);
    const int purchases = gConnAccount.Execute(
        QStringLiteral("DELETE FROM History WHERE (Description LIKE 'Bought%' OR "
                       "Description LIKE '%Sale%') AND Shares = 0"));
    guard.Commit();
    PostDeleted(status, sales + purchases, QStringLiteral("Transaction History"));
}
