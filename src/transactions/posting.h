#pragma once

/// The posting sequence: what OK does with an entry. The entry screen, the rebuild and the maker of
/// the sample data are its clients.
///
///     validate  ->  make the posting before this one final  ->  walk over all position rows,
///     posting to the one of the symbol  ->  balance step  ->  lot  ->  History row
///
/// Row, History and DailyProfitLoss reach the file in one transaction, whole or not at all, and with
/// them lots and balance as pending changes; the lots reach their table at the next commit point. A
/// posting that fails leaves what the one before it left pending. A rejected entry leaves everything as it was,
/// apart from the commit of the posting before it, and PostingInProgress set.

#include "transactions/entry.h"

enum class PostingOutcome
{
    Rejected, ///< a check failed; its message was shown
    Posted,
    PostedSplit, ///< posted, but cannot be undone
};

/// Runs the sequence up to the requery of the rows. Errors of posting are shown and end the
/// program; everything not written whole is dropped. The caller ends a posting with FinishPosting.
PostingOutcome PostTransaction(PostingWork &work, TransactionEntry &entry, EntryFiller &filler);

/// The last step, once the lists are refreshed: the screen is free for the next entry, and Undo
/// Last is enabled where the outcome allows it.
void FinishPosting(PostingWork &work, PostingOutcome outcome);
