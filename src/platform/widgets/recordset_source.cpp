#include "platform/widgets/recordset_source.h"

std::vector<GridColumn> RecordsetSource::Columns() const
{
    std::vector<GridColumn> columns;
    for (const ListColumn &column : m_columns) {
        GridColumn shown{QString::fromUtf8(column.caption), QString::fromUtf8(column.dataField),
                         column.alignment};
        shown.sample = QString::fromUtf8(column.sample);
        shown.editable = column.editable;
        shown.hidden = column.hidden;
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

// --- editing ------------------------------------------------------------------------------------

std::optional<FieldValue> EditableRecordsetSource::FieldFromText(int column,
                                                                 const QString &text) const
{
    const FieldType type = m_rows.Type(column);
    if (type == FieldType::Text)
        return text;
    if (text.trimmed().isEmpty())
        return std::monostate();
    const auto found = [](const auto &value) {
        return value ? std::optional<FieldValue>(*value) : std::nullopt;
    };
    const bool isAmount = type == FieldType::Currency || type == FieldType::Single;
    const std::optional<QString> number = isAmount ? m_formats.TypedNumber(text) : text;
    if (!number)
        return std::nullopt;
    try {
        switch (type) {
        case FieldType::Date:
            return found(m_formats.DateFromTyped(text));
        case FieldType::Time:
            return found(m_formats.TimeFromText(text));
        case FieldType::Currency:
            return m_formats.CurrencyFromText(*number);
        case FieldType::Single:
            return m_formats.SingleFromText(*number);
        case FieldType::Counter:
            return m_formats.IntegerFromText(text);
        case FieldType::Long:
        case FieldType::YesNo:
        case FieldType::Text:
            break;
        }
    } catch (const RuntimeError &) { // no number, or one that does not fit
    }
    return std::nullopt;
}

bool EditableRecordsetSource::Takes(int column, const QString &text) const
{
    return FieldFromText(column, text).has_value();
}

bool EditableRecordsetSource::Store(int row, const QMap<int, QString> &texts)
{
    const bool isNew = row >= m_rows.RecordCount();
    std::vector<std::pair<int, FieldValue>> changes;
    for (auto cell = texts.begin(); cell != texts.end(); ++cell) {
        if (!isNew && cell.value() == Text(row, cell.key()))
            continue;
        std::optional<FieldValue> value = FieldFromText(cell.key(), cell.value());
        if (!value)
            return false;
        changes.emplace_back(cell.key(), std::move(*value));
    }
    try {
        if (isNew) {
            m_store.AddNew();
            if (OnAddNew)
                OnAddNew(m_store);
        } else {
            m_store.MoveTo(row);
        }
        for (auto &[column, value] : changes)
            m_store.Set(column, std::move(value));
        m_store.Update();
        return true;
    } catch (const RuntimeError &error) {
        m_store.CancelUpdate();
        if (OnFailure)
            OnFailure(error);
        return false;
    }
}
