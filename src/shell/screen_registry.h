#pragma once

/// The one place that knows which screens the program has.

class QString;
class ScreenHost;

void RegisterScreens(ScreenHost &host);
/// A screen that commands and settings name already, and that the program does not have yet: it is
/// never loaded.
bool IsScreenToCome(const QString &form);
