#pragma once

/// File operations with the error numbers the callers branch on: 53 not found, 58 exists already,
/// 61 disk full, 70 in use or not permitted, 75 access, 76 path not found.
///
/// A copy is written beside its target and renamed, so that a target is there whole or not at all.

#include <QString>

namespace Files
{

bool FileExists(const QString &path);
/// With `overwrite` off, a target that exists is error 58 and stays as it is.
void CopyFile(const QString &from, const QString &to, bool overwrite);
/// Deletes a file; error 53 when there is none.
void Kill(const QString &path);
/// Renames, replacing a file of the new name.
void Name(const QString &from, const QString &to);

} // namespace Files
