#include "transactions/position_posting.h"

#include "tracking/valuation.h"
#include "transactions/history.h"
#include "transactions/lot_consumption.h"
#include "transactions/profit_loss_book.h"
#include "transactions/undo.h"

namespace
{

LotSale ConsumeLots(PostingWork &work, const TransactionEntry &entry, const TradeFigures &trade)
{
    const bool shortSide = trade.action == Action::BuyToCover;
    const Single count = Single::FromDouble(trade.typedShares);
    try {
        return shortSide ? ComputePriceShort(work.gRsLots, entry.Symbol, count, trade.TransPrice,
                                             work.entry.AverageCost)
                         : ComputePriceLong(work.gRsLots, entry.Symbol, count, trade.TransPrice,
                                            work.entry.AverageCost);
    } catch (const RuntimeError &error) {
        EndAfterFailure(
            work.services,
            QStringLiteral("An error has occured while computing price %1.\n"
                           "Please check last action performed and notify technical support.")
                .arg(shortSide ? QStringLiteral("short") : QStringLiteral("long")),
            error);
    }
}

/// The realized gain leaves the row's unrealized gain and waits for the balance step.
void BookRealizedGain(PostingWork &work, TrackerRow &row, Currency realizedGain)
{
    row.ProfitLossToday += realizedGain;
    row.Basis -= realizedGain;
    row.PerCentGainToday = Single();
    work.totals.RealizedPending = realizedGain;
}

/// AvrgPrice, InvestedToDate and Shares; both sides do the same, with their own signs.
void MovePosition(PostingWork &work, TrackerRow &row, const TradeFigures &trade)
{
    const bool opens = OpensLot(trade.action);
    row.ProfitLossToday += work.totals.TransCost;
    if ((row.Shares + trade.TransShares).IsZero()) {
        row.AvrgPrice = Currency();
        row.Basis = Currency();
    } else if (opens) {
        const double cost = row.Shares.ToDouble() * row.AvrgPrice.ToDouble() +
                            trade.TransPrice.ToDouble() * trade.TransShares.ToDouble();
        const double shares = trade.TransShares.ToDouble() + row.Shares.ToDouble();
        row.AvrgPrice = Currency::FromDouble(cost / shares);
    } else {
        row.AvrgPrice = work.entry.AverageCost;
    }
    if (opens)
        row.InvestedToDate = Currency::FromDouble(row.InvestedToDate.ToDouble() +
                                                  trade.typedShares * trade.typedPrice);
    row.Shares = row.Shares + trade.TransShares;
}

void UpdateLongPosition(PostingWork &work, const TransactionEntry &entry, TrackerRow &row,
                        const TradeFigures &trade)
{
    ComputeNewBasis(work.totals, row);
    if (trade.action == Action::Sell) {
        const LotSale sale = ConsumeLots(work, entry, trade);
        work.entry.AverageCost = sale.AverageCost;
        BookRealizedGain(work, row, sale.RealizedGain);
    }
    MovePosition(work, row, trade);
}

void UpdateShortPosition(PostingWork &work, const TransactionEntry &entry, TrackerRow &row,
                         const TradeFigures &trade)
{
    ComputeNewBasis(work.totals, row);
    if (trade.action == Action::BuyToCover) {
        const LotSale sale = ConsumeLots(work, entry, trade);
        work.entry.AverageCost = sale.AverageCost;
        BookRealizedGain(work, row, -sale.RealizedGain);
    }
    MovePosition(work, row, trade);
}

} // namespace

void PostTradeToRow(PostingWork &work, const TransactionEntry &entry, const TradeFigures &trade)
{
    SaveUndoLast(work, work.rows.Current());
    TrackerRow &row = work.rows.Edit();
    row.TransCostToday += work.totals.TransCost;
    row.TransCostToDate += work.totals.TransCost;
    row.CurrPrice = trade.TransPrice;
    if (IsShortSide(trade.action))
        UpdateShortPosition(work, entry, row, trade);
    else
        UpdateLongPosition(work, entry, row, trade);
    row.InvestedValue = MarketValue(row, Currency());
    row.ActualProfitLoss = row.ProfitLossToday + row.ProfitLossToDate;
    row.InvestedToDate += -work.totals.TransCost;
    row.NumberTransToday += 1;
    row.NumberTransToDate += 1;
    row.TransDate = entry.TransDate;
    row.Time = work.services.clock.TimeOfDay();
    if (work.replayed)
        work.replayed->Post(row, entry.TransDate, row.Time);
    else
        PostDailyProfitLoss(work.gConnAccount, row, entry.TransDate, work.services);
}
