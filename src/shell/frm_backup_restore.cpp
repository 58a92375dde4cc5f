#include "shell/frm_backup_restore.h"

#include "platform/widgets/folder_list.h"
#include "program/compact_databases.h"
#include "program/preferences.h"
#include "program/wait_cursor.h"
#include "store/backup.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>

#include <algorithm>

frmBackupRestore::frmBackupRestore(Program &program)
    : Form(program, QStringLiteral("frmBackupRestore"), ApplicationTitle(), Placement::Dialog)
{
    setWindowModality(Qt::ApplicationModal); // behind it everything is closed
    BuildControls();
    PlaceControls();
    On(drvList, &QComboBox::activated, [this] { drvList_Change(); });
    dirList->OnChoose = [this](const QString &path) { Guarded([&] { dirList_Change(path); }); };
    OnClick(cmdOK, [this] { cmdOK_Click(); });
    OnClick(cmdCancel, [this] { UnloadMe(); });
    OnClick(cmdHelp,
            [this] { m_program.screens.ShowHelp(QStringLiteral("BRBackupRestore.html")); });
}

void frmBackupRestore::BuildControls()
{
    drvList = new QComboBox(this);
    drvList->setObjectName(QStringLiteral("drvList"));
    drvList->setAccessibleName(QStringLiteral("Drive"));
    dirList = new FolderList(this);
    dirList->setObjectName(QStringLiteral("dirList"));
    dirList->setAccessibleName(QStringLiteral("Directory"));
    filList = new QListWidget(this);
    filList->setObjectName(QStringLiteral("filList"));
    filList->setAccessibleName(QStringLiteral("Files in the directory"));
    filList->setSelectionMode(QAbstractItemView::NoSelection); // to look at only
    lblDrive = new QLabel(this);
    lblDrive->setObjectName(QStringLiteral("lblDrive"));
    lblDrive->setBuddy(drvList);
    lblDirectory = new QLabel(this);
    lblDirectory->setObjectName(QStringLiteral("lblDirectory"));
    lblDirectory->setBuddy(dirList);
    cmdOK = MakeButton("cmdOK", "&OK");
    cmdOK->setDefault(true);
    cmdCancel = MakeButton("cmdCancel", "&Cancel");
    cmdHelp = MakeButton("cmdHelp", "&Help");
}

void frmBackupRestore::PlaceControls()
{
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton *button : {cmdOK, cmdCancel, cmdHelp})
        buttons->addWidget(button);
    auto *grid = new QGridLayout(this);
    grid->addWidget(lblDrive, 0, 0);
    grid->addWidget(drvList, 1, 0);
    grid->addWidget(lblDirectory, 2, 0);
    grid->addWidget(dirList, 3, 0);
    grid->addWidget(filList, 3, 1);
    grid->addLayout(buttons, 4, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    dirList->setMinimumSize(TextSize(46, 18));
    filList->setMinimumSize(TextSize(36, 18));
    setTabOrder(drvList, dirList);
    setTabOrder(dirList, filList);
    setTabOrder(filList, cmdOK);
    setTabOrder(cmdOK, cmdCancel);
    setTabOrder(cmdCancel, cmdHelp);
}

bool frmBackupRestore::IsRestore() const
{
    return m_program.run.BackupMode == QLatin1String("Restore");
}

// --- it comes up ---------------------------------------------------------------------------------

void frmBackupRestore::Load()
{
    if (!m_program.accountRoutines->CloseAllScreens()) {
        m_isRefused = true;
        UnloadMe();
        return;
    }
    QString &backupDir = m_program.settings.BackupDir;
    m_backupDirBefore = backupDir;
    if (!backupDir.contains(QLatin1Char(':')))
        backupDir = QStringLiteral("c:");
    setWindowTitle(ApplicationTitle() +
                   (IsRestore() ? QStringLiteral(" - Restore") : QStringLiteral(" - Backup")));
    m_program.UserActed();
    if (m_program.account.LogoffEnabled == 1)
        m_program.tmrLogoff->SetEnabled(false);
    if (IsRestore())
        LoadRestore();
    else
        LoadBackup();
}

