#pragma once

/// The small window that shows how far a long work has come: frmProgressBar, as the other screens
/// see it.

#include "program/program.h"

class ProgressDisplay
{
public:
    virtual ~ProgressDisplay() = default;
    /// A text, and a bar from `first` to `last` that stands on `first`.
    virtual void ShowProgress(const QString &text, int first, int last) = 0;
    virtual void MoveProgress(int value) = 0;
};

/// Opens the window when it is not open.
void ShowProgressBar(Program &program, const QString &text, int first, int last);
/// Nothing when the window is not open.
void MoveProgressBar(Program &program, int value);
