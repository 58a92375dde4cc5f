#include "shell/account_files.h"

#include "program/preferences.h"

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
    const QString folder = current.isEmpty() ? m_program.services.appPath
                                             : current.left(current.lastIndexOf(QLatin1Char('/')));
    return {kind, title, QStringLiteral("Tracker Databases (*.mdb)|*.mdb"),
            folder + QStringLiteral("/*.mdb")};
}

void AccountFiles::mnuFLOpenExisting_Click()
{
    Dialogs &dialogs = m_program.services.dialogs;
    const std::optional<QString> path =
        dialogs.PickFile(Request(FileRequest::Kind::Open, QStringLiteral("Open existing account")));
    if (!path)
        return;
    // The whole path is looked at, folders included.
    if (path->contains(QLatin1String("ApplControl")) || path->contains(QLatin1String("WebSite"))) {
        dialogs.MsgBox(QStringLiteral("This is an invalid account database, please try again"),
                       Box::Exclamation, EditorTitle());
        return;
    }
    try {
        OpenAccountFile(*path);
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
    m_program.accountRoutines->CloseAllScreens();
    m_program.settings.CurrentFilePath = path;
    m_program.settings.AccountName = AccountNameOf(path);
    SaveSettings(m_program);
    // What the account has no control row for must not come from the account before: least of all
    // its password.
    m_program.account = AccountState();
    OpenDatabases(m_program.databases, m_program.settings, m_program.account, m_program.services);
    m_program.accountRoutines->OpenAccount();
    m_program.run.AccountInvalid = false;
    m_program.run.OpeningExisting = false;
}
