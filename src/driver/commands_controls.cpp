#include "driver/commands.h"
#include "driver/failure.h"
#include "driver/widget_actions.h"

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

Lines Shot(Session &session, const QStringList &arguments)
{
    if (!session.Form(arguments[0])->grab().save(arguments[1], "PNG"))
        throw Failed(QStringLiteral("%1 cannot be written").arg(arguments[1]));
    return {};
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
    };
}
