#include "marketdata/portfolio_array.h"

#include "marketdata/quote_sites.h"
#include "transactions/securities.h"

#include <cmath>

namespace
{

constexpr int SymbolLength = 10;

/// The symbol without what the site wanted around it, wherever that occurs in it.
QString WithoutOptionForm(QString symbol, const QString &prefix, const QString &suffix)
{
    const QString &form = prefix.isEmpty() ? suffix : prefix;
    if (!form.isEmpty())
        symbol.remove(form);
    return symbol.trimmed();
}

} // namespace

QString TenCharacters(const QString &text)
{
    return text.leftJustified(SymbolLength, QLatin1Char(' '), true);
}

Integer WholeShares(Single shares)
{
    const double whole = std::nearbyint(shares.ToDouble()); // ties to even
    if (!(whole >= INT16_MIN && whole <= INT16_MAX))
        throw RuntimeError::Overflow();
    return Integer::FromWide(std::int64_t(whole));
}

PortfolioArray LoadCurrPortfolioArray(TrackerRecordset &rows, Connection &gConnApplControl)
{
    rows.MoveFirst();
    rows.Current(); // an account without rows ends here
    PortfolioArray entries;
    entries.reserve(size_t(rows.RecordCount()));
    for (int i = 0; i < rows.RecordCount(); ++i) {
        const TrackerRow &row = rows.At(i);
        PortfolioEntry entry;
        entry.Symbol = TenCharacters(row.Symbol);
        entry.Shares = WholeShares(row.Shares);
        entry.SecurityType =
            TenCharacters(GetSecurityType(gConnApplControl, row.Symbol).value_or(QString()));
        entry.CurrPrice = row.CurrPrice;
        entry.Time = row.Time;
        entry.Row = row;
        entries.push_back(entry);
    }
    return entries;
}

bool IsSuspicious(Currency last, Currency price)
{
    constexpr double Most = 3;
    if (price.IsZero())
        return true;
    const double factor = last.IsZero() ? 1 : price.ToDouble() / last.ToDouble();
    return factor > Most || factor < 1 / Most;
}

void UpdateDTRecordset(TrackerRecordset &rows, PortfolioArray &entries, const QString &optionPrefix,
                       const QString &optionSuffix, const PriceMark &notReached)
{
    const bool hasForm = !TakesOptionsBare(optionPrefix);
    const QString prefix = WithoutBlanks(optionPrefix);
    const QString suffix = WithoutBlanks(optionSuffix);
    auto entry = entries.begin();
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext()) {
        rows.MarkPrice(rows.Position(), notReached);
        if (entry == entries.end())
            continue;
        if (hasForm && entry->IsOption())
            entry->Symbol = TenCharacters(WithoutOptionForm(entry->Symbol, prefix, suffix));
        if (rows.Current().Symbol != entry->Symbol.trimmed())
            continue;
        const QString &unreadable = rows.Unreadable(rows.Position());
        const bool isMended =
            unreadable == QLatin1String("CurrPrice") && !entry->CurrPrice.IsZero();
        if (unreadable.isEmpty() || isMended) {
            rows.SetPrice(entry->CurrPrice, entry->Time);
            rows.MarkPrice(rows.Position(), entry->Remark);
        }
        ++entry;
    }
    rows.MoveFirst();
}
