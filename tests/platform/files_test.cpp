/// File operations and the error numbers that their callers look at.

#include "full_disk.h"

#include "platform/files.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

#include <functional>

namespace
{

int ErrorOf(const std::function<void()> &use)
{
    try {
        use();
    } catch (const RuntimeError &error) {
        EXPECT_FALSE(error.Description().isEmpty());
        return error.Number();
    }
    return 0;
}

class FileOperations : public testing::Test
{
protected:
    QString In(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    QString Add(const char *name, const QByteArray &content)
    {
        QFile file(In(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    QByteArray Content(const char *name) const
    {
        QFile file(In(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    std::string Listing() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files).join(' ').toStdString();
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(FileOperations, CopyMakesTheSameFileAgain)
{
    const QByteArray content = QByteArray("line\0\r\n", 7).repeated(500'000); // several blocks
    Files::CopyFile(Add("a.mdb", content), In("Ünion's copy.mdb"), false);
    EXPECT_EQ(Content("Ünion's copy.mdb"), content);
    EXPECT_EQ(Content("a.mdb"), content);
}

TEST_F(FileOperations, CopyOfAnEmptyFileIsOne)
{
    Files::CopyFile(Add("a", ""), In("b"), false);
    EXPECT_TRUE(Files::FileExists(In("b")));
    EXPECT_EQ(Content("b"), "");
}

TEST_F(FileOperations, CopyWithoutOverwriteIsError58AndLeavesTheTarget)
{
    Add("b", "old");
    EXPECT_EQ(ErrorOf([this] { Files::CopyFile(Add("a", "new"), In("b"), false); }), 58);
    EXPECT_EQ(Content("b"), "old");
    Files::CopyFile(In("a"), In("b"), true);
    EXPECT_EQ(Content("b"), "new");
    EXPECT_EQ(Listing(), "a b");
}

TEST_F(FileOperations, CopyTellsWhatIsMissing)
{
    EXPECT_EQ(ErrorOf([this] { Files::CopyFile(In("none"), In("b"), true); }), 53);
    Add("a", "content");
    EXPECT_EQ(ErrorOf([this] { Files::CopyFile(In("a"), In("no folder/b"), true); }), 76);
    EXPECT_EQ(Listing(), "a");
}

TEST_F(FileOperations, CopyOntoAFolderIsAnErrorAndLeavesIt)
{
    Add("a", "content");
    QDir(m_folder.path()).mkdir("b");
    EXPECT_NE(ErrorOf([this] { Files::CopyFile(In("a"), In("b"), true); }), 0);
    EXPECT_TRUE(QFileInfo(In("b")).isDir());
    EXPECT_EQ(Listing(), "a");
}

TEST_F(FileOperations, CopyToAFullDiskIsError61AndLeavesTheTarget)
{
    Add("a", QByteArray(3'000'000, 'x'));
    Add("b", "old");
    const int error = [this] {
        const FullDisk full(1'500'000);
        return ErrorOf([this] { Files::CopyFile(In("a"), In("b"), true); });
    }();
    EXPECT_EQ(error, 61);
    EXPECT_EQ(Content("b"), "old");
    EXPECT_EQ(Listing(), "a b");
}

TEST_F(FileOperations, CopyToAFolderThatIsNotOursIsError70)
{
    Add("a", "content");
    chmod(m_folder.path().toUtf8().constData(), 0555);
    chmod(In("a").toUtf8().constData(), 0444);
    const bool root = geteuid() == 0 && setresuid(65534, 65534, 0) == 0;
    const int error = ErrorOf([this] { Files::CopyFile(In("a"), In("b"), true); });
    const int killError = ErrorOf([this] { Files::Kill(In("a")); });
    const int nameError = ErrorOf([this] { Files::Name(In("a"), In("c")); });
    if (root) {
        ASSERT_EQ(setresuid(0, 0, 0), 0);
    }
    chmod(m_folder.path().toUtf8().constData(), 0755);
    EXPECT_EQ(error, 70);
    EXPECT_EQ(killError, 70);
    EXPECT_EQ(nameError, 70);
    EXPECT_EQ(Listing(), "a");
}

TEST_F(FileOperations, KillDeletesAndTellsWhenThereIsNothing)
{
    Files::Kill(Add("O'Neil \"x\".mdb", "content"));
    EXPECT_EQ(Listing(), "");
    EXPECT_EQ(ErrorOf([this] { Files::Kill(In("none")); }), 53);
}

TEST_F(FileOperations, NameRenamesAndReplaces)
{
    Add("b", "old");
    Files::Name(Add("a", "new"), In("b"));
    EXPECT_EQ(Content("b"), "new");
    EXPECT_EQ(Listing(), "b");
    EXPECT_EQ(ErrorOf([this] { Files::Name(In("none"), In("c")); }), 53);
    EXPECT_EQ(ErrorOf([this] { Files::Name(In("b"), In("no folder/b")); }), 76);
    EXPECT_EQ(Content("b"), "new");
}

TEST_F(FileOperations, ExistIsSaidOfFilesOnly)
{
    EXPECT_TRUE(Files::FileExists(Add("a", "")));
    EXPECT_FALSE(Files::FileExists(m_folder.path()));
    EXPECT_FALSE(Files::FileExists(In("none")));
    EXPECT_FALSE(Files::FileExists(QString()));
}
