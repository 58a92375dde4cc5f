#pragma once

/// Which purchases a sale closed, and what they cost: from the History ledger alone, oldest
/// purchase first, independently of the open lots. Tax reports ask for figures only; purge and
/// deletes keep what the matching used up.
///
///     Bought 100 @ 10, cost -5; Sold 100 @ 12, Amount 1,195
///         ProceedsSide 1,195, CostSide -1,005, gain 190; left of the purchase: 0 shares, cost 0
///
/// Purchases ("Bought...", "...Sale...") open a position, sales ("Sold...", "...Cover...") close
/// one. Reinvested shares are on neither side. A purchase's commission counts once and in whole,
/// with the first sale that touches it. Whether a purchase is later than the sale is not looked at;
/// shares beyond all purchases stay unmatched.
///
/// The rows are copies, in the order of Symbol, TransDate, Time and ID; the file changes with
/// WriteBack alone. Cost is linear in the rows: a used-up purchase is never visited again.

#include "base/currency.h"
#include "base/dates.h"
#include "base/single.h"
#include "store/connection.h"

#include <QDate>
#include <QString>

#include <vector>

/// Reset by the caller between the sales, or not, as its figures ask for.
struct MatchResult
{
    QDate DateAcquired = NoDate(); ///< of the first purchase touched; NoDate: none yet
    Currency SalePrice;
    Single SoldShares; ///< summed; negative for covers
    QDate DateSold;
    Currency ProceedsSide; ///< money received, with its costs
    Currency CostSide;     ///< money paid, with its costs; negative

    Currency Gain() const { return ProceedsSide + CostSide; }
};

struct MatchPurchase
{
    qint64 ID = 0;
    Single Shares; ///< what is not matched yet; negative for a short sale
    Currency TransactionCost;
    Currency Price;
    QDate TransDate;
    QTime Time;
    bool changed = false;
};

struct MatchSale
{
    qint64 ID = 0;
    int symbol = 0; ///< for SymbolOf
    int name = 0;   ///< for NameOf
    bool isShort = false;
    bool deleted = false;
    Single Shares; ///< as stored; with its sign turned once matched, and lowered by the match
    Currency Price;
    Currency Amount;
    QDate TransDate;
    QTime Time;
};

class GainMatching
{
public:
    /// Copies both sides from History.
    void OpenMatchingRecordsets(const Connection &gConnAccount);

    int SaleCount() const { return int(m_sales.size()); }
    const MatchSale &Sale(int sale) const { return m_sales[size_t(sale)]; }
    const QString &SymbolOf(const MatchSale &sale) const { return m_symbols[size_t(sale.symbol)]; }
    /// The name that the sale's row bears.
    const QString &NameOf(const MatchSale &sale) const { return m_names[size_t(sale.name)]; }
    const std::vector<MatchPurchase> &PurchasesOf(const QString &symbol) const;

    /// Matches a sale to its purchases and adds it to `result`; once more, its Amount alone. Throws
    /// RuntimeError, "Overflow", when a sum leaves the range of its type; the file is untouched.
    void MatchCurrentSale(int sale, MatchResult &result);
    /// The sale's row goes with the next WriteBack.
    void DeleteSale(int sale) { m_sales[size_t(sale)].deleted = true; }

    /// How many purchases all matching so far has looked at: it grows with the rows alone, however
    /// many of them are used up.
    qint64 PurchasesVisited() const { return m_visited; }

    /// Writes Shares and TransactionCost of the purchases touched and deletes the sales marked, in
    /// one transaction. A sale that was matched and not deleted keeps its row as it is stored.
    void WriteBack(Connection &gConnAccount);

private:
    struct SymbolPurchases
    {
        std::vector<MatchPurchase> rows;
        size_t firstOpen = 0; ///< all before it are used up
    };
    template <class Side>
    void MatchToPurchases(MatchSale &sale, SymbolPurchases &purchases, QDate &dateAcquired,
                          Currency &moneySide);
    void MatchSalesToPurchases(MatchSale &sale, MatchResult &result);
    void MatchSalesToPurchasesShort(MatchSale &sale, MatchResult &result);

    std::vector<QString> m_symbols; ///< sorted
    std::vector<QString> m_names;
    std::vector<SymbolPurchases> m_purchases;
    std::vector<MatchSale> m_sales;
    qint64 m_visited = 0;
};