void frmBackupRestore::LoadRestore()
{
    lblDrive->setText(QStringLiteral("Select drive to restore from"));
    lblDirectory->setText(QStringLiteral("Select directory to restore from"));
    const Answer answer = MsgBox(QStringLiteral("Put last backup on drive, click OK when ready"),
                                 Box::OkCancel + Box::Information, EditorTitle());
    if (answer != Answer::Ok) {
        UnloadMe();
        return;
    }
    ListDrives(); // the backup may have come with a drive just now
    ChooseDrive(m_program.settings.BackupDir);
    try {
        const Drive *drive = ChosenDrive();
        if (!drive)
            throw RuntimeError(RuntimeError::PathNotFoundNumber, QStringLiteral("Path not found"));
        SetFolder(drive->root, BackupTarget(drive->folder));
        Status(QStringLiteral("Restore procedure is now ready, click OK to continue"));
    } catch (const RuntimeError &error) {
        if (error.Number() == RuntimeError::PathNotFoundNumber)
            MsgBox(QStringLiteral("This is not a valid Quillon backup!"), Box::Exclamation,
                   EditorTitle());
        else
            MsgBox(ErrorLines(error), Box::Stop, EditorTitle());
        Status(QStringLiteral("Select the drive and directory you wish to restore"));
    }
}

void frmBackupRestore::LoadBackup()
{
    lblDrive->setText(QStringLiteral("Select drive to use for backup"));
    lblDirectory->setText(QStringLiteral("Select directory to use for backup"));
    ListDrives();
    ChooseDrive(m_program.settings.BackupDir);
    if (ChosenDrive())
        Status(QStringLiteral("Select OK when backup drive is ready"));
    else
        Status(QStringLiteral("Select your backup drive, click OK when ready"));
}

// --- drive and folder ----------------------------------------------------------------------------

void frmBackupRestore::ListDrives()
{
    m_drives = MountedDrives();
    drvList->clear();
    for (const Drive &drive : m_drives) {
        drvList->addItem(drive.Text());
        drvList->setItemData(drvList->count() - 1, drive.root, Qt::ToolTipRole);
    }
    drvList->setCurrentIndex(-1);
    m_drive = -1;
}

const Drive *frmBackupRestore::ChosenDrive() const
{
    return m_drive < 0 ? nullptr : &m_drives[size_t(m_drive)];
}

