#include "marketdata/frm_quote_server_update_grid.h"

namespace
{

const QString TrueText = QStringLiteral("True");
const QString FalseText = QStringLiteral("False");
constexpr int LongestQuoted = 40; ///< of a text in a message

std::optional<bool> FlagFromText(const QString &text)
{
    const QString word = text.trimmed().toLower();
    if (word == u"true" || word == u"yes" || word == u"-1" || word == u"1")
        return true;
    if (word.isEmpty() || word == u"false" || word == u"no" || word == u"0")
        return false;
    return std::nullopt;
}

QString Quoted(const QString &text)
{
    const QString line = text.simplified();
    return QLatin1Char('"') +
           (line.size() > LongestQuoted ? line.left(LongestQuoted) + QStringLiteral("...") : line) +
           QLatin1Char('"');
}

} // namespace

RecordsetQuery QuoteServerQuery()
{
    return {QStringLiteral(
                "ID, WebSiteName AS [website Name], BegWebAddress AS [Begin Address], "
                "EndWebAddress AS [End Address], AddressBuildCharacters AS [Address Characters], "
                "SymbolBegText AS [Symbol Begin Text], SymbolEndText AS [Symbol End Text], "
                "CharToPrice AS [Characters to Price], PriceBegText AS [Price Begin Text], "
                "PriceEndText AS [Price End Text], DelayTime AS [Delay Time], "
                "UpdateCount AS [Update Count], ServiceFlag AS [Service Flag], "
                "SignUpURL AS [Sign Up URL], OptionPrefix AS [Option Prefix], "
                "OptionSuffix AS [Option Suffix], SimilarSite AS [Similar WebSite]"),
            QStringLiteral("WebParameters"), QString()};
}

std::vector<GridColumn> QuoteServerColumns(const Recordset &rows)
{
    std::vector<GridColumn> columns;
    for (int column = 0; column < rows.ColumnNames().size(); ++column) {
        const FieldType type = rows.Type(column);
        const bool isNumber = type == FieldType::Long || type == FieldType::Counter;
        columns.push_back({.caption = rows.ColumnNames()[column],
                           .dataField = rows.ColumnNames()[column],
                           .alignment = isNumber ? Qt::AlignRight : Qt::AlignLeft,
                           .editable = type != FieldType::Long});
    }
    return columns;
}

QString QuoteServerGridSource::Text(int row, int column) const
{
    const FieldValue &value = m_rows.ValueAt(row, column);
    if (const auto *text = std::get_if<QString>(&value))
        return *text;
    if (const auto *flag = std::get_if<bool>(&value))
        return *flag ? TrueText : FalseText;
    if (const auto *counter = std::get_if<Integer>(&value))
        return m_formats.ToText(*counter);
    if (const auto *number = std::get_if<qint64>(&value))
        return m_formats.ToText(*number);
    return QString();
}

std::optional<FieldValue> QuoteServerGridSource::FieldFromText(int column,
                                                               const QString &text) const
{
    switch (m_rows.Type(column)) {
    case FieldType::YesNo:
        if (const std::optional<bool> flag = FlagFromText(text))
            return *flag;
        return std::nullopt;
    case FieldType::Counter:
        if (text.trimmed().isEmpty())
            return std::monostate();
        try {
            return m_formats.IntegerFromText(text);
        } catch (const RuntimeError &) {
            return std::nullopt;
        }
    default:
        return text;
    }
}

std::optional<QString> QuoteServerGridSource::Refusal(int column, const QString &text) const
{
    if (FieldFromText(column, text))
        return std::nullopt;
    const QString name = Quoted(m_rows.ColumnNames()[column]);
    const QString wanted = m_rows.Type(column) == FieldType::YesNo
                               ? QStringLiteral("Please enter True or False in the column %1.")
                               : QStringLiteral("Please enter a whole number from -32,768 to "
                                                "32,767 in the column %1.");
    return wanted.arg(name) + QStringLiteral("\n%1 cannot be stored there. ").arg(Quoted(text)) +
           QStringLiteral("The row stays as you typed it;\npress Esc to take its changes back.");
}
