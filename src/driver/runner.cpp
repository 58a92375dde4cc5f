#include "driver/runner.h"

#include "driver/commands.h"
#include "driver/failure.h"
#include "platform/services.h"

#include <QAbstractEventDispatcher>
#include <QApplication>

#include <cstdio>

namespace
{

const QEvent::Type nextCommand = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

/// A command, or the events before it, on the stack.
class Runner::OpenCommand
{
public:
    explicit OpenCommand(Runner &runner) : m_runner(runner)
    {
        m_runner.m_modalAtStart.append(QApplication::activeModalWidget());
    }
    ~OpenCommand() { m_runner.m_modalAtStart.removeLast(); }
    OpenCommand(const OpenCommand &) = delete;
    OpenCommand &operator=(const OpenCommand &) = delete;

private:
    Runner &m_runner;
};

Runner::Runner(Script &script, Session &session) : m_script(script), m_session(session)
{
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &Runner::AskForNextCommand);
}

int Runner::Run()
{
    return QCoreApplication::exec();
}

void Runner::AskForNextCommand()
{
    if (m_asked || m_finished || !MayGoOn())
        return;
    m_asked = true;
    m_askedInWait = m_session.Clock().Waiting();
    QCoreApplication::postEvent(this, new QEvent(nextCommand), Qt::LowEventPriority);
}

bool Runner::event(QEvent *event)
{
    if (event->type() != nextCommand)
        return QObject::event(event);
    m_asked = false;
    // Some event before this one may have begun a wait, which is where it has arrived then.
    const bool waitHasBegun = m_session.Clock().Waiting() && !m_askedInWait;
    if (!m_finished && !waitHasBegun && MayGoOn())
        DoNextCommand();
    return true;
}

bool Runner::MayGoOn() const
{
    if (m_modalAtStart.isEmpty())
        return true;
    const QWidget *modal = QApplication::activeModalWidget();
    return modal && modal != m_modalAtStart.last();
}

void Runner::DoNextCommand()
{
    std::optional<ScriptLine> command;
    // Others may have run meanwhile, inside a modal form.
    const auto line = [&] { return command ? command->line : m_script.Line(); };
    try {
        const OpenCommand open(*this);
        // Timers that are due at once are no posted events: let them have their turn as well.
        QCoreApplication::processEvents();
        m_session.ForgetEndedProgram(m_modalAtStart.size() == 1);

        command = m_script.Next();
        if (command)
            RunCommand(m_session, *command);
        else
            m_finished = true;
    } catch (const Failure &failure) {
        ReportFailure(line(), failure.Reason());
        Finish(failure.Status());
        return;
    } catch (const ProgramEnded &) {
        // The command ended the program; the script goes on without it.
    } catch (const RuntimeError &error) {
        ReportFailure(line(), ErrorLines(error));
        Finish(1);
        return;
    }
    if (m_finished)
        Finish(0);
}

void Runner::Finish(int status)
{
    m_finished = true;
    const bool nothingIsOpen = m_modalAtStart.isEmpty();
    m_session.ForgetEndedProgram(nothingIsOpen);
    if (!nothingIsOpen || m_session.Running())
        m_session.Leave(status);
    QCoreApplication::exit(status);
}
