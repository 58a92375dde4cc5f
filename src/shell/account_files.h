#pragma once

/// The File menu's commands that bring up another account file: a new one, one that is there, a
/// copy of the open one.
///
/// An account's name is its file's name without ".mdb" and ".MDB"; any other spelling of the
/// extension stays part of the name.

#include "program/program.h"

#include <functional>

class AccountFiles
{
public:
    explicit AccountFiles(Program &program) : m_program(program) {}

    /// Asks for a name, makes an empty account of it and shows the settings screen, which opens it.
    /// A name that is taken is told, and another one asked for; a failure is shown and ends the
    /// program. Nothing happens when the user cancels.
    void mnuFLNew_Click();
    /// The same with a copy of the open account, which is closed first: the copy has all that has
    /// been posted, and can be used at once.
    void mnuFLSaveAs_Click();
    /// Asks for a file and opens it. False when the user cancelled.
    bool mnuFLOpenExisting_Click();
    /// Closes the account that is open and opens this one. A path that cannot be an account, or one
    /// that another program works on, is refused with a message, and the open account stays; a
    /// failure on the way is shown and ends the program.
    void OpenExisting(const QString &path);
    /// Makes this the account that the next opening of the databases opens.
    void GoOverTo(const QString &path);
    /// That another program works on the account.
    void TellOpenElsewhere(const QString &path);

    /// The account's name is another one now.
    std::function<void()> OnGoneOver;

private:
    template <class Steps>
    void OrEnd(Steps steps);
    template <class Make>
    std::optional<QString> PickNewAccount(const QString &title, Make make);
    FileRequest Request(FileRequest::Kind kind, const QString &title) const;
    void OpenAccountFile(const QString &path);

    Program &m_program;
};

/// "/home/ann/Broker X12.mdb" gives "Broker X12".
QString AccountNameOf(const QString &path);
