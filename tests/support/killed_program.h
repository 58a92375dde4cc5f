#pragma once

/// A program that changes an account in one step and is killed on the way: the account must then be as
/// it was before, or as the step leaves it.
///
///     class KilledDeleter : public testing::Test, protected KilledProgram { ... };
///
/// The program gets the account's path as its first argument, writes a line when it has opened the
/// account and another one when it is done; then it waits, or does the same once more.

#include "account_file.h"

#include "store/connection.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>
#include <initializer_list>

/// The store's check of the file, and the rows of the queries, as one text.
inline std::string DumpRows(const QString &path, std::initializer_list<const char *> queries)
{
    Connection account;
    account.Open(path);
    std::string text;
    const auto add = [&](const char *query) {
        Statement row = account.Prepare(QString::fromLatin1(query));
        while (row.Step()) {
            for (int i = 0; i < row.ColumnCount(); ++i)
                text += row.Text(i).toStdString() + "|";
            text += "\n";
        }
    };
    add("PRAGMA integrity_check");
    std::for_each(queries.begin(), queries.end(), add);
    return text;
}

class KilledProgram
{
protected:
    using Dump = std::string (*)(const QString &path);
    KilledProgram(const char *program, Dump dump) : m_path(QString::fromUtf8(program)), m_dump(dump)
    {}

    /// Learns how the filled original looks, and how the program leaves it. Returns how long the step
    /// took, in microseconds.
    qint64 LearnBothStates(const QStringList &arguments = {})
    {
        m_before = m_dump(m_original.Path());
        AccountFile changed;
        Copy(changed);
        Start(changed, arguments);
        QElapsedTimer timer;
        timer.start();
        WaitForLines(2);
        const qint64 took = timer.nsecsElapsed() / 1000;
        m_program.kill();
        m_program.waitForFinished();
        m_after = m_dump(changed.Path());
        EXPECT_NE(m_before, m_after);
        return took;
    }
    void Copy(const AccountFile &file) const
    {
        AccountFile::Write(file.Path(), AccountFile::Bytes(m_original.Path()));
    }
    /// Comes back when the program has opened the account.
    void Start(const AccountFile &file, const QStringList &arguments)
    {
        m_told.clear();
        m_program.start(m_path, QStringList(file.Path()) + arguments);
        WaitForLines(1);
    }
    /// Or until the program has died.
    void WaitForLines(int lines)
    {
        while (m_told.count('\n') < lines && m_program.waitForReadyRead())
            m_told += m_program.readAllStandardOutput();
    }
    bool HasToldItsEnd() const { return m_told.count('\n') > 1; }
    /// True: all is changed. Anything but that and the account as it was fails.
    bool ExpectWhole(const AccountFile &file)
    {
        EXPECT_TRUE(m_program.state() == QProcess::NotRunning || m_program.waitForFinished());
        EXPECT_EQ(m_program.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(m_program.readAllStandardError(), QByteArray());
        m_told += m_program.readAllStandardOutput();
        const std::string now = m_dump(file.Path());
        EXPECT_TRUE(now == m_before || now == m_after);
        EXPECT_TRUE(!HasToldItsEnd() || now == m_after);
        EXPECT_EQ(file.Listing(), "Broker.mdb");
        return now == m_after;
    }

    AccountFile m_original;
    QProcess m_program;

private:
    QString m_path;
    Dump m_dump;
    std::string m_before, m_after;
    QByteArray m_told;
};
