#pragma once

#include <QColor>
#include <QString>

#include <optional>

/// What a cell of a FlexGrid shows.
struct FlexCell
{
    QString text;
    std::optional<QRgb> back; ///< else the grid's own
    bool bold = false;
};
