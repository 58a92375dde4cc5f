#include "lists/profit_loss_list.h"

namespace
{

bool SameGroup(const ProfitLossLine &one, const ProfitLossLine &other, ProfitLossGroup group)
{
    return group == ProfitLossGroup::Date ? one.TransDate == other.TransDate
                                          : one.Symbol == other.Symbol;
}

} // namespace

std::optional<ProfitLossOrder> ProfitLossOrderFor(int column, bool descending)
{
    switch (column) {
    case int(ProfitLossGroup::Date):
        return ProfitLossOrder{ProfitLossGroup::Date,
                               descending ? QStringLiteral("ORDER BY TransDate DESC, Symbol ASC")
                                          : QStringLiteral("ORDER BY TransDate ASC, Symbol ASC")};
    case int(ProfitLossGroup::Symbol):
        return ProfitLossOrder{ProfitLossGroup::Symbol,
                               descending ? QStringLiteral("ORDER BY Symbol DESC, TransDate ASC")
                                          : QStringLiteral("ORDER BY Symbol ASC, TransDate ASC")};
    default:
        return std::nullopt;
    }
}

std::vector<ProfitLossLine> ReadProfitLoss(const Connection &gConnAccount, QDate from, QDate to,
                                           const ProfitLossOrder &order)
{
    std::vector<ProfitLossLine> lines;
    Currency GroupTotal;
    const auto addTotal = [&] {
        ProfitLossLine total;
        total.ProfitLoss = GroupTotal;
        lines.push_back(total);
        GroupTotal = Currency();
    };
    // Most often nearly all rows are asked for, and one by one through an index they take twice as
    // long as sorted.
    Statement select = gConnAccount.Prepare(
        QStringLiteral("SELECT ID, Symbol, Name, ProfitLoss, TransDate, Time FROM DailyProfitLoss "
                       "NOT INDEXED WHERE TransDate >= ? AND TransDate <= ? ") +
        order.clause);
    select.BindAll(from, to);
    while (select.Step()) {
        ProfitLossLine line{select.Int64(0), select.Date(4), select.Text(1), select.Text(2),
                            select.Money(3)};
        if (!lines.empty() && !SameGroup(line, lines.back(), order.group))
            addTotal();
        GroupTotal += line.ProfitLoss;
        lines.push_back(std::move(line));
    }
    addTotal();
    return lines;
}
