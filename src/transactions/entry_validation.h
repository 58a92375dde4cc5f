#pragma once

/// The checks of an entry, at three points of its way: which action a type of security can take,
/// the fields before anything is posted, and the position when its row has been reached. A hard
/// error shows a message and stops; a question lets the user go on. None of them runs in a replay.
///
/// Each returns true when the entry has an error; the message has then been shown and the user put
/// into the field. Nothing stored is changed.

#include "transactions/entry.h"

/// Whether a security of the type can take the action.
bool ActionFitsType(Action action, const QString &securityType);
/// Shows the message when it cannot.
bool ValidateActionForType(PostingWork &work, Action action);

/// What the fields offer for the action on the position of the entry's symbol: AverageCost of the
/// entry state, the whole position for Sell and Buy to cover with an empty count, 2 for 1 for a
/// split with empty fields. True, with a message, when the type cannot take the action.
bool RefreshEntryFields(PostingWork &work, TransactionEntry &entry);

/// A price as typed - "12 3/8", "260.55" - in the format of the field: "12.37500", "260.55000"; the
/// empty text for zero. Nothing for a text that is no price.
std::optional<QString> ValidatePriceText(const QString &text, const Formats &formats);

bool ValidateEntry(PostingWork &work, TransactionEntry &entry, EntryFiller &filler);
/// On the current row. `transShares` is signed already. A question answered Yes lets the entry go
/// on under another action, which `entry` then has.
bool ValidateSecurityEntry(PostingWork &work, TransactionEntry &entry, Single transShares,
                           Currency transPrice, EntryFiller &filler);
