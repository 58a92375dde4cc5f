#pragma once

/// Message boxes and common dialogs as the user's desktop shows them.

#include "platform/dialogs.h"

#include <QStringList>

class RealDialogs : public Dialogs
{
public:
    Answer MsgBox(const QString &text, int buttonsValue, const QString &title) override;
    std::optional<QString> PickFile(const FileRequest &request) override;
    std::optional<QString> PickFolder(const QString &title, const QString &initial) override;
    std::optional<Rgb> PickColor(Rgb initial) override;
};

/// "Tracker Databases (*.mdb)|*.mdb|All|*.*" as name filters: "Tracker Databases (*.mdb)", "All
/// (*.*)".
QStringList NameFilters(const QString &filter);
