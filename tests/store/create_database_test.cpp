#include "store/create_database.h"

#include "base/runtime_error.h"
#include "store/connection.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{

const QString Schema = QStringLiteral("PRAGMA application_id = 1366649196;\n"
                                      "CREATE TABLE Lot (Symbol TEXT);\n");

void Write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

TEST(CreateDatabase, MakesAFileThatAConnectionOpens)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("Börse & Söhne's.mdb");
    CreateDatabase(path, Schema);
    Connection connection;
    connection.Open(path);
    EXPECT_EQ(connection.Execute(QStringLiteral("INSERT INTO Lot VALUES ('ACME')")), 1);
    connection.Close();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("Börse & Söhne's.mdb"));
}

TEST(CreateDatabase, ReplacesAFileOfTheName)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("Broker.mdb");
    Write(path, "something else");
    CreateDatabase(path, Schema);
    Connection connection;
    EXPECT_NO_THROW(connection.Open(path));
}

TEST(CreateDatabase, TakesNoNoticeOfAFileThatABrokenRunLeftBeside)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("Broker.mdb");
    CreateDatabase(path + QStringLiteral(".new"), Schema);
    CreateDatabase(path, Schema);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("Broker.mdb"));
}

TEST(CreateDatabase, LeavesTheOldFileWhenTheSchemaIsRefused)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("Broker.mdb");
    Write(path, "as it was");
    EXPECT_THROW(CreateDatabase(path, Schema + QStringLiteral("CREATE TABLE Lot (Again TEXT);")),
                 RuntimeError);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "as it was");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("Broker.mdb"));
}

TEST(CreateDatabase, ThrowsWhenTheFolderDoesNotExist)
{
    const QTemporaryDir folder;
    EXPECT_THROW(CreateDatabase(folder.filePath("none/Broker.mdb"), Schema), RuntimeError);
}

TEST(ReadSchema, ThrowsFileNotFoundForAMissingScript)
{
    const QTemporaryDir folder;
    try {
        ReadSchema(folder.filePath("none.sql"));
        FAIL() << "read a script that is not there";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), RuntimeError::FileNotFoundNumber);
    }
}
