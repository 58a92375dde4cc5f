#pragma once

/// The databases that are delivered beside the executable, made from the text files of a data
/// folder:
///
///     Template.xxx           an account with no rows
///     ApplControl.xxx        control data with the asset classes     HistPrices.xxx    no rows
///     WebSites.mdb           the quote sites
///     ApplControl.mdb        as its template, and the securities of the sample
///     HistPrices.mdb         two years of daily prices of the sample's securities
///     Sample Portfolio.mdb   the account that opens when none has been chosen

#include <QDate>
#include <QString>
#include <QStringList>

/// The names above.
const QStringList &DeliveredFiles();

/// Makes all of them in `targetFolder`, which must exist, replacing files of the same names. They
/// are made beside and renamed at the end: after an error the folder holds what it held before. The
/// same `today` gives the same rows. Throws RuntimeError.
void MakeDeliveredFiles(const QString &dataFolder, const QString &targetFolder, QDate today);
