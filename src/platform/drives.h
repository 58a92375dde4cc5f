#pragma once

/// The mounted volumes as drives with a letter, so that the one of the last backup can be remembered
/// in two characters.
///
///     c:   [Home]    the user's home folder, and the volume that it lies on
///     d:   [STICK]   /media/ann/STICK; the further volumes in the order of their paths, with the
///                    name that the user gave the volume
///
/// "c:" is always there. The other letters go by what is mounted now: with another stick in the
/// same place "d:" is that one, as with a disc drive. Left out is what can keep no backup: memory,
/// the system's own small volumes, and what is mounted a second time.

#include <QString>

#include <vector>

struct Drive
{
    QString name;   ///< "c:"
    QString label;  ///< "Home"
    QString root;   ///< the topmost folder, "/"
    QString folder; ///< where one begins: the home folder on "c:", else the root

    QString Text() const { return QStringLiteral("%1 [%2]").arg(name, label); }
};

/// As they are mounted now.
std::vector<Drive> MountedDrives();
