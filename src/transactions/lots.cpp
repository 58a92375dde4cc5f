#include "transactions/lots.h"

#include "store/pending_changes.h"

#include <algorithm>
#include <span>
#include <tuple>
#include <utility>

/// A symbol that is touched inside a transaction first leaves a copy of its lots in m_stored. That
/// copy is what a rollback gives back, and what a commit compares with to find the rows to delete,
/// update and insert. Cost follows the lots of the symbols touched, not the table.

namespace
{

bool ConsumedBefore(const Lot &left, const Lot &right)
{
    const auto key = [](const Lot &lot) {
        // A lot that is not in the file yet will get the highest number.
        return std::make_tuple(lot.TransDate, lot.Time, lot.ID == 0 ? INT64_MAX : lot.ID);
    };
    return key(left) < key(right);
}

const Lot *FindById(const std::vector<Lot> &lots, qint64 id)
{
    const auto found =
        std::find_if(lots.begin(), lots.end(), [id](const Lot &lot) { return lot.ID == id; });
    return found == lots.end() ? nullptr : &*found;
}

} // namespace

void PurchaseLots::Open(Connection &gConnUndo)
{
    Close();
    m_connection = &gConnUndo;
    try {
        TakeUpPendingLots(gConnUndo);
        Read();
    } catch (...) {
        Close();
        throw;
    }
}

void PurchaseLots::Close()
{
    *this = PurchaseLots();
}

void PurchaseLots::Read()
{
    m_lots.clear();
    m_withEmpty.clear();
    Statement statement = m_connection->Prepare(
        QStringLiteral("SELECT ID, Symbol, Shares, PurchasePrice, TransDate, Time "
                       "FROM PriceHistory ORDER BY Symbol, TransDate, Time, ID"));
    QString symbol;
    std::vector<Lot> *lots = nullptr;
    while (statement.Step()) {
        Lot lot;
        try {
            lot = {statement.Int64(0), statement.ShareCount(2), statement.Money(3),
                   statement.Date(4), statement.Time(5)};
        } catch (const RuntimeError &) {
            continue; // no usable number: it stays in the file, and out of every count
        }
        const QString rowSymbol = statement.Text(1);
        if (!lots || rowSymbol != symbol) {
            symbol = rowSymbol;
            lots = &m_lots[symbol];
        }
        lots->push_back(lot);
        if (lots->back().Shares.IsZero())
            m_withEmpty.insert(symbol);
    }
}

const std::vector<Lot> &PurchaseLots::LotsOf(const QString &symbol) const
{
    static const std::vector<Lot> none;
    const auto found = m_lots.constFind(symbol);
    return found == m_lots.constEnd() ? none : *found;
}

std::vector<Lot> &PurchaseLots::EditLotsOf(const QString &symbol)
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    Touch(symbol);
    return m_lots[symbol];
}

void PurchaseLots::Touch(const QString &symbol)
{
    if (!m_stored.contains(symbol))
        m_stored.insert(symbol, m_lots.value(symbol));
}

void PurchaseLots::Add(const QString &symbol, const Lot &lot)
{
    std::vector<Lot> &lots = EditLotsOf(symbol);
    if (!lots.empty() && ConsumedBefore(lot, lots.back()))
        m_unsorted.insert(symbol);
    lots.push_back(lot);
    if (lot.Shares.IsZero())
        m_withEmpty.insert(symbol);
    if (!m_inTransaction)
        WriteChanges();
}

void PurchaseLots::RemoveAll(const QString &symbol)
{
    EditLotsOf(symbol).clear();
    if (!m_inTransaction)
        WriteChanges();
}

void PurchaseLots::RemoveEmpty(const QString &changedSymbol)
{
    m_withEmpty.insert(changedSymbol);
    const auto empty = [](const Lot &lot) { return lot.Shares.IsZero(); };
    for (const QString &symbol : std::as_const(m_withEmpty)) {
        const std::vector<Lot> &lots = LotsOf(symbol);
        if (std::any_of(lots.begin(), lots.end(), empty))
            std::erase_if(EditLotsOf(symbol), empty);
    }
    m_withEmpty.clear();
}

Single PurchaseLots::SharesOf(const QString &symbol) const
{
    Single sum;
    for (const Lot &lot : LotsOf(symbol))
        sum = sum + lot.Shares;
    return sum;
}

void PurchaseLots::Requery()
{
    for (const QString &symbol : std::as_const(m_unsorted)) {
        std::vector<Lot> &lots = m_lots[symbol];
        std::stable_sort(lots.begin(), lots.end(), ConsumedBefore);
    }
    m_unsorted.clear();
    if (!m_inTransaction)
        WriteChanges();
}

