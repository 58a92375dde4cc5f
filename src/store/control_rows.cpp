#include "store/control_rows.h"

#include "base/character_shift.h"
#include "store/failed_write.h"
#include "store/pending_changes.h"
#include "store/recordset.h"
#include "store/settings.h"
#include "store/unreadable_value.h"

#include <optional>

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

/// Reads fields of the current row. One that cannot be read is zero and is named: no field may keep the
/// account from opening.
class FieldReader
{
public:
    FieldReader(const Recordset &rows, const DescriptiveColumns &at) : m_rows(rows), m_at(at) {}

    template <class Read>
    auto OrZero(int field, Read read)
    {
        try {
            return read();
        } catch (const RuntimeError &error) {
            const QString column = m_rows.ColumnNames()[m_at.field[field]];
            const QString problem = UnreadableValue({QStringLiteral("DescriptiveTable"),
                                                     {m_rows.Text(m_at.tableName)},
                                                     column,
                                                     TextOf(m_at.field[field])},
                                                    error.Number())
                                        .Description();
            if (!Problems.contains(problem))
                Problems += problem;
            return decltype(read())();
        }
    }
    Currency Money(int field)
    {
        return OrZero(field, [&] { return m_rows.Money(m_at.field[field]); });
    }
    QDate Date(int field)
    {
        return OrZero(field, [&] { return m_rows.Date(m_at.field[field]); });
    }
    int Flag(int field)
    {
        return OrZero(field, [&] { return m_rows.Flag(m_at.field[field]); }) ? 1 : 0;
    }

    QStringList Problems;

private:
    QString TextOf(int column) const
    {
        try {
            return m_rows.Text(column);
        } catch (const RuntimeError &) { // the days of use, which were a number and have grown
            return QString::number(m_rows.ShareCount(column).ToDouble());
        }
    }

    const Recordset &m_rows;
    const DescriptiveColumns &m_at;
};

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
bool ReadBalance(Recordset &rows, FieldReader &fields, const DescriptiveColumns &at,
                 AccountState &account, QDate today)
{
    account.AccountBalance = account.DayBalance = fields.Money(1);
    account.TrackerDay = fields.Date(4);
    account.LastPriceUpdate = fields.Date(5);
    account.CommissionStyle = rows.Text(at.field[8]);

    if (account.TrackerDay != today) // days of use, not days that passed
        rows.Set(at.field[7], fields.OrZero(7, [&] {
            return rows.ShareCount(at.field[7]) + Single::FromFloat(1);
        }));
    account.ElapsedDays = fields.OrZero(
        7, [&] { return Integer::FromWide(qRound64(rows.ShareCount(at.field[7]).ToDouble())); });

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

void ReadStyle(const Recordset &rows, FieldReader &fields, const DescriptiveColumns &at,
               AccountState &account)
{
    account.CommissionCost = fields.Money(1);
    account.CommissionPerShare = fields.Money(2);
    account.CommissionShares =
        fields.OrZero(6, [&] { return Single::FromDouble(rows.Text(at.field[6]).toDouble()); });
    account.CommissionShares2 = fields.OrZero(7, [&] { return rows.ShareCount(at.field[7]); });
}

void ReadSecurity(const Recordset &rows, FieldReader &fields, const DescriptiveColumns &at,
                  AccountState &account)
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
    account.PasswordProtected = fields.Flag(10);
    account.LogoffEnabled = fields.Flag(11);
}

/// Runs a write of a control row; an error is shown and leaves the row as it was.
template <class Write>
void OrShow(Services &services, const QString &what, Write write)
{
    try {
        write();
    } catch (const RuntimeError &error) {
        services.dialogs.MsgBox(FailedWrite(what, error).Text(), Box::Exclamation, EditorTitle());
    }
}

const QString NotChosen = QStringLiteral("n/a");

