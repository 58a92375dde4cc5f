#pragma once

/// Reading and writing the user's settings with the program's words for a failure: a box, and the
/// end of the program.

#include "program/program.h"

/// A line for the status bar that names the keys whose values could not be read; empty when there are
/// none.
QString LoadSettings(Program &program);
/// Writes what has changed since it was read or written last.
void SaveSettings(Program &program);
