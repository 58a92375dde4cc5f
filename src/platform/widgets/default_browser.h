#pragma once

#include <QString>

/// Opens the page in the browser that the user has made the default of his desktop; false when there
/// is none, or no desktop.
bool OpenInDefaultBrowser(const QString &address);
