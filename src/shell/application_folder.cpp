#include "shell/application_folder.h"

#include "platform/files.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace
{

/// Every new account is a copy of this file, and no application folder is complete without it.
const QString TemplateName = QStringLiteral("Template.xxx");

/// The folder is this program's alone until the object goes, or the process ends. Where the file
/// system has no locks the program goes on without.
class FolderTurn
{
public:
    explicit FolderTurn(const QString &folder)
        : m_folder(open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        if (m_folder >= 0)
            flock(m_folder, LOCK_EX);
    }
    ~FolderTurn()
    {
        if (m_folder >= 0)
            close(m_folder);
    }
    FolderTurn(const FolderTurn &) = delete;
    FolderTurn &operator=(const FolderTurn &) = delete;

private:
    int m_folder;
};

bool IsThere(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink(); // a link into a drive that is not mounted now
}

void MakeFolder(const QString &path)
{
    if (QFileInfo(path).isDir())
        return;
    constexpr QFile::Permissions usersOwn = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    const QString parent = QFileInfo(path).absolutePath();
    if (parent != path)
        MakeFolder(parent);
    if (!QDir().mkdir(path, usersOwn) && !QFileInfo(path).isDir())
        throw RuntimeError(RuntimeError::PathAccessNumber,
                           QStringLiteral("Path/File access error: ") + path);
}

/// A database that its user may have deleted for good.
bool IsGivenOnce(const QString &name)
{
    return name.endsWith(QLatin1String(".mdb")) && name != QLatin1String("WebSites.mdb");
}

void Give(const QString &from, const QString &to)
{
    if (!IsThere(to))
        Files::CopyFile(from, to, false, Files::RestrictToOwner);
}

} // namespace

ApplicationFolder ApplicationFolder::Find(const QString &executableFolder, const QString &sharePath,
                                          const QString &userData)
{
    const QString beside = QDir::cleanPath(executableFolder);
    const QString installed = QDir::cleanPath(beside + QLatin1Char('/') + sharePath);
    const auto isComplete = [](const QString &folder) {
        return Files::FileExists(folder + QLatin1Char('/') + TemplateName);
    };
    if (isComplete(beside) || !isComplete(installed))
        return {beside, beside};
    return {QDir::cleanPath(userData + QStringLiteral("/Quillon")), installed, true};
}

void ApplicationFolder::Complete() const
{
    if (!isPerUser)
        return;
    MakeFolder(appPath);
    const FolderTurn turn(appPath);
    const QString pattern = appPath + QLatin1Char('/') + TemplateName;
    // It comes last, and tells from then on that the first start came to its end.
    const bool isFirstStart = !IsThere(pattern);
    for (const QString &name : QDir(programPath).entryList(QDir::Files | QDir::Hidden))
        if (name != TemplateName && (isFirstStart || !IsGivenOnce(name)))
            Give(programPath + QLatin1Char('/') + name, appPath + QLatin1Char('/') + name);
    Give(programPath + QLatin1Char('/') + TemplateName, pattern);
}
