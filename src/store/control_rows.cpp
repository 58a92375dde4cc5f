#include "store/control_rows.h"

#include "base/character_shift.h"
#include "store/pending_changes.h"
#include "store/recordset.h"
#include "store/settings.h"

namespace
{

struct DescriptiveColumns
{
    explicit DescriptiveColumns(const Recordset &rows)
        : tableName(rows.Column(QStringLiteral("TableName")))
    {
        for (int i = 1; i <= 12; ++i)
            field[i] = rows.Column(QStringLiteral("Field%1").arg(i, 2, 10, QLatin1Char('0')));
    }
    int tableName;
    int field[13] = {};
};

/// Zero for a number that does not fit: no field may keep the account from opening.
template <class Read>
auto OrZero(Read read)
{
    try {
        return read();
    } catch (const RuntimeError &) {
        return decltype(read())();
    }
}

bool IsZeroOrNull(const Recordset &rows, int column)
{
    bool isNumber = false;
    const double value = rows.Text(column).trimmed().toDouble(&isNumber);
    return rows.IsFieldNull(column) || (isNumber && value == 0);
}

/// "6018", "4": a damaged one must not pass for that of an old account.
bool IsVersion(const QString &text)
{
    constexpr double Beyond = 1e9;
    return !text.isEmpty() && text[0].isDigit() && text.toDouble() < Beyond;
}

/// False, with nothing written, when the account was written by a version before 5.
bool ReadBalance(Recordset &rows, const DescriptiveColumns &at, AccountState &account, QDate today)
{
    account.AccountBalance = account.DayBalance = rows.Money(at.field[1]);
    account.TrackerDay = rows.Date(at.field[4]);
    account.LastPriceUpdate = rows.Date(at.field[5]);
    account.CommissionStyle = rows.Text(at.field[8]);

    if (account.TrackerDay != today) // days of use, not days that passed
        rows.Set(at.field[7],
                 OrZero([&] { return rows.ShareCount(at.field[7]) + Single::FromFloat(1); }));
    account.ElapsedDays = OrZero(
        [&] { return Integer::FromWide(qRound64(rows.ShareCount(at.field[7]).ToDouble())); });

    const QString current = ProgramVersion().Text();
    if (IsZeroOrNull(rows, at.field[6]) || !IsVersion(rows.Text(at.field[6]).trimmed()))
        rows.Set(at.field[6], current);
    if (rows.Text(at.field[6]).size() == 1)
        rows.Set(at.field[6], QString(rows.Text(at.field[6]) + QStringLiteral("0000")));
    if (rows.Text(at.field[6]).left(1).toInt() < 5)
        return false;
    if (rows.Text(at.field[6]) != current)
        rows.Set(at.field[6], current);
    rows.Update();
    return true;
}

void ReadStyle(const Recordset &rows, const DescriptiveColumns &at, AccountState &account)
{
    account.CommissionCost = rows.Money(at.field[1]);
    account.CommissionPerShare = rows.Money(at.field[2]);
    account.CommissionShares =
        OrZero([&] { return Single::FromDouble(rows.Text(at.field[6]).toDouble()); });
    account.CommissionShares2 = OrZero([&] { return rows.ShareCount(at.field[7]); });
}

void ReadSecurity(const Recordset &rows, const DescriptiveColumns &at, AccountState &account)
{
    account.LogoffMinutes = rows.Text(at.field[6]).toInt();
    if (!rows.IsFieldNull(at.field[8]) && !rows.IsFieldNull(at.field[9])) {
        account.LoginID = rows.Text(at.field[8]);
        try {
            account.LoginPassword = ShiftDown(rows.Text(at.field[9]));
        } catch (const RuntimeError &) {
            account.LoginPassword = rows.Text(at.field[9]); // which nobody will type
        }
    }
    account.PasswordProtected = rows.Flag(at.field[10]) ? 1 : 0;
    account.LogoffEnabled = rows.Flag(at.field[11]) ? 1 : 0;
}

/// Runs a write of a control row; an error is shown and leaves the row as it was.
template <class Write>
void OrShow(Services &services, const QString &firstLines, Write write)
{
    try {
        write();
    } catch (const RuntimeError &error) {
        services.dialogs.MsgBox(firstLines + ErrorLines(error), Box::Exclamation, EditorTitle());
    }
}

const QString NotChosen = QStringLiteral("n/a");

/// False as soon as the account turns out to be of a version before 5.
bool WalkControlRows(Connection &gConnAccount, AccountState &account, QDate today)
{
    Recordset rows;
    rows.Open(gConnAccount, {QStringLiteral("*"), QStringLiteral("DescriptiveTable"),
                             QStringLiteral("ORDER BY rowid")});
    if (rows.IsEmpty())
        return true;
    const DescriptiveColumns at(rows);
    bool hasBalance = false;
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext()) {
        const QString kind = rows.Text(at.tableName);
        // The style row is known by the name read so far, so that it has to stand behind Balance.
        if (kind == QLatin1String("Balance")) {
            hasBalance = true;
            if (!ReadBalance(rows, at, account, today))
                return false;
        } else if (kind == account.CommissionStyle)
            ReadStyle(rows, at, account);
        else if (kind == QLatin1String("WebSite")) {
            account.WebUpdateMinutes =
                OrZero([&] { return Integer::FromWide(rows.Text(at.field[6]).toInt()); });
            // A row that names no site leaves the one that the table of sites gave as the default.
            const QString chosen = rows.Text(at.field[8]);
            if (!chosen.trimmed().isEmpty())
                account.CurrentWebSiteName = chosen;
        } else if (kind == QLatin1String("Security"))
            ReadSecurity(rows, at, account);
    }
    // An account that is not set up yet has none, and no transactions either.
    if (!hasBalance && gConnAccount.Prepare(QStringLiteral("SELECT 1 FROM History")).Step())
        throw RuntimeError::Store(
            QStringLiteral("Table DescriptiveTable, row Balance, column Field01: the row with the "
                           "balance of the account is missing. Please restore the account from a "
                           "copy."));
    return true;
}

} // namespace

