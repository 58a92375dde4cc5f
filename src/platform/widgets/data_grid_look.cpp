/// How a DataGrid looks: columns and their widths, colours, split mode, and the cells as shown.

#include "platform/widgets/colors.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/grid_model.h"
#include "platform/widgets/grid_pane.h"

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace
{

constexpr int sampledRows = 200;
constexpr int widestColumn = 420;
constexpr int cellPadding = 12;

int SplitColumn(const std::vector<GridColumn> &columns)
{
    for (size_t column = 0; column < columns.size(); ++column) {
        if (columns[column].dataField == QLatin1String("Symbol") && !columns[column].hidden)
            return static_cast<int>(column);
    }
    return -1;
}

} // namespace

// --- columns ------------------------------------------------------------------------------------

void DataGrid::ShowColumns()
{
    const std::vector<GridColumn> &columns = Columns();
    const int splitColumn = m_isSplit ? SplitColumn(columns) : -1;
    const QScopedValueRollback fitting(m_isFitting, true);
    bool isEditable = m_model->rowCount() > m_model->Rows();
    for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
        isEditable = isEditable || columns[column].editable;
        m_left->setColumnHidden(column, column != splitColumn);
        m_right->setColumnHidden(column, columns[column].hidden || column == splitColumn);
    }
    m_shownColumns.clear();
    for (const GridPane *pane : {m_left, m_right})
        for (int column = 0; column < static_cast<int>(columns.size()); ++column)
            if (!pane->isColumnHidden(column))
                m_shownColumns.push_back(column);
    // The marks of the row in edit and of the empty row stand at the far left.
    m_left->verticalHeader()->setVisible(isEditable && m_isSplit);
    m_right->verticalHeader()->setVisible(isEditable && !m_isSplit);
    m_left->setVisible(m_isSplit);
    m_belowLeft->setVisible(m_isSplit);
    FitSplit();
}

void DataGrid::FitColumns()
{
    const QScopedValueRollback fitting(m_isFitting, true);
    const std::vector<GridColumn> &columns = Columns();
    const QHeaderView *header = m_right->horizontalHeader();
    const int captionPadding =
        2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header) +
        header->style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, header) + cellPadding;
    const int rows = std::min(sampledRows, m_model->Rows());
    for (int column = 0; column < static_cast<int>(columns.size()); ++column) {
        int width = m_userWidths.value(columns[column].dataField, columns[column].width);
        if (width == 0) {
            width =
                header->fontMetrics().horizontalAdvance(columns[column].caption) + captionPadding;
            if (const QString &sample = columns[column].sample; !sample.isEmpty())
                width = std::max(width, fontMetrics().horizontalAdvance(sample) + cellPadding);
            for (int row = 0; row < rows && !columns[column].hidden; ++row) {
                const int text = fontMetrics().horizontalAdvance(m_model->Text(row, column));
                width = std::max(width, std::min(text + cellPadding, widestColumn));
            }
        }
        m_left->setColumnWidth(column, width);
        m_right->setColumnWidth(column, width);
    }
}

void DataGrid::SetUserWidths(const QMap<QString, int> &widths)
{
    m_userWidths = widths;
    FitColumns();
}

void DataGrid::TakeUserWidth(int column, int width)
{
    // A column that is hidden has the width 0, and none of its own.
    if (!m_isFitting && width > 0 && column < static_cast<int>(Columns().size()))
        m_userWidths[Columns()[size_t(column)].dataField] = width;
}

GridPane *DataGrid::PaneOf(int column) const
{
    return m_isSplit && column == SplitColumn(Columns()) ? m_left : m_right;
}

void DataGrid::SetSortIndicator(int column, bool descending)
{
    m_sortColumn = column;
    m_sortDescending = descending;
    for (GridPane *pane : {m_left, m_right}) {
        pane->horizontalHeader()->setSortIndicatorShown(column >= 0);
        pane->horizontalHeader()->setSortIndicator(column, descending ? Qt::DescendingOrder
                                                                      : Qt::AscendingOrder);
    }
}

// --- split mode ---------------------------------------------------------------------------------

