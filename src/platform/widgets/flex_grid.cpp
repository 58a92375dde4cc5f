#include "platform/widgets/flex_grid.h"

#include "platform/widgets/colors.h"
#include "platform/widgets/flex_model.h"
#include "platform/widgets/grid_find.h"
#include "platform/widgets/grid_heading.h"
#include "platform/widgets/whole_text_tip.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace
{

constexpr int cellPadding = 12;

/// The cells keep their colours under the mouse, and none is framed.
class CellPainter : public WholeTextTip
{
public:
    using WholeTextTip::WholeTextTip;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
    }
};

} // namespace

FlexGrid::FlexGrid(QWidget *parent)
    : QTableView(parent), m_model(new FlexModel(this)), m_heading(new GridHeading(this))
{
    setHorizontalHeader(m_heading);
    setModel(m_model);
    setItemDelegate(new CellPainter(this));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    SetSelectsRows(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    for (QHeaderView *header : {horizontalHeader(), verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Fixed);
        header->setHighlightSections(false);
        header->setFocusPolicy(Qt::NoFocus);
        header->setMinimumSectionSize(0);
    }
    verticalHeader()->setSectionsClickable(false);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &FlexGrid::HeaderClicked);
    FitRowHeight();
    ApplyColors();
}

// --- content ------------------------------------------------------------------------------------

void FlexGrid::SetSize(int rows, int columns)
{
    m_model->SetSize(rows, columns);
}

int FlexGrid::Rows() const
{
    return m_model->Rows();
}

int FlexGrid::Columns() const
{
    return m_model->Columns();
}

int FlexGrid::AddRow()
{
    SetSize(Rows() + 1, Columns());
    return Rows() - 1;
}

void FlexGrid::SetMadeRows(int rows, std::function<FlexCell(int row, int column)> make)
{
    m_model->SetMadeRows(rows, std::move(make));
}

void FlexGrid::SetText(int row, int column, const QString &text)
{
    FlexCell *cell = m_model->At(row, column);
    if (!cell || cell->text == text)
        return;
    cell->text = text;
    m_model->TellChanged(row, column);
}

QString FlexGrid::Text(int row, int column) const
{
    return m_model->Shown(row, column).text;
}

void FlexGrid::SetCellBackColor(int row, int column, QRgb color)
{
    if (FlexCell *cell = m_model->At(row, column)) {
        cell->back = color;
        m_model->TellChanged(row, column);
    }
}

QRgb FlexGrid::CellBackColor(int row, int column) const
{
    return m_model->Shown(row, column).back.value_or(BackColor());
}

void FlexGrid::SetCellBold(int row, int column, bool bold)
{
    if (FlexCell *cell = m_model->At(row, column)) {
        cell->bold = bold;
        m_model->TellChanged(row, column);
    }
}

// --- look ---------------------------------------------------------------------------------------

void FlexGrid::SetBackColor(QRgb color)
{
    m_backColor = color;
    ApplyColors();
}

QRgb FlexGrid::BackColor() const
{
    return m_backColor.value_or(palette().color(QPalette::Active, QPalette::Base).rgb());
}

void FlexGrid::ApplyColors()
{
    const QPalette plain = parentWidget() ? parentWidget()->palette() : QGuiApplication::palette();
    if (m_backColor)
        setPalette(PaletteOn(QColor(*m_backColor), plain));
    m_model->palette = plain;
}

void FlexGrid::SetFont(const QString &family, int points)
{
    QFont told = font();
    for (const QString &candidate :
         {family, QStringLiteral("Liberation Sans"), QStringLiteral("DejaVu Sans")}) {
        if (QFontDatabase::hasFamily(candidate)) {
            told.setFamilies({candidate});
            break;
        }
    }
    told.setPointSize(points);
    told.setBold(false);
    setFont(told);
    horizontalHeader()->setFont(told);
}

int FlexGrid::Pixels(int twips) const
{
    return qRound(twips * logicalDpiX() / 1440.0);
}

void FlexGrid::SetColumnWidth(int column, int twips)
{
    if (column == 0) {
        verticalHeader()->setFixedWidth(Pixels(twips));
    } else if (column < Columns()) {
        const QScopedValueRollback fitting(m_isFitting, true);
        setColumnWidth(column - 1, Pixels(twips));
    }
}

