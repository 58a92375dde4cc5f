#pragma once

/// Why a script ends before its last line. The exit status tells the two kinds apart:
///
///     throw Failed("the button is disabled");       1: the program is not as the script expects
///     throw ScriptWrong("no command \"clik\"");     2: no program could carry this line out

#include <QString>

#include <exception>

class Failure : public std::exception
{
public:
    Failure(int status, const QString &reason) : m_status(status), m_reason(reason) {}
    int Status() const { return m_status; }
    const QString &Reason() const { return m_reason; }
    const char *what() const noexcept override { return "the script cannot go on"; }

private:
    int m_status;
    QString m_reason;
};

inline Failure Failed(const QString &reason)
{
    return Failure(1, reason);
}
inline Failure ScriptWrong(const QString &reason)
{
    return Failure(2, reason);
}
