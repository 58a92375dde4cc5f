#pragma once

/// Copies of whole folders and of all files of a kind.
///
///     CopyFolder("/opt/Quillon", "/media/ann/STICK/Quillon Backup", true, status);
///         /media/ann/STICK/Quillon Backup/Quillon/...
///     CopyMatching("/media/.../Quillon", "*.mdb", "/opt/Quillon", false);
///
/// Every file is written beside its target and renamed: whatever happens, a target is there whole,
/// the old one or the new one. When the call returns, the names are on the disk as well. Permissions come along. A database of ours is copied with all that
/// is committed, and its copy is read through before it takes the place of another one: a damaged
/// one is never put over a good one. Errors are RuntimeErrors: 70 in use by another program or not
/// permitted, 61 disk full, 76 path not found, and what is damaged with the store's number.

#include <QString>

#include <functional>

/// Called behind each file, so that long work can be shown.
using AfterFile = std::function<void()>;

/// Copies `folder` under its own name into `target`; files that are there only in the target stay.
/// Left out are the target itself, when it lies inside the folder, and what is temporary: locks, logs, and
/// files that are being written beside their place. With `overwrite` off, a file that
/// exists is error 58. One that is damaged keeps no other from being copied: it is left out, and
/// thrown at the end by its name.
void CopyFolder(const QString &folder, const QString &target, bool overwrite,
                const AfterFile &afterFile);

/// Copies the files of `folder` whose names fit `pattern`, in whatever case; how many. With
/// `overwrite` off those that exist are passed over. Without a file of the kind it is error 53.
int CopyMatching(const QString &folder, const QString &pattern, const QString &target,
                 bool overwrite, const AfterFile &afterFile);
