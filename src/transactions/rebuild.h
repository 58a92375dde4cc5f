#pragma once

/// The replay of the History ledger: positions, lots and daily profit and loss are made anew by the
/// posting sequence, row by row in the order of date and time. History itself is not touched.
///
///     HistoryReplay replay(work, gConnAccount);
///     replay.Begin();       rows at zero, lots and DailyProfitLoss empty, in an open transaction
///     replay.Run(...);      every row of History
///     replay.Commit();      all of it reaches the file at once
///
/// Until Commit the file is as it was; destroying the object before gives it back so. The balance is
/// not moved: it, and PriorBasisTotal, are those of before Begin. Cost is linear in the ledger.

#include "transactions/entry.h"
#include "transactions/profit_loss_book.h"

#include <functional>
#include <optional>

class HistoryReplay
{
public:
    /// `work` and what it refers to must outlive the replay. RebuildMode has to be set already.
    explicit HistoryReplay(const PostingWork &work);

    void Begin();
    /// Replays all rows. `progress` is called at each row with its number from 1; it may let events
    /// be handled. A failed posting shows its message and ends the program, as in the entry.
    void Run(const std::function<void(qint64 row)> &progress);
    void Commit();
    /// The row being replayed, as the entry screen shows it.
    const TransactionEntry &Entry() const { return m_entry; }

private:
    void ReadRow(const Statement &statement);

    PostingWork m_work;
    ProfitLossBook m_book;
    TransactionEntry m_entry;
    std::optional<WriteGuard> m_guard;
    Currency m_savedBalance;
    Currency m_savedPriorBasis;
};

/// How a ledger row is posted again: "Sold" as a Sell of minus its Shares. A "Dividend" becomes a
/// reinvestment of as many shares as its Amount. Nothing for cash rows, which leave the entry as the
/// row before them set it.
struct ReplayedAction
{
    Action action;
    enum class Count { Shares, MinusShares, Amount } count;
};
std::optional<ReplayedAction> ReplayedActionOf(const QString &description);
