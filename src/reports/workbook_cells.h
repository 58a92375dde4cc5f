#pragma once

/// What a workbook holds until it is saved: cells of 16 bytes, every distinct text once, the width
/// that each column's content wants.
///
///     cells.Set(WorkbookCell::OfText(row, column, cells.TextPlace("ACME")));
///     cells.Tidy();      in order of row and column, each once, no empty ones

#include <QHash>
#include <QList>
#include <QString>

#include <array>
#include <deque>

struct WorkbookCell
{
    enum class Kinds : quint8
    {
        Empty,
        Number,
        Text
    };

    quint32 Row = 0; ///< from 0, over all sheets
    quint8 Column = 0;
    Kinds Kind = Kinds::Empty;
    quint16 Format = 0; ///< a place in NumberFormats
    union
    {
        double Number = 0;
        quint32 Text; ///< a place in the list of texts
    };

    bool IsBefore(const WorkbookCell &other) const
    {
        return Row != other.Row ? Row < other.Row : Column < other.Column;
    }
};
static_assert(sizeof(WorkbookCell) == 16);

class WorkbookCells
{
public:
    static constexpr int ColumnCount = 256;
    static constexpr quint32 SheetRows = 65536;

    using Iterator = std::deque<WorkbookCell>::const_iterator;

    void Set(const WorkbookCell &cell);
    /// The place of a text among the distinct ones.
    quint32 TextPlace(const QString &text);
    /// A column is to show so many characters.
    void Widen(int column, qsizetype characters);

    /// Sorts the cells; of those set twice the last is left, and no empty one.
    void Tidy();

    Iterator begin() const { return m_cells.begin(); }
    Iterator end() const { return m_cells.end(); }
    std::size_t Count() const { return m_cells.size(); }
    const QList<QString> &Texts() const { return m_texts; }
    /// Characters that each column shows.
    const std::array<int, ColumnCount> &Widths() const { return m_widths; }

private:
    std::deque<WorkbookCell> m_cells;
    bool m_isTidy = true;
    QList<QString> m_texts;
    QHash<QString, quint32> m_textPlaces;
    std::array<int, ColumnCount> m_widths{};
};
