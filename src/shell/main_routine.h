#pragma once

/// Start and stop: the order of everything from the first instruction to the end of the program.
///
///     Main             settings, databases, splash, main window, OpenAccount, tip, idle logoff
///     OpenAccount      control rows, sign-on, start-up screens; again for every change of account
///     CloseAllScreens  screens, then databases; before every change of account
///     QueryUnload      the exit's reminders; closes the screens even when the exit is cancelled
///     Unload           settings, automatic compaction

#include "program/program.h"

class AccountFiles;
class ScreenHost;
class frmMDIMain;

class MainRoutine : public AccountRoutines
{
public:
    MainRoutine(Program &program, frmMDIMain &window, ScreenHost &host, AccountFiles &accountFiles);

    void Main();
    void OpenAccount() override;
    void CloseAllScreens() override;

    /// False: the program goes on. It then stays up for the backup the user asked for, or for an
    /// account without a name of its own.
    bool QueryUnload();
    void Unload();

    /// Compacts the account and the shared prices; without it there is no automatic compaction.
    std::function<void()> CompactDatabases;

private:
    void ShowSplash();
    void ReadAndOpen();
    void OpenStartupScreens();
    void ArrangeAtStartup();
    bool RemindOfBackup();
    bool OfferBackup(const QString &question);
    void UpdateAverage();
    void CompactWhenDue();
    void OpenCurrentDatabases();
    /// A tick of tmrLogoff.
    void tmrLogoff_Timer();

    Program &m_program;
    frmMDIMain &m_window;
    ScreenHost &m_host;
    AccountFiles &m_accountFiles;
};
