#pragma once

/// The line in which a text is looked for in a grid. It lies over the grid's lower right corner until
/// Escape or its cross takes it away.
///
///     m_find = new GridFind(*this, *this, [this](int row, int place) { return GoTo(row, place); });
///     m_find->Open();                      on Ctrl+F
///
/// Enter goes to the next row with a cell that holds the text, whatever the case of its letters;
/// behind the last row the search goes on with the first. Shift+Enter goes the other way.

#include "platform/widgets/shown_grid.h"

#include <QFrame>

#include <functional>

class QLabel;
class QLineEdit;
class QStringMatcher;

class GridFind : public QFrame
{
public:
    /// `goTo` makes a cell current, and returns false when the row in use cannot be left.
    GridFind(QWidget &grid, ShownGrid &cells, std::function<bool(int row, int place)> goTo);

    void Open();
    /// False when no row has the text.
    bool FindNext(bool backward = false);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Close();
    void Place();
    /// The first of the row's places that shows the text, -1 without one.
    int PlaceIn(int row, int places, const QStringMatcher &text) const;

    QWidget &m_grid;
    ShownGrid &m_cells;
    std::function<bool(int, int)> m_goTo;
    QLineEdit *txtFind;
    QLabel *lblFound;
    QString m_foundText; ///< what the current row was found by
};