void FlexGrid::MakeRoomFor(int column, const QString &text)
{
    if (column < 1 || column >= Columns() || m_userWidths.contains(Text(0, column)))
        return;
    const int width = fontMetrics().horizontalAdvance(text) + cellPadding;
    const QScopedValueRollback fitting(m_isFitting, true);
    setColumnWidth(column - 1, std::max(width, columnWidth(column - 1)));
}

void FlexGrid::SetUserResizesColumns(int stretched)
{
    QHeaderView *header = horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setMinimumSectionSize(Pixels(300));
    if (stretched > 0 && stretched < Columns())
        header->setSectionResizeMode(stretched - 1, QHeaderView::Stretch);
    connect(header, &QHeaderView::sectionResized, this,
            [this, header](int section, int, int width) {
                const bool isUsers =
                    !m_isFitting && header->sectionResizeMode(section) == QHeaderView::Interactive;
                if (isUsers && width > 0)
                    m_userWidths[Text(0, section + 1)] = width;
            });
}

void FlexGrid::SetUserWidths(const QMap<QString, int> &widths)
{
    m_userWidths = widths;
    const QScopedValueRollback fitting(m_isFitting, true);
    for (int column = 1; column < Columns(); ++column) {
        const int width = widths.value(Text(0, column));
        if (width > 0 &&
            horizontalHeader()->sectionResizeMode(column - 1) == QHeaderView::Interactive)
            setColumnWidth(column - 1, width);
    }
}

void FlexGrid::SetSortIndicator(int column, bool descending)
{
    m_sortColumn = column;
    m_sortDescending = descending;
    horizontalHeader()->setSortIndicatorShown(column > 0);
    horizontalHeader()->setSortIndicator(column - 1,
                                         descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void FlexGrid::SetRowHeight(int twips)
{
    m_rowTwips = twips;
    FitRowHeight();
}

void FlexGrid::FitRowHeight()
{
    const int height = std::max(Pixels(m_rowTwips), fontMetrics().height() + 4);
    verticalHeader()->setDefaultSectionSize(height);
    horizontalHeader()->setFixedHeight(height);
}

void FlexGrid::SetColumnAlignment(int column, Qt::Alignment alignment)
{
    m_model->SetAlignment(column, alignment);
    viewport()->update();
}

void FlexGrid::HideColumn(int column)
{
    if (column == 0)
        verticalHeader()->hide();
    else
        hideColumn(column - 1);
}

void FlexGrid::SetSelectsRows(bool selects)
{
    setSelectionMode(selects ? ContiguousSelection : NoSelection);
}

void FlexGrid::SetCurrentRow(int row)
{
    setCurrentIndex(m_model->index(row, std::max(0, ColumnAt(0) - 1))); // invalid outside
}

int FlexGrid::FullHeight() const
{
    return horizontalHeader()->height() + (Rows() - 1) * verticalHeader()->defaultSectionSize() +
           horizontalScrollBar()->sizeHint().height() + 2 * frameWidth();
}

void FlexGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        m_model->font = font();
        FitRowHeight();
    } else if (event->type() == QEvent::PaletteChange) {
        ApplyColors();
    }
}

// --- mouse and keys -----------------------------------------------------------------------------

void FlexGrid::HeaderClicked(int section)
{
    SetSortIndicator(m_sortColumn, m_sortDescending); // the click has turned it over
    if (OnHeaderClick)
        OnHeaderClick(section + 1);
}

/// What the mouse does to the heading of the current column.
bool FlexGrid::HandleColumn(const QKeyEvent &event)
{
    const int section = currentIndex().column();
    if (section < 0)
        return false;
    if (!GridHeading::IsClick(event))
        return m_heading->Resize(section, event);
    const QPointer<FlexGrid> alive = this;
    HeaderClicked(section);
    if (alive && !currentIndex().isValid()) // sorted anew; the keys stay on their column
        setCurrentIndex(m_model->index(0, section));
    return true;
}

void FlexGrid::MarkCurrentColumn()
{
    const bool isMarked = hasFocus() && selectionMode() != NoSelection;
    m_heading->Mark(isMarked ? currentIndex().column() : -1);
}

void FlexGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    MarkCurrentColumn();
}

void FlexGrid::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event);
    MarkCurrentColumn();
}

void FlexGrid::focusOutEvent(QFocusEvent *event)
{
    QTableView::focusOutEvent(event);
    MarkCurrentColumn();
}

