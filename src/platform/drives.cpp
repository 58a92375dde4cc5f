#include "platform/drives.h"

#include <QDir>
#include <QSet>
#include <QStorageInfo>

#include <algorithm>

namespace
{

bool IsMemory(const QByteArray &fileSystem)
{
    static const QSet<QByteArray> kinds = {"tmpfs", "ramfs", "devtmpfs", "squashfs", "overlay"};
    return kinds.contains(fileSystem);
}

bool IsOfTheSystem(const QString &root)
{
    static const char *const folders[] = {"/boot", "/snap", "/etc", "/proc",
                                          "/sys",  "/dev",  "/run"};
    if (root.startsWith(QLatin1String("/run/media/"))) // where some desktops mount a stick
        return false;
    return std::any_of(std::begin(folders), std::end(folders), [&](const char *folder) {
        const QString path = QString::fromLatin1(folder);
        return root == path || root.startsWith(path + QLatin1Char('/'));
    });
}

bool IsPlaceForBackup(const QStorageInfo &volume)
{
    return volume.isValid() && volume.isReady() && QDir(volume.rootPath()).exists() &&
           !IsMemory(volume.fileSystemType()) && !IsOfTheSystem(volume.rootPath());
}

} // namespace

std::vector<Drive> MountedDrives()
{
    const QString home = QDir::homePath();
    const QStorageInfo homeVolume(home);
    std::vector<Drive> drives;
    drives.push_back({QStringLiteral("c:"), QStringLiteral("Home"), homeVolume.rootPath(), home});
    if (drives.front().root.isEmpty())
        drives.front().root = QDir::rootPath();

    QList<QStorageInfo> volumes = QStorageInfo::mountedVolumes();
    std::sort(volumes.begin(), volumes.end(), [](const auto &left, const auto &right) {
        return left.rootPath() < right.rootPath();
    });
    QSet<QByteArray> devices{homeVolume.device()};
    for (const QStorageInfo &volume : volumes) {
        if (!IsPlaceForBackup(volume) || devices.contains(volume.device()))
            continue;
        devices.insert(volume.device());
        const char letter = char('c' + int(drives.size()));
        if (letter > 'z')
            break;
        drives.push_back({QLatin1Char(letter) + QStringLiteral(":"), volume.displayName(),
                          volume.rootPath(), volume.rootPath()});
    }
    return drives;
}
