#include "transactions/securities.h"

#include <QStringList>

const QStringList &SecurityTypes()
{
    static const QStringList types = {
        QStringLiteral("Bond"),        QStringLiteral("Commodity"), QStringLiteral("Future"),
        QStringLiteral("Mutual Fund"), QStringLiteral("Option"),    QStringLiteral("Stock"),
        QStringLiteral("Index"),
    };
    return types;
}

std::optional<QString> GetSecurityType(Connection &gConnApplControl, const QString &symbol)
{
    Statement statement = gConnApplControl.Prepare(
        QStringLiteral("SELECT SecurityType FROM SecurityDetail WHERE Symbol = ?"));
    statement.BindAll(symbol);
    if (!statement.Step() || statement.Text(0).trimmed().isEmpty())
        return std::nullopt;
    return statement.Text(0);
}
