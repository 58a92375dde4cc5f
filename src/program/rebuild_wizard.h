#pragma once

/// The wizard that makes an account's positions anew from its ledger: the questions, the reopening
/// of the account and what the user sees of the replay (transactions/rebuild.h).
///
/// Nothing of it reaches the account's file before the replay has come to its end; a crash or an
/// error on the way leaves the account as it was.

#include "program/program.h"

/// What the wizard needs of the entry screen, whose fields show the replayed row.
class RebuildScreen
{
public:
    virtual ~RebuildScreen() = default;
    virtual void ShowReplayed(const TransactionEntry &entry) = 0;
    virtual void ClearObjects() = 0;
    virtual void DisEnaCommandButtons() = 0;
    /// A posting is under way, or waits for the lists.
    virtual bool IsPosting() const = 0;
};

/// From the Wizard button of the entry screen or the toolbar. Nothing happens while one is running
/// or a posting is under way. AccountBalance and PriorBasisTotal come out as they went in. A
/// failure is shown and leaves the account as it was, but for what was still to be undone: that is
/// dropped.
void StartRebuildFromHistory(Program &program);
