#include "store/shared_file_repair.h"

#include "platform/files.h"
#include "store/account_care.h"
#include "store/database_copy.h"

#include <QDir>
#include <QFileInfo>

namespace
{

struct Reason
{
    const char *part; ///< of the store's description
    const char *sentence;
};
constexpr Reason Reasons[] = {
    {"full", "The disk is full. Quit, make room and start again."},
    {"Disk full", "The disk is full. Quit, make room and start again."},
    {"read-only", "The file cannot be written to. Quit, and see to its permissions."},
    {"readonly", "The file or its folder cannot be written to. Quit, and see to the permissions."},
    {"unable to open",
     "The folder does not let the program make the files that it needs beside it."},
    {"I/O error",
     "The disk fails, or its folder has no locks. Databases need a folder that has them."},
    {"locking protocol", "The folder has no locks. Databases need a folder that has them."},
    {"newer version", "It was written by a newer version of Quillon. Quit, and install that one."},
};

QString ReasonOf(const RuntimeError &error)
{
    for (const Reason &reason : Reasons)
        if (error.Description().contains(QLatin1String(reason.part)))
            return QString::fromLatin1(reason.sentence);
    return QStringLiteral("The file is damaged.");
}

bool IsInUse(const RuntimeError &error)
{
    return error.Description().contains(QLatin1String("locked")) ||
           error.Number() == RuntimeError::PermissionDeniedNumber;
}

/// The file in the folder of a backup that the user has picked, on whatever level; empty: not there.
QString FindInBackup(const QString &picked, const QString &fileName)
{
    const QString backup = QStringLiteral("/Quillon Backup");
    for (const QString &folder : {picked, picked + backup}) {
        QStringList places{folder};
        for (const QString &name : QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            places << folder + QLatin1Char('/') + name;
        if (folder == picked && !folder.endsWith(backup))
            places = {folder, folder + QStringLiteral("/Quillon")};
        for (const QString &place : places)
            if (const QString path = place + QLatin1Char('/') + fileName; Files::FileExists(path))
                return path;
    }
    return {};
}

void RequireInOrder(const QString &path)
{
    Connection copy;
    copy.Open(path);
    if (!IsInOrder(copy))
        throw RuntimeError::Store(QStringLiteral("The file is damaged: ") + path);
}

/// "HistPrices damaged.mdb"
void SetAside(const QString &path)
{
    const QFileInfo file(path);
    const QString aside = FreeName(QStringLiteral("%1/%2 damaged.%3")
                                       .arg(file.path(), file.completeBaseName(), file.suffix()));
    Files::Name(path, aside);
    for (const char *suffix : {"-wal", "-journal", "-shm"})
        if (const QString log = path + QLatin1String(suffix); QFileInfo(log).isFile())
            Files::Name(log, aside + QLatin1String(suffix));
}

/// False, with the old file in its place, when it failed; the user knows why.
bool Replace(Services &services, const QString &path, const QString &by)
{
    try {
        Files::CopyFile(by, path, true, [&](const QString &copy) {
            RequireInOrder(copy);
            SetAside(path);
        });
        return true;
    } catch (const RuntimeError &error) {
        services.dialogs.MsgBox(QStringLiteral("The file\n%1\ncould not be replaced.\n").arg(path) +
                                    ErrorLines(error),
                                Box::Exclamation, EditorTitle());
        return false;
    }
}

bool RestoreFromBackup(Services &services, const QString &path)
{
    const std::optional<QString> picked = services.dialogs.PickFolder(
        QStringLiteral("Select the folder of the backup"), QDir::homePath());
    if (!picked)
        return false;
    const QString name = QFileInfo(path).fileName();
    const QString found = FindInBackup(*picked, name);
    if (!found.isEmpty())
        return Replace(services, path, found);
    services.dialogs.MsgBox(QStringLiteral("There is no backup of %1 in\n%2").arg(name, *picked),
                            Box::Exclamation, EditorTitle());
    return false;
}

} // namespace

SharedFile SharedFileOf(const Services &services, const QString &name)
{
    const QString path = services.appPath + QLatin1Char('/') + name;
    return {path + QStringLiteral(".mdb"), path + QStringLiteral(".xxx")};
}

bool OfferRepair(Services &services, const SharedFile &file, const RuntimeError &error)
{
    if (!Files::FileExists(file.path) || IsInUse(error))
        return false;
    const bool hasPattern = Files::FileExists(file.pattern);
    const QString text =
        QStringLiteral("Quillon cannot open the file\n%1\n%2 (%3)\n\n"
                       "Yes: bring the file back from a backup.\n")
            .arg(file.path, ReasonOf(error), error.Description()) +
        (hasPattern ? QStringLiteral("No: begin with a fresh one from the template.\n")
                    : QString()) +
        QStringLiteral("%1: quit, and change nothing.\n\n"
                       "The old file stays beside the new one, as \"%2 damaged.mdb\".")
            .arg(hasPattern ? QStringLiteral("Cancel") : QStringLiteral("No"),
                 QFileInfo(file.path).completeBaseName());
    for (;;) {
        const Answer answer = services.dialogs.MsgBox(
            text, (hasPattern ? Box::YesNoCancel : Box::YesNo) + Box::Exclamation, EditorTitle());
        if (answer == Answer::Yes && RestoreFromBackup(services, file.path))
            return true;
        if (answer == Answer::No && hasPattern && Replace(services, file.path, file.pattern))
            return true;
        if (answer == Answer::Cancel || (answer == Answer::No && !hasPattern))
            return false;
    }
}
