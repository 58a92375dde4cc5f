#pragma once

/// The practice market: simulated prices of every symbol on every weekday, past and future.
///
///     PracticePricesOf("BRWK", friday)            open, high, low, close and volume of the day
///     PracticePricesOf("BRWK", saturday)          nothing
///     PracticePriceAt("BRWK", friday 12:00)       between the low and the high of that day
///     PracticePriceAt("BRWK", saturday 12:00)     the close of Friday
///
/// A price follows from symbol and date alone: the same on every machine and in every run, at the
/// same cost for any day. What a symbol is shows in its letters, and decides on price and swings:
///
///     begins with a point      .PRX         index      1,000 to 5,000    0.8 percent a day
///     five letters, last an X  GRNVX        fund       20 to 60          0.5
///     C or P before digits     BRWKC90      option     2 to 9            3.5
///     other letters, digits    TARN45       bond       92 to 108         0.2
///     anything else            BRWK         stock      15 to 180         1.4
///
/// Those are usual figures: in time a price wanders from there, a stock to between half and twice.
/// Prices are whole cents, never below one. Small and capital letters count alike. The market is
/// open from 9:30 to 16:00, in the time of whoever asks, and knows no holidays, splits or
/// dividends.

#include "base/currency.h"

#include <QDateTime>
#include <QString>

#include <optional>

struct PracticeDay
{
    Currency Open;
    Currency High;
    Currency Low;
    Currency Close;
    qint64 Volume = 0; ///< shares; a fund has none
};

/// Nothing on Saturdays and Sundays, and for an invalid date.
std::optional<PracticeDay> PracticePricesOf(const QString &symbol, QDate date);

/// The last price at that moment: from the open at 9:30 to the close at 16:00 and after, never
/// outside the day's range; before the open and on weekends the close of the last weekday before.
/// Throws RuntimeError 5 for an invalid moment.
Currency PracticePriceAt(const QString &symbol, const QDateTime &moment);

inline QTime PracticeOpen()
{
    return QTime(9, 30);
}
inline QTime PracticeClose()
{
    return QTime(16, 0);
}
/// The date itself, or the Friday before when it is a Saturday or Sunday.
QDate LatestWeekday(QDate date);
