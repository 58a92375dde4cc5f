/// A program that is killed while it restores databases over others: each of them is then the old
/// one or the new one.

#include "account_file.h"

#include "store/connection.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QThread>

#include <random>

namespace
{

/// An account whose rows all bear this symbol.
void WriteAccount(const QString &path, const char *symbol, int rows)
{
    AccountFile::Write(path, AccountFile::EmptyAccount());
    Connection account;
    account.Open(path);
    account.Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?2) "
                    "INSERT INTO History (Symbol) SELECT ?1 FROM n",
                    QString::fromLatin1(symbol), rows);
}

std::string State(const QString &path)
{
    Connection account;
    account.Open(path);
    Statement row = account.Prepare("SELECT (SELECT integrity_check FROM pragma_integrity_check) "
                                    "|| ' ' || min(Symbol) || max(Symbol) || count(*) "
                                    "FROM History");
    row.Step();
    return row.Text(0).toStdString();
}

} // namespace

TEST(KilledRestore, LeavesEachDatabaseTheOldOneOrTheNewOne)
{
    QTemporaryDir place;
    QDir(place.path()).mkdir("backup");
    QDir(place.path()).mkdir("app");
    const QStringList names = {"a.mdb", "b.mdb", "c.mdb"};
    for (const QString &name : names)
        WriteAccount(place.filePath("backup/" + name), "NEW", 20000);
    std::mt19937 random(20260302);
    std::uniform_int_distribution<unsigned long> delay(0, 60000); // microseconds
    int old = 0;
    for (int run = 0; run < 15; ++run) {
        SCOPED_TRACE("run " + std::to_string(run));
        for (const QString &name : names)
            WriteAccount(place.filePath("app/" + name), "OLD", 100);
        QProcess program;
        program.start(CRASH_COPIER, {place.filePath("backup"), place.filePath("app")});
        ASSERT_TRUE(program.waitForReadyRead());
        QThread::usleep(delay(random));
        program.kill();
        program.waitForFinished();
        for (const QString &name : names) {
            const std::string state = State(place.filePath("app/" + name));
            EXPECT_TRUE(state == "ok OLDOLD100" || state == "ok NEWNEW20000") << state;
            old += state == "ok OLDOLD100" ? 1 : 0;
        }
    }
    EXPECT_GT(old, 0) << "no run was killed in time";
}
