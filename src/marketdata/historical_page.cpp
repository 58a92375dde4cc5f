// The walk knows one way to go on: what a cell cannot be converted to is a type mismatch, and the
// statement behind the conversion is the step to the next cell. That cell, if it is a date, begins a
// row; if not, the row is given up and the search for a cell starts over.

#include "marketdata/historical_page.h"

#include "base/runtime_error.h"

#include <cmath>
#include <limits>

namespace
{

constexpr int CellsOfRow = 7;

const QString OpeningTag = QStringLiteral("<nobr>");
const QString ClosingTag = QStringLiteral("</nobr>");

/// 1 to 12 for an English name or its first three letters; 0 for another text.
int MonthOf(QStringView name)
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    for (int month = 1; month <= 12; ++month)
        for (const QLocale::FormatType form : {QLocale::ShortFormat, QLocale::LongFormat})
            if (name.compare(english.monthName(month, form), Qt::CaseInsensitive) == 0)
                return month;
    return 0;
}

/// -1 for a text with anything but one to `mostDigits` digits.
int NumberOf(QStringView text, int mostDigits)
{
    if (text.isEmpty() || text.size() > mostDigits)
        return -1;
    int number = 0;
    for (const QChar symbol : text) {
        if (symbol < u'0' || symbol > u'9')
            return -1;
        number = number * 10 + symbol.digitValue();
    }
    return number;
}

int YearOf(QStringView text, QDate today)
{
    const int number = NumberOf(text, 4);
    if (text.size() == 4)
        return number;
    if (text.size() > 2 || number < 0)
        return -1;
    const int latest = today.year() + 1;
    const int year = latest - latest % 100 + number;
    return year > latest ? year - 100 : year;
}

QStringList DateParts(QStringView text)
{
    QString plain = text.trimmed().toString();
    for (QChar &symbol : plain)
        if (symbol == u'-' || symbol == u'/' || symbol == u',' || symbol == u'.')
            symbol = u' ';
    return plain.simplified().split(u' ');
}

qint32 LongFromText(const Formats &formats, QStringView text)
{
    const double value = std::nearbyint(formats.NumberFromText(text)); // halves to even
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        throw RuntimeError::Overflow();
    return static_cast<qint32>(value);
}

} // namespace

std::optional<QDate> PageDate(QStringView text, QDate today)
{
    constexpr qsizetype LongestDate = 40;
    if (text.size() > LongestDate)
        return std::nullopt;
    const QStringList parts = DateParts(text);
    if (parts.size() != 3)
        return std::nullopt;
    QDate date;
    if (parts[0].size() == 4) // 2026-11-20
        date = QDate(NumberOf(parts[0], 4), NumberOf(parts[1], 2), NumberOf(parts[2], 2));
    else if (const int month = MonthOf(parts[1])) // 20-Nov-26
        date = QDate(YearOf(parts[2], today), month, NumberOf(parts[0], 2));
    else if (const int first = MonthOf(parts[0])) // Nov 20, 2026
        date = QDate(YearOf(parts[2], today), first, NumberOf(parts[1], 2));
    else // 11/20/26
        date = QDate(YearOf(parts[2], today), NumberOf(parts[0], 2), NumberOf(parts[1], 2));
    return date.isValid() && date.year() >= 100 ? std::optional(date) : std::nullopt;
}

HistoricalPage::HistoricalPage(const QString &text, const QString &symbol, QDate today)
    : m_text(text), m_today(today), m_formats(QLocale(QLocale::English, QLocale::UnitedStates))
{
    m_row.Symbol = symbol;
}

bool HistoricalPage::FindCell() const
{
    // Behind the closing tag of the last cell, in which the text stands as well.
    constexpr qsizetype BehindClosingTag = 10;
    return !m_brokenOff && m_text.indexOf(QLatin1String("nobr>"), m_cellEnd + BehindClosingTag,
                                          Qt::CaseInsensitive) >= 0;
}

bool HistoricalPage::ReadRow()
{
    for (int cellIndex = 1; cellIndex <= CellsOfRow; ++cellIndex) {
        if (!TakeCell())
            return false;
        if (m_skipRow) {
            if (!PageDate(m_cell, m_today))
                return false;
            m_skipRow = false;
            cellIndex = 1; // the row starts here
        }
        try {
            Convert(cellIndex);
        } catch (const RuntimeError &error) {
            if (error.Number() != RuntimeError::TypeMismatchNumber)
                throw;
            m_skipRow = true; // and on with the next cell
        }
    }
    return !m_skipRow;
}

/// False at the end of the page: from its begin the walk would go round for ever.
bool HistoricalPage::TakeCell()
{
    const qsizetype opening = m_text.indexOf(OpeningTag, m_cellEnd, Qt::CaseInsensitive);
    const qsizetype start = opening + OpeningTag.size();
    const qsizetype closing =
        opening < 0 ? -1 : m_text.indexOf(ClosingTag, start, Qt::CaseInsensitive);
    m_brokenOff = closing < 0;
    if (m_brokenOff)
        return false;
    m_cell = m_text.mid(start, closing - start);
    m_cellEnd = closing;
    return true;
}

void HistoricalPage::Convert(int cellIndex)
{
    switch (cellIndex) {
    case 1:
        if (const std::optional<QDate> date = PageDate(m_cell, m_today)) {
            m_row.PriceDate = *date;
            return;
        }
        throw RuntimeError::TypeMismatch();
    case 2:
        m_row.PriceOpen = m_formats.CurrencyFromText(m_cell);
        return;
    case 3:
        m_row.DayHigh = m_formats.CurrencyFromText(m_cell);
        return;
    case 4:
        m_row.DayLow = m_formats.CurrencyFromText(m_cell);
        return;
    case 5:
        m_cell.remove(QStringLiteral("<b>"), Qt::CaseInsensitive);
        m_cell.remove(QStringLiteral("</b>"), Qt::CaseInsensitive);
        m_row.PriceClose = m_formats.CurrencyFromText(m_cell);
        return;
    case 6:
        m_row.Volume = LongFromText(m_formats, m_cell);
        return;
    case 7:
        m_row.AdjClose = m_formats.CurrencyFromText(m_cell);
        return;
    default:
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("A row of daily prices has seven cells"));
    }
}
