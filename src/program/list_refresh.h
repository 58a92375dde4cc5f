#pragma once

/// The list screens follow what a posting or an undo wrote.

#include "program/program.h"

/// A list screen that stays open while transactions are posted.
class ListScreen
{
public:
    virtual ~ListScreen() = default;
    /// Reads its rows anew.
    virtual void RefreshList() = 0;
};

/// Gives the file 2.5 seconds, with events handled meanwhile, and refreshes the list screens that
/// are open then. Without an open one, and while the ledger is replayed, there is no wait.
void RefreshListsAfterPosting(Program &program);
/// Refreshes them at once.
void RefreshOpenLists(Program &program);
