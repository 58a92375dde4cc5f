#include "tracking/sort_order.h"

#include <QStringList>

QString InitialGridOrder()
{
    return QStringLiteral("ORDER BY Shares DESC, Symbol, TransDate DESC, Time DESC");
}

std::optional<QString> GridOrderFor(const QString &dataField, bool descending)
{
    static const QStringList plainFields = {
        QStringLiteral("Symbol"),
        QStringLiteral("Shares"),
        QStringLiteral("AvrgPrice"),
        QStringLiteral("CurrPrice"),
        QStringLiteral("Basis"),
        QStringLiteral("PerCentGainToday"),
        QStringLiteral("ProfitLossToday"),
        QStringLiteral("ProfitLossToDate"),
        QStringLiteral("ActualProfitLoss"),
        QStringLiteral("InvestedValue"),
        QStringLiteral("InvestedToDate"),
        QStringLiteral("TransCostToday"),
        QStringLiteral("TransCostToDate"),
        QStringLiteral("NumberTransToday"),
        QStringLiteral("NumberTransToDate"),
        QStringLiteral("Name"),
    };
    const QString direction = descending ? QStringLiteral(" DESC") : QString();
    if (plainFields.contains(dataField))
        return QStringLiteral("ORDER BY %1%2, TransDate DESC, Time DESC").arg(dataField, direction);
    if (dataField == QLatin1String("TransDate"))
        return QStringLiteral("ORDER BY TransDate%1, Time DESC").arg(direction);
    if (dataField == QLatin1String("Time"))
        return QStringLiteral("ORDER BY Time%1").arg(direction);
    return std::nullopt;
}
