#pragma once

/// Backup of the application folder to a drive and folder, and the restore from there (store/backup.h).
/// RunState::BackupMode tells which; "Restore" is the one, anything else the other.
///
/// All screens and databases are closed while it is open, so that it keeps the main window out of
/// reach, though whoever shows it goes on at once. When it goes it opens the account again; when the
/// program is being left it ends it.
///
/// The drives are the mounted volumes (platform/drives.h). The one used last is chosen when the screen
/// comes up: "c:", the home folder, when there was none before. A drive that is not there any more
/// leaves none chosen.

#include "platform/drives.h"
#include "program/form.h"

class FolderList;
class QComboBox;
class QLabel;
class QListWidget;

class frmBackupRestore : public Form
{
public:
    explicit frmBackupRestore(Program &program);
    void Load() override;
    bool QueryUnload() override; ///< not while files are copied
    void OnUnload() override;

private:
    void BuildControls();
    void PlaceControls();
    void LoadRestore();
    void LoadBackup();
    bool IsRestore() const;

    void ListDrives();
    /// The drive that is chosen, or nothing.
    const Drive *ChosenDrive() const;
    void ChooseDrive(const QString &name);
    void drvList_Change();
    void dirList_Change(const QString &path);
    /// Goes to a folder, again and again as long as it fails and the user wants to try. True: there.
    bool GoTo(const QString &root, const QString &path);
    void SetFolder(const QString &root, const QString &path);
    /// The backup itself may have come to it.
    void ShowFolderAnew();

    void cmdOK_Click();
    void RunBackup(const Drive &drive);
    void RunRestore();
    void ShowFailure(const RuntimeError &error, const QString &status);

    QComboBox *drvList;
    FolderList *dirList;
    QListWidget *filList;
    QLabel *lblDrive;
    QLabel *lblDirectory;
    QPushButton *cmdOK;
    QPushButton *cmdCancel;
    QPushButton *cmdHelp;
    std::vector<Drive> m_drives;
    int m_drive = -1; ///< the row chosen last
    QString m_backupDirBefore;
    bool m_isRefused = false; ///< the account could not be closed
    bool m_isBusy = false;
    bool m_hasRun = false; ///< OK was pressed: the day of the backup has moved
};
