#pragma once

/// Open purchase lots of an account, taken first in, first out.
///
///     100 ACME @ 10.0000   5 January       sell 150 at 30:
///     100 ACME @ 20.0000   2 February      gain (30-10)*100 + (30-20)*50 = 2,500; left 50 @ 20
///
/// A lot is a PriceHistory row; negative Shares are a short sale; commission stays out of it.
///
/// Changes are pending between BeginTrans and CommitTrans: this object shows them, every reader of
/// the file does not. CommitTrans writes what changed in one transaction, RollbackTrans gives the
/// lots back as they were, with their IDs. Outside of a transaction a change is written at once.
/// SavePending keeps them through a crash: Open, which reads all lots, takes up first what a run left.

#include "base/currency.h"
#include "base/single.h"
#include "store/connection.h"

#include <QDate>
#include <QHash>
#include <QSet>
#include <QString>

#include <vector>

struct Lot
{
    qint64 ID = 0; ///< 0: not in the file yet
    Single Shares;
    Currency PurchasePrice; ///< a share
    QDate TransDate;
    QTime Time;

    bool operator==(const Lot &) const = default;
};

class PurchaseLots
{
public:
    /// Takes up what is pending in the file and reads all open lots; the connection must outlive the
    /// object.
    void Open(Connection &gConnUndo);
    /// Drops what is pending here; what SavePending wrote stays in the file.
    void Close();
    bool IsOpen() const { return m_connection != nullptr; }

    /// In the order in which they are consumed: TransDate, Time and ID as of the last Requery; lots
    /// added since then behind them, whatever their date.
    const std::vector<Lot> &LotsOf(const QString &symbol) const;
    /// The lots to be changed; call RemoveEmpty and Requery when they are.
    std::vector<Lot> &EditLotsOf(const QString &symbol);
    void Add(const QString &symbol, const Lot &lot);
    void RemoveAll(const QString &symbol);
    /// Removes the lots of no shares: those of `changedSymbol`, and any that the file held.
    void RemoveEmpty(const QString &changedSymbol);
    /// Sum of Shares in row order, a Single after each lot.
    Single SharesOf(const QString &symbol) const;
    /// Brings added lots into the order of their dates; outside of a transaction writes all
    /// changes.
    void Requery();
    /// Reads the file anew, for lots that others changed; what is pending stays pending.
    void Reload();

    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();
    bool InTransaction() const { return m_inTransaction; }
    /// Keeps the pending changes in the file (store/pending_changes.h) until CommitTrans writes the
    /// lots; the rows of the posting are written in the same transaction. Before a RollbackTrans the
    /// caller clears them. Costs a row for each changed lot.
    void SavePending(Connection &gConnAccount);

private:
    using SymbolLots = QHash<QString, std::vector<Lot>>;

    /// A difference between these lots and those of the file.
    struct Change
    {
        QString symbol;
        Lot *lot = nullptr; ///< as it is to become; none: the lot goes
        qint64 removed = 0; ///< its ID then
    };

    void Read();
    void Touch(const QString &symbol);
    std::vector<Change> Changes();
    void WriteChanges();

    Connection *m_connection = nullptr;
    SymbolLots m_lots;
    SymbolLots m_stored;       ///< the lots of each touched symbol as the file has them
    QSet<QString> m_unsorted;  ///< symbols with lots added since the last Requery
    QSet<QString> m_withEmpty; ///< symbols that may have lots of no shares
    bool m_inTransaction = false;
    bool m_isSaved = false; ///< the file has what is pending
};
