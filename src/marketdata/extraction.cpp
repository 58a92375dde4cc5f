#include "marketdata/extraction.h"

#include "base/fraction_price.h"
#include "base/integer.h"

#include <algorithm>

namespace
{

constexpr QChar Comma = u',';
constexpr QChar Point = u'.';

/// The symbol of an option as the site wants it; nothing when the site quotes no options.
std::optional<QString> OptionForm(const QString &symbol, const QuoteSite &site)
{
    if (TakesOptionsBare(site.OptionPrefix))
        return symbol;
    if (const QString prefix = WithoutBlanks(site.OptionPrefix); !prefix.isEmpty())
        return prefix + symbol.trimmed();
    if (const QString suffix = WithoutBlanks(site.OptionSuffix); !suffix.isEmpty())
        return symbol.trimmed() + suffix;
    return std::nullopt;
}

/// Position of `text` in the page, in small or capital letters, counted from 1; 0 without it.
qsizetype PositionOf(const QString &text, const QString &page)
{
    return page.isEmpty() ? 0 : page.indexOf(text, 0, Qt::CaseInsensitive) + 1;
}

/// True when `text` stands in the page at `position`, letter for letter.
bool StandsAt(Integer position, const QString &text, const QString &page)
{
    const qsizetype index = position.Value() - 1;
    return index <= page.size() ? QStringView(page).mid(index).startsWith(text) : text.isEmpty();
}

bool BelongsToPrice(QChar character)
{
    return (character >= u'0' && character <= u'9') || character == Point || character == Comma;
}

Integer LengthOf(const QString &text)
{
    return Integer::FromWide(text.size());
}

bool HasDecimalComma(const Formats &formats)
{
    return formats.ToText(0.5).contains(Comma);
}

} // namespace

SymbolBatch BuildSymbolString(PortfolioArray &entries, const QuoteSite &site)
{
    const int most = std::max(site.UpdateCount, 1); // a batch of none would come again for ever
    const QString separator = WithoutBlanks(site.AddressBuildCharacters);
    SymbolBatch batch;
    for (size_t i = 0; i < entries.size() && int(batch.entries.size()) < most; ++i) {
        PortfolioEntry &entry = entries[i];
        if (entry.IsDealtWith)
            continue;
        if (entry.IsOption()) {
            const std::optional<QString> form = OptionForm(entry.Symbol, site);
            if (!form) {
                batch.optionUnsupported = true;
                break;
            }
            entry.Symbol = TenCharacters(*form);
        }
        batch.entries.push_back(i);
        batch.addressSymbols += entry.Symbol.trimmed() + separator;
    }
    batch.addressSymbols.chop(site.AddressBuildCharacters.size());
    return batch;
}

QString CommaList(const QString &addressSymbols, const QuoteSite &site)
{
    QString list = addressSymbols;
    if (!site.AddressBuildCharacters.isEmpty())
        list.replace(site.AddressBuildCharacters, QString(Comma));
    return Comma + list + Comma;
}

bool IsInBatch(const QString &commaList, const QString &symbol)
{
    return commaList.contains(Comma + symbol.trimmed() + Comma, Qt::CaseInsensitive);
}

ExtractedText ExtractPriceText(const QString &page, const QString &symbol, const QuoteSite &site)
{
    const QString trimmed = symbol.trimmed();
    const qsizetype match =
        PositionOf(WithoutBlanks(site.SymbolBegText) + trimmed + site.SymbolEndText, page);
    // Not the end of the match: CharToPrice covers the site's texts around the symbol as well.
    const Integer symbolPos = Integer::FromWide(match + trimmed.size());

    ExtractedText found;
    found.symbolMatch = int(match);
    if (symbolPos == Integer())
        return found;
    const Integer limit = symbolPos + site.CharToPrice;
    for (Integer scanPos = symbolPos; scanPos <= limit; scanPos += 1) {
        // At each position, also inside the price: a second opening marker jumps over itself.
        if (StandsAt(scanPos, site.PriceBegText, page)) {
            if (!found.InPrice)
                found.priceBegin = scanPos.Value();
            found.InPrice = true;
            scanPos += LengthOf(site.PriceBegText);
        }
        if (!found.InPrice)
            continue;
        if (StandsAt(scanPos, site.PriceEndText, page)) {
            found.priceEnd = scanPos.Value();
            break;
        }
        if (scanPos.Value() <= page.size() && BelongsToPrice(page[scanPos.Value() - 1]))
            found.PriceText += page[scanPos.Value() - 1];
    }
    found.reachesPageEnd = found.InPrice && found.priceEnd == 0 && limit.Value() >= page.size();
    return found;
}

Currency PriceFromText(const QString &priceText, const Formats &formats, bool &failed)
{
    failed = false;
    const bool hasPoint = priceText.contains(Point);
    const bool decimalComma = hasPoint && HasDecimalComma(formats);
    if (!decimalComma) {
        try {
            return ParseFractionPrice(priceText, formats);
        } catch (const RuntimeError &error) {
            if (error.Number() == RuntimeError::OverflowNumber)
                throw;
            failed = !hasPoint;
        }
    }
    if (failed)
        return Currency();
    QString withCommas = priceText;
    if (decimalComma)
        withCommas.remove(Comma);
    return formats.CurrencyFromText(withCommas.replace(Point, Comma));
}
