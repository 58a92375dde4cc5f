#pragma once

/// A note in the application folder of the temporary files that a run is about to write. The next start
/// of the program deletes those of a run that was killed.
///
///     {
///         const UnfinishedWork note(appPath, {"/home/ann/Copy.mdb.new"});
///         CopyDatabase(...);                                    killed here: the note stays
///     }                                                         done: the note goes
///     UnfinishedWork::CleanUp(appPath, tell);                   the file goes, and the note
///
/// The note is a file with a lock of the operating system on it, so that programs that are still at
/// work keep their files. Where the note cannot be written the work goes on without.

#include <QString>
#include <QStringList>

#include <functional>

class UnfinishedWork
{
public:
    /// `restoreFrom` names the backup from which files are being brought back.
    UnfinishedWork(const QString &appPath, const QStringList &temporaryFiles,
                   const QString &restoreFrom = {});
    ~UnfinishedWork();
    UnfinishedWork(const UnfinishedWork &) = delete;
    UnfinishedWork &operator=(const UnfinishedWork &) = delete;

    /// Deletes what ended runs have left, and calls `onRestoreCutOff` with the backup of each restore
    /// that did not come to its end.
    static void CleanUp(const QString &appPath,
                        const std::function<void(const QString &)> &onRestoreCutOff);
    /// The temporary files of all notes, and the notes themselves: nothing for a backup.
    static QStringList Files(const QString &appPath);

private:
    QString m_path; ///< of the note; empty: there is none
    int m_file = -1;
};
