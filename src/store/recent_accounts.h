#pragma once

/// The accounts that were open last, the latest first, as full paths: up to five, kept under
/// RecentAccount1 to RecentAccount5 in the settings' section "Options".

#include "platform/settings_store.h"

#include <QStringList>

/// As kept; the files may have gone since.
QStringList RecentAccounts(const SettingsStore &store);
/// Puts an account that has been opened first. A settings file that cannot be written is left as it
/// is: saving the settings tells of it.
void RememberAccount(SettingsStore &store, const QString &path);
