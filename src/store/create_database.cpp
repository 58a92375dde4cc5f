#include "store/create_database.h"

#include "base/runtime_error.h"
#include "platform/files.h"

#include <QFile>

#include <sqlite3.h>

#include <memory>

QString ReadSchema(const QString &scriptPath)
{
    QFile file(scriptPath);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(RuntimeError::FileNotFoundNumber,
                           QStringLiteral("File not found: ") + scriptPath);
    return QString::fromUtf8(file.readAll());
}

namespace
{

void RunSchema(const QString &path, const QString &schemaSql)
{
    sqlite3 *opened = nullptr;
    const int result = sqlite3_open_v2(QFile::encodeName(path).constData(), &opened,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close_v2)> database(opened, sqlite3_close_v2);
    // One transaction: one sync of the disk instead of one for each table.
    const QByteArray script = "BEGIN;" + schemaSql.toUtf8() + "\n;COMMIT;";
    if (result != SQLITE_OK ||
        sqlite3_exec(opened, script.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw RuntimeError::Store(QString::fromUtf8(sqlite3_errmsg(opened)));
}

} // namespace

void CreateDatabase(const QString &path, const QString &schemaSql)
{
    const QString beside = path + QStringLiteral(".new");
    QFile::remove(beside); // of a run that was broken off
    QFile::remove(beside + QStringLiteral("-journal"));
    try {
        RunSchema(beside, schemaSql);
        Files::Name(beside, path);
    } catch (...) {
        QFile::remove(beside);
        throw;
    }
}
