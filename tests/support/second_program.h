#pragma once

/// Another process that has an account open: crash_holder, until it is closed or killed. The test
/// program is built with CRASH_HOLDER, its path.
///
///     SecondProgram other(path);
///     EXPECT_EQ(other.said, "taken");
///     other.Close();                  as a user closes it
///     other.Kill();                   as it dies

#include <QProcess>

#include <string>

class SecondProgram
{
public:
    explicit SecondProgram(const QString &accountPath)
    {
        m_process.start(QStringLiteral(CRASH_HOLDER), {accountPath});
        while (!m_process.canReadLine() && m_process.waitForReadyRead()) {
        }
        said = m_process.readLine().trimmed().toStdString();
    }
    ~SecondProgram() { Close(); }
    SecondProgram(const SecondProgram &) = delete;
    SecondProgram &operator=(const SecondProgram &) = delete;

    void Close()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    void Kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    std::string said; ///< how it got the account

private:
    QProcess m_process;
};
