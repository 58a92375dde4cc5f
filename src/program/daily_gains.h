#pragma once

/// The gains of today on disk, for a screen that reads the daily balances from the file.

#include "program/program.h"

/// Enters today's gain of each security. Nothing happens while the Daily Tracker is closed: no
/// position moves then.
void RecordTodaysGains(Program &program);
