#include "transactions/split.h"

#include "transactions/undo.h"

namespace
{

Single SplitShares(Single shares, double newShares, double oldShares)
{
    return Single::FromDouble(shares.ToDouble() / oldShares * newShares);
}

Currency SplitPrice(Currency price, double newShares, double oldShares)
{
    return Currency::FromDouble(oldShares * price.ToDouble() / newShares);
}

void SplitLotsAndHistory(PostingWork &work, const QString &symbol, double newShares,
                         double oldShares)
{
    for (Lot &lot : work.gRsLots.EditLotsOf(symbol)) {
        lot.Shares = SplitShares(lot.Shares, newShares, oldShares);
        lot.PurchasePrice = SplitPrice(lot.PurchasePrice, newShares, oldShares);
    }

    struct HistoryRow
    {
        qint64 id;
        Single shares;
        Currency price;
    };
    std::vector<HistoryRow> rows;
    Statement select = work.gConnAccount.Prepare(
        QStringLiteral("SELECT ID, Shares, Price FROM History WHERE Symbol = ?"));
    select.BindAll(symbol);
    while (select.Step())
        rows.push_back({select.Int64(0), SplitShares(select.ShareCount(1), newShares, oldShares),
                        SplitPrice(select.Money(2), newShares, oldShares)});

    Statement update = work.gConnAccount.Prepare(
        QStringLiteral("UPDATE History SET Shares = ?, Price = ? WHERE ID = ?"));
    for (const HistoryRow &row : rows) {
        update.BindAll(row.shares, row.price, row.id);
        update.Step();
        update.Reset();
    }
}

} // namespace

void PostSplit(PostingWork &work, const TransactionEntry &entry, double newShares, double oldShares)
{
    if (oldShares == 0 || newShares == 0)
        throw RuntimeError::DivisionByZero();
    SaveUndoLast(work, work.rows.Current());
    TrackerRow &row = work.rows.Edit();
    row.Shares = SplitShares(row.Shares, newShares, oldShares);
    row.CurrPrice = SplitPrice(row.CurrPrice, newShares, oldShares);
    row.AvrgPrice = SplitPrice(row.AvrgPrice, newShares, oldShares);
    SplitLotsAndHistory(work, entry.Symbol, newShares, oldShares);
}
