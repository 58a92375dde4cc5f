#include "lists/purchase_list.h"

#include <algorithm>

RecordsetQuery PurchaseQuery()
{
    // In the order of the index the rows would be fetched one by one, which takes twice as long.
    return {QStringLiteral("ID, Symbol,  Shares, PurchasePrice, TransDate, Time"),
            QStringLiteral("PriceHistory"),
            QStringLiteral("NOT INDEXED ORDER BY Symbol, TransDate, Time")};
}

bool IsLotPending(const PurchaseLots &gRsLots, const Recordset &rows, int row)
{
    if (!gRsLots.IsOpen() || !gRsLots.InTransaction())
        return false;
    const auto id = std::get<qint64>(rows.ValueAt(row, PurchaseColumn::ID));
    const std::vector<Lot> &lots =
        gRsLots.LotsOf(std::get<QString>(rows.ValueAt(row, PurchaseColumn::Symbol)));
    const auto lot =
        std::find_if(lots.begin(), lots.end(), [id](const Lot &held) { return held.ID == id; });
    return lot == lots.end() ||
           FieldValue(lot->Shares) != rows.ValueAt(row, PurchaseColumn::Shares) ||
           FieldValue(lot->PurchasePrice) != rows.ValueAt(row, PurchaseColumn::PurchasePrice);
}
