#pragma once

/// A list screen makes a security the selected one, which most commands act on.

#include "program/program.h"

#include <optional>

/// Without a name given it is that of the account's position; a security without one has none here,
/// rather than that of the security selected before. Daily Tracker and entry screen, if open,
/// follow; they stay as they are when it is the selected one already.
void SelectSecurity(Program &program, const QString &symbol,
                    const std::optional<QString> &name = std::nullopt);
