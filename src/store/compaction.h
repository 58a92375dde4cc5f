#pragma once

/// Makes a database file as small as its rows: they are written anew into a file beside it, which
/// then takes its place.
///
///     Compaction compaction("/home/ann/Broker.mdb", "/home/ann/Temp.mdb");
///     compaction.Target();      Temp.mdb, or Temp 2.mdb when the user has a file of that name
///     compaction.Write();       it has all rows, and is on the disk
///     compaction.Replace();     Broker.mdb is the new file, the other name is gone
///
/// The original is held alone until the object goes: error 70 when another program has it open. It
/// stays whole and in its place until the one rename of Replace, at whatever instant the program
/// dies. The new file keeps the mark, the version, the numbers given to rows, and the permissions.
/// An account behind a symbolic link stays behind it.

#include "store/connection.h"

class Compaction
{
public:
    /// No file that is there is touched: when `target` is taken, the next free name like it serves.
    Compaction(const QString &path, const QString &target);
    /// What was written and did not take its place is deleted.
    ~Compaction();
    Compaction(const Compaction &) = delete;
    Compaction &operator=(const Compaction &) = delete;

    const QString &Target() const { return m_target; }
    /// What the store refuses (a full disk, a folder that is not there) is thrown with its own
    /// description.
    void Write();
    void Replace();

private:
    QString m_path; ///< the file itself, behind any link
    QString m_target;
    Connection m_original;
    bool m_isOurs = false; ///< the file at the target
};
