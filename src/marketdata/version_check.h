#pragma once

/// The look for a new version: once a week at most, a small file on the maker's site is asked for the
/// number of the newest one.
///
///     <Program_Version>6.0.19</Program_Version>       differs from 6.0.18: the user is told
///
/// Once a newer version was found, every run looks, until the versions are equal.

#include "marketdata/price_cycle_screens.h"
#include "marketdata/price_update_state.h"
#include "platform/inet.h"
#include "platform/services.h"
#include "store/settings.h"

/// The version that the file names: the digits and points behind its "<Program_Version>", in the 31
/// characters there at most. A file without that tag is read from its 17th character on.
QString VersionTextOf(const QString &file);

/// True when CheckForNewVersion would ask now.
bool VersionCheckIsDue(const Settings &settings, const PriceUpdateState &state, QDate today);

/// Does nothing when the reminder is off, when the week has not passed and no new version is known,
/// when this run has looked already, or when `address` is empty. A version that differs from the
/// running one, also an older one, shows the new version screen and waits for it.
///
/// No failure is told: after a time-out the next run looks again, after any other the week has to
/// pass. While the file is fetched `inet` posts no states. Leaves WebVersionText, NewVersion,
/// VerChkDt and VersionCheckedThisRun; only the end of the program is thrown.
void CheckForNewVersion(Settings &settings, PriceUpdateState &state, Services &services, Inet &inet,
                        const QString &address, PriceCycleScreens &screens);

/// What the new version screen tells. `webVersion` is the text of the version file, `downloadPage`
/// the whole address of the page.
QString NewVersionMessage(const QString &webVersion, const QString &downloadPage);
