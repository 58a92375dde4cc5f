#pragma once

/// One transaction as it stands in the fields of the entry screen, and what the posting works on.

#include "platform/services.h"
#include "store/account_state.h"
#include "store/connection.h"
#include "tracking/portfolio_totals.h"
#include "tracking/tracker_rows.h"
#include "transactions/action.h"
#include "transactions/entry_state.h"
#include "transactions/lots.h"
#include "transactions/undo_record.h"

/// The texts are what the user sees; the posting reads them, not numbers behind them.
struct TransactionEntry
{
    std::optional<Action> action;
    QString Symbol;
    QString Name;
    QString NumberOfShares; ///< count; amount of a cash action; new shares of a split
    QString PurchasePrice;  ///< price a share; old shares of a split
    QDate TransDate;
};

enum class EntryField
{
    Action,
    NumberOfShares,
    PurchasePrice,
    TransDate
};

/// How a routine speaks to whoever fills in the entry: a screen, a replay, a maker of sample data.
class EntryFiller
{
public:
    virtual ~EntryFiller() = default;
    /// Puts the user into the field that has to be corrected.
    virtual void Focus(EntryField field) = 0;
    /// The entry goes on, or is left, under another action than was chosen.
    virtual void SelectAction(Action action) = 0;
};

class ProfitLossBook;

/// The open account as a posting sees it; all of it belongs to the program.
struct PostingWork
{
    TrackerRecordset &rows;
    PurchaseLots &gRsLots;
    PortfolioTotals &totals;
    AccountState &account;
    UndoState &undo;
    EntryState &entry;
    Connection &gConnAccount;
    Services &services;
    /// Where a replay gathers DailyProfitLoss; without it each posting writes its own.
    ProfitLossBook *replayed = nullptr;
};

/// Shows the lines of a failed posting and ends the program; what was not written whole is dropped.
[[noreturn]] void EndAfterFailure(Services &services, const QString &lines,
                                  const RuntimeError &error);
