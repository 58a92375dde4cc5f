#include "datamaker/sample_plan.h"

#include "base/formats.h"
#include "marketdata/practice_walk.h"
#include "transactions/securities.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace
{

[[noreturn]] void Refuse(const QString &reason)
{
    throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                       QStringLiteral("Sample portfolio: ") + reason);
}

Currency AmountOf(const QJsonObject &object, const QString &key)
{
    static const Formats formats{QLocale(QLocale::English, QLocale::UnitedStates)};
    return formats.CurrencyFromText(object[key].toString());
}

SampleSecurity ReadSecurity(const QJsonObject &object)
{
    SampleSecurity security;
    security.Symbol = object[QStringLiteral("symbol")].toString();
    security.Name = object[QStringLiteral("name")].toString();
    security.SecurityType = object[QStringLiteral("type")].toString();
    if (security.Symbol.isEmpty() || security.Name.isEmpty())
        Refuse(QStringLiteral("a security without symbol or name"));
    if (!SecurityTypes().contains(security.SecurityType))
        Refuse(QStringLiteral("unknown type of security %1").arg(security.Symbol));
    const QJsonObject classes = object[QStringLiteral("classes")].toObject();
    for (auto entry = classes.begin(); entry != classes.end(); ++entry)
        security.Classes.insert(entry.key(), entry.value().toDouble());
    return security;
}

SampleTransaction ReadTransaction(const QJsonObject &object)
{
    SampleTransaction transaction;
    const QString action = object[QStringLiteral("action")].toString();
    const std::optional<Action> kind = ActionFromText(action);
    if (!kind)
        Refuse(QStringLiteral("unknown action '%1'").arg(action));
    transaction.Kind = *kind;
    transaction.DaysBack = object[QStringLiteral("daysBack")].toInt(-1);
    transaction.Time =
        QTime::fromString(object[QStringLiteral("time")].toString(), QStringLiteral("HH:mm"));
    if (transaction.DaysBack < 0 || !transaction.Time.isValid())
        Refuse(QStringLiteral("%1 without a day or time").arg(action));
    transaction.Symbol = object[QStringLiteral("symbol")].toString();
    transaction.Count =
        object[IsCashAction(*kind) ? QStringLiteral("amount") : QStringLiteral("shares")]
            .toString();
    if (*kind == Action::Split) {
        transaction.NewShares = object[QStringLiteral("newShares")].toInt();
        transaction.OldShares = object[QStringLiteral("oldShares")].toInt();
        if (transaction.NewShares <= 0 || transaction.OldShares <= 0)
            Refuse(QStringLiteral("a split without its ratio"));
    } else if (transaction.Count.isEmpty()) {
        Refuse(QStringLiteral("%1 %2 without a count").arg(action, transaction.Symbol));
    }
    return transaction;
}

void CheckTogether(const SamplePlan &plan)
{
    const auto earlier = [](const SampleTransaction &left, const SampleTransaction &right) {
        return left.DaysBack != right.DaysBack ? left.DaysBack > right.DaysBack
                                               : left.Time < right.Time;
    };
    if (!std::is_sorted(plan.Transactions.begin(), plan.Transactions.end(), earlier))
        Refuse(QStringLiteral("the transactions are not in order of time"));
    for (const SampleTransaction &transaction : plan.Transactions)
        if (!IsCashAction(transaction.Kind) &&
            std::none_of(plan.Securities.begin(), plan.Securities.end(),
                         [&](const SampleSecurity &security) {
                             return security.Symbol == transaction.Symbol;
                         }))
            Refuse(QStringLiteral("no security '%1'").arg(transaction.Symbol));
}

} // namespace

QJsonDocument ReadJson(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(RuntimeError::FileNotFoundNumber,
                           QStringLiteral("File not found: ") + path);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (document.isNull())
        throw RuntimeError(
            RuntimeError::InvalidArgumentNumber,
            QStringLiteral("%1: %2 at byte %3").arg(path, error.errorString()).arg(error.offset));
    return document;
}

SamplePlan ReadSamplePlan(const QString &path)
{
    const QJsonObject root = ReadJson(path).object();
    const QJsonObject commission = root[QStringLiteral("commission")].toObject();
    SamplePlan plan;
    plan.Balance = AmountOf(root, QStringLiteral("balance"));
    plan.CommissionStyle = commission[QStringLiteral("style")].toString();
    plan.CommissionCost = AmountOf(commission, QStringLiteral("cost"));
    plan.CommissionPerShare = AmountOf(commission, QStringLiteral("perShare"));
    plan.QuoteSite = root[QStringLiteral("quoteSite")].toString();
    for (const QJsonValue &security : root[QStringLiteral("securities")].toArray())
        plan.Securities.push_back(ReadSecurity(security.toObject()));
    for (const QJsonValue &transaction : root[QStringLiteral("transactions")].toArray())
        plan.Transactions.push_back(ReadTransaction(transaction.toObject()));
    CheckTogether(plan);
    return plan;
}

QDate WeekdaysBefore(QDate day, int count)
{
    QDate date = LatestWeekday(day).addDays(-7 * (count / 5));
    for (int left = count % 5; left > 0; --left)
        date = LatestWeekday(date.addDays(-1));
    return date;
}
