#pragma once

/// What the commands of the main window do, by name.
///
///     commands.Run("mnuVWHistory");     opens the transaction history
///     commands.Run("UndoLast");         the toolbar button of this key
///
/// Whether a command is enabled is for whoever offers it to the user to ask (CommandUsable).

#include "program/program.h"

#include <QHash>

#include <functional>

struct Command;
class AccountFiles;
class QMainWindow;
class ScreenHost;

class Commands
{
public:
    Commands(Program &program, QMainWindow &window, ScreenHost &host, AccountFiles &accountFiles,
             std::function<void()> exit);

    /// Counts the user as active and carries the command out. Errors travel to the caller.
    void Run(const QString &name);

    /// The status text for a screen or a command that the program does not have yet, named by what
    /// the user chose.
    void PostNotBuilt(const QString &form = {});

private:
    void Carry(const Command &command);
    void RunOwn(const QString &name);
    void FillOwn();

    void ToggleScreen(const QString &name, const QString &form);
    void ShowReportDialog(const QString &name, const QString &form);
    void ShowChart(const QString &name);
    void OpenLink(const QString &name);
    void ShowWebPage(const QString &name, const QString &address);
    void PostNoAddress();
    void ArrangeScreens(const QString &name, int arrangement);
    void RunOnScreen(const QString &name, const QString &form);
    void PrintScreen(QImage (*capture)(QMainWindow &));
    void BackupOrRestore(const QString &mode);
    void Connect_Click();
    void SplitScreen_Click();
    void UndoLast_Click();
    bool SymbolSelected(const QString &message);

    Program &m_program;
    QMainWindow &m_window;
    ScreenHost &m_host;
    AccountFiles &m_accountFiles;
    std::function<void()> m_exit;
    QHash<QString, std::function<void()>> m_own;
    QString m_chosen; ///< the command under way, as the user chose it
};