void PurchaseLots::Reload()
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    const SymbolLots before = m_stored;
    const SymbolLots pending = m_lots;
    Read();
    m_stored.clear();
    m_unsorted.clear();
    for (auto symbol = before.keyBegin(); symbol != before.keyEnd(); ++symbol) {
        std::vector<Lot> &lots = EditLotsOf(*symbol); // as the file has them now
        // By iterator: the operator of a constant QHash gives a copy, whose lots would be gone.
        const std::vector<Lot> &was = *before.constFind(*symbol);
        const std::vector<Lot> &changed = *pending.constFind(*symbol);
        std::erase_if(lots, [&](const Lot &lot) {
            return FindById(was, lot.ID) && !FindById(changed, lot.ID);
        });
        for (const Lot &lot : changed) {
            if (lot.ID == 0) {
                lots.push_back(lot);
                continue;
            }
            const Lot *old = FindById(was, lot.ID);
            for (Lot &now : lots)
                if (old && now.ID == lot.ID && !(*old == lot))
                    now = lot;
        }
    }
}

void PurchaseLots::BeginTrans()
{
    if (!IsOpen())
        throw RuntimeError::ObjectClosed();
    m_inTransaction = true;
}

void PurchaseLots::CommitTrans()
{
    WriteChanges();
    m_inTransaction = false;
}

void PurchaseLots::RollbackTrans()
{
    for (auto stored = m_stored.constBegin(); stored != m_stored.constEnd(); ++stored)
        m_lots[stored.key()] = stored.value();
    for (const QString &symbol : m_stored.keys()) {
        m_withEmpty.insert(symbol);
        m_unsorted.insert(symbol); // lots may come back that were added after the last requery
    }
    m_stored.clear();
    m_inTransaction = false;
    m_isSaved = false;
}

/// Of all symbols touched, by symbol, so that equal changes give equal IDs.
std::vector<PurchaseLots::Change> PurchaseLots::Changes()
{
    std::vector<Change> changes;
    QStringList symbols = m_stored.keys();
    symbols.sort();
    for (const QString &symbol : std::as_const(symbols)) {
        // Sales take from the front and purchases add at the end: mostly all in between is the same.
        const std::vector<Lot> &stored = *m_stored.constFind(symbol);
        std::span<const Lot> before(stored);
        std::span<Lot> now(m_lots[symbol]);
        while (!before.empty() && !now.empty() && before.front() == now.front()) {
            before = before.subspan(1);
            now = now.subspan(1);
        }
        while (!before.empty() && !now.empty() && before.back() == now.back()) {
            before = before.first(before.size() - 1);
            now = now.first(now.size() - 1);
        }
        QHash<qint64, const Lot *> gone;
        for (const Lot &lot : before)
            gone.insert(lot.ID, &lot);
        for (Lot &lot : now) {
            const Lot *old = lot.ID == 0 ? nullptr : gone.take(lot.ID);
            if (!old || !(*old == lot))
                changes.push_back({symbol, &lot});
        }
        for (const Lot &lot : before)
            if (gone.contains(lot.ID))
                changes.push_back({symbol, nullptr, lot.ID});
    }
    return changes;
}

void PurchaseLots::WriteChanges()
{
    const std::vector<Change> changes = Changes();
    std::vector<std::pair<Lot *, qint64>> inserted;
    if (!changes.empty() || m_isSaved) { // else no transaction, and no sync
        WriteGuard guard(*m_connection);
        for (const Change &change : changes) {
            if (!change.lot) {
                m_connection->Execute(QStringLiteral("DELETE FROM PriceHistory WHERE ID = ?"),
                                      change.removed);
            } else if (change.lot->ID != 0) {
                m_connection->Execute(QStringLiteral("UPDATE PriceHistory SET Shares = ?, "
                                                     "PurchasePrice = ? WHERE ID = ?"),
                                      change.lot->Shares, change.lot->PurchasePrice,
                                      change.lot->ID);
            } else {
                m_connection->Execute(
                    QStringLiteral("INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, "
                                   "TransDate, Time) VALUES (?, ?, ?, ?, ?)"),
                    change.symbol, change.lot->Shares, change.lot->PurchasePrice,
                    change.lot->TransDate, change.lot->Time);
                inserted.emplace_back(change.lot, m_connection->LastInsertId());
            }
        }
        if (m_isSaved)
            ClearPendingLots(*m_connection);
        guard.Commit();
    }
    for (const auto &[lot, id] : inserted)
        lot->ID = id;
    m_stored.clear();
    m_isSaved = false;
}

void PurchaseLots::SavePending(Connection &gConnAccount)
{
    std::vector<PendingLot> pending;
    for (const Change &change : Changes()) {
        if (change.lot)
            pending.push_back({change.lot->ID, change.symbol, change.lot->Shares,
                               change.lot->PurchasePrice, change.lot->TransDate, change.lot->Time});
        else
            pending.push_back({change.removed, change.symbol, {}, {}, {}, {}});
    }
    SavePendingLots(gConnAccount, pending);
    m_isSaved = true;
}
