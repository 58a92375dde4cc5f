#pragma once

/// New database files from a schema script (data/schema), for the maker of the delivered files and
/// for tests. The program itself copies templates.
///
///     CreateDatabase(folder + "/Broker.mdb", ReadSchema(source + "/schema/account.sql"));
///     account.Open(folder + "/Broker.mdb");

#include <QString>

/// The text of a schema script. Throws RuntimeError 53 when it cannot be read.
QString ReadSchema(const QString &scriptPath);

/// Writes the file beside `path` and renames it: it is there whole or not at all, and a file that
/// bore the name is replaced. The script sets the application's mark. Throws RuntimeError with the
/// store's description, or with that of the file system.
void CreateDatabase(const QString &path, const QString &schemaSql);
