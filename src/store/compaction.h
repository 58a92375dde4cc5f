#pragma once

/// Makes a database file as small as its rows: they are written anew into a file beside it, which
/// then takes its place.
///
///     Compaction compaction("/home/ann/Broker.mdb", "/home/ann/Temp.mdb");
///     compaction.Write();       Temp.mdb has all rows, and is on the disk
///     compaction.Replace();     Broker.mdb is the new file, Temp.mdb is gone
///
/// The original is held alone until the object goes: error 70 when another program has it open. It
/// stays whole and in its place until the one rename of Replace, at whatever instant the program
/// dies. The new file keeps the mark, the version, the numbers given to rows, and the permissions.
/// An account behind a symbolic link stays behind it.

#include "store/connection.h"

class Compaction
{
public:
    /// A file at `target` is deleted.
    Compaction(const QString &path, const QString &target);

    /// What the store refuses (a full disk, a folder that is not there) is thrown with its own
    /// description; what was written so far stays at the target.
    void Write();
    void Replace();

private:
    QString m_path; ///< the file itself, behind any link
    QString m_target;
    Connection m_original;
};
