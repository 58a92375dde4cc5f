#pragma once

/// The list screens follow what a posting or an undo wrote, the one of the daily prices what a
/// download brought.

#include "program/program.h"

/// A list screen that stays open while its rows are written by others.
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
/// The historical price list, if it is open, reads its rows anew: a download has brought prices.
void RefreshPriceList(Program &program);
