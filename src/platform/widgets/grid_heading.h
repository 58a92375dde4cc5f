#pragma once

/// The headings of a grid. A line under one shows those who use the keys which column they are in.

#include <QHeaderView>

class GridHeading : public QHeaderView
{
public:
    explicit GridHeading(QWidget *parent);

    /// The column that the keys are for; -1: none.
    void Mark(int column);

protected:
    void paintSection(QPainter *painter, const QRect &rect, int column) const override;

private:
    int m_marked = -1;
};
