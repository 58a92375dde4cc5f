#include "support/test_app_folder.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <memory>

namespace
{

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Database OpenFile(const QString &path)
{
    sqlite3 *database = nullptr;
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK) << qPrintable(path);
    // A test's files need not survive a power cut.
    sqlite3_exec(database, "PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY", nullptr,
                 nullptr, nullptr);
    return Database(database, &sqlite3_close);
}

QString Schema(const char *name)
{
    QFile file(QStringLiteral(QUILLON_DATA "/schema/") + QString::fromUtf8(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll());
}

} // namespace

TestAppFolder::TestAppFolder()
{
    Execute(File(QStringLiteral("Template.xxx")), Schema("account.sql"));
    Execute(File(QStringLiteral("ApplControl.xxx")), Schema("appl_control.sql"));
    Execute(File(QStringLiteral("HistPrices.xxx")), Schema("hist_prices.sql"));
    Execute(File(QStringLiteral("WebSites.mdb")), Schema("web_sites.sql"));
    AddAccount(QStringLiteral("Sample Portfolio.mdb"));
}

QString TestAppFolder::AddAccount(const QString &name) const
{
    const QString path = File(name);
    QDir().mkpath(QFileInfo(path).path());
    EXPECT_TRUE(QFile::copy(File(QStringLiteral("Template.xxx")), path)) << qPrintable(path);
    return path;
}

QString TestAppFolder::AddFile(const QString &name, const QByteArray &content) const
{
    QFile file(File(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(name);
    file.write(content);
    return file.fileName();
}

void TestAppFolder::Execute(const QString &path, const QString &sql) const
{
    const Database database = OpenFile(path);
    char *message = nullptr;
    sqlite3_exec(database.get(), sql.toUtf8().constData(), nullptr, nullptr, &message);
    EXPECT_EQ(message, nullptr) << message;
    sqlite3_free(message);
}

QString TestAppFolder::Value(const QString &path, const QString &sql) const
{
    const Database database = OpenFile(path);
    sqlite3_stmt *statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database.get(), sql.toUtf8().constData(), -1, &statement, nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(database.get());
    QString value;
    if (sqlite3_step(statement) == SQLITE_ROW)
        value =
            QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
    sqlite3_finalize(statement);
    return value;
}
