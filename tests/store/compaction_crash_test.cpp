/// A program that purges and compacts an account of 20,000 trades while it is killed, or runs on a
/// full disk or in a folder that it may not write: the account opens afterwards with all its rows.

#include "killed_program.h"

#include "store/compaction.h"
#include "store/database_copy.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QThread>

#include <random>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// What may never change: the positions, and the shares that are open.
std::string Dump(const QString &path)
{
    return DumpRows(path, {"SELECT count(*), sum(Shares) FROM PriceHistory",
                           "SELECT sum(Shares) FROM History",
                           "SELECT count(*) FROM History WHERE Description = 'Deposit'"});
}

qint64 RowsOf(const QString &path)
{
    Connection account;
    account.Open(path);
    Statement row = account.Prepare("SELECT count(*) FROM History");
    row.Step();
    return row.Int64(0);
}

class KilledCompactor : public testing::Test
{
protected:
    KilledCompactor()
    {
        Connection account;
        account.Open(m_original.Path());
        account.ExecuteScript(
            "INSERT INTO PriceHistory (Symbol, Shares, PurchasePrice) VALUES ('OLD', 7, 10000); "
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 19999) "
            "INSERT INTO History (Symbol, Description, Shares, Price, TransDate, Time) "
            "SELECT 'S' || (i % 50), CASE i % 4 WHEN 0 THEN 'Deposit' WHEN 3 THEN 'Sold' "
            "ELSE 'Bought' END, CASE i % 4 WHEN 0 THEN 0 WHEN 3 THEN -10 ELSE 10 END, 100000, "
            "date('2016-01-04', (i / 8) || ' days'), '10:00:00.000' FROM n");
        account.Close();
        m_whole = Dump(m_original.Path());
        m_rows = RowsOf(m_original.Path());
    }
    static void Copy(const QString &from, const QString &to)
    {
        AccountFile::Write(to, AccountFile::Bytes(from));
    }
    void Start(const QString &path, const QString &target, const QStringList &more = {})
    {
        m_program.start(CRASH_COMPACTOR, QStringList({path, target}) + more);
        ASSERT_TRUE(m_program.waitForReadyRead());
    }
    /// True: the purge went through.
    bool ExpectWhole(const QString &path)
    {
        EXPECT_EQ(Dump(path), m_whole);
        const qint64 rows = RowsOf(path);
        EXPECT_TRUE(rows == m_rows || rows < m_rows / 2 + 5000) << rows;
        return rows < m_rows;
    }

    AccountFile m_original;
    std::string m_whole;
    qint64 m_rows = 0;
    QProcess m_program;
};

} // namespace

TEST_F(KilledCompactor, AtAnyTimeLeavesTheOldFileOrTheNewOne)
{
    std::mt19937 random(20260302);
    std::uniform_int_distribution<unsigned long> delay(0, 120000); // microseconds
    for (int run = 0; run < 15; ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        AccountFile file;
        Copy(m_original.Path(), file.Path());
        Start(file.Path(), file.In("Temp.mdb"));
        QThread::usleep(delay(random));
        m_program.kill();
        m_program.waitForFinished();
        ExpectWhole(file.Path());
        // The next run takes another name; the next start of the program removes the file.
        Compaction again(file.Path(), file.In("Temp.mdb"));
        again.Write();
        again.Replace();
        ExpectWhole(file.Path());
        RemoveDatabase(file.In("Temp.mdb"));
        EXPECT_EQ(file.Listing(), "Broker.mdb");
    }
}

TEST_F(KilledCompactor, InTheMiddleOfAWriteLeavesTheOldFileOrTheNewOne)
{
    int asItWas = 0;
    int purged = 0;
    for (const char *write :
         {"1", "2", "50", "800", "1500", "1900", "2100", "2300", "2500", "2600", "2700", "2900"}) {
        SCOPED_TRACE(write);
        AccountFile file;
        Copy(m_original.Path(), file.Path());
        Start(file.Path(), file.In("Temp.mdb"), {write});
        m_program.waitForFinished();
        (ExpectWhole(file.Path()) ? purged : asItWas) += 1;
    }
    EXPECT_GT(asItWas, 0) << "no run died before the purge was there";
    EXPECT_GT(purged, 0) << "no run died behind the purge";
}

TEST_F(KilledCompactor, OnAFullDiskKeepsTheAccount)
{
    AccountFile file;
    const QString disk = file.In("disk");
    QDir().mkdir(disk);
    // Room for the account and its log, not for a second account.
    const qint64 room = QFileInfo(m_original.Path()).size() * 5 / 4;
    if (mount("tmpfs", disk.toUtf8(), "tmpfs", 0,
              QByteArray("size=" + QByteArray::number(room)).constData()) != 0)
        GTEST_SKIP() << "a small disk cannot be mounted here";
    const QString path = disk + "/Broker.mdb";
    Copy(m_original.Path(), path);
    Start(path, disk + "/Temp.mdb");
    m_program.waitForFinished();
    EXPECT_EQ(m_program.exitCode(), 1); // it was told
    QFile::remove(disk + "/Temp.mdb");
    ExpectWhole(path);
    umount(disk.toUtf8());
}

TEST_F(KilledCompactor, InAFolderWithoutPermissionKeepsTheAccount)
{
    AccountFile file;
    const QString folder = file.In("locked");
    QDir().mkdir(folder);
    const QString path = folder + "/Broker.mdb";
    Copy(m_original.Path(), path);
    chmod(file.Folder().toUtf8(), 0755);
    chmod(folder.toUtf8(), 0555);
    chmod(path.toUtf8(), 0666);
    m_program.setChildProcessModifier([] {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) // whom modes hold
            _exit(2);
    });
    Start(path, folder + "/Temp.mdb");
    m_program.waitForFinished();
    EXPECT_EQ(m_program.exitCode(), 1);
    chmod(folder.toUtf8(), 0755);
    EXPECT_FALSE(ExpectWhole(path));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList("Broker.mdb"));
}
