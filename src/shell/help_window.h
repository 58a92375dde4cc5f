#pragma once

/// The help: a window of its own that shows the topics in the application folder's help folder,
/// with their contents and a search at the left.
///
/// Keys: Alt+Left, Alt+Right and Alt+Home go back, forward and to the start page; Ctrl+F goes to
/// the search; Escape closes. Nothing is kept from one run of the program to the next.

#include "shell/help_index.h"

#include <QWidget>

class HelpPage;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;
class QUrl;

class HelpWindow : public QWidget
{
public:
    explicit HelpWindow(const QString &folder);
    /// Shows a topic without marks of an earlier search. False when there is no such topic; the
    /// window then stays as it is.
    bool ShowTopic(const QString &topic);

protected:
    void changeEvent(QEvent *event) override;

private:
    void BelongToTheModalWindow();
    void BuildControls();
    void PlaceControls();
    void ConnectControls();
    QListWidget *MakeTopicList(const char *name, const QString &accessibleName);
    QPushButton *MakeButton(const char *name, const QString &caption, const QKeySequence &key);

    void ShowLink(const QString &link);
    void ShowFirstMark();
    void MarkTopic(const QUrl &source);
    void MarkWords();
    void Search();

    QString m_folder;
    HelpIndex m_index;
    QPushButton *cmdBack = nullptr;
    QPushButton *cmdForward = nullptr;
    QPushButton *cmdHome = nullptr;
    QTabWidget *tabHelp = nullptr;
    QListWidget *lstHelpContents = nullptr;
    QLineEdit *txtHelpSearch = nullptr;
    QLabel *lblHelpFound = nullptr;
    QListWidget *lstHelpFound = nullptr;
    HelpPage *m_page = nullptr;
};
