#pragma once

/// One of the two views of a DataGrid: it draws the cells, tells the grid what the mouse and the
/// keys do, and lets the grid decide whether a row may be left.

#include "platform/widgets/grid_heading.h"
#include "platform/widgets/grid_source.h"
#include "platform/widgets/whole_text_tip.h"

#include <QPersistentModelIndex>
#include <QTableView>

class DataGrid;

/// Draws the frame of the current cell and the marks of cells, and edits in a plain line.
class GridCell : public WholeTextTip
{
public:
    explicit GridCell(DataGrid &grid);

    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    bool eventFilter(QObject *editor, QEvent *event) override;

private:
    CellMark MarkAt(const QModelIndex &index) const;

    DataGrid &m_grid;
};

class GridPane : public QTableView
{
public:
    explicit GridPane(DataGrid &grid);

    /// Takes the text of the open editor, if any, into the model and closes it.
    void CloseEditor();
    bool BeginEdit(const QModelIndex &index) { return edit(index, AllEditTriggers, nullptr); }
    QWidget *Editor() const;

    void keyboardSearch(const QString &search) override;

    GridHeading &Heading() { return *m_heading; }

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void FitRowHeight();

    DataGrid &m_grid;
    GridHeading *m_heading;
    QPersistentModelIndex m_pressed; ///< a release here completes the click
};
