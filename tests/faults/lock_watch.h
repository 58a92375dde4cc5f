#pragma once

/// Sees when this process drops the store's locks on a database. They go without a word when any file
/// handle on it is closed that is not the store's own, as by a QFile that reads its header; another
/// program can then write to it at the same time.

#include <QStringList>

namespace LockWatch
{

/// The files that have lost locks since the last call.
QStringList TakeDropped();

} // namespace LockWatch
