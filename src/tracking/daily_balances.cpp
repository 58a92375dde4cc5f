#include "tracking/daily_balances.h"

#include "store/control_rows.h"

namespace
{

void WriteBalance(Statement &statement, Currency balance, QDate date, QTime now,
                  const QString &trackName)
{
    statement.BindAll(balance, date, now, trackName);
    statement.Step();
    statement.Reset();
}

/// Date and name are the key: a day's row keeps its time of writing and takes the new balance.
Statement PrepareBalance(Connection &gConnAccount)
{
    return gConnAccount.Prepare(QStringLiteral(
        "INSERT INTO PortfolioDailyBalance (DailyBalance, TransDate, Time, TrackName) "
        "VALUES (?, ?, ?, ?) ON CONFLICT (TransDate, TrackName) "
        "DO UPDATE SET DailyBalance = excluded.DailyBalance"));
}

void ShowError(const QString &firstLine, const RuntimeError &error, Services &services,
               const QString &title)
{
    services.dialogs.MsgBox(
        firstLine +
            QStringLiteral("\nPlease check last action performed and notify technical support.\n") +
            ErrorLines(error),
        Box::Exclamation, title);
}

} // namespace

void WriteDailyBalance(Connection &gConnAccount, Currency balance, QDate date, QTime now)
{
    WriteGuard guard(gConnAccount);
    UpdateBalanceRow(gConnAccount, balance);
    Statement statement = PrepareBalance(gConnAccount);
    WriteBalance(statement, balance, date, now, QStringLiteral("Portfolio"));
    guard.Commit();
}

void UpdateDailyBalance(Connection &gConnAccount, const AccountState &account, QDate date,
                        Services &services, const QString &title)
{
    try {
        WriteDailyBalance(gConnAccount, account.AccountBalance, date, services.clock.TimeOfDay());
    } catch (const RuntimeError &error) {
        ShowError(QStringLiteral("An error has occured updating Portfolio Daily Balance. "), error,
                  services, title);
    }
}

void UpdateDailySecurityBalance(Connection &gConnAccount, const TrackerRecordset &rows, QDate date,
                                Services &services, const QString &title)
{
    try {
        WriteGuard guard(gConnAccount);
        Statement statement = PrepareBalance(gConnAccount);
        for (int i = 0; i < rows.RecordCount(); ++i) {
            const TrackerRow &row = rows.At(i);
            if (!row.Basis.IsZero() || row.TransDate == date)
                WriteBalance(statement, row.Basis, date, services.clock.TimeOfDay(), row.Symbol);
        }
        guard.Commit();
    } catch (const RuntimeError &error) {
        ShowError(QStringLiteral("An error has occured updating security Daily Balance. "), error,
                  services, title);
    }
}
