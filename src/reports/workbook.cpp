#include "reports/workbook.h"

#include "base/decimal.h"
#include "base/runtime_error.h"
#include "reports/biff_book.h"
#include "reports/compound_file.h"
#include "reports/number_formats.h"
#include "reports/typed_text.h"
#include "reports/workbook_cells.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace
{

/// What a cell can hold and all readers can read: no halves of surrogate pairs, no NUL. A longer
/// text is cut.
QString CellText(const QString &text)
{
    constexpr qsizetype Longest = 32767;
    if (text.size() <= Longest && text.isValidUtf16() && !text.contains(QChar::Null))
        return text;
    QString content = text.first(std::min(text.size(), Longest));
    if (content.size() < text.size() && content.back().isHighSurrogate())
        content.chop(1);
    for (qsizetype at = 0; at < content.size(); ++at) {
        if (content[at].isHighSurrogate() && at + 1 < content.size() &&
            content[at + 1].isLowSurrogate())
            ++at;
        else if (content[at].isSurrogate() || content[at].isNull())
            content[at] = QChar::ReplacementCharacter;
    }
    return content;
}

/// Characters of a value in the format General.
qsizetype GeneralWidth(double value)
{
    constexpr qsizetype Widest = 12;
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return std::min<qsizetype>(end - buffer.data(), Widest);
}

} // namespace

class Workbook::Private
{
public:
    explicit Private(const Formats &formats) : Typed(formats, NumberFormatsUsed) {}

    /// A cell at that place, without content. Rows and columns count from 1.
    static WorkbookCell At(int row, int column)
    {
        constexpr int SubscriptOutOfRange = 9;
        if (row < 1 || column < 1 || column > WorkbookCells::ColumnCount)
            throw RuntimeError(SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        WorkbookCell cell;
        cell.Row = static_cast<quint32>(row - 1);
        cell.Column = static_cast<quint8>(column - 1);
        return cell;
    }

    void SetNumber(WorkbookCell cell, double number, quint16 format, qsizetype width)
    {
        cell.Kind = WorkbookCell::Kinds::Number;
        cell.Number = number + 0.0; // no minus before a zero
        cell.Format = format;
        Set(cell, width);
    }

    void SetText(WorkbookCell cell, const QString &text)
    {
        if (text.isEmpty()) {
            Cells.Set(cell);
            return;
        }
        cell.Kind = WorkbookCell::Kinds::Text;
        cell.Text = Cells.TextPlace(CellText(text));
        Set(cell, text.size());
    }

    void Set(const WorkbookCell &cell, qsizetype width)
    {
        Cells.Set(cell);
        Cells.Widen(cell.Column, width);
        LastRow = std::max(LastRow, static_cast<int>(cell.Row) + 1);
    }

    NumberFormats NumberFormatsUsed;
    TypedText Typed;
    WorkbookCells Cells;
    int LastRow = 0;
};

Workbook::Workbook(const Formats &formats) : m_private(std::make_unique<Private>(formats)) {}

Workbook::~Workbook() = default;

void Workbook::SetText(int row, int column, const QString &text)
{
    m_private->SetText(Private::At(row, column), text);
}

void Workbook::SetTyped(int row, int column, const QString &text)
{
    const WorkbookCell cell = Private::At(row, column);
    if (const std::optional<TypedText::Value> value = m_private->Typed.Read(text))
        m_private->SetNumber(cell, value->Number, value->Format, text.size());
    else
        m_private->SetText(cell, text);
}

void Workbook::SetNumber(int row, int column, double value)
{
    const WorkbookCell cell = Private::At(row, column);
    if (std::isfinite(value))
        m_private->SetNumber(cell, value, NumberFormats::General, GeneralWidth(value));
    else
        m_private->SetText(cell, QString());
}

void Workbook::SetNumber(int row, int column, Currency value)
{
    // Beyond, the nearest double comes from the decimal: the units would be rounded before.
    constexpr std::int64_t ExactDoubles = std::int64_t{1} << 53;
    const std::int64_t units = value.Units();
    const bool exact = -ExactDoubles <= units && units <= ExactDoubles;
    SetNumber(row, column,
              exact ? value.ToDouble() : Decimal::FromInteger(units).Shifted(-4).ToDouble());
}

void Workbook::SetNumber(int row, int column, Single value)
{
    // The shortest decimal that means this 32-bit float: 12.3456, not 12.345600128.
    std::array<char, 32> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value.Value()).ptr;
    double number = value.ToDouble();
    std::from_chars(buffer.data(), end, number);
    SetNumber(row, column, number);
}

int Workbook::RowCount() const
{
    return m_private->LastRow;
}

void Workbook::Save(const QString &path) const
{
    m_private->Cells.Tidy();
    WriteCompoundFile(path, "Workbook", BiffBook(m_private->Cells, m_private->NumberFormatsUsed));
}
