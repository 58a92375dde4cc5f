#include "shell/account_files.h"

#include "platform/files.h"
#include "program/preferences.h"
#include "store/database_copy.h"
#include "store/unfinished_work.h"

#include <QFileInfo>

QString AccountNameOf(const QString &path)
{
    QString name = QFileInfo(path).fileName();
    name.remove(QStringLiteral(".mdb"));
    name.remove(QStringLiteral(".MDB"));
    return name;
}

FileRequest AccountFiles::Request(FileRequest::Kind kind, const QString &title) const
{
    const QString &current = m_program.settings.CurrentFilePath;
    const QString folder = current.isEmpty()
                               ? m_program.services.appPath + QLatin1Char('/')
                               : current.left(current.lastIndexOf(QLatin1Char('/')) + 1);
    return {kind, title, QStringLiteral("Tracker Databases (*.mdb)|*.mdb"),
            folder + QStringLiteral("*.mdb")};
}

/// Runs a command that makes an account; its failure is shown and ends the program.
template <class Steps>
void AccountFiles::OrEnd(Steps steps)
{
    try {
        steps();
    } catch (const RuntimeError &error) {
        m_program.services.dialogs.MsgBox(
            QStringLiteral("An error has occured while creating a new account\n") +
                ErrorLines(error),
            Box::Stop, QStringLiteral("MDI Editor"));
        m_program.services.lifetime.End();
    }
}

/// Asks for the name of a new account until `make` finds no file of that name. Nothing when the
/// user cancels.
template <class Make>
std::optional<QString> AccountFiles::PickNewAccount(const QString &title, Make make)
{
    Dialogs &dialogs = m_program.services.dialogs;
    while (std::optional<QString> path =
               dialogs.PickFile(Request(FileRequest::Kind::Save, title))) {
        if (!path->endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive))
            *path += QLatin1String(".mdb"); // or the dialogs would not show the account any more
        try {
            make(*path);
            return path;
        } catch (const RuntimeError &error) {
            if (error.Number() != RuntimeError::FileExistsNumber)
                throw;
        }
        dialogs.MsgBox(QStringLiteral("This account name already exist, please select another."),
                       Box::Exclamation, QStringLiteral("MDI Editor"));
    }
    return std::nullopt;
}

void AccountFiles::GoOverTo(const QString &path)
{
    m_program.settings.CurrentFilePath = path;
    m_program.settings.AccountName = AccountNameOf(path);
    // What the account has no control row for must not come from the account before: least of all
    // its password.
    m_program.account = AccountState();
    if (OnGoneOver)
        OnGoneOver();
}

void AccountFiles::mnuFLNew_Click()
{
    OrEnd([this] {
        const QString pattern = m_program.services.appPath + QStringLiteral("/Template.xxx");
        const std::optional<QString> path =
            PickNewAccount(QStringLiteral("Create new account"), [&](const QString &chosen) {
                const UnfinishedWork note(m_program.services.appPath,
                                          {chosen + QStringLiteral(".new")});
                Files::CopyFile(pattern, chosen, false);
                Files::RestrictToOwner(chosen);
            });
        if (!path)
            return;
        if (!m_program.accountRoutines->CloseAllScreens()) {
            Files::Kill(*path);
            return;
        }
        GoOverTo(*path);
        m_program.run.NewAccount = true;
        // Opens the databases, writes the first control rows, and opens the account as it goes.
        m_program.screens.ShowModal(QStringLiteral("frmUserSetup"));
        SaveSettings(m_program);
    });
}

void AccountFiles::mnuFLSaveAs_Click()
{
    OrEnd([this] {
        const QString original = m_program.settings.CurrentFilePath;
        const std::optional<QString> path =
            PickNewAccount(QStringLiteral("Save As..."), [](const QString &chosen) {
                if (QFileInfo::exists(chosen) || QFileInfo(chosen).isSymLink()) // into nowhere
                    throw RuntimeError(RuntimeError::FileExistsNumber,
                                       QStringLiteral("File already exists: ") + chosen);
            });
        if (!path)
            return;
        // Before the copy: what the screens write as they go, and the lots of the last transaction,
        // belong into it.
        if (!m_program.accountRoutines->CloseAllScreens())
            return;
        {
            const UnfinishedWork note(m_program.services.appPath, {*path + QStringLiteral(".new")});
            CopyDatabase(original, *path);
        }
        GoOverTo(*path);
        SaveSettings(m_program);
        OpenDatabases(m_program.databases, m_program.settings, m_program.account,
                      m_program.services);
        m_program.accountRoutines->OpenAccount();
    });
}

bool AccountFiles::mnuFLOpenExisting_Click()
{
    const std::optional<QString> path = m_program.services.dialogs.PickFile(
        Request(FileRequest::Kind::Open, QStringLiteral("Open existing account")));
    if (path)
        OpenExisting(*path);
    return path.has_value();
}

void AccountFiles::TellOpenElsewhere(const QString &path)
{
    m_program.services.dialogs.MsgBox(
        QStringLiteral("The account %1 is open already in another Quillon.\n"
                       "Please close it there first, or open another account.")
            .arg(AccountNameOf(path)),
        Box::Exclamation, EditorTitle());
}

void AccountFiles::OpenExisting(const QString &path)
{
    Dialogs &dialogs = m_program.services.dialogs;
    // The whole path is looked at, folders included.
    if (path.contains(QLatin1String("ApplControl")) || path.contains(QLatin1String("WebSite"))) {
        dialogs.MsgBox(QStringLiteral("This is an invalid account database, please try again"),
                       Box::Exclamation, EditorTitle());
        return;
    }
    if (m_program.databases.accountLock.IsOpenElsewhere(path)) {
        TellOpenElsewhere(path);
        return;
    }
    try {
        OpenAccountFile(path);
    } catch (const RuntimeError &error) {
        dialogs.MsgBox(QStringLiteral("An error has occured opening an existing account\n") +
                           ErrorLines(error),
                       Box::Stop, QStringLiteral("MDI Editor"));
        m_program.services.lifetime.End();
    }
}

void AccountFiles::OpenAccountFile(const QString &path)
{
    m_program.run.OpeningExisting = true;
    if (!m_program.accountRoutines->CloseAllScreens()) {
        m_program.run.OpeningExisting = false;
        return;
    }
    GoOverTo(path);
    SaveSettings(m_program);
    OpenDatabases(m_program.databases, m_program.settings, m_program.account, m_program.services);
    m_program.accountRoutines->OpenAccount();
    m_program.run.AccountInvalid = false;
    m_program.run.OpeningExisting = false;
}
