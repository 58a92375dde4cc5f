/// A program that is killed while it converts an old account: whatever the instant, the account
/// opens and has all its rows, old or new, and the next opening finishes the conversion.

#include "account_file.h"
#include "old_account.h"

#include "store/connection.h"
#include "store/unfinished_work.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QThread>

namespace
{

std::string Dump(const QString &path, const QString &sql)
{
    Connection file;
    file.Open(path);
    Statement row = file.Prepare(sql);
    std::string text;
    while (row.Step()) {
        for (int i = 0; i < row.ColumnCount(); ++i)
            text += row.Text(i).toStdString() + "|";
        text += "\n";
    }
    return text;
}

class OldFolder
{
public:
    OldFolder() : m_account(AddOldAccount(m_folder, "Broker.mdb"))
    {
        MakeControlFileOld(m_folder);
        m_folder.Execute(m_account,
                         "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                         "WHERE i < 400) INSERT INTO History (Symbol, Name, TransDate, "
                         "Time, Amount) SELECT 'S' || i, 'Name ' || i, '2020-01-01', "
                         "printf('%02d:00:00.000', i % 24), i FROM n");
    }

    /// Runs the program; false when it died.
    bool Convert(const QStringList &more = {})
    {
        QProcess program;
        program.start(CRASH_CONVERTER, QStringList{m_folder.Path(), m_account} + more);
        if (!program.waitForFinished(60000))
            throw std::runtime_error("the program hangs");
        EXPECT_EQ(program.readAllStandardError(), QByteArray());
        return program.exitStatus() == QProcess::NormalExit &&
               program.readAllStandardOutput() == "ready\ndone\n";
    }
    void ConvertForAWhile(unsigned long microseconds)
    {
        QProcess program;
        program.start(CRASH_CONVERTER, {m_folder.Path(), m_account});
        program.waitForReadyRead();
        QThread::usleep(microseconds);
        program.kill();
        program.waitForFinished();
    }

    /// What the user has, old or new.
    std::string Rows() const
    {
        return Dump(m_account, "SELECT Symbol, Name, Shares FROM DailyTracker ORDER BY Symbol") +
               Dump(m_account, "SELECT Symbol, Name, Amount, TransDate, Time FROM History "
                               "ORDER BY TransDate, Time, Amount") +
               Dump(m_account, "SELECT Symbol, Shares FROM PriceHistory ORDER BY Symbol, Shares") +
               Dump(m_account, "SELECT Symbol, ProfitLoss FROM DailyProfitLoss ORDER BY Symbol") +
               Dump(m_account, "SELECT * FROM PortfolioDailyBalance ORDER BY TransDate") +
               Dump(m_account, "SELECT TableName, Field01 FROM DescriptiveTable ORDER BY rowid") +
               Dump(m_account, "PRAGMA integrity_check") +
               // Which have been in the control file from the start.
               Dump(m_folder.File("ApplControl.mdb"),
                    "SELECT TableName, Field08 FROM ApplicationTable WHERE Field04 < '2026-01-01' "
                    "ORDER BY TableName, Field08") +
               Dump(m_folder.File("ApplControl.mdb"), "PRAGMA integrity_check");
    }
    /// What the conversion makes of it.
    std::string Outcome() const
    {
        return Rows() + Dump(m_account, "SELECT * FROM History ORDER BY ID") +
               Dump(m_account, "SELECT * FROM PriceHistory ORDER BY ID") +
               // Every opening counts a day of use, Field07.
               Dump(m_account, "SELECT TableName, Field01, Field02, Field04, Field06, Field08, "
                               "Field09 FROM DescriptiveTable ORDER BY rowid") +
               Dump(m_folder.File("ApplControl.mdb"),
                    "SELECT * FROM SecurityDetail ORDER BY Symbol") +
               Dump(m_folder.File("ApplControl.mdb"),
                    "SELECT TableName, Field08 FROM ApplicationTable ORDER BY TableName, Field08");
    }
    /// What a start of the program does before it opens an account.
    void Start()
    {
        UnfinishedWork::CleanUp(m_folder.Path(), [](const QString &) {});
    }
    std::string Listing() const
    {
        return QDir(m_folder.Path())
            .entryList({"*.mdb", "*.mdb-*", "*.mdb.new*"}, QDir::Files | QDir::Hidden)
            .join(' ')
            .toStdString();
    }

private:
    TestAppFolder m_folder;
    QString m_account;
};

class KilledConverter : public testing::Test
{
protected:
    KilledConverter()
    {
        OldFolder folder;
        m_rows = folder.Rows();
        EXPECT_TRUE(folder.Convert());
        m_outcome = folder.Outcome();
        m_listing = folder.Listing();
    }
    void ExpectNothingLost(OldFolder &folder)
    {
        EXPECT_EQ(folder.Rows(), m_rows);
        folder.Start();
        EXPECT_TRUE(folder.Convert());
        EXPECT_EQ(folder.Outcome(), m_outcome);
        EXPECT_EQ(folder.Listing(), m_listing);
    }

    std::string m_rows;
    std::string m_outcome;
    std::string m_listing;
};

} // namespace

TEST_F(KilledConverter, InTheMiddleOfAnyWriteOrRenamingLosesNothing)
{
    int write = 1;
    for (; write < 1000; write += 1 + write / 15) {
        SCOPED_TRACE("write " + std::to_string(write));
        OldFolder folder;
        if (folder.Convert({QString::number(write)}))
            break; // it did not come to so many
        ExpectNothingLost(folder);
        if (HasFailure())
            break;
    }
    EXPECT_GT(write, 40);
    EXPECT_LT(write, 1000);
}

TEST_F(KilledConverter, AtAnyTimeLosesNothing)
{
    for (unsigned long run = 0; run < 15 && !HasFailure(); ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        OldFolder folder;
        folder.ConvertForAWhile(run * 3000);
        ExpectNothingLost(folder);
    }
}

TEST_F(KilledConverter, SeveralTimesInARowLosesNothing)
{
    for (int first = 5; first < 60 && !HasFailure(); first += 11) {
        SCOPED_TRACE("write " + std::to_string(first));
        OldFolder folder;
        for (const int write : {first, first + 4, first})
            folder.Convert({QString::number(write)});
        ExpectNothingLost(folder);
    }
}