void FlexGrid::mousePressEvent(QMouseEvent *event)
{
    m_pressed = indexAt(event->pos());
    if (m_pressed.isValid())
        QTableView::mousePressEvent(event);
}

void FlexGrid::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->pos());
    const Qt::MouseButton button = event->button();
    const bool isClick = button == Qt::LeftButton && index.isValid() && index == m_pressed;
    const QPoint globalPos = event->globalPosition().toPoint();
    const int row = index.row() + 1;
    const int column = index.column() + 1;
    m_pressed = {};
    if (button == Qt::RightButton && index.isValid())
        setCurrentIndex(index);
    const QPointer<FlexGrid> alive = this;
    if (OnMouseUp)
        OnMouseUp(button);
    if (alive && isClick && OnClick)
        OnClick(row, column);
    if (alive && button == Qt::RightButton && OnContextMenu)
        OnContextMenu(globalPos);
}

void FlexGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_pressed = {};
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && index.isValid() && OnDoubleClick)
        OnDoubleClick(index.row() + 1, index.column() + 1);
}

void FlexGrid::contextMenuEvent(QContextMenuEvent *event)
{
    // The mouse has its own way, on the release of the button; this is the Menu key.
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard || !OnContextMenu)
        return;
    selectRow(currentIndex().row()); // which nothing marks when Tab has just come here
    const QRect cell = visualRect(currentIndex());
    OnContextMenu(viewport()->mapToGlobal(cell.isValid() ? cell.center() : QPoint()));
}

void FlexGrid::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        CopySelection();
    else if (event->matches(QKeySequence::Find) && selectionMode() != NoSelection)
        Find();
    else if (selectionMode() == NoSelection || !HandleColumn(*event))
        Move(event);
}

void FlexGrid::Move(QKeyEvent *event)
{
    const int before = currentIndex().row();
    QTableView::keyPressEvent(event);
    const QModelIndex current = currentIndex();
    if (selectionMode() != NoSelection && current.row() != before && OnClick)
        OnClick(current.row() + 1, current.column() + 1);
}

void FlexGrid::CopySelection() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange &range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    if (rows.empty() && CurrentRow() >= 0)
        rows.push_back(CurrentRow());
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (int place = 0; ColumnAt(place) > 0; ++place)
            cells << CellText(row, place);
        lines << cells.join(QLatin1Char('\t'));
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

void FlexGrid::Find()
{
    if (!m_find)
        m_find = new GridFind(*this, *this, [this](int row, int place) {
            const QPointer<FlexGrid> alive = this;
            SetCurrentRow(row);
            if (OnClick)
                OnClick(row + 1, ColumnAt(place));
            return !alive.isNull();
        });
    m_find->Open();
}

// --- as shown -----------------------------------------------------------------------------------

int FlexGrid::ColumnAt(int place) const
{
    for (int column = 1; column < Columns(); ++column) {
        if (!isColumnHidden(column - 1) && place-- == 0)
            return column;
    }
    return -1;
}

QStringList FlexGrid::Captions() const
{
    QStringList captions;
    for (int place = 0; ColumnAt(place) > 0; ++place)
        captions << Text(0, ColumnAt(place));
    return captions;
}

QString FlexGrid::CellText(int row, int place) const
{
    return row >= 0 ? Text(row + 1, ColumnAt(place)) : QString();
}

ShownGrid::Target FlexGrid::CellTarget(int row, int place)
{
    const int column = ColumnAt(place);
    if (column < 0 || row < 0 || row >= RowCount())
        return {};
    const QModelIndex index = m_model->index(row, column - 1);
    scrollTo(index);
    return {viewport(), visualRect(index).center()};
}

ShownGrid::Target FlexGrid::HeaderTarget(int place)
{
    const int column = ColumnAt(place);
    if (column < 0)
        return {};
    const QHeaderView *header = horizontalHeader();
    const int left = header->sectionViewportPosition(column - 1);
    horizontalScrollBar()->setValue(
        left < 0 ? horizontalScrollBar()->value() + left
                 : horizontalScrollBar()->value() +
                       std::max(0, left + header->sectionSize(column - 1) - viewport()->width()));
    return {header->viewport(),
            {header->sectionViewportPosition(column - 1) + header->sectionSize(column - 1) / 2,
             header->height() / 2}};
}
