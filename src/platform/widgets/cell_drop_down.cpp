#include "platform/widgets/cell_drop_down.h"

#include "platform/widgets/data_grid.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>

CellDropDown::CellDropDown(DataGrid &grid, int column)
    : QComboBox(grid.Viewport()), m_grid(grid), m_column(column)
{
    setFocusPolicy(Qt::NoFocus); // the grid keeps it; the list takes it while it is open
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(0);
    connect(this, &QComboBox::activated, this, [this](int item) {
        const QString text = itemText(item);
        setCurrentIndex(-1); // the cell shows it
        m_grid.SetEditedText(m_column, text);
        if (OnPicked)
            OnPicked(text);
    });
    grid.Viewport()->installEventFilter(this);
    for (auto *bar : grid.findChildren<QScrollBar *>())
        connect(bar, &QScrollBar::valueChanged, this, [this] { Follow(); });
    for (auto *header : grid.findChildren<QHeaderView *>())
        connect(header, &QHeaderView::sectionResized, this, [this] { Follow(); });
}

void CellDropDown::Follow()
{
    const QRect cell = m_grid.CurrentRowCell(m_column);
    setVisible(!cell.isEmpty());
    if (cell.isEmpty())
        return;
    const int width = qMin(cell.width(), cell.height());
    setGeometry(cell.right() - width + 1, cell.top(), width, cell.height());
    raise();
}

void CellDropDown::showPopup()
{
    setCurrentIndex(findText(m_grid.EditedText(m_column)));
    view()->setMinimumWidth(view()->sizeHintForColumn(0) +
                            view()->verticalScrollBar()->sizeHint().width() + 8);
    QComboBox::showPopup();
}

bool CellDropDown::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        Follow();
    return QComboBox::eventFilter(watched, event);
}
