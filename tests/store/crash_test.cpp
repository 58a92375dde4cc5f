/// A program that is killed while it posts: whatever the instant, the file opens, and each posting
/// is there whole or not at all. The lots of the last posting are pending until the next one, so
/// that the file has those of the last posting or of the one before.

#include "account_file.h"

#include "crash/posting_loop.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QThread>

#include <random>

namespace
{

/// What the file holds of the ledgers, and of the lots, as texts that can be compared.
struct FileContent
{
    int postings = 0; ///< rows of History
    std::string ledgers;
    std::string lots;
};

std::string Dump(Connection &account, const QString &sql)
{
    std::string text;
    Statement row = account.Prepare(sql);
    while (row.Step()) {
        for (int i = 0; i < row.ColumnCount(); ++i)
            text += row.Text(i).toStdString() + "|";
        text += "\n";
    }
    return text;
}

FileContent ReadContent(const QString &path)
{
    Connection account;
    account.Open(path);
    EXPECT_EQ(Dump(account, "PRAGMA integrity_check"), "ok|\n");
    FileContent content;
    content.postings = std::stoi(Dump(account, "SELECT COUNT(*) FROM History"));
    content.ledgers = Dump(account, "SELECT * FROM DailyTracker ORDER BY Symbol") +
                      Dump(account, "SELECT * FROM DailyProfitLoss ORDER BY Symbol, TransDate") +
                      Dump(account, "SELECT * FROM History ORDER BY ID");
    content.lots = Dump(account, "SELECT Symbol, Shares, PurchasePrice, TransDate, Time "
                                 "FROM PriceHistory ORDER BY Symbol, TransDate, Time");
    return content;
}

/// The account after each number of postings, from a run that nobody kills. The lots of its last
/// posting are pending, so that the file has those of the one before.
class Reference
{
public:
    Reference() : m_loop(m_file.Path()) { m_states.push_back(ReadContent(m_file.Path())); }

    const FileContent &After(int postings)
    {
        while (int(m_states.size()) <= postings) {
            m_loop.PostNext();
            m_states.push_back(ReadContent(m_file.Path()));
        }
        return m_states[size_t(postings)];
    }

private:
    AccountFile m_file;
    PostingLoop m_loop;
    std::vector<FileContent> m_states;
};

class KilledPoster : public testing::Test
{
protected:
    static void SetUpTestSuite() { s_reference = std::make_unique<Reference>(); }
    static void TearDownTestSuite() { s_reference.reset(); }

    void StartOn(const AccountFile &file, const QStringList &more = {})
    {
        m_told.clear();
        m_program.start(CRASH_POSTER, QStringList(file.Path()) + more);
        WaitForLines(1);
    }
    /// "ready", and a line for each posting.
    void WaitForLines(int lines)
    {
        while (m_told.count('\n') < lines && m_program.waitForReadyRead())
            m_told += m_program.readAllStandardOutput();
    }
    void ExpectWholePostings(const AccountFile &file)
    {
        ASSERT_TRUE(m_program.waitForFinished());
        ASSERT_EQ(m_program.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(m_program.readAllStandardError(), QByteArray());
        m_told += m_program.readAllStandardOutput();
        ASSERT_TRUE(m_told.startsWith("ready\n"));
        const int told = int(m_told.count('\n')) - 1;
        const FileContent content = ReadContent(file.Path());
        m_postings = content.postings;
        // What was told is there; the posting under way may be.
        EXPECT_GE(m_postings, told);
        EXPECT_LE(m_postings, told + 1);
        EXPECT_EQ(content.ledgers, s_reference->After(m_postings).ledgers);
        // The lots of the last posting come with its successor, which may have begun.
        EXPECT_TRUE(content.lots == s_reference->After(m_postings).lots ||
                    content.lots == s_reference->After(m_postings + 1).lots)
            << "lots of " << m_postings << " postings:\n"
            << content.lots;
        EXPECT_EQ(file.Listing(), "Broker.mdb");
    }

    QProcess m_program;
    QByteArray m_told;
    int m_postings = 0;
    static std::unique_ptr<Reference> s_reference;
};

std::unique_ptr<Reference> KilledPoster::s_reference;

} // namespace

TEST_F(KilledPoster, AtAnyTimeLeavesAFileWithWholePostings)
{
    std::mt19937 random(20260302);
    std::uniform_int_distribution<unsigned long> delay(0, 30000); // microseconds
    for (int run = 0; run < 60; ++run) {
        AccountFile file;
        SCOPED_TRACE("run " + std::to_string(run));
        StartOn(file);
        WaitForLines(1 + run % 4); // on a slow disk, too, not always in the first posting
        QThread::usleep(delay(random));
        m_program.kill();
        ExpectWholePostings(file);
    }
}

TEST_F(KilledPoster, InTheMiddleOfAnyWriteLeavesAFileWithWholePostings)
{
    int most = 0;
    for (int write = 1; write <= 60; ++write) {
        AccountFile file;
        SCOPED_TRACE("write " + std::to_string(write));
        StartOn(file, {QString::number(write)});
        ExpectWholePostings(file);
        most = std::max(most, m_postings);
    }
    EXPECT_GE(most, 2) << "no write belonged to a posting";
}

TEST_F(KilledPoster, CanBeFollowedByAnotherProgramOnTheSameFile)
{
    AccountFile file;
    StartOn(file, {"40"});
    ExpectWholePostings(file);
    const int before = m_postings;
    PostingLoop next(file.Path());
    next.PostNext();
    next.PostNext();
    EXPECT_EQ(ReadContent(file.Path()).postings, before + 2);
}
