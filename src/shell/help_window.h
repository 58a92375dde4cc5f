#pragma once

/// The help: a window of its own that shows the topics in the application folder's help folder.

#include <QString>
#include <QTextBrowser>

class HelpWindow : public QTextBrowser
{
public:
    explicit HelpWindow(const QString &folder);
    /// False when there is no such topic; the window then stays as it is.
    bool ShowTopic(const QString &topic);

private:
    QString m_folder;
};
