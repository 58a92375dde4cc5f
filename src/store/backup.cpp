#include "store/backup.h"

#include "platform/files.h"
#include "store/unfinished_work.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace
{

const QString BackupFolder = QStringLiteral("/Quillon Backup");
const QString RestoredFolder = QStringLiteral("/Quillon");

void Status(Services &services, const QString &text)
{
    services.status.Post(text);
    services.clock.Yield();
}

Answer AskToOverwrite(Services &services, const QString &target, const QString &source, int buttons)
{
    return services.dialogs.MsgBox(
        QStringLiteral("Overwrite destination files in %1\nwith files from %2/ directory?")
            .arg(target, source),
        buttons + Box::SecondDefault, ApplicationTitle() + QStringLiteral(" Restore"));
}

/// False when it is there already.
bool MakeFolder(const QString &path)
{
    if (QFileInfo(path).isDir())
        return false;
    if (!QDir().mkdir(path))
        throw RuntimeError(RuntimeError::PathAccessNumber,
                           QStringLiteral("Path/File access error: ") + path);
    return true;
}

QString SourceFolder(const QString &source)
{
    return source + RestoredFolder;
}

struct RestoreStep
{
    const char *status; ///< none: it belongs to the step before
    const char *pattern;
};
constexpr RestoreStep RestoreSteps[] = {
    {"Restoring .txt files...", "*.txt"},
    {"Restoring .mdb files...", "*.mdb"},
    {"Restoring miscellaneous files...", "*.xxx"},
    {"Restoring graphic files...", "*.bmp"},
    {nullptr, "*.ico"},
};

/// Before the first file is replaced: the files of an account may be closed for a while, which its
/// program will go on with as it knew them.
void RequireNoneElsewhere(const AccountLock &accountLock, const QString &folder,
                          const QString &target)
{
    for (const QFileInfo &file : QDir(folder).entryInfoList({QStringLiteral("*.mdb")}, QDir::Files))
        if (const QString path = target + QLatin1Char('/') + file.fileName();
            accountLock.IsOpenElsewhere(path))
            throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                               QStringLiteral("Permission denied, the file is in use: ") + path);
}

/// What the files are written to before they take their places.
QStringList TemporaryFiles(const QString &folder, const QString &target)
{
    QStringList patterns;
    for (const RestoreStep &step : RestoreSteps)
        patterns << QString::fromLatin1(step.pattern);
    QStringList paths;
    for (const QString &name : QDir(folder).entryList(patterns, QDir::Files | QDir::Hidden))
        paths << QStringLiteral("%1/%2.new").arg(target, name);
    return paths;
}

/// The same of a backup, which goes through all folders.
QStringList TemporaryFilesOfBackup(const QString &folder, const QString &target)
{
    const QString to = QDir(target).filePath(QFileInfo(folder).fileName());
    QStringList paths;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths << to + files.next().mid(folder.size()) + QStringLiteral(".new");
    return paths;
}

/// Whether there was anything to copy.
bool RestoreFiles(Services &services, const QString &folder, bool overwrite,
                  const AfterFile &afterFile)
{
    bool found = false;
    for (const RestoreStep &step : RestoreSteps) {
        if (step.status)
            Status(services, QString::fromLatin1(step.status));
        try {
            CopyMatching(folder, QString::fromLatin1(step.pattern), services.appPath, overwrite,
                         afterFile);
            found = true;
        } catch (const RuntimeError &error) {
            if (error.Number() != RuntimeError::FileNotFoundNumber)
                throw;
        }
    }
    return found;
}

void TellNothingFound(Services &services, const QString &source)
{
    services.dialogs.MsgBox(
        QStringLiteral(
            "Nothing was restored: there are no files in\n%1\n"
            "A backup holds the application's folder under its own name, and is restored "
            "from the one named Quillon.\nIf the folder has another name in this backup, "
            "rename it to Quillon there and restore again.")
            .arg(SourceFolder(source)),
        Box::Exclamation, EditorTitle());
}

