#pragma once

/// The routines that close and open an account, for screens and engines which replace its file or
/// need it closed (settings, backup, compaction, rebuild).
///
///     if (!CloseAllScreens())   screens unloaded, databases closed
///         return;
///     ...                       the files change
///     OpenDatabases(...);
///     OpenAccount();       control rows, sign-on, start-up screens

class AccountRoutines
{
public:
    virtual ~AccountRoutines() = default;

    /// Reads the control rows of the open account, signs on when it asks for it and opens the
    /// screens set up for start-up. A file that is no account is told in a box, and another one
    /// asked for until there is a valid one.
    virtual void OpenAccount() = 0;
    /// Unloads the screens that work on the account, then closes the databases. False, after a box,
    /// when the account could not be saved: it stays loaded, with everything that is pending.
    [[nodiscard]] virtual bool CloseAllScreens() = 0;
};
