#pragma once

/// Reading and writing the user's settings with the program's words for a failure: a box, and the
/// end of the program.

#include "program/program.h"

void LoadSettings(Program &program);
/// Writes every key, as Settings holds them now.
void SaveSettings(Program &program);
