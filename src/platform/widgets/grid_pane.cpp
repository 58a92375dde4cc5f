#include "platform/widgets/grid_pane.h"

#include "platform/widgets/colors.h"
#include "platform/widgets/data_grid.h"
#include "platform/widgets/grid_model.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>

// --- cells --------------------------------------------------------------------------------------

GridCell::GridCell(DataGrid &grid) : WholeTextTip(&grid), m_grid(grid) {}

CellMark GridCell::MarkAt(const QModelIndex &index) const
{
    return m_grid.m_model->Mark(index.row(), index.column());
}

void GridCell::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const CellMark mark = MarkAt(index);
    if (mark.why.isEmpty())
        return;
    // Mixed into the ground that the user chose, or the desktop has, light or dark.
    const QColor amber(255, 160, 0);
    const QColor ground = option->palette.color(QPalette::Active, QPalette::Base);
    const QColor marked = Mixed(ground, amber, mark.isMild ? 0.15 : 0.45);
    option->backgroundBrush = marked;
    option->palette.setColor(QPalette::Text, ReadableOn(marked, option->palette));
}

void GridCell::paint(QPainter *painter, const QStyleOptionViewItem &option,
                     const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    cell.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
    QStyledItemDelegate::paint(painter, cell, index);

    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QColor ink =
        option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    if (!MarkAt(index).why.isEmpty()) { // seen in a selected row as well, and without colours
        const int side = option.rect.height() / 3;
        const QPoint corner = option.rect.topLeft();
        painter->save();
        painter->setPen(Qt::NoPen);
        painter->setBrush(
            isSelected ? ink : ReadableOn(option.palette.color(QPalette::Base), option.palette));
        painter->drawConvexPolygon(
            QPolygon({corner, corner + QPoint(side, 0), corner + QPoint(0, side)}));
        painter->restore();
    }

    if (index != m_grid.m_selection->currentIndex() || m_grid.MarqueeStyle() != Marquee::RowAndCell)
        return;
    painter->save();
    painter->setPen(ink);
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

QWidget *GridCell::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                const QModelIndex &index) const
{
    auto *editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setAlignment(index.data(Qt::TextAlignmentRole).value<Qt::Alignment>());
    editor->setAutoFillBackground(true);
    editor->setAccessibleName(index.model()->headerData(index.column(), Qt::Horizontal).toString());
    editor->setText(index.data(Qt::EditRole).toString());
    editor->selectAll();
    return editor;
}

void GridCell::setEditorData(QWidget *, const QModelIndex &) const
{
    // Filled when it was made: a refresh of the rows must not take away what is being typed.
}

bool GridCell::eventFilter(QObject *editor, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && m_grid.OnKeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        const QString text = key->text();
        if (!text.isEmpty()) {
            const QChar taken = m_grid.OnKeyPress(m_grid.CurrentColumn(), text[0]);
            if (taken.isNull())
                return true;
            if (taken != text[0]) {
                if (auto *line = qobject_cast<QLineEdit *>(editor))
                    line->insert(taken);
                return true;
            }
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}

// --- pane ---------------------------------------------------------------------------------------

GridPane::GridPane(DataGrid &grid)
    : QTableView(&grid), m_grid(grid), m_heading(new GridHeading(this))
{
    setHorizontalHeader(m_heading);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ContiguousSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    // A press on a wide column must not push the columns that the user looks at aside.
    setAutoScroll(false);

    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionsClickable(false);
    verticalHeader()->setFocusPolicy(Qt::NoFocus);
    verticalHeader()->hide();
    FitRowHeight();
}

void GridPane::FitRowHeight()
{
    const int height = fontMetrics().height() + 6;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    verticalHeader()->setFixedWidth(fontMetrics().height() + 8);
}

QWidget *GridPane::Editor() const
{
    const QModelIndex current = currentIndex();
    return current.isValid() ? indexWidget(current) : nullptr;
}

void GridPane::CloseEditor()
{
    if (QWidget *editor = Editor()) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void GridPane::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const bool next = hint == QAbstractItemDelegate::EditNextItem;
    const bool previous = hint == QAbstractItemDelegate::EditPreviousItem;
    QTableView::closeEditor(editor, next || previous ? QAbstractItemDelegate::NoHint : hint);
    if (next || previous)
        m_grid.EditNeighbour(next ? 1 : -1); // within the row; the last cell ends the editing
}

void GridPane::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event);
    m_grid.MarkCurrentColumn();
}

void GridPane::focusOutEvent(QFocusEvent *event)
{
    QTableView::focusOutEvent(event);
    m_grid.MarkCurrentColumn();
}

void GridPane::mousePressEvent(QMouseEvent *event)
{
    m_pressed = QPersistentModelIndex();
    const QPointer<GridPane> alive = this;
    const int row = indexAt(event->pos()).row();
    if (row < 0 || !m_grid.MayMoveTo(row) || !alive)
        return;
    m_pressed = indexAt(event->pos());
    QTableView::mousePressEvent(event);
}

void GridPane::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const QPersistentModelIndex index = indexAt(event->pos());
    const bool isLeft = event->button() == Qt::LeftButton;
    const bool isClick = isLeft && index.isValid() && index == m_pressed;
    m_pressed = QPersistentModelIndex();
    const Qt::MouseButton button = event->button();
    const QPoint globalPos = event->globalPosition().toPoint();
    const QPointer<GridPane> alive = this;
    if (button == Qt::RightButton && index.isValid())
        m_grid.MoveTo(index.row(), index.column());
    if (alive)
        m_grid.TellMouseUp(button, globalPos, isClick ? index.row() : -1);
}

void GridPane::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The second release belongs to the double click and is no click of its own.
    m_pressed = QPersistentModelIndex();
    const QModelIndex index = indexAt(event->pos());
    if (event->button() != Qt::LeftButton)
        return;
    if (m_grid.OnDoubleClick)
        m_grid.TellDoubleClick(index.row());
    else if (index.isValid())
        QTableView::mouseDoubleClickEvent(event);
}

void GridPane::keyPressEvent(QKeyEvent *event)
{
    if (!m_grid.HandleKey(event))
        QTableView::keyPressEvent(event);
}

void GridPane::keyboardSearch(const QString &search)
{
    if (m_grid.CommitRow())
        QTableView::keyboardSearch(search);
    const QModelIndex found = currentIndex();
    if (found.isValid())
        m_grid.ScrollTo(found.row(), found.column());
}

void GridPane::contextMenuEvent(QContextMenuEvent *event)
{
    // The mouse has its own way, on the release of the button; this is the Menu key.
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard || !m_grid.OnContextMenu)
        return;
    const QRect cell = visualRect(currentIndex());
    m_grid.OnContextMenu(viewport()->mapToGlobal(cell.isValid() ? cell.center() : QPoint()));
}

void GridPane::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        FitRowHeight();
}

void GridPane::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    m_grid.FitSplit(); // the scroll bar came or went
}
