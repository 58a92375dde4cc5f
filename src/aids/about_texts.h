#pragma once

/// What the About screen says of the program.

#include <QString>

/// "Version 6.0.18"
QString VersionLine();
QString DescriptionText();
