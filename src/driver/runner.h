#pragma once

/// Carries out a script while the program's event loops run, as a person works: a command begins
/// when the program has nothing left to do.
///
/// The event dispatcher tells when a loop is about to sleep; that is the sign for the next command.
/// A handler that shows a modal form has not come back then, but the form's own loop sleeps: the
/// script goes on inside it, with the command that opened the form still on the stack. A wait by
/// the clock never sleeps, and a loop that sleeps without a new modal form (a transfer that waits
/// for its page) is not for the script: there it holds still until the command that led to it is
/// over.

#include "driver/script.h"
#include "driver/session.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

class Runner : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive the runner.
    Runner(Script &script, Session &session);

    /// Runs the script to its end, or to its first failure, whose reason goes to standard error
    /// with the line's number. Gives the exit status, unless the process ends before.
    int Run();

protected:
    bool event(QEvent *event) override;

private:
    class OpenCommand;

    void AskForNextCommand();
    bool MayGoOn() const;
    void DoNextCommand();
    void Finish(int status);

    Script &m_script;
    Session &m_session;
    bool m_asked = false;       ///< the event for the next command is on its way
    bool m_askedInWait = false; ///< a wait was on the stack when it was sent
    bool m_finished = false;
    /// The modal form that was up when each of the commands on the stack began, or nothing.
    QList<QPointer<QWidget>> m_modalAtStart;
};
