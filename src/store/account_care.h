#pragma once

/// What is done for the safety of an account each time it has come up.

#include "store/databases.h"

/// Whether the store finds the file's pages and indexes to fit together. The time it takes grows
/// with the file.
bool IsInOrder(Connection &account);

/// Checks the account when it was not closed properly last time, and makes the day's copy of one that
/// is not damaged. The result is a line for the status bar, empty when there is nothing to tell; it
/// throws nothing.
QString CareForAccount(Databases &databases, QDate today);
