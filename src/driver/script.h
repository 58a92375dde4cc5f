#pragma once

/// A script, one command a line.
///
///     type frmPassword.txtLoginID "Jane \"J\""   # words: type, frmPassword.txtLoginID, Jane "J"
///
/// Words are separated by blanks. Within double quotes, which may begin inside a word
/// (Name="Acme Corp"), blanks count and \" \\ \n \t are escapes; outside them a backslash is
/// itself. A `#` at the beginning of a word starts a comment, except the value of `color`.

#include <QStringList>

#include <istream>
#include <optional>

struct ScriptLine
{
    int line = 0;      ///< 1-based
    QStringList words; ///< the first is the command's name; never empty
};

/// The words of one line, without its end. Throws ScriptWrong for an open quote or an unknown
/// escape.
QStringList ParseLine(const QString &line);

/// Reads commands one by one, so that a script can be written while it runs.
class Script
{
public:
    /// `input`, UTF-8, must outlive the script.
    explicit Script(std::istream &input) : m_input(input) {}

    /// The next line with a command on it; nothing at the end. Throws as ParseLine.
    std::optional<ScriptLine> Next();
    /// The line read last, 0 before the first.
    int Line() const { return m_line; }

private:
    std::istream &m_input;
    int m_line = 0;
};
