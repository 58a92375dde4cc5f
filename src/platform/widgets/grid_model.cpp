#include "platform/widgets/grid_model.h"

#include <utility>

void GridModel::SetSource(std::vector<GridColumn> columns, GridSource *source)
{
    beginResetModel();
    m_columns = std::move(columns);
    m_source = source;
    m_rows = source ? source->RowCount() : 0;
    m_editedRow = -1;
    m_editedTexts.clear();
    endResetModel();
}

void GridModel::SetHasNewRow(bool hasNewRow)
{
    if (hasNewRow == m_hasNewRow)
        return;
    if (hasNewRow) {
        beginInsertRows({}, m_rows, m_rows);
        m_hasNewRow = true;
        endInsertRows();
    } else {
        beginRemoveRows({}, m_rows, m_rows);
        m_hasNewRow = false;
        endRemoveRows();
    }
}

void GridModel::RefreshRows()
{
    // Rows come and go at the end, so that the views keep their place; then all are drawn anew.
    const int rows = m_source ? m_source->RowCount() : 0;
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        if (m_editedRow == m_rows)
            m_editedRow = rows;
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        if (m_editedRow == m_rows)
            m_editedRow = rows;
        else if (m_editedRow >= rows)
            ForgetEdits();
        m_rows = rows;
        endRemoveRows();
    }
    if (m_rows > 0 && !m_columns.empty())
        emit dataChanged(index(0, 0), index(m_rows - 1, columnCount() - 1));
}

QString GridModel::Text(int row, int column) const
{
    if (row == m_editedRow) {
        const auto edited = m_editedTexts.constFind(column);
        if (edited != m_editedTexts.constEnd())
            return *edited;
    }
    // The source may have lost rows that the views have not been told of yet.
    const bool isThere = m_source && row >= 0 && row < m_rows && row < m_source->RowCount() &&
                         column >= 0 && column < columnCount();
    return isThere ? m_source->Text(row, column) : QString();
}

CellMark GridModel::Mark(int row, int column) const
{
    const bool isThere = m_source && row >= 0 && row < m_rows && row < m_source->RowCount() &&
                         column >= 0 && column < columnCount();
    return isThere ? m_source->Mark(row, column) : CellMark();
}

void GridModel::SetEditedText(int row, int column, const QString &text)
{
    const bool begins = row != m_editedRow;
    if (begins)
        m_editedTexts.clear();
    m_editedRow = row;
    m_editedTexts[column] = text;
    if (begins && row == m_rows && OnNewRow)
        OnNewRow();
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    emit headerDataChanged(Qt::Vertical, row, row);
}

void GridModel::ForgetEdits()
{
    const int row = std::exchange(m_editedRow, -1);
    m_editedTexts.clear();
    if (row >= 0 && row < rowCount()) {
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
        emit headerDataChanged(Qt::Vertical, row, row);
    }
}

int GridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows + (m_hasNewRow ? 1 : 0);
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return Text(index.row(), index.column());
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(m_columns[index.column()].alignment | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole) {
        const QString why = Mark(index.row(), index.column()).why;
        if (!why.isEmpty())
            return role == Qt::ToolTipRole
                       ? why
                       : Text(index.row(), index.column()) + QStringLiteral(", ") + why;
    }
    return {};
}

bool GridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const QString text = value.toString();
    if (role != Qt::EditRole || text == Text(index.row(), index.column()))
        return false;
    SetEditedText(index.row(), index.column(), text);
    if (OnEdited)
        OnEdited(index.row(), index.column());
    return true;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        if (role == Qt::DisplayRole)
            return section == m_editedRow ? QStringLiteral("\u270e")
                   : section == m_rows    ? QStringLiteral("*")
                                          : QString();
        return {};
    }
    if (section < 0 || section >= columnCount())
        return {};
    const GridColumn &column = m_columns[section];
    if (role == Qt::DisplayRole)
        return column.caption;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(column.alignment | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (index.isValid() && m_columns[index.column()].editable)
        flags |= Qt::ItemIsEditable;
    return flags;
}