void frmBackupRestore::ChooseDrive(const QString &name)
{
    const auto at = std::find_if(m_drives.begin(), m_drives.end(), [&](const Drive &drive) {
        return drive.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    if (at == m_drives.end())
        return;
    try {
        SetFolder(at->root, at->folder);
    } catch (const RuntimeError &) {
        return; // as if it were not there: none is chosen
    }
    m_drive = int(at - m_drives.begin());
    drvList->setCurrentIndex(m_drive);
}

void frmBackupRestore::drvList_Change()
{
    m_program.UserActed();
    if (m_isBusy) {
        drvList->setCurrentIndex(m_drive);
        return;
    }
    const Drive &drive = m_drives[size_t(drvList->currentIndex())];
    if (GoTo(drive.root, drive.folder))
        m_drive = drvList->currentIndex();
    else
        drvList->setCurrentIndex(m_drive);
}

void frmBackupRestore::dirList_Change(const QString &path)
{
    m_program.UserActed();
    if (const Drive *drive = ChosenDrive(); drive && !m_isBusy)
        GoTo(drive->root, path);
}

bool frmBackupRestore::GoTo(const QString &root, const QString &path)
{
    for (;;) {
        try {
            SetFolder(root, path);
            return true;
        } catch (const RuntimeError &error) {
            const Answer answer = MsgBox(
                ErrorLines(error) + QStringLiteral("\nCorrect problem and reply when completed"),
                Box::RetryCancel, EditorTitle());
            if (answer != Answer::Retry)
                return false;
        }
    }
}

void frmBackupRestore::SetFolder(const QString &root, const QString &path)
{
    dirList->SetPath(root, path);
    filList->clear();
    filList->addItems(QDir(path).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase));
}

void frmBackupRestore::ShowFolderAnew()
{
    try {
        SetFolder(dirList->Root(), dirList->Path());
    } catch (const RuntimeError &) {
        // A drive that has gone: what was chosen stays shown.
    }
}

// --- backup and restore --------------------------------------------------------------------------

void frmBackupRestore::cmdOK_Click()
{
    if (m_isBusy)
        return;
    const QScopedValueRollback busy(m_isBusy, true);
    m_program.settings.LastBackup = m_program.services.clock.Today();
    m_hasRun = true;
    if (!IsRestore())
        CompactDatabases(m_program); // what is copied is compact
    {
        const WaitCursor hourglass;
        const Drive *drive = ChosenDrive();
        if (!drive) {
            MsgBox(QStringLiteral("No backup drive has been selected!"), Box::Exclamation,
                   EditorTitle());
            return;
        }
        if (IsRestore()) {
            if (BackupSource(dirList->Path()).isEmpty()) {
                MsgBox(QStringLiteral("The path selected is not a valid backup directory for this "
                                      "application"),
                       Box::Exclamation, EditorTitle());
                return;
            }
            RunRestore();
        } else {
            RunBackup(*drive);
        }
        ShowFolderAnew();
    }
    cmdCancel->setText(QStringLiteral("&Close"));
}

void frmBackupRestore::RunBackup(const Drive &drive)
{
    try {
        const auto show = [this] { m_program.services.clock.Yield(); };
        if (BackUp(m_program.services, BackupTarget(dirList->Path()), show))
            m_program.settings.BackupDir = drive.name;
    } catch (const RuntimeError &error) {
        ShowFailure(error, QStringLiteral("Backup procedure was not completed!"));
    }
}

void frmBackupRestore::RunRestore()
{
    try {
        const auto show = [this] { m_program.services.clock.Yield(); };
        Restore(m_program.services, m_program.databases.accountLock, BackupSource(dirList->Path()),
                show);
    } catch (const RuntimeError &error) {
        ShowFailure(error, QStringLiteral("Restore procedure was not completed!"));
    }
}

void frmBackupRestore::ShowFailure(const RuntimeError &error, const QString &status)
{
    Status(status);
    MsgBox(ErrorLines(error), Box::Stop, EditorTitle());
}

// --- it goes -------------------------------------------------------------------------------------

bool frmBackupRestore::QueryUnload()
{
    return !m_isBusy;
}

void frmBackupRestore::OnUnload()
{
    if (m_isRefused) { // the account is open as it was
        m_program.entry.RebuildMode = false;
        m_program.run.BackupMode.clear();
        return;
    }
    const bool isExit = m_program.run.ExitInProgress;
    // An exit ends here, and would have kept the day of its reminder, for one.
    if (m_program.settings.BackupDir != m_backupDirBefore || m_hasRun || isExit)
        SaveSettings(m_program);
    if (isExit) {
        CloseDatabases(m_program.databases);
        m_program.services.lifetime.End();
    }
    hide(); // the sign-on of the account may come up
    OpenDatabases(m_program.databases, m_program.settings, m_program.account, m_program.services);
    m_program.accountRoutines->OpenAccount();
    EntryState &entry = m_program.entry;
    if (entry.RebuildMode && !m_program.run.SignOnCancelled) {
        entry.RebuildMode = false; // the user starts the wizard again
        m_program.screens.Show(QStringLiteral("frmTransactionUpdate"));
    }
    m_program.run.BackupMode.clear();
    if (m_program.account.LogoffEnabled == 1)
        m_program.tmrLogoff->SetEnabled(true);
    Status(QString());
}
