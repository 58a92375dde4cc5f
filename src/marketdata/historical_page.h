#pragma once

/// The walk over a table page of daily prices: its cells stand in "<nobr>" tags, seven to a row.
///
///     <nobr>20-Nov-26</nobr> <nobr>213.20</nobr> <nobr>216.04</nobr> <nobr>212.70</nobr>
///     <nobr><b>214.37</b></nobr> <nobr>18,734,022</nobr> <nobr>214.37</nobr>
///
/// Nothing else in the page tells a row. A cell that does not read as what its place asks for ends
/// the row, and from there on cells are passed over until one is a date, which begins a row anew. So
/// headings, dividends and splits drop out:
///
///     18-Nov-26 | $0.26 Cash Dividend | 18-Nov-26 | 210.75 | ...     one row, that of the second date
///
/// The page is English, whatever the user's locale.

#include "base/currency.h"
#include "base/formats.h"

#include <QDate>
#include <QString>

/// A row of HistoricalPrices.
struct HistPrice
{
    QString Symbol;
    QDate PriceDate;
    Currency PriceOpen;
    Currency DayHigh;
    Currency DayLow;
    Currency PriceClose;
    qint32 Volume = 0;
    Currency AdjClose;
};

/// A date as an English page writes it: "20-Nov-26", "20 November 2026", "Nov 20, 2026", "11/20/26",
/// "2026-11-20". Two digits mean the latest such year up to the year behind `today`: prices are of the
/// past. Nothing for a text that is no date.
std::optional<QDate> PageDate(QStringView text, QDate today);

///     HistoricalPage page(text, symbol, today);
///     while (page.FindCell())
///         if (page.ReadRow())
///             rows.push_back(page.Row());
class HistoricalPage
{
public:
    HistoricalPage(const QString &text, const QString &symbol, QDate today);

    /// True while there is a further cell; each call goes on behind the cell that was read last.
    bool FindCell() const;
    /// Reads from the next cell on; true when that gave a whole row, which Row then is. A row that
    /// the page breaks off is none. Throws RuntimeError 6 for a number that its column cannot hold.
    bool ReadRow();
    const HistPrice &Row() const { return m_row; }

private:
    bool TakeCell();
    void Convert(int cellIndex);

    QString m_text;
    QDate m_today;
    Formats m_formats;
    HistPrice m_row;
    QString m_cell;
    qsizetype m_cellEnd = 0; ///< of the "</nobr>" behind the cell read last
    bool m_skipRow = false;
    bool m_brokenOff = false; ///< no further whole cell
};
