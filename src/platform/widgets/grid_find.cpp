#include "platform/widgets/grid_find.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStringMatcher>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

GridFind::GridFind(QWidget &grid, ShownGrid &cells, std::function<bool(int row, int place)> goTo)
    : QFrame(&grid), m_grid(grid), m_cells(cells), m_goTo(std::move(goTo))
{
    setObjectName(QStringLiteral("GridFind"));
    setAutoFillBackground(true);
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::Window);
    auto *lblFind = new QLabel(QStringLiteral("Find"), this);
    txtFind = new QLineEdit(this);
    txtFind->setObjectName(QStringLiteral("txtFind"));
    txtFind->setAccessibleName(QStringLiteral("Find in the list"));
    txtFind->setMinimumWidth(160);
    lblFind->setBuddy(txtFind);
    lblFound = new QLabel(this);
    lblFound->setObjectName(QStringLiteral("lblFound"));

    const auto button = [this](Qt::ArrowType arrow, const QString &name) {
        auto *made = new QToolButton(this);
        made->setArrowType(arrow);
        made->setAutoRaise(true);
        made->setToolTip(name);
        made->setAccessibleName(name);
        return made;
    };
    QToolButton *previous = button(Qt::UpArrow, QStringLiteral("Previous (Shift+Enter)"));
    QToolButton *next = button(Qt::DownArrow, QStringLiteral("Next (Enter)"));
    QToolButton *close = button(Qt::NoArrow, QStringLiteral("Close (Esc)"));
    close->setText(QStringLiteral("\u00d7"));
    connect(previous, &QToolButton::clicked, this, [this] { FindNext(true); });
    connect(next, &QToolButton::clicked, this, [this] { FindNext(); });
    connect(close, &QToolButton::clicked, this, [this] { Close(); });
    connect(txtFind, &QLineEdit::textChanged, this, [this] {
        lblFound->clear();
        Place();
    });

    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(8, 4, 4, 4);
    for (QWidget *control :
         std::initializer_list<QWidget *>{lblFind, txtFind, lblFound, previous, next, close})
        line->addWidget(control);
    m_grid.installEventFilter(this);
    hide();
}

void GridFind::Open()
{
    show();
    raise();
    Place();
    txtFind->setFocus();
    txtFind->selectAll();
}

void GridFind::Close()
{
    hide();
    m_grid.setFocus();
}

void GridFind::Place()
{
    adjustSize();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    move(std::max(0, m_grid.width() - width() - bar),
         std::max(0, m_grid.height() - height() - bar));
}

int GridFind::PlaceIn(int row, int places, const QStringMatcher &text) const
{
    for (int place = 0; place < places; ++place)
        if (text.indexIn(m_cells.CellText(row, place)) >= 0)
            return place;
    return -1;
}

bool GridFind::FindNext(bool backward)
{
    const QString text = txtFind->text();
    const int rows = m_cells.RowCount();
    const int places = int(m_cells.Captions().size());
    if (text.isEmpty() || rows == 0)
        return false;
    // The row one stands on counts as found when it is shown for another text.
    const bool again = text == m_foundText;
    const int start = std::max(0, m_cells.CurrentRow());
    const QStringMatcher matcher(text, Qt::CaseInsensitive);
    for (int step = again ? 1 : 0; step < rows + (again ? 1 : 0); ++step) {
        const int row = (start + (backward ? rows - step % rows : step)) % rows;
        const int place = PlaceIn(row, places, matcher);
        if (place < 0)
            continue;
        m_foundText = text;
        lblFound->clear();
        m_goTo(row, place);
        Place();
        return true;
    }
    m_foundText.clear();
    lblFound->setText(QStringLiteral("Not found"));
    Place();
    return false;
}

void GridFind::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (auto *button = qobject_cast<QToolButton *>(focusWidget()))
            button->click();
        else
            FindNext(event->modifiers().testFlag(Qt::ShiftModifier));
        return;
    case Qt::Key_Escape:
        Close();
        return;
    default:
        QFrame::keyPressEvent(event);
    }
}

bool GridFind::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_grid && event->type() == QEvent::Resize && isVisible())
        Place();
    return QFrame::eventFilter(watched, event);
}
