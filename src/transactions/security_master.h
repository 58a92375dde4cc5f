#pragma once

/// The master data of a security: symbol, name and type in SecurityDetail, shared by all accounts,
/// and what repeats symbol and name in the open account.
///
///     ACME becomes ACM     History, DailyProfitLoss, PriceHistory, DailyTracker      of the open account
///                          SecurityDetail, SecurityAssetClass                        of all accounts
///
/// Prices and balances of the past stay under the symbol they were recorded for, and so does
/// whatever other accounts hold.

#include "platform/clock.h"
#include "tracking/tracker_rows.h"
#include "transactions/asset_classes.h"
#include "transactions/lots.h"

struct SecurityFields
{
    QString Symbol;
    QString Name;
    QString SecurityType;

    bool operator==(const SecurityFields &) const = default;
};

/// What the routines below work on; all of it belongs to the program.
struct SecurityWork
{
    TrackerRecordset &rows;
    PurchaseLots &gRsLots;
    Connection &gConnAccount;
    Connection &gConnApplControl;
    Clock &clock;
};

// --- the master list ----------------------------------------------------------------------------

/// Nothing when the list does not have the symbol.
std::optional<SecurityFields> LoadSecurityDetail(Connection &gConnApplControl,
                                                 const QString &symbol);
/// Adds the row, or gives the one of the symbol its name and type.
void SaveSecurityDetail(Connection &gConnApplControl, const SecurityFields &fields);
/// Every security as "ACME - Acme Inc.", by symbol.
QStringList SecurityList(Connection &gConnApplControl);
/// "ACME" of "ACME - Acme Inc.".
QString SymbolOfListEntry(const QString &entry);

// --- checks -------------------------------------------------------------------------------------

enum class SecurityError
{
    None,
    Symbol,
    Name,
    SecurityType,
    Allocation
};
/// The first thing that has to be corrected; normalizes the allocation once the fields are right.
SecurityError ValidateSecurity(const SecurityFields &fields, SecurityClasses &classes);
QString SecurityErrorText(SecurityError error);

/// Whether the account has a position row of the symbol, in capitals or not, other than that of
/// `ownSymbol`.
bool IsInPortfolio(const TrackerRecordset &rows, const QString &symbol, const QString &ownSymbol);

// --- writing ------------------------------------------------------------------------------------

/// Carries a new symbol through all tables, the position row with it, which becomes the current one,
/// and reads the lots anew. The profits of a day that has entries of both symbols are added. The
/// account has an entry in the master list at every instant; a symbol that is known there keeps its own.
/// Throws FailedWrite when a file refuses: everything keeps the old symbol.
void RenameSymbol(SecurityWork &work, const QString &oldSymbol, const QString &newSymbol);
/// The new name in History, DailyProfitLoss, SecurityDetail and the position row. Throws FailedWrite
/// when a file refuses: everything keeps the old name.
void ChangeName(SecurityWork &work, const QString &symbol, const QString &name);

/// A position row without amounts, dated now, written at once; it becomes the current row. After an
/// error there is none.
void AddDailyTrackerRow(TrackerRecordset &rows, const QString &symbol, const QString &name,
                        Clock &clock);
/// Symbol and name into the position row that is known as `oldSymbol`, which becomes the current
/// one; false when there is none. After an error the rows are as they were.
bool UpdateDailyTrackerRow(TrackerRecordset &rows, const QString &oldSymbol, const QString &symbol,
                           const QString &name);

/// Writes the security: master row, classes, and the position row - a new one, or that of
/// `trackerSymbol`, if the account has it. After an error nothing of it is written, but for the
/// position row when it is the shared file that refuses its commit in the end.
void SaveNewSecurity(SecurityWork &work, const SecurityFields &fields, SecurityClasses &classes);
void SaveSecurity(SecurityWork &work, const SecurityFields &fields, SecurityClasses &classes,
                  const QString &trackerSymbol);
