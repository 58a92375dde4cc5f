#include "driver/commands.h"
#include "driver/failure.h"
#include "driver/looks.h"
#include "driver/printing.h"
#include "shell/frm_mdi_main.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QWidget>

namespace
{

using Lines = QStringList;

/// Menu entries, toolbar keys and forms go by their name alone; a control has its form before it.
bool IsControl(const QString &name)
{
    return name.contains(QLatin1Char('.')) && !Session::IsCommand(name);
}

bool IsForm(const QString &name)
{
    return name.startsWith(QLatin1String("frm"));
}

Lines Show(Session &session, const QStringList &arguments)
{
    const QString &name = arguments[0];
    if (Session::IsCommand(name))
        return {session.CommandCaption(name)};
    return {Printing::TextOf(session.Control(name))};
}

Lines Enabled(Session &session, const QStringList &arguments)
{
    const QString &name = arguments[0];
    if (IsControl(name))
        return {Printing::YesNo(session.Control(name)->isEnabled())};
    if (IsForm(name))
        return {Printing::YesNo(session.Form(name)->isEnabled())};
    return {Printing::YesNo(session.IsCommandEnabled(name))};
}

Lines Visible(Session &session, const QStringList &arguments)
{
    const QString &name = arguments[0];
    if (IsControl(name))
        return {Printing::YesNo(session.Control(name)->isVisible())};
    if (IsForm(name))
        return {Printing::YesNo(session.IsLoaded(name) && session.Form(name)->isVisible())};
    return {Printing::YesNo(session.IsCommandVisible(name))};
}

Lines Checked(Session &session, const QStringList &arguments)
{
    return {Printing::YesNo(session.IsCommandChecked(arguments[0]))};
}

Lines Loaded(Session &session, const QStringList &arguments)
{
    return {Printing::YesNo(session.IsLoaded(arguments[0]))};
}

Lines Caption(Session &session, const QStringList &arguments)
{
    QWidget *form = session.Form(arguments[0]);
    // The title bar adds the caption of a maximized screen, which is not the main window's own.
    if (const auto *window = dynamic_cast<frmMDIMain *>(form))
        return {window->Caption()};
    return {form->windowTitle()};
}

Lines Tip(Session &session, const QStringList &arguments)
{
    return {session.Control(arguments[0])->toolTip()};
}

Lines Status(Session &session, const QStringList &arguments)
{
    const QStringList panels = session.StatusPanels();
    if (arguments.isEmpty())
        return panels;
    bool isNumber = false;
    const int panel = arguments[0].toInt(&isNumber);
    if (!isNumber || panel < 1 || panel > panels.size())
        throw ScriptWrong(QStringLiteral("the status bar has no panel \"%1\"").arg(arguments[0]));
    return {panels[panel - 1]};
}

Lines Colors(Session &session, const QStringList &arguments)
{
    return {Looks::Colors(session.Control(arguments[0]))};
}

Lines Font(Session &session, const QStringList &arguments)
{
    return {Looks::Font(session.Control(arguments[0]))};
}

Lines Geometry(Session &session, const QStringList &arguments)
{
    return {Looks::Geometry(session.Form(arguments[0]))};
}

Lines TabOrder(Session &session, const QStringList &arguments)
{
    return Looks::TabOrder(session.Form(arguments[0]));
}

Lines Clipboard(Session &, const QStringList &)
{
    return {Printing::CellText(QGuiApplication::clipboard()->text())};
}

Lines Boxes(Session &session, const QStringList &)
{
    return session.Dialogs().TakeBoxes();
}

Lines Pages(Session &session, const QStringList &)
{
    return session.TakePages();
}

Lines Prints(Session &session, const QStringList &)
{
    return session.TakePrints();
}

/// The value may be printed in several lines, which stand in it with line ends between.
void ExpectPrinted(Session &session, const QStringList &words, const QString &value)
{
    const ScriptCommand &kind = FindScriptCommand(words);
    if (!kind.prints)
        throw ScriptWrong(QStringLiteral("%1 prints nothing").arg(words.first()));
    const QString printed = kind.run(session, words.mid(1)).join(QLatin1Char('\n'));
    if (printed != value)
        throw Failed(QStringLiteral("%1 is \"%2\", expected \"%3\"")
                         .arg(words.join(QLatin1Char(' ')), printed, value));
}

Lines Expect(Session &session, const QStringList &arguments)
{
    const qsizetype count = arguments.size();
    if (arguments[0] == QLatin1String("box") && count == 2) {
        if (!session.Dialogs().MatchBox(arguments[1]))
            throw Failed(QStringLiteral("no box holds \"%1\"").arg(arguments[1]));
    } else if (arguments[0] == QLatin1String("nobox") && count == 1) {
        if (const std::optional<QString> box = session.Dialogs().UnmatchedBox())
            throw Failed(QStringLiteral("there was a box: %1").arg(*box));
    } else if (count >= 3 && arguments[count - 2] == QLatin1String("=")) {
        ExpectPrinted(session, arguments.mid(0, count - 2), arguments.last());
    } else {
        throw ScriptWrong(
            QStringLiteral("usage: expect WORDS… = \"value\", expect box \"part\", expect nobox"));
    }
    return {};
}

} // namespace

QList<ScriptCommand> PrintingCommands()
{
    return {
        {"show", "FORM.CONTROL", 1, 1, true, Show},
        {"enabled", "FORM.CONTROL|NAME", 1, 1, true, Enabled},
        {"visible", "FORM.CONTROL|NAME", 1, 1, true, Visible},
        {"checked", "NAME", 1, 1, true, Checked},
        {"loaded", "FORM", 1, 1, true, Loaded},
        {"caption", "FORM", 1, 1, true, Caption},
        {"tip", "FORM.CONTROL", 1, 1, true, Tip},
        {"status", "[N]", 0, 1, true, Status},
        {"colors", "FORM.CONTROL", 1, 1, true, Colors},
        {"font", "FORM.CONTROL", 1, 1, true, Font},
        {"geometry", "FORM", 1, 1, true, Geometry},
        {"taborder", "FORM", 1, 1, true, TabOrder},
        {"clipboard", "", 0, 0, true, Clipboard},
        {"boxes", "", 0, 0, true, Boxes},
        {"pages", "", 0, 0, true, Pages},
        {"prints", "", 0, 0, true, Prints},
        {"expect", "WORDS… = \"value\"", 1, -1, false, Expect},
    };
}
