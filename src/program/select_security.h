#pragma once

/// A list screen makes a security the selected one, which most commands act on.

#include "program/program.h"

/// The name is that of the account's position; a security without one has none here, rather than
/// that of the security selected before. Daily Tracker and entry screen, if open, follow. Nothing
/// happens when it is the selected one already.
void SelectSecurity(Program &program, const QString &symbol);
