#pragma once

/// The orders that a list can be put in by a click on a heading.
///
///     constexpr SortClause clauses[] = {
///         {"Symbol", "ORDER BY Symbol, PriceDate DESC", "ORDER BY Symbol DESC, PriceDate DESC"}};
///     ClauseFor(clauses, "Symbol", true)    "ORDER BY Symbol DESC, PriceDate DESC"
///     ClauseFor(clauses, "Name", true)      nothing: that column is not for sorting

#include <QString>

#include <optional>
#include <span>

struct SortClause
{
    const char *dataField;
    const char *ascending;
    const char *descending;
};

inline std::optional<QString> ClauseFor(std::span<const SortClause> clauses,
                                        const QString &dataField, bool descending)
{
    for (const SortClause &clause : clauses)
        if (dataField == QLatin1String(clause.dataField))
            return QString::fromUtf8(descending ? clause.descending : clause.ascending);
    return std::nullopt;
}
