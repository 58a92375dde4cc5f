#include "platform/widgets/recordset_source.h"

std::vector<GridColumn> RecordsetSource::Columns() const
{
    std::vector<GridColumn> columns;
    for (const ListColumn &column : m_columns) {
        GridColumn shown{QString::fromUtf8(column.caption), QString::fromUtf8(column.dataField),
                         column.alignment};
        shown.sample = QString::fromUtf8(column.sample);
        columns.push_back(std::move(shown));
    }
    return columns;
}

namespace
{

struct CellText
{
    const Formats &formats;
    QStringView pattern;

    QString operator()(std::monostate) const { return QString(); }
    QString operator()(const QString &text) const { return text; }
    QString operator()(bool flag) const { return formats.ToText(flag ? -1 : 0); }
    QString operator()(QDate date) const
    {
        return pattern.isEmpty() ? formats.ToText(date) : formats.FormatDate(date, pattern);
    }
    QString operator()(QTime time) const
    {
        return pattern.isEmpty() ? formats.ToText(time) : formats.FormatTime(time, pattern);
    }
    template <class Number>
    QString operator()(Number number) const
    {
        return formats.Format(number, pattern);
    }
};

} // namespace

QString RecordsetSource::Text(int row, int column) const
{
    if (row < 0 || row >= m_rows.RecordCount() || column < 0 || column >= int(m_columns.size()))
        return QString();
    return std::visit(CellText{m_formats, m_columns[size_t(column)].pattern},
                      m_rows.ValueAt(row, column));
}
