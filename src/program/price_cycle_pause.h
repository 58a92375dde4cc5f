#pragma once

/// The price cycle stands still while a screen works on the recordsets that a cycle would change.
///
///     void frmSecurityUpdate::Load()     { m_pause.Suspend(m_program); ... }
///     void frmSecurityUpdate::OnUnload() { m_pause.Resume(m_program); }
///
/// It is stopped by unloading its hidden form, and begins anew when that is loaded again.

#include "program/program.h"

class PriceCyclePause
{
public:
    /// Unloads the price cycle when it runs, and says so.
    void Suspend(Program &program);
    /// Loads the cycle that was suspended and says so; without one, clears the status. On the way
    /// out of the program prices are not asked for any more.
    void Resume(Program &program);
    /// The user has switched the prices off meanwhile: what was suspended stays so.
    void Forget() { PriceCycleSuspended = false; }

private:
    bool PriceCycleSuspended = false;
};