/// What could not be read; nothing as soon as the account turns out to be of a version before 5.
std::optional<QStringList> WalkControlRows(Connection &gConnAccount, AccountState &account,
                                           QDate today)
{
    Recordset rows;
    rows.Open(gConnAccount, {QStringLiteral("*"), QStringLiteral("DescriptiveTable"),
                             QStringLiteral("ORDER BY rowid")});
    if (rows.IsEmpty())
        return QStringList();
    const DescriptiveColumns at(rows);
    FieldReader fields(rows, at);
    bool hasBalance = false;
    for (rows.MoveFirst(); !rows.AtEnd(); rows.MoveNext()) {
        const QString kind = rows.Text(at.tableName);
        // The style row is known by the name read so far, so that it has to stand behind Balance.
        if (kind == QLatin1String("Balance")) {
            hasBalance = true;
            if (!ReadBalance(rows, fields, at, account, today))
                return std::nullopt;
        } else if (kind == account.CommissionStyle)
            ReadStyle(rows, fields, at, account);
        else if (kind == QLatin1String("WebSite")) {
            account.WebUpdateMinutes =
                fields.OrZero(6, [&] { return Integer::FromWide(rows.Text(at.field[6]).toInt()); });
            // A row that names no site leaves the one that the table of sites gave as the default.
            const QString chosen = rows.Text(at.field[8]);
            if (!chosen.trimmed().isEmpty())
                account.CurrentWebSiteName = chosen;
        } else if (kind == QLatin1String("Security"))
            ReadSecurity(rows, fields, at, account);
    }
    // An account that is not set up yet has none, and no transactions either.
    if (!hasBalance && gConnAccount.Prepare(QStringLiteral("SELECT 1 FROM History")).Step())
        fields.Problems +=
            QStringLiteral("Table DescriptiveTable: the row Balance, with the balance "
                           "of the account in its column Field01, is missing.");
    return fields.Problems;
}

} // namespace

QStringList LoadDescriptiveTable(Connection &gConnAccount, AccountState &account, QDate today,
                                 const std::function<void()> &convertToVersion5)
{
    std::optional<QStringList> problems = WalkControlRows(gConnAccount, account, today);
    if (!problems && convertToVersion5) {
        convertToVersion5();
        problems = WalkControlRows(gConnAccount, account, today);
    }
    if (!problems)
        throw RuntimeError::Store(QStringLiteral(
            "The account was written by a version before 5 and has another layout."));
    return *problems;
}

void UpdateBalanceRow(Connection &gConnAccount, Currency balance)
{
    WriteGuard guard(gConnAccount);
    gConnAccount.Execute(
        QStringLiteral("UPDATE DescriptiveTable SET Field01 = ? WHERE TableName = 'Balance'"),
        balance);
    ClearPendingBalance(gConnAccount);
    guard.Commit();
}

void InsertBalanceRow(Connection &gConnAccount, Currency balance, Services &services)
{
    OrShow(services, QStringLiteral("The balance of the account"), [&] {
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
    OrShow(services, QStringLiteral("The commission style"), [&] {
        gConnAccount.Execute(
            QStringLiteral("UPDATE DescriptiveTable SET Field08 = ? WHERE TableName = 'Balance'"),
            style);
    });
}

void InsertStyleRow(Connection &gConnAccount, const AccountState &account, Services &services)
{
    OrShow(services, QStringLiteral("The commission style"), [&] {
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
    try {
        const QDate today = services.clock.Today();
        gConnAccount.Execute(
            QStringLiteral("INSERT INTO DescriptiveTable VALUES "
                           "('WebSite', 0, 0, 0, ?, ?, ?, 0, ?, ?, 0, 0, '0') "
                           "ON CONFLICT (TableName) DO UPDATE SET "
                           "Field06 = excluded.Field06, Field08 = excluded.Field08"),
            today, today, QString::number(account.WebUpdateMinutes.Value()),
            account.CurrentWebSiteName, NotChosen);
    } catch (const RuntimeError &error) {
        services.dialogs.MsgBox(
            QStringLiteral("An error has been encountered while updating the WebSite.mdb \n"
                           "database. Please take note of this message and contact "
                           "TechSupport.\n") +
                ErrorLines(error),
            Box::Exclamation, EditorTitle());
    }
}

void InsertSecurityRow(Connection &gConnAccount, const AccountState &account, Services &services)
{
    const QString shifted = ShiftUp(account.LoginPassword);
    OrShow(services, QStringLiteral("The sign-on of the account"), [&] {
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