void LoadDescriptiveTable(Connection &gConnAccount, AccountState &account, QDate today,
                          const std::function<void()> &convertToVersion5)
{
    if (WalkControlRows(gConnAccount, account, today))
        return;
    if (convertToVersion5)
        convertToVersion5();
    if (!convertToVersion5 || !WalkControlRows(gConnAccount, account, today))
        throw RuntimeError::Store(QStringLiteral(
            "The account was written by a version before 5 and has another layout."));
}

void InsertBalanceRow(Connection &gConnAccount, Currency balance, Services &services)
{
    OrShow(services, QString(), [&] {
        const QDate today = services.clock.Today();
        WriteGuard guard(gConnAccount);
        gConnAccount.Execute(
            QStringLiteral("INSERT INTO DescriptiveTable VALUES "
                           "('Balance', ?, 0, 0, ?, ?, '0', 0, ?, ?, 0, 0, '0') "
                           "ON CONFLICT (TableName) DO UPDATE SET Field01 = excluded.Field01"),
            balance, today, today, NotChosen, NotChosen);
        ClearPendingBalance(gConnAccount);
        guard.Commit();
    });
}

void UpdateCommissionStyle(Connection &gConnAccount, const QString &style, Services &services)
{
    OrShow(services, QString(), [&] {
        gConnAccount.Execute(
            QStringLiteral("UPDATE DescriptiveTable SET Field08 = ? WHERE TableName = 'Balance'"),
            style);
    });
}

void InsertStyleRow(Connection &gConnAccount, const AccountState &account, Services &services)
{
    OrShow(services, QString(), [&] {
        const QDate today = services.clock.Today();
        gConnAccount.Execute(
            QStringLiteral("INSERT INTO DescriptiveTable VALUES "
                           "(?, ?, ?, 0, ?, ?, ?, ?, ?, ?, 0, 0, '0') "
                           "ON CONFLICT (TableName) DO UPDATE SET Field01 = excluded.Field01, "
                           "Field02 = excluded.Field02, Field06 = excluded.Field06, "
                           "Field07 = excluded.Field07"),
            account.CommissionStyle, account.CommissionCost, account.CommissionPerShare, today,
            today, QString::number(account.CommissionShares.ToDouble(), 'g', 7),
            account.CommissionShares2, NotChosen, NotChosen);
    });
}

void InsertWebSiteRow(Connection &gConnAccount, const AccountState &account, Services &services)
{
    OrShow(services,
           QStringLiteral("An error has been encountered while updating the WebSite.mdb \n"
                          "database. Please take note of this message and contact TechSupport.\n"),
           [&] {
               const QDate today = services.clock.Today();
               gConnAccount.Execute(
                   QStringLiteral("INSERT INTO DescriptiveTable VALUES "
                                  "('WebSite', 0, 0, 0, ?, ?, ?, 0, ?, ?, 0, 0, '0') "
                                  "ON CONFLICT (TableName) DO UPDATE SET "
                                  "Field06 = excluded.Field06, Field08 = excluded.Field08"),
                   today, today, QString::number(account.WebUpdateMinutes.Value()),
                   account.CurrentWebSiteName, NotChosen);
           });
}

void InsertSecurityRow(Connection &gConnAccount, const AccountState &account, Services &services)
{
    const QString shifted = ShiftUp(account.LoginPassword);
    OrShow(services, QString(), [&] {
        const QDate today = services.clock.Today();
        gConnAccount.Execute(
            QStringLiteral("INSERT INTO DescriptiveTable VALUES "
                           "('Security', 0, 0, 0, ?, ?, ?, 0, ?, ?, ?, ?, '0') "
                           "ON CONFLICT (TableName) DO UPDATE SET Field04 = excluded.Field04, "
                           "Field05 = excluded.Field05, Field06 = excluded.Field06, "
                           "Field08 = excluded.Field08, Field09 = excluded.Field09, "
                           "Field10 = excluded.Field10, Field11 = excluded.Field11"),
            today, today, QString::number(account.LogoffMinutes), account.LoginID, shifted,
            account.PasswordProtected == 1, account.LogoffEnabled == 1);
    });
}
