#include "platform/widgets/data_grid.h"

#include "platform/widgets/grid_find.h"
#include "platform/widgets/grid_model.h"
#include "platform/widgets/grid_pane.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

DataGrid::DataGrid(QWidget *parent) : QWidget(parent), m_model(new GridModel(this))
{
    m_left = new GridPane(*this);
    m_belowLeft = new QWidget(this);
    m_right = new GridPane(*this);
    m_selection = new QItemSelectionModel(m_model, this);
    for (GridPane *pane : {m_left, m_right}) {
        pane->setItemDelegate(new GridCell(*this));
        pane->setModel(m_model);
        delete pane->selectionModel();
        pane->setSelectionModel(m_selection);
        connect(pane->horizontalHeader(), &QHeaderView::sectionClicked, this,
                [this](int column) { HeaderClicked(column); });
        connect(pane->horizontalHeader(), &QHeaderView::sectionResized, this,
                [this](int column, int, int width) { TakeUserWidth(column, width); });
    }
    connect(m_left->verticalScrollBar(), &QScrollBar::valueChanged, m_right->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(m_right->verticalScrollBar(), &QScrollBar::valueChanged, m_left->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(m_left->horizontalHeader(), &QHeaderView::sectionResized, this, [this] { FitSplit(); });
    connect(m_selection, &QItemSelectionModel::currentChanged, this, [this] {
        MarkCurrentColumn();
        if (!m_isSilent && OnRowColChange)
            OnRowColChange();
    });
    m_model->OnEdited = [this](int row, int column) {
        if (OnCellEdited)
            OnCellEdited(row, column);
    };
    m_model->OnNewRow = [this] {
        if (OnNewRow)
            OnNewRow();
    };

    m_left->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_left->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_left->hide();
    m_belowLeft->hide();
    auto *left = new QVBoxLayout;
    left->addWidget(m_left, 1);
    left->addWidget(m_belowLeft);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    left->setSpacing(0);
    layout->addLayout(left);
    layout->addWidget(m_right, 1);
    m_left->setFocusPolicy(Qt::ClickFocus); // one stop of Tab: the keys go through both panes
    setFocusProxy(m_right);
    setFocusPolicy(Qt::StrongFocus);
}

DataGrid::~DataGrid()
{
    // Now, while there is a grid that they can tell of the focus they lose.
    delete m_left;
    delete m_right;
}

// --- rows ---------------------------------------------------------------------------------------

void DataGrid::SetSource(std::vector<GridColumn> columns, GridSource *source)
{
    const QScopedValueRollback silent(m_isSilent, true);
    const QScopedValueRollback fitting(m_isFitting, true);
    m_right->CloseEditor();
    m_left->CloseEditor();
    m_model->SetSource(std::move(columns), source);
    SetSortIndicator(-1, false);
    LeaveSplit();
    ShowColumns();
    FitColumns();
    MoveSilently(0);
}

void DataGrid::RefreshRows()
{
    const QScopedValueRollback silent(m_isSilent, true);
    const bool wasEmpty = m_model->Rows() == 0;
    const int row = m_selection->currentIndex().row();
    const bool wasOnNewRow = row == m_model->Rows() && !wasEmpty;
    m_model->RefreshRows();
    if (wasEmpty && m_model->Rows() > 0)
        FitColumns(); // the captions were all there was to measure
    if (!wasOnNewRow)
        MoveSilently(std::clamp(row, 0, std::max(0, m_model->Rows() - 1)));
}

const std::vector<GridColumn> &DataGrid::Columns() const
{
    return m_model->Columns();
}

int DataGrid::RowCount() const
{
    return m_model->Rows();
}

int DataGrid::CurrentRow() const
{
    const int row = m_selection->currentIndex().row();
    return row < m_model->Rows() ? row : -1;
}

int DataGrid::CurrentColumn() const
{
    return m_selection->currentIndex().column();
}

bool DataGrid::SetCurrentRow(int row)
{
    return row < m_model->Rows() && MoveTo(row, CurrentColumn());
}

bool DataGrid::MayMoveTo(int row)
{
    const bool stays = row == m_selection->currentIndex().row();
    return (stays && (!IsRowEdited() || row == m_model->EditedRow())) || CommitRow();
}

bool DataGrid::MoveTo(int row, int column, bool extend)
{
    if (row < 0 || row >= m_model->rowCount() || !MayMoveTo(row))
        return false;
    const std::vector<int> &shown = ShownColumns();
    if (std::find(shown.begin(), shown.end(), column) == shown.end())
        column = shown.empty() ? 0 : shown.front();
    const QModelIndex current = m_selection->currentIndex();
    const QModelIndex target = m_model->index(row, column);
    if (!target.isValid())
        return false;
    // The selection is one stretch of rows with the current one at an end; the other end stays.
    const QItemSelection rows = m_selection->selection();
    QItemSelection stretch(target, target);
    if (extend && !rows.isEmpty()) {
        const QItemSelectionRange range = rows.first();
        const int anchor = range.top() == current.row() ? range.bottom() : range.top();
        stretch = QItemSelection(m_model->index(anchor, column), target);
    }
    ScrollTo(row, column);
    if (extend || row != current.row())
        m_selection->select(stretch,
                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_selection->setCurrentIndex(target, QItemSelectionModel::NoUpdate);
    return true;
}

void DataGrid::MoveSilently(int row)
{
    const QScopedValueRollback silent(m_isSilent, true);
    const std::vector<int> &shown = ShownColumns();
    const bool columnShown = std::find(shown.begin(), shown.end(), CurrentColumn()) != shown.end();
    const int column = columnShown ? CurrentColumn() : shown.empty() ? 0 : shown.front();
    const QModelIndex target = m_model->index(row, column);
    if (target != m_selection->currentIndex())
        m_selection->setCurrentIndex(target, QItemSelectionModel::ClearAndSelect |
                                                 QItemSelectionModel::Rows);
}

void DataGrid::ScrollTo(int row, int column)
{
    // Up and down first by hand: a pane does not scroll to a cell whose column it hides.
    GridPane *pane = PaneOf(column);
    const int height = pane->verticalHeader()->defaultSectionSize();
    const int inView = std::max(1, pane->viewport()->height() / height);
    QScrollBar *bar = m_right->verticalScrollBar();
    if (row < bar->value())
        bar->setValue(row);
    else if (row >= bar->value() + inView)
        bar->setValue(row - inView + 1);
    pane->scrollTo(m_model->index(row, column));
}

// --- keys and mouse -----------------------------------------------------------------------------

bool DataGrid::HandleKey(QKeyEvent *event)
{
    const int row = CurrentRow();
    if (event->matches(QKeySequence::Copy)) {
        CopySelection();
        return true;
    }
    if (event->matches(QKeySequence::Find)) {
        Find();
        return true;
    }
    if (event->modifiers().testFlag(Qt::AltModifier)) {
        event->ignore(); // the form's
        return true;
    }
    if (HandleColumn(*event))
        return true;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // In an open cell it ends the typing alone, and presses no button of the form.
        if (m_left->Editor() || m_right->Editor())
            return true;
        if (OnDoubleClick && row >= 0)
            OnDoubleClick(row);
        else
            event->ignore();
        return true;
    case Qt::Key_Escape:
        if (IsRowEdited())
            CancelRow();
        else
            event->ignore();
        return true;
    case Qt::Key_Delete:
        if (OnDeleteKey && row >= 0) {
            m_selection->select(m_selection->currentIndex(), // of rows marked for a copy, this one
                                QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
            OnDeleteKey(row);
        }
        return true;
    default:
        return HandleMove(event);
    }
}

/// What the mouse does to the heading of the current column.
bool DataGrid::HandleColumn(const QKeyEvent &event)
{
    const int column = CurrentColumn();
    if (column < 0)
        return false;
    if (!GridHeading::IsClick(event))
        return PaneOf(column)->Heading().Resize(column, event);
    HeaderClicked(column);
    return true;
}

void DataGrid::MarkCurrentColumn()
{
    const bool hasKeys = m_left->hasFocus() || m_right->hasFocus();
    for (GridPane *pane : {m_left, m_right})
        pane->Heading().Mark(hasKeys ? CurrentColumn() : -1);
}

bool DataGrid::HandleMove(QKeyEvent *event)
{
    const QModelIndex current = m_selection->currentIndex();
    const std::vector<int> &shown = ShownColumns();
    if (!current.isValid() || shown.empty())
        return false;
    const int height = m_right->verticalHeader()->defaultSectionSize();
    const int page = std::max(1, m_right->viewport()->height() / height - 1);
    const auto here = std::find(shown.begin(), shown.end(), current.column());
    int place = here == shown.end() ? 0 : static_cast<int>(here - shown.begin());
    int row = current.row();
    switch (event->key()) {
    case Qt::Key_Up:
        row -= 1;
        break;
    case Qt::Key_Down:
        row += 1;
        break;
    case Qt::Key_PageUp:
        row -= page;
        break;
    case Qt::Key_PageDown:
        row += page;
        break;
    case Qt::Key_Home:
        row = 0;
        break;
    case Qt::Key_End:
        row = m_model->rowCount() - 1;
        break;
    case Qt::Key_Left:
        place -= 1;
        break;
    case Qt::Key_Right:
        place += 1;
        break;
    default:
        return false;
    }
    row = std::clamp(row, 0, m_model->rowCount() - 1);
    place = std::clamp(place, 0, static_cast<int>(shown.size()) - 1);
    MoveTo(row, shown[place], event->modifiers().testFlag(Qt::ShiftModifier));
    return true;
}

void DataGrid::CopySelection() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange &range : m_selection->selection()) {
        for (int row = range.top(); row <= range.bottom() && row < m_model->Rows(); ++row)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    const std::vector<int> &shown = ShownColumns();
    QStringList lines;
    for (const int row : rows) {
        QStringList cells;
        for (const int column : shown)
            cells << m_model->Text(row, column);
        lines << cells.join(QLatin1Char('\t'));
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

void DataGrid::Find()
{
    if (!m_find)
        m_find = new GridFind(*this, *this,
                              [this](int row, int place) { return MoveTo(row, ColumnAt(place)); });
    m_find->Open();
}

void DataGrid::HeaderClicked(int column)
{
    // The header has moved its arrow to the click already; what the rows are sorted by is told.
    SetSortIndicator(m_sortColumn, m_sortDescending);
    if (CommitRow() && OnHeaderClick)
        OnHeaderClick(column);
}

void DataGrid::TellMouseUp(Qt::MouseButton button, QPoint globalPos, int clickedRow)
{
    const QPointer<DataGrid> alive = this;
    if (OnMouseUp)
        OnMouseUp(button);
    if (alive && clickedRow >= 0 && clickedRow < m_model->Rows() && OnClick)
        OnClick(clickedRow);
    if (alive && button == Qt::RightButton && OnContextMenu)
        OnContextMenu(globalPos);
}

void DataGrid::TellDoubleClick(int row)
{
    if (row < m_model->Rows())
        OnDoubleClick(row);
}

// --- editing ------------------------------------------------------------------------------------

void DataGrid::SetAllowAddNew(bool allowed)
{
    const QScopedValueRollback silent(m_isSilent, true);
    m_model->SetHasNewRow(allowed);
    if (m_model->Rows() == 0)
        MoveSilently(0);
    ShowColumns();
}

bool DataGrid::IsRowEdited() const
{
    return m_model->EditedRow() >= 0;
}

QString DataGrid::EditedText(int column) const
{
    return m_model->Text(IsRowEdited() ? m_model->EditedRow() : CurrentRow(), column);
}

void DataGrid::SetEditedText(int column, const QString &text)
{
    const int row = IsRowEdited() ? m_model->EditedRow() : m_selection->currentIndex().row();
    if (row >= 0)
        m_model->SetEditedText(row, column, text);
}

bool DataGrid::EditCell(int column, const QString &text)
{
    const QModelIndex current = m_selection->currentIndex();
    if (column < 0 || !current.isValid() || !MoveTo(current.row(), column))
        return false;
    GridPane *pane = PaneOf(column);
    if (!pane->BeginEdit(m_model->index(current.row(), column)))
        return false;
    auto *line = qobject_cast<QLineEdit *>(pane->Editor());
    if (!line)
        return false;
    line->setText(text);
    pane->CloseEditor();
    return true;
}

bool DataGrid::GoToNewRow()
{
    return m_model->rowCount() > m_model->Rows() && CommitRow() &&
           MoveTo(m_model->Rows(), CurrentColumn());
}

bool DataGrid::CommitRow()
{
    const QPointer<DataGrid> alive = this;
    m_left->CloseEditor();
    if (!alive)
        return false;
    m_right->CloseEditor();
    if (!alive)
        return false;
    if (!IsRowEdited())
        return true;
    if (m_isCommitting)
        return false;
    m_isCommitting = true;
    const int row = m_model->EditedRow();
    const bool allowed = !OnBeforeUpdate || OnBeforeUpdate(row);
    if (!alive)
        return false;
    const bool stored = allowed && IsRowEdited() && m_model->Source() &&
                        m_model->Source()->Store(row, m_model->EditedTexts());
    m_isCommitting = false;
    if (!stored) {
        if (!IsRowEdited()) // the handler has taken the changes back itself
            return true;
        setFocus(); // here it is corrected, whatever button was pressed
        return false;
    }
    m_model->ForgetEdits();
    RefreshRows();
    MoveSilently(std::min(row, std::max(0, m_model->Rows() - 1)));
    if (OnAfterUpdate)
        OnAfterUpdate(row);
    return !alive.isNull();
}

void DataGrid::CancelRow()
{
    m_model->ForgetEdits();
}

void DataGrid::EditNeighbour(int step)
{
    const std::vector<int> &shown = ShownColumns();
    const int row = m_selection->currentIndex().row();
    const auto here = std::find(shown.begin(), shown.end(), CurrentColumn());
    if (here == shown.end())
        return;
    for (auto place = here - shown.begin() + step;
         place >= 0 && place < static_cast<long>(shown.size()); place += step) {
        const int column = shown[place];
        if (!Columns()[column].editable)
            continue;
        if (MoveTo(row, column))
            PaneOf(column)->BeginEdit(m_model->index(row, column));
        return;
    }
}
