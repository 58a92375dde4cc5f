#pragma once

/// A copy of a database file as its connections see it: what is still in its log comes along.
///
///     CopyDatabase("/home/ann/Broker.mdb", "/home/ann/Broker X12.mdb");

#include <QString>

class Connection;

/// Writes the copy beside `to` and renames it: it is there whole or not at all, after a crash at
/// any instant too, and on the disk with its name when the call returns. It bears our mark and is for its owner alone. Error 58 when there is a file of
/// that name already, 76 when the folder is missing, 70 when nothing can be written to it; whatever
/// else the store refuses (a full disk) is its own error.
void CopyDatabase(const QString &from, const QString &to);
/// The same of a file that is open, with all that is committed on it.
void CopyDatabase(const Connection &from, const QString &to);

/// The path itself, or "Temp 2.mdb", "Temp 3.mdb" beside it: the first name that no file, folder or link
/// has, nor a log.
QString FreeName(const QString &path);

/// Makes way for a database file of this name: the files that a broken run left, its logs too.
/// Nothing when there are none. Throws RuntimeError when one cannot be deleted.
void RemoveDatabase(const QString &path);
