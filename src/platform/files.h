#pragma once

/// File operations with the error numbers the callers branch on: 53 not found, 58 exists already,
/// 61 disk full, 70 in use or not permitted, 75 access, 76 path not found.
///
/// A file is written beside its target ("Broker.mdb.new") and renamed, so that a target is there whole
/// or not at all. A target behind a link stays behind it.

#include <QByteArrayView>
#include <QString>

#include <functional>

namespace Files
{

bool FileExists(const QString &path);
/// Error 76 when the folder that a file is to lie in is not there, 70 when nothing may be added to it.
void RequireFolderOf(const QString &path);
/// Whether the name of a new file is on the disk when the call returns, or the caller sees to that
/// with one Sync of the folder for many files.
enum class NameSync
{
    AtOnce,
    ByCaller
};

/// With `overwrite` off, a target that exists is error 58 and stays as it is. Others than the user
/// may do no more with the copy than with its original. `check` gets the path of the complete copy
/// before it takes its place, and keeps it from that by throwing.
void CopyFile(const QString &from, const QString &to, bool overwrite,
              const std::function<void(const QString &copy)> &check = {},
              NameSync nameSync = NameSync::AtOnce);
/// Writes a file with that content, replacing one of its name.
void WriteFile(const QString &path, QByteArrayView content);
/// Deletes a file; error 53 when there is none.
void Kill(const QString &path);
/// Renames, replacing a file of the new name.
void Name(const QString &from, const QString &to);
/// Waits until a file, or the names in a folder, are on the disk; a file system that cannot do that
/// is left alone.
void Sync(const QString &path);
/// The same of the names in the folder of a file.
void SyncFolderOf(const QString &path);
/// Takes from all others what they may do with a file (mode 0600). Nothing happens to a file that is
/// not the user's, or on a file system without permissions.
void RestrictToOwner(const QString &path);

} // namespace Files
