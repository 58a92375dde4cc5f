#pragma once

/// The position rows of the open account: the shared working set of posting, price cycle and
/// valuation, and what the Daily Tracker's grid shows.
///
/// The rows lie in memory in the order of the last query; an edit moves no row, so that sums over
/// the rows keep their order until the next Requery. Edits are gathered: UpdateBatch writes the
/// rows that differ from what is stored, in one transaction.
///
/// A row can bear marks, which are in memory alone and stay with it when the rows are read again: why its
/// price wants a look, and why it is left out of the totals. A column whose stored value its type
/// cannot hold reads as zero; such a row is left out, and keeps what is stored until it is edited.

#include "base/currency.h"
#include "base/integer.h"
#include "base/single.h"
#include "store/connection.h"

#include <QDate>
#include <QHash>
#include <QString>

#include <functional>
#include <vector>

struct TrackerRow
{
    QString Symbol;
    QString Name;
    Single Shares;            ///< held; negative for a short position
    Currency CurrPrice;       ///< last price
    Currency Basis;           ///< unrealized gain, never a cost; shown as "Gain"
    Currency AvrgPrice;       ///< average price of what is held, without commission
    Currency ProfitLossToday; ///< realized gain less commission
    Currency ProfitLossToDate;
    Currency ActualProfitLoss; ///< ProfitLossToday + ProfitLossToDate
    Currency TransCostToday;   ///< commission as a negative sum
    Currency TransCostToDate;
    Integer NumberTransToday;
    Integer NumberTransToDate;
    Currency InvestedValue;  ///< market value as a positive number
    Currency InvestedToDate; ///< purchase amounts and commissions; proceeds never subtracted
    QDate TransDate;
    QTime Time;
    Single PerCentGainToday; ///< a fraction of the average price: 0.25 is 25 percent

    bool operator==(const TrackerRow &) const = default;
};

/// Why the price of a row wants a look; an empty text: it does not.
struct PriceMark
{
    QString why;
    bool isOld = false; ///< no price came; else the one that came is suspicious
};

class TrackerRecordset
{
public:
    /// Reads the rows in the order of `orderBy` ("ORDER BY Shares DESC, Symbol"); the cursor stands
    /// on the first one. The connection must outlive the recordset.
    void Open(Connection &connection, const QString &orderBy);
    void Close();
    bool IsOpen() const { return m_connection != nullptr; }
    /// What the rows are read from and written to; throws 3704 when closed.
    Connection &File() const;
    /// Another order for the next Requery.
    void SetOrderBy(const QString &orderBy) { m_orderBy = orderBy; }
    const QString &OrderBy() const { return m_orderBy; }

    int RecordCount() const { return int(m_rows.size()); }
    bool IsEmpty() const { return m_rows.empty(); }
    bool AtEnd() const { return m_current >= int(m_rows.size()); }
    int Position() const { return m_current; }
    void MoveFirst() { MoveTo(0); }
    void MoveNext() { MoveTo(m_current + 1); }
    void MoveTo(int row);
    /// Stands on the first row of the symbol, compared exactly; false, and at the end, without one.
    bool Find(const QString &symbol);

    const TrackerRow &At(int row) const { return m_rows[size_t(row)].now; }
    /// The current row; RuntimeError 3021 without one.
    const TrackerRow &Current() const;
    TrackerRow &Edit();

    /// The columns of the row that read as zero since their values are no usable numbers:
    /// "Shares, AvrgPrice". Values that follow from others, such as Basis, do not count.
    const QString &Unreadable(int row) const { return m_rows[size_t(row)].unreadable; }
    /// Price and time of the current row: makes a price that could not be read a good one.
    void SetPrice(Currency price, QTime time);
    /// Holds for the price that the row had when it was set.
    PriceMark MarkOfPrice(int row) const;
    void MarkPrice(int row, const PriceMark &mark);
    /// Why the row is left out of the totals; empty: it is not. Valuation (valuation.h) says so.
    const QString &LeftOut(int row) const { return m_rows[size_t(row)].leftOut; }
    void MarkLeftOut(int row, const QString &why);
    /// The rows that were left out since the last call.
    std::vector<int> TakeNewlyLeftOut();
    /// Marks were set: shows them.
    void MarksChanged() const { Notify(); }

    /// A row at the end, all amounts zero, TransDate and Time as given; it becomes the current row.
    void AddNew(const QString &symbol, const QString &name, QDate today, QTime now);
    /// Deletes the current row from the file at once; the cursor then stands on the row behind it.
    void Delete();
    /// Writes the rows that differ from what is stored. After an error nothing is written. Inside an
    /// open transaction they count as stored from here on: put a copy back when that one fails.
    void UpdateBatch();
    /// Gives up edits and added rows that were not written.
    void CancelBatch();
    /// UpdateBatch, then reads the rows anew; the cursor stands on the first one.
    void Requery();

    /// Called after rows were read anew, added, deleted or written.
    std::function<void()> OnRowsChanged;

private:
    struct Entry
    {
        qint64 id = 0; ///< 0: not stored yet
        TrackerRow now;
        TrackerRow stored;
        QString unreadable;
        QString leftOut;
        bool isLeftOutKnown = false; ///< told by TakeNewlyLeftOut
        PriceMark priceMark;
        Currency markedPrice; ///< the price that priceMark is about
    };
    void Read();
    void IndexRows();
    void Notify() const;

    Connection *m_connection = nullptr;
    QString m_orderBy;
    std::vector<Entry> m_rows;
    QHash<QString, int> m_bySymbol;
    int m_current = 0;
};

/// All amounts of the row to zero, dated now; Symbol and Name stay.
void ResetDailyTrackerRow(TrackerRow &row, QDate today, QTime now);
