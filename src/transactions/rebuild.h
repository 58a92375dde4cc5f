#pragma once

/// The replay of the History ledger: positions, lots and daily profit and loss are made anew by the
/// posting sequence, row by row in the order of date and time. History itself is not touched.
///
///     HistoryReplay replay(work);
///     replay.Begin();       rows at zero, lots and DailyProfitLoss empty, in an open transaction
///     replay.Run(...);      every row of History
///     replay.Commit();      all of it reaches the file at once
///
/// Until Commit the file is as it was; destroying the object before then leaves it so, while the
/// rows and lots in memory have to be opened anew. AccountBalance and PriorBasisTotal are not
/// moved. Cost is linear in the ledger.
///
/// What is posted bears the time at which Run began, all the same: lots of one day keep the order of
/// their making, as their ID has it, also when midnight passes meanwhile. Rows that History does not
/// name keep the time of Begin.

#include "transactions/entry.h"
#include "transactions/profit_loss_book.h"

#include <functional>
#include <optional>

class HistoryReplay
{
public:
    /// `work` and what it refers to must outlive the replay. RebuildMode has to be set already.
    explicit HistoryReplay(const PostingWork &work);
    HistoryReplay(const HistoryReplay &) = delete;
    HistoryReplay &operator=(const HistoryReplay &) = delete;

    /// Throws RuntimeError when the store refuses the deletes.
    void Begin();
    /// Replays all rows. `progress` is called at each row with its number from 1; it may let events
    /// be handled. A failed posting shows its message and ends the program, as in the entry.
    void Run(const std::function<void(qint64 row)> &progress);
    /// Writes rows, lots and DailyProfitLoss; throws RuntimeError when the store refuses them. The
    /// lots stay open on gConnAccount: open them again on the connection they belong to.
    void Commit();
    qint64 RowCount() const { return m_row; }
    /// The row being replayed, as the entry screen shows it.
    const TransactionEntry &Entry() const { return m_entry; }

private:
    /// Stands still but for SetByClock.
    class StoppedClock : public Clock
    {
    public:
        explicit StoppedClock(Clock &clock) : m_clock(clock), m_now(clock.Now()) {}
        void SetByClock() { m_now = m_clock.Now(); }
        QDateTime Now() const override { return m_now; }
        std::unique_ptr<ClockTimer> CreateTimer(std::function<void()> tick) override
        {
            return m_clock.CreateTimer(std::move(tick));
        }
        void Wait(std::chrono::milliseconds duration) override { m_clock.Wait(duration); }
        bool WaitUntil(const std::function<bool()> &done, std::chrono::milliseconds limit) override
        {
            return m_clock.WaitUntil(done, limit);
        }
        void Yield() override { m_clock.Yield(); }

    private:
        Clock &m_clock;
        QDateTime m_now;
    };
    void ReadRow(const Statement &statement);

    StoppedClock m_clock;
    Services m_services;
    ProfitLossBook m_book;
    PostingWork m_work;
    TransactionEntry m_entry;
    qint64 m_row = 0;
    std::optional<WriteGuard> m_guard;
};

/// How a ledger row is posted again: "Sold" as a Sell of minus its Shares. A "Dividend" becomes a
/// reinvestment of as many shares as its Amount. Nothing for cash rows, which leave the entry as
/// the row before them set it.
struct ReplayedAction
{
    Action action;
    enum class Count
    {
        Shares,
        MinusShares,
        Amount
    } count;
};
std::optional<ReplayedAction> ReplayedActionOf(const QString &description);
