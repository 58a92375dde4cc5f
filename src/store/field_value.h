#pragma once

/// The value of one field of a row, with null apart from the empty text.

#include "base/currency.h"
#include "base/integer.h"
#include "base/single.h"

#include <QDate>
#include <QString>

#include <variant>

using FieldValue =
    std::variant<std::monostate, Currency, Single, Integer, qint64, bool, QString, QDate, QTime>;

inline bool IsNull(const FieldValue &value)
{
    return std::holds_alternative<std::monostate>(value);
}

/// What a column of our tables holds; told by the second word of its declared type.
enum class FieldType
{
    Currency,
    Single,
    Counter,
    Long,
    YesNo,
    Text,
    Date,
    Time
};
