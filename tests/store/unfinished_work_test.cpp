/// What a run was about to write, as long as it has not come to an end.

#include "test_app_folder.h"

#include "store/unfinished_work.h"

#include <gtest/gtest.h>

#include <QDir>

#include <sys/wait.h>
#include <unistd.h>

namespace
{

class UnfinishedWorkTest : public testing::Test
{
protected:
    /// In a program that is killed in the midst of it.
    void DieIn(const QStringList &temporaryFiles, const QString &restoreFrom = {}) const
    {
        const pid_t program = fork();
        if (program == 0) {
            new UnfinishedWork(m_folder.Path(), temporaryFiles, restoreFrom);
            kill(getpid(), SIGKILL);
        }
        waitpid(program, nullptr, 0);
    }
    QStringList CleanUp() const
    {
        QStringList told;
        UnfinishedWork::CleanUp(m_folder.Path(), [&](const QString &backup) { told << backup; });
        return told;
    }
    bool IsThere(const char *name) const { return QFile::exists(m_folder.File(name)); }
    QStringList Notes() const
    {
        return QDir(m_folder.Path()).entryList({"unfinished-*"}, QDir::Files);
    }

    TestAppFolder m_folder;
};

} // namespace

using Unfinished = UnfinishedWorkTest;

TEST_F(Unfinished, FilesOfAKilledProgramGoAtTheNextStart)
{
    DieIn({m_folder.AddFile("Copy.mdb.new", "half"), m_folder.File("none.new")});
    m_folder.AddFile("Copy.mdb.new-journal", "of that");
    m_folder.AddFile("Other.mdb.new", "of nobody");
    EXPECT_EQ(CleanUp(), QStringList());
    EXPECT_FALSE(IsThere("Copy.mdb.new"));
    EXPECT_FALSE(IsThere("Copy.mdb.new-journal"));
    EXPECT_TRUE(IsThere("Other.mdb.new"));
    EXPECT_EQ(Notes(), QStringList());
}

TEST_F(Unfinished, FilesOfAProgramAtWorkStay)
{
    const UnfinishedWork note(m_folder.Path(), {m_folder.AddFile("Copy.mdb.new", "half")});
    EXPECT_EQ(CleanUp(), QStringList());
    EXPECT_TRUE(IsThere("Copy.mdb.new"));
    EXPECT_EQ(Notes().size(), 1);
}

TEST_F(Unfinished, NoteGoesWhenTheWorkIsDone)
{
    {
        const UnfinishedWork first(m_folder.Path(), {"/a"});
        const UnfinishedWork second(m_folder.Path(), {"/b"});
        EXPECT_EQ(Notes().size(), 2);
        EXPECT_EQ(UnfinishedWork::Files(m_folder.Path()).filter("/a").size(), 1);
    }
    EXPECT_EQ(Notes(), QStringList());
}

TEST_F(Unfinished, RestoreIsReportedOnce)
{
    DieIn({m_folder.AddFile("HistPrices.mdb.new", "half")}, "/media/ann/Quillon Backup");
    EXPECT_EQ(CleanUp(), QStringList("/media/ann/Quillon Backup"));
    EXPECT_EQ(CleanUp(), QStringList());
    EXPECT_FALSE(IsThere("HistPrices.mdb.new"));
}

TEST_F(Unfinished, DamagedNoteDeletesNothing)
{
    m_folder.AddFile("unfinished-1-1.json",
                     "{\"temporaryFiles\": [\"" + m_folder.SampleAccount().toUtf8() + "\"");
    EXPECT_EQ(CleanUp(), QStringList());
    EXPECT_TRUE(QFile::exists(m_folder.SampleAccount()));
    EXPECT_EQ(Notes(), QStringList());
}

TEST_F(Unfinished, FolderThatCannotBeWrittenIsNoObstacle)
{
    const UnfinishedWork note(m_folder.File("none"), {"/a"});
    EXPECT_EQ(UnfinishedWork::Files(m_folder.File("none")), QStringList());
}
