#pragma once

/// The quote sites: rows of WebParameters, which tell how to ask a page for prices and where they
/// stand in its text.
///
/// The cursor of gRsWebParameters stands on the site in use while a cycle runs. Names of sites are
/// compared with blanks at their ends cut off.

#include "marketdata/price_update_state.h"
#include "store/account_state.h"
#include "store/databases.h"

#include <QString>

#include <optional>

/// One row, as the cycle reads it. Texts are as stored, untrimmed; empty where the field is null.
struct QuoteSite
{
    qint64 ID = 0;
    QString WebSiteName;
    QString BegWebAddress; ///< the address up to where the symbols go
    QString EndWebAddress;
    QString AddressBuildCharacters; ///< separator between symbols
    QString SymbolBegText;          ///< stands directly before a symbol of the page
    QString SymbolEndText;
    int CharToPrice = 0; ///< characters searched, counted from the symbol
    QString PriceBegText;
    QString PriceEndText;
    int DelayTime = 0;   ///< minutes between updates
    int UpdateCount = 0; ///< most symbols of one request
    bool ServiceFlag = false;
    QString SignUpURL; ///< filled: the site needs a login
    QString OptionPrefix;
    QString OptionSuffix;
    int SimilarSite = 0;
    bool DeselectFlagTemp = false; ///< failed in this run
    bool DeselectFlagPerm = false; ///< disabled by the user
};

/// The current row; RuntimeError 3021 without one.
QuoteSite CurrentSite(const Recordset &gRsWebParameters);

/// The name up to its first "(": what status texts and prompts show. Trailing blanks stay.
QString ShortSiteName(const QString &webSiteName);

/// Moves to the first row of this name; false, and the cursor at the end, without one.
bool FindSite(Recordset &gRsWebParameters, const QString &webSiteName);

/// Positions gRsWebParameters on the site in use. A name that no row has is replaced by the site
/// with ID 1, and the choice is saved. An empty UpdateCount becomes 5 in the row; the site that
/// sorts first is taken as it is. True when the site needs a login and none is known: the caller
/// prompts for it. Without a row of ID 1 the cursor stays at the end and RuntimeError 3021 is
/// thrown, with the account's choice as it was.
bool SelectSiteInUse(Databases &databases, AccountState &account, const QString &webLoginId,
                     Services &services);

/// The user picks a site in the settings: it is no longer disabled, which is written at once, and
/// all missing symbols are reported anew. The row as it then stands (its delay and login go on the
/// screen), and the cursor on it; nothing happens for a name that no row has. The choice itself is
/// made when the settings are accepted.
std::optional<QuoteSite> PickSite(Recordset &gRsWebParameters, const QString &webSiteName,
                                  PriceUpdateState &state);

/// True for "None": the site takes the symbol of an option as it is.
bool TakesOptionsBare(const QString &optionPrefix);

/// Without the blanks at both ends. Line breaks stay: they may be part of a page's text.
QString WithoutBlanks(const QString &text);
