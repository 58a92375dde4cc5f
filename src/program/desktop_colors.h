#pragma once

/// Grid colours that nobody chose.
///
/// A grid whose colour is not chosen yet is written into the settings with that of the desktop. When
/// the desktop turns dark or light later, those settings turn with it, so that no grid stays white in
/// the dark; a colour that the user chose stays.

#include "platform/settings_store.h"
#include "store/settings.h"

#include <QColor>

/// `desktop` is the colour that the desktop gives to lists now. The one before is noted in the store,
/// in the section "Desktop", and each grid colour that equals it becomes the new one.
void FollowDesktopColor(Settings &settings, SettingsStore &store, QRgb desktop);
