#pragma once

/// The main window's status bar, of five panels:
///
///     1  what the program is doing      "Sort completed"
///     2  the idle logoff                "Logoff in: 12 minutes", "Logoff disabled"
///     3  the last price update          "Last update: 3/2/2026"
///     4  the state of the connection, as a picture
///     5  the price update               "Update in: 3 minutes", "Price update disabled"

#include "program/program.h"

#include <QHash>
#include <QIcon>
#include <QStatusBar>

#include <array>

class QLabel;

class StatusPanels : public QStatusBar
{
public:
    StatusPanels();

    /// Brings every panel up to date.
    void Update(const Program &program, const QString &gStatusMessage);

    /// Of panel 1 to 5; panel 4 gives the file name of its picture.
    QString PanelText(int panel) const;
    bool PanelEnabled(int panel) const;

protected:
    void changeEvent(QEvent *event) override;

private:
    void ApplyColors();
    void SetPanel(int panel, const QString &text, bool enabled);
    void ShowConnectionState(int state, const QString &appPath);

    std::array<QLabel *, 5> m_panels = {};
    QString m_pictureFile;
    /// By file. Each is read once: a new one for every request would fill the cache of drawings.
    QHash<QString, QIcon> m_pictures;
};