void DataGrid::EnterSplit()
{
    const int column = SplitColumn(Columns());
    if (m_isSplit || column < 0 || !CommitRow())
        return;
    const QScopedValueRollback fitting(m_isFitting, true);
    m_isSplit = true;
    m_marquee = Marquee::Row;
    m_left->setColumnWidth(column, m_right->columnWidth(column));
    ShowColumns();
    m_left->verticalScrollBar()->setValue(m_right->verticalScrollBar()->value());
}

void DataGrid::LeaveSplit()
{
    if (!m_isSplit || !CommitRow())
        return;
    const QScopedValueRollback fitting(m_isFitting, true);
    const int column = SplitColumn(Columns());
    if (column >= 0)
        m_right->setColumnWidth(column, m_left->columnWidth(column));
    m_isSplit = false;
    m_marquee = Marquee::RowAndCell;
    if (m_left->hasFocus())
        m_right->setFocus();
    ShowColumns();
}

void DataGrid::FitSplit()
{
    const int column = SplitColumn(Columns());
    if (!m_isSplit || column < 0)
        return;
    const QHeaderView *marks = m_left->verticalHeader();
    m_left->setFixedWidth(m_left->columnWidth(column) + 2 * m_left->frameWidth() +
                          (marks->isVisibleTo(m_left) ? marks->width() : 0));
    // Both panes end at the same row, with a scroll bar below the right one or without. A hidden pane has
    // its new size before its viewport does; this runs again when it is shown.
    m_belowLeft->setFixedHeight(
        std::max(0, m_right->contentsRect().bottom() - m_right->viewport()->geometry().bottom()));
}

// --- colours ------------------------------------------------------------------------------------

QRgb DataGrid::BackColor() const
{
    return m_backColor.value_or(palette().color(QPalette::Active, QPalette::Base).rgb());
}

void DataGrid::SetBackColor(QRgb color)
{
    m_backColor = color;
    ApplyColors();
}

void DataGrid::ApplyColors()
{
    for (GridPane *pane : {m_left, m_right})
        pane->setPalette(m_backColor ? PaletteOn(QColor(*m_backColor), palette()) : QPalette());
}

void DataGrid::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ApplyColors();
}

void DataGrid::showEvent(QShowEvent *event)
{
    // The panes have the focus, so a screen reader asks them for the name of the grid.
    for (GridPane *pane : {m_left, m_right}) {
        pane->setAccessibleName(accessibleName());
        pane->setAccessibleDescription(accessibleDescription());
    }
    QWidget::showEvent(event);
}

// --- as shown -----------------------------------------------------------------------------------

int DataGrid::ColumnAt(int place) const
{
    const std::vector<int> &shown = ShownColumns();
    return place >= 0 && place < static_cast<int>(shown.size()) ? shown[place] : -1;
}

QStringList DataGrid::Captions() const
{
    QStringList captions;
    for (const int column : ShownColumns())
        captions << Columns()[column].caption;
    return captions;
}

QStringList DataGrid::DataFields() const
{
    QStringList fields;
    for (const int column : ShownColumns())
        fields << Columns()[column].dataField;
    return fields;
}

QString DataGrid::CellText(int row, int place) const
{
    return m_model->Text(row, ColumnAt(place));
}

QRect DataGrid::CurrentRowCell(int column) const
{
    const QModelIndex current = m_selection->currentIndex();
    if (!current.isValid())
        return {};
    return m_right->visualRect(current.siblingAtColumn(column)) & m_right->viewport()->rect();
}

ShownGrid::Target DataGrid::CellTarget(int row, int place)
{
    const int column = ColumnAt(place);
    if (column < 0 || row < 0 || row >= m_model->rowCount())
        return {};
    ScrollTo(row, column);
    GridPane *pane = PaneOf(column);
    return {pane->viewport(), pane->visualRect(m_model->index(row, column)).center()};
}

ShownGrid::Target DataGrid::HeaderTarget(int place)
{
    const int column = ColumnAt(place);
    if (column < 0)
        return {};
    GridPane *pane = PaneOf(column);
    const int row = pane->verticalScrollBar()->value();
    if (row < m_model->rowCount())
        pane->scrollTo(m_model->index(row, column));
    const QHeaderView *header = pane->horizontalHeader();
    return {header->viewport(),
            {header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
             header->height() / 2}};
}

QWidget *DataGrid::Viewport()
{
    return m_right->viewport();
}
