#pragma once

/// The folders of a volume: those from its top down to the current one, and below it its subfolders.
///
///     /                     a click, or Enter, on a folder makes it the current one
///       media
///         STICK             the current one
///           Letters
///           Quillon Backup
///
/// The double click that many are used to does the same as a click. What code sets is not told.

#include <QListWidget>

#include <functional>

class FolderList : public QListWidget
{
public:
    explicit FolderList(QWidget *parent);

    /// Goes to a folder below `root`. Throws RuntimeError 76 when it is not there, 70 when it may not
    /// be read; the list then stays where it was.
    void SetPath(const QString &root, const QString &path);
    /// Empty until the first SetPath.
    const QString &Path() const { return m_path; }
    const QString &Root() const { return m_root; }

    /// The user wants to go to this folder.
    std::function<void(const QString &path)> OnChoose;

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void ChooseItem(const QListWidgetItem *item);
    void AddFolder(const QString &text, const QString &path, int depth, bool isOpen);

    QString m_root;
    QString m_path;
};
