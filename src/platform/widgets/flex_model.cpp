#include "platform/widgets/flex_model.h"

#include "platform/widgets/colors.h"

#include <algorithm>

void FlexModel::SetSize(int rows, int columns)
{
    rows = std::max(rows, 1);
    columns = std::max(columns, 1);
    if (columns != m_columns || m_make) {
        beginResetModel();
        m_make = nullptr;
        m_columns = columns;
        m_alignments.resize(columns, Qt::AlignLeft);
        m_rows.resize(rows);
        for (auto &row : m_rows)
            row.resize(columns);
        endResetModel();
    } else if (rows > Rows()) {
        beginInsertRows({}, Rows() - 1, rows - 2);
        m_rows.resize(rows, std::vector<FlexCell>(columns));
        endInsertRows();
    } else if (rows < Rows()) {
        beginRemoveRows({}, rows - 1, Rows() - 2);
        m_rows.resize(rows);
        endRemoveRows();
    }
}

void FlexModel::SetMadeRows(int rows, CellMaker make)
{
    beginResetModel();
    m_rows.resize(1);
    m_madeRows = std::max(rows, 1);
    m_make = std::move(make);
    endResetModel();
}

FlexCell FlexModel::Shown(int row, int column) const
{
    if (row < 0 || row >= Rows() || column < 0 || column >= m_columns)
        return {};
    return m_make && row > 0 ? m_make(row, column) : m_rows[row][column];
}

FlexCell *FlexModel::At(int row, int column)
{
    const bool isKept =
        row >= 0 && row < static_cast<int>(m_rows.size()) && column >= 0 && column < m_columns;
    return isKept ? &m_rows[row][column] : nullptr;
}

void FlexModel::TellChanged(int row, int column)
{
    if (row == 0 && column > 0)
        emit headerDataChanged(Qt::Horizontal, column - 1, column - 1);
    else if (row > 0 && column == 0)
        emit headerDataChanged(Qt::Vertical, row - 1, row - 1);
    else if (row > 0)
        emit dataChanged(index(row - 1, column - 1), index(row - 1, column - 1));
}

void FlexModel::SetAlignment(int column, Qt::Alignment alignment)
{
    if (column >= 0 && column < m_columns)
        m_alignments[column] = alignment;
}

int FlexModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Rows() - 1;
}

int FlexModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns - 1;
}

QVariant FlexModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(m_alignments[index.column() + 1] | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::BackgroundRole && role != Qt::ForegroundRole &&
        role != Qt::FontRole)
        return {}; // a cell that is made costs something
    const FlexCell cell = Shown(index.row() + 1, index.column() + 1);
    switch (role) {
    case Qt::DisplayRole:
        return cell.text;
    case Qt::BackgroundRole:
        return cell.back ? QVariant(QBrush(QColor(*cell.back))) : QVariant();
    case Qt::ForegroundRole:
        return cell.back ? QVariant(QBrush(ReadableOn(QColor(*cell.back), palette))) : QVariant();
    case Qt::FontRole: {
        if (!cell.bold)
            return {};
        QFont bold = font;
        bold.setBold(true);
        return bold;
    }
    default:
        return {};
    }
}

QVariant FlexModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isHeading = orientation == Qt::Horizontal;
    if (section < 0 || section + 1 >= (isHeading ? m_columns : Rows()))
        return {};
    if (role == Qt::DisplayRole)
        return isHeading ? Shown(0, section + 1).text : Shown(section + 1, 0).text;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((isHeading ? m_alignments[section + 1] : Qt::AlignLeft) |
                                   Qt::AlignVCenter);
    return {};
}
