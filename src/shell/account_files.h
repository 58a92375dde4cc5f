#pragma once

/// The File menu's commands that bring up another account file.
///
/// An account's name is its file's name without ".mdb" and ".MDB"; any other spelling of the
/// extension stays part of the name.

#include "program/program.h"

class AccountFiles
{
public:
    explicit AccountFiles(Program &program) : m_program(program) {}

    /// Asks for a file, closes the account that is open and opens that file. Nothing happens when
    /// the user cancels; a failure on the way is shown and ends the program.
    void mnuFLOpenExisting_Click();

private:
    FileRequest Request(FileRequest::Kind kind, const QString &title) const;
    void OpenAccountFile(const QString &path);

    Program &m_program;
};

/// "/home/ann/Broker X12.mdb" gives "Broker X12".
QString AccountNameOf(const QString &path);