bool IsWithin(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

/// Why there can be no backup at `target`; empty: there can. A backup in the application folder would
/// hold itself, and a restore goes to the first backup of a path. Links are resolved.
QString Refusal(const QString &appPath, const QString &target)
{
    const QString chosen =
        QFileInfo(QDir::cleanPath(target + QLatin1String("/.."))).canonicalFilePath();
    const QString source = QFileInfo(appPath).canonicalFilePath();
    const QFileInfo copy(QDir(target).filePath(QFileInfo(appPath).fileName()));
    if (IsWithin(chosen, source) || copy.canonicalFilePath() == source)
        return QStringLiteral("A backup cannot be made in the folder that it copies:\n%1\n"
                              "Please select another directory.")
            .arg(chosen);
    if (chosen.split(QLatin1Char('/')).contains(BackupFolder.mid(1)))
        return QStringLiteral("This directory is part of a backup:\n%1\n"
                              "Please select a directory outside of it.")
            .arg(chosen);
    return {};
}

} // namespace

QString BackupTarget(const QString &chosen)
{
    QString target = chosen + BackupFolder + QLatin1Char('/');
    return target.replace(QLatin1String("//"), QLatin1String("/"));
}

QString BackupSource(const QString &chosen)
{
    const qsizetype marker = chosen.indexOf(BackupFolder);
    if (marker < 0)
        return {};
    const qsizetype end = chosen.indexOf(QLatin1Char('/'), marker + 1);
    return end < 0 ? chosen : chosen.left(end);
}

bool BackUp(Services &services, const QString &target, const AfterFile &afterFile)
{
    if (const QString refusal = Refusal(services.appPath, target); !refusal.isEmpty()) {
        services.dialogs.MsgBox(refusal, Box::Exclamation, EditorTitle());
        Status(services, QStringLiteral("Backup not executed!"));
        return false;
    }
    const bool targetExists = !MakeFolder(target);
    Status(services, QStringLiteral("Commencing backup procedure..."));
    if (targetExists &&
        AskToOverwrite(services, target, services.appPath, Box::YesNo) != Answer::Yes) {
        Status(services, QStringLiteral("Backup not executed!"));
        return false;
    }
    Status(services, QStringLiteral("Backup procedure in progress..."));
    const UnfinishedWork note(services.appPath, TemporaryFilesOfBackup(services.appPath, target));
    CopyFolder(services.appPath, target, targetExists, afterFile);
    Files::SyncFolderOf(QDir::cleanPath(target)); // the backup's own folder may be new
    Status(services, QStringLiteral("Backup procedure successful!"));
    return true;
}

bool Restore(Services &services, const AccountLock &accountLock, const QString &source,
             const AfterFile &afterFile)
{
    Status(services, QStringLiteral("Commencing restore procedure..."));
    const Answer answer =
        AskToOverwrite(services, services.appPath + QLatin1Char('/'), source, Box::YesNoCancel);
    if (answer == Answer::Cancel)
        return false;
    if (answer == Answer::No)
        services.dialogs.MsgBox(QStringLiteral("Like name files will not be replaced..."),
                                Box::Exclamation, EditorTitle());
    const QString folder = SourceFolder(source);
    try {
        if (answer == Answer::Yes)
            RequireNoneElsewhere(accountLock, folder, services.appPath);
        const UnfinishedWork note(services.appPath, TemporaryFiles(folder, services.appPath),
                                  source);
        if (!RestoreFiles(services, folder, answer == Answer::Yes, afterFile))
            TellNothingFound(services, source);
    } catch (const RuntimeError &error) {
        if (error.Number() != RuntimeError::PermissionDeniedNumber)
            throw;
        services.dialogs.MsgBox(QStringLiteral("Restore was not successful because \n"
                                               "the database is in use by another application!"),
                                Box::Exclamation, EditorTitle());
        Status(services, QStringLiteral("Restore procedure was not completed!"));
        return false;
    }
    Status(services, QStringLiteral("Restore procedure successful!"));
    return true;
}
