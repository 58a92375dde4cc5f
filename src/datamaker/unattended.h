#pragma once

/// The services of a run without a user: questions are answered Yes, and whatever the program says
/// about a failure ends the run, so that no sample is delivered that somebody would have been
/// warned about.

#include "platform/dialogs.h"
#include "platform/lifetime.h"
#include "platform/status_line.h"

class UnattendedDialogs : public Dialogs
{
public:
    /// Throws RuntimeError with the text of a box with a stop or exclamation sign.
    Answer MsgBox(const QString &text, int buttonsValue, const QString &title) override;
    std::optional<QString> PickFile(const FileRequest &request) override;
    std::optional<QString> PickFolder(const QString &title, const QString &initial) override;
    std::optional<Rgb> PickColor(Rgb initial) override;
};

class SilentStatus : public StatusLine
{
public:
    void Post(const QString &) override {}
};

class UnattendedLifetime : public Lifetime
{
public:
    [[noreturn]] void End() override { throw ProgramEnded(); }
};
