#include "store/pending_changes.h"

namespace
{

bool HasRows(const Connection &account, const char *table)
{
    Statement found = account.Prepare(
        QStringLiteral("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?"));
    found.BindAll(QString::fromLatin1(table));
    return found.Step() &&
           account.Prepare(QStringLiteral("SELECT 1 FROM %1").arg(QLatin1String(table))).Step();
}

void Clear(Connection &account, const char *table)
{
    if (HasRows(account, table))
        account.Execute(QStringLiteral("DELETE FROM %1").arg(QLatin1String(table)));
}

} // namespace

void SavePendingBalance(Connection &account, Currency balance)
{
    WriteGuard guard(account);
    account.Execute(QStringLiteral("CREATE TABLE IF NOT EXISTS PendingBalance "
                                   "(ID INTEGER PRIMARY KEY, AccountBalance INTEGER CURRENCY)"));
    account.Execute(QStringLiteral("INSERT OR REPLACE INTO PendingBalance VALUES (1, ?)"), balance);
    guard.Commit();
}

bool HasPendingBalance(const Connection &account)
{
    return HasRows(account, "PendingBalance");
}

void ClearPendingBalance(Connection &account)
{
    Clear(account, "PendingBalance");
}

void SavePendingLots(Connection &account, const std::vector<PendingLot> &lots)
{
    WriteGuard guard(account);
    ClearPendingLots(account);
    if (!lots.empty())
        account.Execute(
            QStringLiteral("CREATE TABLE IF NOT EXISTS PendingLots (LotID INTEGER LONG, "
                           "Symbol TEXT, Shares REAL SINGLE, PurchasePrice INTEGER "
                           "CURRENCY, TransDate TEXT DATE, Time TEXT TIME)"));
    for (const PendingLot &lot : lots)
        account.Execute(QStringLiteral("INSERT INTO PendingLots VALUES (?, ?, ?, ?, ?, ?)"), lot.ID,
                        lot.Symbol, lot.Shares, lot.PurchasePrice, lot.TransDate, lot.Time);
    guard.Commit();
}

void ClearPendingLots(Connection &account)
{
    Clear(account, "PendingLots");
}

void TakeUpPendingLots(Connection &account)
{
    if (!HasRows(account, "PendingLots"))
        return;
    WriteGuard guard(account);
    account.Execute(QStringLiteral("DELETE FROM PriceHistory WHERE ID IN "
                                   "(SELECT LotID FROM PendingLots WHERE Shares IS NULL)"));
    account.Execute(QStringLiteral(
        "UPDATE PriceHistory SET Shares = lot.Shares, PurchasePrice = lot.PurchasePrice "
        "FROM PendingLots AS lot WHERE lot.LotID = PriceHistory.ID AND lot.Shares IS NOT NULL"));
    account.Execute(QStringLiteral(
        "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice, TransDate, Time) SELECT Symbol, "
        "Shares, PurchasePrice, TransDate, Time FROM PendingLots WHERE LotID = 0 ORDER BY rowid"));
    ClearPendingLots(account);
    guard.Commit();
}

void TakeUpPendingChanges(Connection &account)
{
    if (!HasPendingBalance(account)) {
        TakeUpPendingLots(account);
        return;
    }
    WriteGuard guard(account);
    TakeUpPendingLots(account);
    account.Execute(QStringLiteral(
        "UPDATE DescriptiveTable SET Field01 = (SELECT AccountBalance FROM PendingBalance) "
        "WHERE TableName = 'Balance'"));
    ClearPendingBalance(account);
    guard.Commit();
}
