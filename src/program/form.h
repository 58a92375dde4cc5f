#pragma once

/// A screen of the program: one class with its controls, whose objectNames are the controls' names.
///
///     class frmPassword : public Form
///     {
///     public:
///         explicit frmPassword(Program &program);   builds the controls, reads nothing
///         void Load() override;                     when it is loaded, before it is shown
///         bool QueryUnload() override;              false: stay
///         void OnUnload() override;                 when it goes
///     };
///
/// A screen is created, loaded, shown and unloaded by Screens alone. Its event handlers are
/// connected with On(), which keeps errors from travelling through the event loop: an error that no
/// handler of the action has shown is shown with its number and description, and the end of the
/// program passes.

#include "program/program.h"

#include <QAction>
#include <QPushButton>
#include <QWidget>

#include <functional>

/// Where a screen stands: a child of the main window's area, a dialog, a small window that stays on
/// top of all, or nowhere (the price cycle).
enum class Placement
{
    Child,
    Dialog,
    OnTop,
    Hidden
};

/// Runs a handler of an event; see Form. Returns false when the program has ended, in it or before it,
/// which it then does not run.
bool RunGuarded(Program &program, const std::function<void()> &handler);

class Form : public QWidget
{
public:
    Form(Program &program, const QString &name, const QString &caption, Placement placement);

    virtual void Load() {}
    /// The screen was brought to the front, or shown again while it was loaded.
    virtual void Activate() {}
    virtual bool QueryUnload() { return true; }
    virtual void OnUnload() {}
    /// F1: what the screen's Help button opens; a screen without one names its topic.
    virtual void ShowHelp();

    Placement Where() const { return m_placement; }
    QString Caption() const { return windowTitle(); }

    /// Connects a signal to a handler, guarded.
    template <class Sender, class Signal, class Handler>
    void On(Sender *sender, Signal signal, Handler handler)
    {
        connect(sender, signal, this, [this, handler](auto &&...arguments) {
            if constexpr (std::is_invocable_v<Handler, decltype(arguments)...>)
                Guarded([&] { handler(arguments...); });
            else
                Guarded([&] { handler(); });
        });
    }
    void OnClick(QAbstractButton *button, std::function<void()> handler);
    /// A push button that takes the focus by Tab alone: a click does not leave the field in use, whose
    /// checks would keep the user from Close or Help. The handler moves the focus where it has to.
    QPushButton *MakeButton(const char *name, const char *caption);
    void Guarded(const std::function<void()> &handler) { RunGuarded(m_program, handler); }
    /// Guarded, for an action of the user: the idle logoff counts anew.
    void ByUser(const std::function<void()> &handler);

protected:
    /// Asks Screens to unload this screen, as its Close button does.
    void UnloadMe();
    void Status(const QString &text) { m_program.services.status.Post(text); }
    Answer MsgBox(const QString &text, int buttonsValue, const QString &title)
    {
        return m_program.services.dialogs.MsgBox(text, buttonsValue, title);
    }
    /// The size of so many lines of so many characters in the form's font.
    QSize TextSize(int characters, int lines) const;
    /// A sizeHint in tenths of the main window's inner size; the layout's own while that is unknown.
    QSize TenthsOfMainWindow(int width, int height) const;
    /// The form's caption and " Editor".
    QString CaptionEditor() const { return EditorTitle(Caption()); }

    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    Program &m_program;

private:
    Placement m_placement;
};
