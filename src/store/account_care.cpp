#include "store/account_care.h"

#include "store/daily_copy.h"

#include <utility>

bool IsInOrder(Connection &account)
{
    try {
        Statement check = account.Prepare(QStringLiteral("PRAGMA quick_check(1)"));
        return check.Step() && check.Text(0) == QLatin1String("ok");
    } catch (const RuntimeError &) {
        return false; // too damaged even to be looked at
    }
}

QString CareForAccount(Databases &databases, QDate today)
{
    QString told;
    if (std::exchange(databases.accountLeftOpen, false)) {
        // A copy of a damaged file would in time push out the last good one.
        if (!IsInOrder(databases.gConnAccount))
            return QStringLiteral("The account was not closed properly last time; its file is "
                                  "damaged, please restore from backup.");
        told = QStringLiteral("The account was not closed properly last time; its file is in "
                              "order. ");
    }
    try {
        MakeDailyCopy(databases.gConnAccount, today);
    } catch (const RuntimeError &error) {
        told +=
            QStringLiteral("Today's copy of the account could not be made: ") + error.Description();
    }
    if (databases.accountUnguarded)
        told += QStringLiteral(" The account's folder has no locks: do not open the account in a "
                               "second program.");
    if (databases.accountHasOtherNames)
        told +=
            QStringLiteral(" The account's file has another name too (a hard link): always open "
                           "it under the same name.");
    return told.trimmed();
}
