#include "transactions/rebuild.h"

#include "store/pending_changes.h"
#include "transactions/posting.h"

namespace
{

/// Nobody sits at the fields of a replay.
class NoFiller : public EntryFiller
{
public:
    void Focus(EntryField) override {}
    void SelectAction(Action) override {}
};

} // namespace

std::optional<ReplayedAction> ReplayedActionOf(const QString &description)
{
    using Count = ReplayedAction::Count;
    static const QHash<QString, ReplayedAction> actions = {
        {QStringLiteral("Bought"), {Action::Buy, Count::Shares}},
        {QStringLiteral("Sold"), {Action::Sell, Count::MinusShares}},
        {QStringLiteral("Short  Sale"), {Action::SellShort, Count::MinusShares}},
        {QStringLiteral("Short Cover"), {Action::BuyToCover, Count::Shares}},
        {QStringLiteral("Reinvestment"), {Action::DividendReinvestment, Count::Shares}},
        {QStringLiteral("Dividend"), {Action::DividendReinvestment, Count::Amount}},
    };
    const auto found = actions.constFind(description.trimmed());
    if (found == actions.constEnd())
        return std::nullopt;
    return *found;
}

HistoryReplay::HistoryReplay(const PostingWork &work)
    : m_clock(work.services.clock), m_services{m_clock,
                                               work.services.dialogs,
                                               work.services.status,
                                               work.services.commands,
                                               work.services.lifetime,
                                               work.services.settingsStore,
                                               work.services.formats,
                                               work.services.appPath,
                                               work.services.showHelp},
      m_work{work.rows,  work.gRsLots,      work.totals, work.account, work.undo,
             work.entry, work.gConnAccount, m_services,  &m_book}
{}

void HistoryReplay::Begin()
{
    m_guard.emplace(m_work.gConnAccount);
    m_work.gConnAccount.Execute(QStringLiteral("DELETE FROM DailyProfitLoss"));
    m_work.gConnAccount.Execute(QStringLiteral("DELETE FROM PriceHistory"));
    ClearPendingLots(m_work.gConnAccount);
    // Only the connection that holds the transaction can write the lots at its end.
    m_work.gRsLots.Open(m_work.gConnAccount);
    m_work.gRsLots.BeginTrans();

    const QDate today = m_clock.Today();
    const QTime now = m_clock.TimeOfDay();
    TrackerRecordset &rows = m_work.rows;
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext())
        ResetDailyTrackerRow(rows.Edit(), today, now);
}

void HistoryReplay::Run(const std::function<void(qint64)> &progress)
{
    NoFiller filler;
    m_clock.SetByClock();
    m_entry = TransactionEntry();
    m_entry.action = Action::Buy;
    m_entry.NumberOfShares = QStringLiteral("0");
    m_entry.TransDate = m_clock.Today();

    Statement statement = m_work.gConnAccount.Prepare(
        QStringLiteral("SELECT Symbol, Name, Description, Shares, TransactionCost, Price, Amount, "
                       "TransDate FROM History WHERE Symbol <> '' ORDER BY TransDate, Time, ID"));
    m_row = 0;
    while (statement.Step()) {
        progress(++m_row);
        ReadRow(statement);
        FinishPosting(m_work, PostTransaction(m_work, m_entry, filler));
    }
}

void HistoryReplay::ReadRow(const Statement &statement)
{
    const Formats &formats = m_work.services.formats;
    m_entry.Symbol = statement.Text(0);
    m_entry.Name = statement.Text(1);
    m_entry.PurchasePrice = formats.ToText(statement.Money(5));
    m_work.entry.Commission = -statement.Money(4);

    const QDate day = statement.Date(7);
    m_work.entry.RebuildNewDay = day.isValid() && day != m_entry.TransDate;
    if (m_work.entry.RebuildNewDay) // a row without a date belongs to the day before it
        m_entry.TransDate = day;

    const std::optional<ReplayedAction> replayed = ReplayedActionOf(statement.Text(2));
    if (!replayed)
        return;
    m_entry.action = replayed->action;
    const Single shares = statement.ShareCount(3);
    switch (replayed->count) {
    case ReplayedAction::Count::Shares:
        m_entry.NumberOfShares = formats.ToText(shares);
        break;
    case ReplayedAction::Count::MinusShares:
        m_entry.NumberOfShares = formats.ToText(-shares);
        break;
    case ReplayedAction::Count::Amount:
        m_entry.NumberOfShares = formats.ToText(statement.Money(6));
        break;
    }
}

void HistoryReplay::Commit()
{
    m_work.rows.UpdateBatch();
    m_work.gRsLots.CommitTrans();
    m_book.Write(m_work.gConnAccount);
    m_guard->Commit();
    m_guard.reset();
    m_work.rows.Requery();                 // in their order, as behind any posting
    m_work.undo.UndoLast.LotAdded = false; // no undo of what comes next may take a replayed lot
}
