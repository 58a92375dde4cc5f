#pragma once

#include <QString>

/// Opens the page in the browser that the user has made the default of his desktop; false when there
/// is none, or no desktop.
bool OpenInDefaultBrowser(const QString &address);
/// Opens a file in the program that the desktop has for its kind; as above.
bool OpenInDefaultProgram(const QString &path);
