#include "store/unfinished_work.h"

#include "base/runtime_error.h"
#include "platform/files.h"
#include "store/database_copy.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace
{

const QString TemporaryFilesKey = QStringLiteral("temporaryFiles");
const QString RestoreKey = QStringLiteral("restoreFrom");

QStringList NotesIn(const QString &appPath)
{
    QStringList paths;
    const QDir folder(appPath);
    for (const QString &name :
         folder.entryList({QStringLiteral("unfinished-*.json")}, QDir::Files | QDir::NoSymLinks))
        paths << folder.filePath(name);
    return paths;
}

QJsonObject Read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

QStringList TemporaryFilesOf(const QJsonObject &note)
{
    QStringList paths;
    for (const QJsonValue &path : note.value(TemporaryFilesKey).toArray())
        paths << path.toString();
    return paths;
}

bool WriteAll(int file, const QByteArray &content)
{
    return write(file, content.constData(), size_t(content.size())) == content.size() &&
           fsync(file) == 0;
}

} // namespace

UnfinishedWork::UnfinishedWork(const QString &appPath, const QStringList &temporaryFiles,
                               const QString &restoreFrom)
{
    const QByteArray content =
        QJsonDocument(QJsonObject{{TemporaryFilesKey, QJsonArray::fromStringList(temporaryFiles)},
                                  {RestoreKey, restoreFrom}})
            .toJson();
    for (int number = 1; m_file < 0; ++number) {
        m_path = QStringLiteral("%1/unfinished-%2-%3.json").arg(appPath).arg(getpid()).arg(number);
        m_file = open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC,
                      0600);
        if (m_file < 0 && errno != EEXIST)
            break;
    }
    if (m_file < 0) {
        m_path.clear();
        return;
    }
    flock(m_file, LOCK_EX | LOCK_NB);
    try {
        if (WriteAll(m_file, content)) // no less durable than what it tells of
            ::Files::SyncFolderOf(m_path);
    } catch (const RuntimeError &) {
        // The work itself will say what is wrong with the disk.
    }
}

UnfinishedWork::~UnfinishedWork()
{
    if (m_file < 0)
        return;
    unlink(QFile::encodeName(m_path).constData()); // while it is locked
    close(m_file);
}

void UnfinishedWork::CleanUp(const QString &appPath,
                             const std::function<void(const QString &)> &onRestoreCutOff)
{
    for (const QString &path : NotesIn(appPath)) {
        const QByteArray name = QFile::encodeName(path);
        const int file = open(name.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
        if (file < 0)
            continue;
        if (flock(file, LOCK_EX | LOCK_NB) == 0) { // else its program is at work
            const QJsonObject note = Read(path);
            for (const QString &temporary : TemporaryFilesOf(note)) {
                try {
                    RemoveDatabase(temporary);
                } catch (const RuntimeError &) {
                    // A drive that is not there, or not writable now.
                }
            }
            if (const QString backup = note.value(RestoreKey).toString(); !backup.isEmpty())
                onRestoreCutOff(backup);
            unlink(name.constData());
        }
        close(file);
    }
}

QStringList UnfinishedWork::Files(const QString &appPath)
{
    QStringList paths = NotesIn(appPath);
    for (const QString &note : QStringList(paths))
        paths += TemporaryFilesOf(Read(note));
    return paths;
}
