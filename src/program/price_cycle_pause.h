#pragma once

/// The price cycle stands still while a screen works on the recordsets that a cycle would change.
///
///     void frmSecurityUpdate::Load()     { m_pause.Suspend(m_program); ... }
///     void frmSecurityUpdate::OnUnload() { m_pause.Resume(m_program); }
///
/// It is stopped by unloading its hidden form, and begins again when that is loaded again. A screen
/// resumes only what it suspended itself, and not what the user has switched off since.

#include "program/program.h"

class PriceCyclePause
{
public:
    /// Unloads the price cycle when it runs, and says so.
    void Suspend(Program &program);
    /// Loads the cycle that was suspended and says so; without one, clears the status. On the way
    /// out of the program prices are not asked for any more.
    void Resume(Program &program);

private:
    bool PriceCycleSuspended = false;
};

/// The user switches the prices off: no screen that is open resumes them.
void SwitchPricesOff(Program &program);
