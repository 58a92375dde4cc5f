#pragma once

/// Keeps the account file and HistPrices.mdb small: deletes what is older than the settings allow,
/// then writes both files anew (transactions/purge.h, store/compaction.h).
///
///     mode (RunState::BackupMode)    asks when no backup was made today    afterwards
///     "" from the menu               yes                                   the account is open
///     "Backup"                       yes                                   all is closed
///     "AutoCompact"                  no                                    all is closed
///
/// How it went is told in the status bar. A failure is shown in a box; the program then goes on
/// with the files that are in place, each of them whole, and what was written of a new file stays
/// under its temporary name until the next run.

#include "program/program.h"

void CompactDatabases(Program &program);
