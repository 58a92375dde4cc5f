/// Pages of any content through the extraction, beside a second reading of the same rules that is as
/// plain as can be. An input is a text of lines, and behind them the page:
///
///     ACME                symbol
///     <s>                 SymbolBegText
///     </s>                SymbolEndText
///     <p>                 PriceBegText
///     </p>                PriceEndText
///     120                 CharToPrice
///     <s>ACME</s> ...     the page, in UTF-8; behind a byte 0xFF in UTF-16, sound or not
///
/// Anything but the outcomes the header tells ends the process.

#include "marketdata/extraction.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

void Require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "extraction_fuzz: %s\n", what);
    std::abort();
}

struct Input
{
    QString symbol;
    QuoteSite site;
    QString page;
};

Input ReadInput(const QByteArray &bytes)
{
    qsizetype at = 0;
    const auto line = [&] {
        const qsizetype end = bytes.indexOf('\n', at);
        const qsizetype size = (end < 0 ? bytes.size() : end) - at;
        const QString text = QString::fromUtf8(bytes.mid(at, size));
        at += end < 0 ? size : size + 1;
        return text;
    };
    Input input;
    input.symbol = line();
    input.site.SymbolBegText = line();
    input.site.SymbolEndText = line();
    input.site.PriceBegText = line();
    input.site.PriceEndText = line();
    input.site.CharToPrice = line().toShort();
    const QByteArray rest = bytes.mid(at);
    if (!rest.startsWith('\xff')) {
        input.page = QString::fromUtf8(rest);
        return input;
    }
    input.page.resize((rest.size() - 1) / 2);
    std::memcpy(input.page.data(), rest.constData() + 1, size_t(input.page.size()) * 2);
    return input;
}

// --- the second reading ------------------------------------------------------------------------------

constexpr int Overflowed = -1;

/// The text from a position, counted from 1; what lies behind the end of the page is missing.
QString Middle(const QString &page, int position, qsizetype length)
{
    return position > page.size() ? QString() : page.mid(position - 1, length);
}

int FirstMatch(const QString &page, const QString &sought)
{
    for (qsizetype i = 0; i < page.size() && i + sought.size() <= page.size(); ++i)
        if (QStringView(page).mid(i, sought.size()).compare(sought, Qt::CaseInsensitive) == 0)
            return int(i) + 1;
    return 0;
}

/// The collected text; `end` is the position of the closing marker, 0 without one, or Overflowed.
QString PlainWalk(const QString &page, int match, const QString &symbol, const QuoteSite &site,
                  bool &inPrice, int &end)
{
    QString collected;
    inPrice = false;
    end = 0;
    const int symbolPos = match + int(symbol.size());
    const int limit = symbolPos + site.CharToPrice;
    if (symbolPos > 32767 || (symbolPos != 0 && limit > 32767)) {
        end = Overflowed;
        return {};
    }
    for (int scanPos = symbolPos; symbolPos != 0 && scanPos <= limit;) {
        if (Middle(page, scanPos, site.PriceBegText.size()) == site.PriceBegText) {
            inPrice = true;
            scanPos += int(site.PriceBegText.size());
        }
        if (scanPos > 32767) {
            end = Overflowed;
            return {};
        }
        if (inPrice && Middle(page, scanPos, site.PriceEndText.size()) == site.PriceEndText) {
            end = scanPos;
            return collected;
        }
        const QString character = Middle(page, scanPos, 1);
        if (inPrice && !character.isEmpty() && QStringLiteral("0123456789.,").contains(character))
            collected += character;
        if (++scanPos > 32767) {
            end = Overflowed;
            return {};
        }
    }
    return collected;
}

// --- what must hold ----------------------------------------------------------------------------------

void CheckPrice(const QString &text, const Formats &formats)
{
    try {
        bool failed = false;
        const Currency price = PriceFromText(text, formats, failed);
        Require(!failed || price.IsZero(), "a price that failed is not zero");
    } catch (const RuntimeError &error) {
        Require(error.Number() == RuntimeError::TypeMismatchNumber ||
                    error.Number() == RuntimeError::OverflowNumber,
                "a price ends in another error");
        Require(text.contains(QLatin1Char('.')) || error.Number() == RuntimeError::OverflowNumber,
                "a price without a point ends in an error of its form");
    }
}

void CheckWalk(const Input &input)
{
    const QString symbol = input.symbol.trimmed();
    const QString sought =
        WithoutBlanks(input.site.SymbolBegText) + symbol + input.site.SymbolEndText;
    const int match = FirstMatch(input.page, sought);
    bool inPrice = false;
    int end = 0;
    const QString collected = PlainWalk(input.page, match, symbol, input.site, inPrice, end);
    try {
        const ExtractedText text = ExtractPriceText(input.page, input.symbol, input.site);
        Require(end != Overflowed, "an overflow is missing");
        Require(text.symbolMatch == match, "the symbol is found elsewhere");
        Require(text.InPrice == inPrice, "the price begins differently");
        Require(text.priceEnd == end, "the price ends elsewhere");
        Require(text.PriceText == collected, "another text is collected");
    } catch (const RuntimeError &error) {
        Require(error.Number() == RuntimeError::OverflowNumber, "the walk ends in another error");
        Require(end == Overflowed, "an overflow without a reason");
    }
    static const Formats english{QLocale(QLocale::English, QLocale::UnitedStates)};
    static const Formats german{QLocale(QLocale::German, QLocale::Germany)};
    CheckPrice(collected, english);
    CheckPrice(collected, german);
}

/// Every batch takes something, and all entries are in one.
void CheckBatches(Input input)
{
    PortfolioArray entries(3);
    for (PortfolioEntry &entry : entries)
        entry.Symbol = TenCharacters(input.symbol);
    entries[1].SecurityType = QStringLiteral("Option");
    input.site.AddressBuildCharacters = input.site.PriceBegText;
    input.site.OptionPrefix = input.site.SymbolBegText;
    input.site.OptionSuffix = input.site.SymbolEndText;
    input.site.UpdateCount = input.site.CharToPrice;
    for (size_t dealtWith = 0; dealtWith < entries.size();) {
        const SymbolBatch batch = BuildSymbolString(entries, input.site);
        const QString list = CommaList(batch.addressSymbols, input.site);
        Require(list.startsWith(QLatin1Char(',')) && list.endsWith(QLatin1Char(',')),
                "a list without its commas");
        if (batch.optionUnsupported)
            return;
        Require(!batch.entries.empty(), "a batch of nothing");
        for (const size_t index : batch.entries) {
            Require(!entries[index].IsDealtWith, "an entry for the second time");
            Require(entries[index].Symbol.size() == 10, "a symbol without its ten characters");
            IsInBatch(list, entries[index].Symbol);
            entries[index].IsDealtWith = true;
            ++dealtWith;
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const Input input = ReadInput(bytes);
    CheckWalk(input);
    CheckBatches(input);
    CheckPrice(QString::fromUtf8(bytes), Formats{QLocale::c()});
    return 0;
}
