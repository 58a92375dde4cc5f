#pragma once

/// The no-date value of ranges and settings: 1900-01-01. It is a real day to every comparison.

#include <QDate>

inline QDate NoDate()
{
    return QDate(1900, 1, 1);
}
