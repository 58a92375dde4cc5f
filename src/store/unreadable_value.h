#pragma once

/// The words for a value in a table that does not read as what its column holds.
///
///     Table DailyTracker, row ACME, column CurrPrice: 'a lot' is no number.
///     Table PriceHistory, row ACME, 2026-01-05, column Shares: 'Inf' does not fit.

#include "base/runtime_error.h"

#include <QStringList>

struct PlaceOfValue
{
    QString table;
    QStringList keys; ///< by which a user knows the row
    QString column;
    QString text; ///< the value
};

/// Whether a column is one by which a user knows a row.
bool IsKeyColumn(const QString &field);

/// `number` is that of a type mismatch or of an overflow.
RuntimeError UnreadableValue(const PlaceOfValue &place, int number);
