#include "driver/commands.h"
#include "driver/failure.h"
#include "driver/printing.h"
#include "driver/widget_actions.h"

#include <QAbstractEventDispatcher>

#include <exception>

namespace
{

using Lines = QStringList;

Lines Click(Session &session, const QStringList &arguments)
{
    WidgetActions::Click(session.Control(arguments[0]));
    return {};
}

Lines DoubleClick(Session &session, const QStringList &arguments)
{
    WidgetActions::DoubleClick(session.Control(arguments[0]));
    return {};
}

Lines Type(Session &session, const QStringList &arguments)
{
    WidgetActions::Type(session.Control(arguments[0]), arguments[1]);
    return {};
}

Lines Focus(Session &session, const QStringList &arguments)
{
    WidgetActions::Focus(session.Control(arguments[0]));
    return {};
}

Lines Tab(Session &session, const QStringList &)
{
    session.RequireProgram();
    WidgetActions::PressKey(QStringLiteral("Tab"));
    return {};
}

Lines Key(Session &session, const QStringList &arguments)
{
    session.RequireProgram();
    WidgetActions::PressKey(arguments[0]);
    return {};
}

Lines Choose(Session &session, const QStringList &arguments)
{
    WidgetActions::Choose(session.Control(arguments[0]), arguments[1]);
    return {};
}

Lines PickDate(Session &session, const QStringList &arguments)
{
    const QDate date = QDate::fromString(arguments[1], Qt::ISODate);
    if (!date.isValid())
        throw ScriptWrong(QStringLiteral("\"%1\" is no date like 2026-01-31").arg(arguments[1]));
    WidgetActions::PickDate(session.Control(arguments[0]), date);
    return {};
}

Lines Close(Session &session, const QStringList &arguments)
{
    session.Form(arguments[0])->close();
    return {};
}

void SavePicture(const QPixmap &picture, const QString &file)
{
    if (!picture.save(file, "PNG"))
        throw Failed(QStringLiteral("%1 cannot be written").arg(file));
}

Lines Shot(Session &session, const QStringList &arguments)
{
    SavePicture(session.Form(arguments[0])->grab(), arguments[1]);
    return {};
}

/// While a transfer waits no command can be carried out: the picture is taken when the event loop
/// of the wait has nothing to do.
Lines ShotWhile(Session &session, const QStringList &arguments)
{
    const QString form = arguments[0].section(QLatin1Char('.'), 0, 0);
    const QStringList words = arguments.mid(3);
    const ScriptCommand &command = FindScriptCommand(words);
    QPixmap picture;
    std::exception_ptr failure; // none may pass through the event loop
    const auto look = [&] {
        try {
            if (picture.isNull() && !failure && session.IsLoaded(form) &&
                Printing::TextOf(session.Control(arguments[0])) == arguments[1])
                picture = session.Form(form)->grab();
        } catch (const Failure &) {
            failure = std::current_exception();
        }
    };
    Lines printed;
    {
        const QObject whileItRuns; // ends the connection
        QObject::connect(QAbstractEventDispatcher::instance(),
                         &QAbstractEventDispatcher::aboutToBlock, &whileItRuns, look);
        printed = command.run(session, words.mid(1));
    }
    if (failure)
        std::rethrow_exception(failure);
    if (picture.isNull())
        throw Failed(
            QStringLiteral("%1 did not show \"%2\" meanwhile").arg(arguments[0], arguments[1]));
    SavePicture(picture, arguments[2]);
    return printed;
}

} // namespace

QList<ScriptCommand> ControlCommands()
{
    return {
        {"click", "FORM.CONTROL", 1, 1, false, Click},
        {"dblclick", "FORM.CONTROL", 1, 1, false, DoubleClick},
        {"type", "FORM.CONTROL \"text\"", 2, 2, false, Type},
        {"focus", "FORM.CONTROL", 1, 1, false, Focus},
        {"tab", "", 0, 0, false, Tab},
        {"key", "\"Alt+Q\"", 1, 1, false, Key},
        {"choose", "FORM.CONTROL \"item\"", 2, 2, false, Choose},
        {"date", "FORM.CONTROL 2026-01-31", 2, 2, false, PickDate},
        {"close", "FORM", 1, 1, false, Close},
        {"shot", "FORM FILE.png", 2, 2, false, Shot},
        {"shotwhile", "FORM.CONTROL \"text\" FILE.png COMMAND...", 4, -1, false, ShotWhile},
    };
}
