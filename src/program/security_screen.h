#pragma once

/// The two ways into the security screen. The popup entry of the mode is checked while the screen
/// is up, which reads it; a security without a type is one to be edited.

#include "program/program.h"

/// Modally; comes back when it is closed.
void ShowNewSecurityScreen(Program &program);
void ShowEditSecurityScreen(Program &program);
