#pragma once

/// How a security splits over asset classes, and the list of class names; both are shared by all
/// accounts.
///
///     Large Cap   0.5            PercentTotal 1
///     Energy      0.5            one class left at 0 alone becomes 1: the whole of it
///
/// A share is a fraction, 1 for 100 percent. A total from 0.99 to 1.01 will do, as does none at
/// all.

#include "base/formats.h"
#include "store/connection.h"
#include "store/recordset.h"

#include <QStringList>

#include <optional>
#include <vector>

struct AssetClassRow
{
    QString AssetClass;
    Single PerCentAllocated;

    bool operator==(const AssetClassRow &) const = default;
};

/// The class rows of one security. Edits are gathered; UpdateBatch writes what differs from what is
/// stored.
class SecurityClasses
{
public:
    /// Reads the rows of `symbol`; edits of the rows before are given up. The connection must
    /// outlive the object.
    void Open(Connection &gConnApplControl, const QString &symbol);
    /// The same rows, edits included, under another symbol.
    void SetSymbol(const QString &symbol) { m_symbol = symbol; }
    const QString &Symbol() const { return m_symbol; }
    /// Every row was begun since Open.
    bool AllNew() const;

    int RecordCount() const { return static_cast<int>(m_rows.size()); }
    const AssetClassRow &At(int row) const { return m_rows[static_cast<size_t>(row)].now; }
    void Add(const AssetClassRow &row);
    void Set(int row, const AssetClassRow &changed);
    void Delete(int row);
    /// Deletes, updates and inserts in one transaction. After an error nothing is written.
    void UpdateBatch();

    /// Sums the shares as they are, a Single after each row.
    void SumAllocation();
    /// A row without a class counts 0, one with a class and no share counts as the whole.
    void NormalizeAllocation();
    /// Gives every row the same share and writes the rows. Nothing without rows.
    void AllocateEvenly();
    /// Whether PercentTotal is 100 percent to within one, or zero.
    bool AllocationIsWhole() const;

    Single PercentTotal; ///< of the last of these sums

private:
    struct Entry
    {
        qint64 id = 0; ///< 0: not stored yet
        QString storedSymbol;
        AssetClassRow now;
        AssetClassRow stored;
    };
    Connection *m_connection = nullptr;
    QString m_symbol;
    std::vector<Entry> m_rows;
    std::vector<qint64> m_deleted;
};

/// The names on offer, in their order.
QStringList AssetClassNames(Connection &gConnApplControl);
/// Adds a name to the list for good; gRsApplication shows it and stands on its first row.
void AddAssetClassName(Recordset &gRsApplication, const QString &name, QDate today);
QString NewAssetClassQuestion(const QString &name);

/// A share as the user writes it, "0.5" or "50%"; the empty text is 0. Nothing for anything else.
std::optional<Single> AllocationFromText(const QString &text, const Formats &formats);
