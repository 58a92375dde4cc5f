#pragma once

/// Rows for a grid under test, and a window that shows it.

#include "platform/widgets/data_grid.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QKeyEvent>
#include <QPixmap>
#include <QSignalBlocker>
#include <QStringList>

#include <vector>

/// Rows in memory; counts how often it is asked for a text.
class Rows : public GridSource
{
public:
    explicit Rows(std::vector<QStringList> rows = {}) : m_rows(std::move(rows)) {}

    int RowCount() const override { return static_cast<int>(m_rows.size()); }
    QString Text(int row, int column) const override
    {
        ++asked;
        return m_rows.at(row).value(column);
    }
    bool Store(int row, const QMap<int, QString> &texts) override
    {
        ++stores;
        if (!accepts)
            return false;
        if (row == RowCount())
            m_rows.emplace_back();
        QStringList &cells = m_rows.at(row);
        for (auto text = texts.begin(); text != texts.end(); ++text) {
            while (cells.size() <= text.key())
                cells << QString();
            cells[text.key()] = text.value();
        }
        return true;
    }

    std::vector<QStringList> &All() { return m_rows; }
    bool accepts = true;
    int stores = 0;
    mutable int asked = 0;

private:
    std::vector<QStringList> m_rows;
};

inline std::vector<GridColumn> PositionColumns()
{
    return {{"Symbol", "Symbol"},
            {"% Gain ", "PerCentGainToday", Qt::AlignRight},
            {"P&L To Date ", "ProfitLossToDate", Qt::AlignRight},
            {"ID", "ID", Qt::AlignRight, 0, false, true},
            {"Name", "Name"}};
}

inline std::vector<QStringList> Positions(int count = 3)
{
    const std::vector<QStringList> first = {{"ACME", "1.25%", "250.00", "1", "Acme Works"},
                                            {"O'NEIL", "-3.10%", "-12.50", "2", "O'Neil & Sons"},
                                            {"ZÜRI", "0.00%", "0.00", "3", "Zürich Gas"}};
    std::vector<QStringList> rows;
    for (int row = 0; row < count; ++row)
        rows.push_back(row < 3 ? first[row]
                               : QStringList{QString("S%1").arg(row), "0.00%", "0.00"});
    return rows;
}

inline void Show(QWidget &window, QSize size = {600, 300})
{
    window.resize(size);
    window.show();
    QApplication::setActiveWindow(&window);
    QApplication::processEvents();
}

inline void Press(QWidget *widget, int key, const QString &text = {},
                  Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QApplication::sendEvent(widget, &event);
    }
}

/// Sends the key to whatever has the focus.
inline void PressFocused(int key, const QString &text = {},
                         Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    Press(QApplication::focusWidget(), key, text, modifiers);
}

/// Which way the arrow of the sorted column points, by what is drawn: "up", "down" or "none".
inline std::string SortArrow(QHeaderView &heading)
{
    const int column = heading.sortIndicatorSection();
    if (!heading.isSortIndicatorShown() || column < 0)
        return "none";
    const QRect section(heading.sectionViewportPosition(column), 0, heading.sectionSize(column),
                        heading.height());
    const auto drawn = [&](bool shown) {
        const QSignalBlocker silent(heading);
        heading.setSortIndicatorShown(shown);
        QApplication::processEvents();
        return heading.viewport()->grab(section).toImage().convertToFormat(QImage::Format_RGB32);
    };
    const QImage without = drawn(false);
    const QImage with = drawn(true);
    std::vector<int> widths;                   // of the arrow, from its first line to its last
    const int right = section.width() * 3 / 4; // the caption may move, the arrow stands at the end
    for (int y = 0; y < with.height(); ++y) {
        int width = 0;
        for (int x = right; x < with.width(); ++x)
            width += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
        if (width > 0)
            widths.push_back(width);
    }
    if (widths.empty())
        return "none";
    return widths.front() < widths.back() ? "up" : "down";
}
