/// What a failed save leaves behind: the old file.

#include "full_disk.h"

#include "base/runtime_error.h"
#include "reports/workbook.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

namespace
{

/// Meanwhile the modes of files hold for us.
class AsOrdinaryUser
{
public:
    AsOrdinaryUser() : m_wasRoot(geteuid() == 0 && setresuid(65534, 65534, 0) == 0) {}
    ~AsOrdinaryUser()
    {
        if (m_wasRoot) {
            EXPECT_EQ(setresuid(0, 0, 0), 0);
        }
    }
    AsOrdinaryUser(const AsOrdinaryUser &) = delete;
    AsOrdinaryUser &operator=(const AsOrdinaryUser &) = delete;

private:
    bool m_wasRoot;
};

class WorkbookSave : public testing::Test
{
protected:
    WorkbookSave()
    {
        for (int row = 1; row <= 2000; ++row)
            m_book.SetText(row, 1, QStringLiteral("Name %1").arg(row));
    }

    QString In(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    QString AddOld()
    {
        QFile file(In("Summary.xls"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("old");
        return file.fileName();
    }
    std::string Files() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::Files | QDir::Hidden)
            .join(QLatin1Char(' '))
            .toStdString();
    }
    static QByteArray Content(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    /// The number of the error, which must name the file.
    int SaveError(const QString &path) const
    {
        try {
            m_book.Save(path);
        } catch (const RuntimeError &error) {
            EXPECT_TRUE(error.Description().contains(path)) << error.what();
            return error.Number();
        }
        return 0;
    }

    QTemporaryDir m_folder;
    Workbook m_book{Formats(QLocale(QLocale::English, QLocale::UnitedStates))};
};

} // namespace

TEST_F(WorkbookSave, ReplacesTheFileOfThatName)
{
    const QString path = AddOld();
    EXPECT_EQ(SaveError(path), 0);
    EXPECT_EQ(Content(path).first(4), QByteArray("\xd0\xcf\x11\xe0"));
    EXPECT_EQ(Files(), "Summary.xls");
}

TEST_F(WorkbookSave, MakesTheSameFileOfTheSameCells)
{
    m_book.Save(In("a.xls"));
    m_book.Save(In("b.xls"));
    EXPECT_EQ(Content(In("a.xls")), Content(In("b.xls")));
}

TEST_F(WorkbookSave, LeavesTheOldFileOnAFullDisk)
{
    const QString path = AddOld();
    int error = 0;
    {
        const FullDisk disk(20000);
        error = SaveError(path);
    }
    EXPECT_EQ(error, RuntimeError::DiskFullNumber);
    EXPECT_EQ(Content(path), "old");
    EXPECT_EQ(Files(), "Summary.xls");
}

TEST_F(WorkbookSave, LeavesTheOldFileInAFolderThatCannotBeWrittenTo)
{
    const QString path = AddOld();
    QFile::setPermissions(m_folder.path(),
                          QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    int error = 0;
    {
        const AsOrdinaryUser user;
        error = SaveError(path);
    }
    QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(error, RuntimeError::PermissionDeniedNumber);
    EXPECT_EQ(Content(path), "old");
    EXPECT_EQ(Files(), "Summary.xls");
}

TEST_F(WorkbookSave, LeavesAFileThatTheUserProtected)
{
    const QString path = AddOld();
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadOther);
    int error = 0;
    {
        const AsOrdinaryUser user;
        error = SaveError(path);
    }
    EXPECT_EQ(error, RuntimeError::PermissionDeniedNumber);
    EXPECT_EQ(Content(path), "old");
}

TEST_F(WorkbookSave, TellsOfAFolderThatIsNotThere)
{
    EXPECT_EQ(SaveError(In("missing/Summary.xls")), RuntimeError::PathNotFoundNumber);
}

TEST_F(WorkbookSave, TellsOfAFolderOfThatName)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("Summary.xls")));
    EXPECT_EQ(SaveError(In("Summary.xls")), RuntimeError::PathAccessNumber);
    EXPECT_TRUE(QDir(In("Summary.xls")).exists());
}

TEST_F(WorkbookSave, LeavesAnotherProgramItsOpenFile)
{
    const QString path = AddOld();
    QFile open(path);
    ASSERT_TRUE(open.open(QIODevice::ReadOnly));
    EXPECT_EQ(SaveError(path), 0);
    EXPECT_EQ(open.readAll(), "old");
    EXPECT_EQ(Content(path).first(4), QByteArray("\xd0\xcf\x11\xe0"));
}

TEST_F(WorkbookSave, TakesNamesWithBlanksAndAccents)
{
    const QString path = In("Zoë's Transaction History.xls");
    EXPECT_EQ(SaveError(path), 0);
    EXPECT_TRUE(QFile::exists(path));
}
