#pragma once

/// From positions to a request address, and from the text of a page to a price.
///
/// There is no page parser: a symbol is found by a plain text search; from there a limited number
/// of characters is walked, and what looks like a number between two markers is collected. All
/// positions count from 1 and are 16 bits wide: a match beyond character 32,767, or a walk that
/// reaches it, throws RuntimeError 6.
///
///     page:  ...<td class="sym">ACME</td><td class="last">1,234.50</td>...
///     row:   SymbolBegText `<td class="sym">`   PriceBegText `<td class="last">`
///            SymbolEndText `</td>`              PriceEndText `</td>`    CharToPrice 120
///     found: "1,234.50", a price of 1234.5
///
/// A price behind a symbol that is missing in the page would be that of another security: so the
/// first CharToPrice characters of a page that quotes several must hold none.

#include "base/currency.h"
#include "base/formats.h"
#include "marketdata/portfolio_array.h"
#include "marketdata/quote_sites.h"

/// The symbols of one request, joined for the address.
struct SymbolBatch
{
    QString addressSymbols;         ///< goes between BegWebAddress and EndWebAddress, unescaped
    std::vector<size_t> entries;    ///< indexes of the entries that are in it
    bool optionUnsupported = false; ///< the site has no way to quote an option that is due
};

/// The next UpdateCount entries (at least one) that are not dealt with in this pass; whoever deals
/// with them marks them so. Options take the site's form in the entry itself, cut off at its ten
/// characters; at the first one that the site cannot quote the batch ends.
///
/// The separator is cut from the end by the length it is stored with: one stored with blanks eats
/// into the last symbol.
SymbolBatch BuildSymbolString(PortfolioArray &entries, const QuoteSite &site);

/// The batch as a list with a comma on both ends and between the symbols.
QString CommaList(const QString &addressSymbols, const QuoteSite &site);
/// True when the list holds the trimmed symbol between commas, in small or capital letters.
bool IsInBatch(const QString &commaList, const QString &symbol);

/// What the walk over a page found for one symbol.
struct ExtractedText
{
    QString PriceText;    ///< digits, points and commas between the markers
    bool InPrice = false; ///< the opening marker was met
    int symbolMatch = 0;  ///< position of the symbol with its markers; 0: not in the page, and the
                          ///< walk went over the head of it
    int priceBegin = 0;   ///< position of the first opening marker; 0: none
    int priceEnd = 0;     ///< position of the closing marker; 0: the walk went to its limit
    /// The walk came to the end of the page inside the price: of a page that may have been cut short,
    /// digits may be missing.
    bool reachesPageEnd = false;

    /// A price was collected.
    bool Found() const { return InPrice && !PriceText.trimmed().isEmpty(); }
};

/// Walks the page for one symbol, which is trimmed before it is sought: in small or capital letters,
/// with the site's texts directly around it. Markers of the price must match letter for letter.
/// An empty opening marker opens at once; an empty closing marker closes before anything is
/// collected. Throws RuntimeError 6 when a position does not fit 16 bits.
ExtractedText ExtractPriceText(const QString &page, const QString &symbol, const QuoteSite &site);

/// The price of a collected text, which passes through a 32-bit float: "1234.56" is 1234.5601. A
/// text that is no number, with points in it, is read once more with commas in their place, and
/// then keeps all its digits; without a point it is 0 and `failed` becomes true. A number that a price
/// cannot hold throws RuntimeError 6. Where the decimal
/// sign is a comma, a point is never a number's own, and commas beside it are groups: "1,234.50" of
/// a page is 1234.5 there as well. Throws RuntimeError 13 or 6 when the second reading fails.
Currency PriceFromText(const QString &priceText, const Formats &formats, bool &failed);
