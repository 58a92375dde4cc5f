#pragma once

/// The orders of the Daily Tracker's grid.

#include <QString>

#include <optional>

/// "ORDER BY Shares DESC, Symbol, TransDate DESC, Time DESC"
QString InitialGridOrder();
/// The clause for a click on the heading of a column; nothing for a column that cannot be sorted.
/// Every column but Time has the date and time, latest first, behind it.
std::optional<QString> GridOrderFor(const QString &dataField, bool descending);
