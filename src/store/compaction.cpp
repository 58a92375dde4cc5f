#include "store/compaction.h"

#include "platform/files.h"
#include "store/database_copy.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// The empty file that is to be filled, with the permissions of the original from the beginning. False
/// when it cannot be made; then the store says why it cannot write there.
bool CreateLike(const QString &original, const QString &path)
{
    struct stat known = {};
    const bool isKnown = stat(QFile::encodeName(original).constData(), &known) == 0;
    const mode_t mode = isKnown ? known.st_mode & 0777 : 0600;
    const int file = open(QFile::encodeName(path).constData(), O_CREAT | O_EXCL | O_RDWR, mode);
    if (file < 0 && errno == EEXIST) // by another program, this very moment
        throw RuntimeError(RuntimeError::FileExistsNumber,
                           QStringLiteral("File already exists: ") + path);
    if (file >= 0)
        close(file);
    return file >= 0;
}

/// Takes hold of an open file for this connection alone, until it is closed.
void HoldAlone(Connection &database)
{
    try {
        Statement mode = database.Prepare(QStringLiteral("PRAGMA journal_mode=DELETE"));
        if (mode.Step() && mode.Text(0) == QLatin1String("delete")) {
            while (mode.Step()) {
            }
            database.ExecuteScript(
                QStringLiteral("PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT"));
            return;
        }
    } catch (const RuntimeError &) {
        // The store says "locked", whose number and words are those of many other failures.
    }
    throw RuntimeError(RuntimeError::PermissionDeniedNumber,
                       QStringLiteral("Permission denied, the file is in use: ") + database.Path());
}

} // namespace

Compaction::Compaction(const QString &path, const QString &target)
    : m_path(QFileInfo(path).canonicalFilePath()), m_target(FreeName(target))
{
    if (m_path.isEmpty())
        throw RuntimeError(RuntimeError::FileNotFoundNumber,
                           QStringLiteral("File not found: ") + path);
    m_original.Open(m_path);
    HoldAlone(m_original);
}

Compaction::~Compaction()
{
    if (!m_isOurs)
        return;
    try {
        RemoveDatabase(m_target);
    } catch (const RuntimeError &) {
        // The disk that refused the writing may refuse this too.
    }
}

void Compaction::Write()
{
    m_isOurs = CreateLike(m_path, m_target);
    m_original.Execute(QStringLiteral("VACUUM INTO ?"), m_target);
    Files::Sync(m_target);
}

void Compaction::Replace()
{
    Files::Name(m_target, m_path);
    m_isOurs = false;
    Files::Sync(QFileInfo(m_path).absolutePath());
    m_original.Close();
}
