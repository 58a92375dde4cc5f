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
    bool CloseAllScreens() override;

    /// False: the program goes on. It then stays up for the backup the user asked for, for an account
    /// without a name of its own, or for one that could not be saved.
    bool QueryUnload();
    void Unload();

private:
    /// Deletes what killed runs have left, and tells of a restore that was cut off.
    void CleanUpUnfinishedWork();
    void ShowSplash();
    void ReadAndOpen();
    /// The open account is of a version before 5.
    void ConvertAccount();
    void OpenAnotherAccount();
    /// The checks and copies of each opening, when the screens are up.
    void CareForOpenAccount();
    void OpenStartupScreens();
    void ArrangeAtStartup();
    bool RemindOfBackup();
    bool OfferBackup(const QString &question);
    void UpdateAverage();
    /// False, after a box, when the balance that is pending cannot be written.
    bool SaveBalance();
    void CompactWhenDue();
    void OpenCurrentDatabases();
    void StartLogoff();
    /// A tick of tmrLogoff.
    void tmrLogoff_Timer();

    Program &m_program;
    frmMDIMain &m_window;
    ScreenHost &m_host;
    AccountFiles &m_accountFiles;
    bool m_isStarted = false; ///< Main has come to its end
    QString m_note;           ///< of the start, shown when the first account is open
};
