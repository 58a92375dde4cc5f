#include "shell/commands.h"

#include "platform/command_groups.h"
#include "program/browser_screen.h"
#include "program/command_target.h"
#include "program/compact_databases.h"
#include "program/external_browser.h"
#include "program/price_cycle_pause.h"
#include "program/print_screen.h"
#include "program/rebuild_wizard.h"
#include "shell/account_files.h"
#include "shell/command_table.h"
#include "shell/screen_host.h"

#include <QScopedValueRollback>

namespace
{

/// The commands that act on the selected security, with the message when there is none.
QString SelectionMessage(const QString &name)
{
    if (name == QLatin1String("popDTEdit") || name == QLatin1String("popDTChartIntraday") ||
        name == QLatin1String("popDTChartMapOfMarket"))
        return QStringLiteral("Please select the security you want to update!");
    if (name == QLatin1String("mnuChartSelectedSecPL") ||
        name == QLatin1String("mnuChartSelectedSecPerf"))
        return QStringLiteral("No security has been selected, select one now to chart.");
    if (name == QLatin1String("mnuEXDBSelectedSec"))
        return QStringLiteral("No security has been selected, select one now to print.");
    return QString();
}

/// "frmTransactionUpdate" in words: "Transaction Update".
QString WordsOf(const QString &form)
{
    QString words;
    for (const QChar character : form.mid(3)) {
        if (character.isUpper() && !words.isEmpty())
            words += QLatin1Char(' ');
        words += character;
    }
    return words;
}

/// The screen that a command opens; a button or popup entry opens that of the entry it stands for.
QString ScreenOf(const QString &name)
{
    const Command *command = FindCommand(name);
    while (command && command->verb == CommandVerb::Forward)
        command = FindCommand(command->Target());
    return command ? command->Target() : QString();
}

} // namespace

Commands::Commands(Program &program, QMainWindow &window, ScreenHost &host,
                   AccountFiles &accountFiles, std::function<void()> exit)
    : m_program(program), m_window(window), m_host(host), m_accountFiles(accountFiles),
      m_exit(std::move(exit))
{
    FillOwn();
}

void Commands::FillOwn()
{
    const auto own = [this](const char *name, std::function<void()> routine) {
        m_own.insert(QString::fromUtf8(name), std::move(routine));
    };
    own("mnuFLNew", [this] { m_accountFiles.mnuFLNew_Click(); });
    own("mnuFLSaveAs", [this] { m_accountFiles.mnuFLSaveAs_Click(); });
    own("mnuFLOpenExisting", [this] { m_accountFiles.mnuFLOpenExisting_Click(); });
    own("mnuFLSCScreen", [this] { PrintScreen(CaptureScreen); });
    own("mnuFLSCForm", [this] { PrintScreen(CaptureForm); });
    own("mnuFLSCClient", [this] { PrintScreen(CaptureClient); });
    own("mnuFLSCActive", [this] { PrintActiveWindow(m_program, m_window); });
    own("mnuFLBackup", [this] { BackupOrRestore(QStringLiteral("Backup")); });
    own("mnuFLRestore", [this] { BackupOrRestore(QStringLiteral("Restore")); });
    own("mnuFLCompactDBA", [this] {
        m_program.run.BackupMode.clear();
        CompactDatabases(m_program);
    });
    own("mnuFLExit", [this] { m_exit(); });
    own("mnuHelpTopics", [this] { m_host.ShowHelp(QStringLiteral("AboutQuillon.htm")); });
    own("popDTViewHistoricalPrice", [this] {
        m_program.run.OneSymbolOnly = true;
        ToggleScreen(QStringLiteral("mnuVWHistoricalPriceList"),
                     QStringLiteral("frmHistoricalPriceList"));
    });
    own("popDTChartIntraday", [this] {
        ShowWebPage(QStringLiteral("popDTChartIntraday"), BuildIntradayChartAddress(m_program));
    });
    own("popDTChartMapOfMarket", [this] {
        ShowWebPage(QStringLiteral("popDTChartMapOfMarket"), BuildMapOfMarketAddress(m_program));
    });
    own("Connect", [this] { Connect_Click(); });
    own("UndoLast", [this] { UndoLast_Click(); });
    own("Wizard", [this] { StartRebuildFromHistory(m_program); });
    own("SplitScreen", [this] { SplitScreen_Click(); });
}

void Commands::Run(const QString &name)
{
    m_program.UserActed();
    const Command *command = FindCommand(name);
    if (!command)
        throw RuntimeError(RuntimeError::InvalidArgumentNumber,
                           QStringLiteral("There is no command ") + name);
    const QScopedValueRollback chosen(m_chosen, name);
    Carry(*command);
}

void Commands::Carry(const Command &command)
{
    const QString name = command.Name();
    const QString target = command.Target();
    if (const QString message = SelectionMessage(name);
        !message.isEmpty() && !SymbolSelected(message))
        return;
    switch (command.verb) {
    case CommandVerb::Own:
        RunOwn(name);
        return;
    case CommandVerb::Toggle:
        if (name == QLatin1String("mnuVWHistoricalPriceList"))
            m_program.run.OneSymbolOnly = false;
        ToggleScreen(name, target);
        return;
    case CommandVerb::ModalScreen:
        m_host.ShowModal(target);
        return;
    case CommandVerb::Report:
        ShowReportDialog(name, target);
        return;
    case CommandVerb::Chart:
        ShowChart(name);
        return;
    case CommandVerb::Link:
        OpenLink(name);
        return;
    case CommandVerb::Arrange:
        ArrangeScreens(name, target.toInt());
        return;
    case CommandVerb::ToScreen:
        RunOnScreen(name, target);
        return;
    case CommandVerb::Forward:
        Carry(*FindCommand(target));
        return;
    case CommandVerb::None:
        return; // a menu opens by itself
    }
}

void Commands::RunOwn(const QString &name)
{
    const auto routine = m_own.constFind(name);
    if (routine == m_own.constEnd())
        PostNotBuilt();
    else
        (*routine)();
}

bool Commands::SymbolSelected(const QString &message)
{
    if (!m_program.selection.CurrentSymbol.trimmed().isEmpty()) // a cash row has a blank
        return true;
    m_program.services.dialogs.MsgBox(message, Box::Exclamation,
                                      QStringLiteral("Application Editor"));
    return false;
}

void Commands::PostNotBuilt(const QString &form)
{
    // A start-up screen comes up in the course of another command, which is built.
    const bool isChosen = !m_chosen.isEmpty() && (form.isEmpty() || form == ScreenOf(m_chosen));
    const QString what =
        isChosen ? PlainCaption(m_program.services.commands.Caption(m_chosen)) : WordsOf(form);
    m_program.services.status.Post(what + QStringLiteral(" is not built yet"));
}

void Commands::ToggleScreen(const QString &name, const QString &form)
{
    m_host.Show(form);
    // The mark follows the screen; it may have closed itself while it loaded.
    m_program.services.commands.SetChecked(name, m_host.Loaded(form));
}

void Commands::ShowReportDialog(const QString &name, const QString &form)
{
    if (!m_host.Has(form)) {
        PostNotBuilt();
        return;
    }
    CommandStates &states = m_program.services.commands;
    UncheckExcelMenuOptions(states);
    states.SetChecked(name, true);
    m_host.ShowModal(form);
}

void Commands::ShowChart(const QString &name)
{
    const QString form = QStringLiteral("frmChartScreen");
    if (!m_host.Has(form)) {
        PostNotBuilt();
        return;
    }
    m_host.Unload(form); // which clears the mark of the chart shown so far
    m_program.services.commands.SetChecked(name, true);
    m_host.Show(form);
}

void Commands::OpenLink(const QString &name)
{
    const QString address =
        ResolveAddress(m_program.webAddresses.Link(name), m_program.practiceServer);
    if (address.isEmpty()) {
        PostNoAddress();
        return;
    }
    CommandStates &states = m_program.services.commands;
    if (name.startsWith(QLatin1String("mnuInt"))) { // not the one in the Help menu
        UncheckInternetMenuOptions(states);
        states.SetChecked(name, true);
    }
    m_program.WebAddress = address;
    OpenInternetExplorer(m_program, address);
}

void Commands::ShowWebPage(const QString &name, const QString &address)
{
    if (address.isEmpty()) {
        PostNoAddress();
        return;
    }
    CommandStates &states = m_program.services.commands;
    UncheckPopMenuOptions(states);
    states.SetChecked(name, true);
    m_program.WebAddress = address;
    NavigateBrowserScreen(m_program, address);
}

void Commands::PostNoAddress()
{
    m_program.services.status.Post(
        QStringLiteral("No web address is set for %1")
            .arg(PlainCaption(m_program.services.commands.Caption(m_chosen))));
}

void Commands::ArrangeScreens(const QString &name, int arrangement)
{
    CommandStates &states = m_program.services.commands;
    UncheckWinMenuOptions(states);
    states.SetChecked(name, true);
    m_host.Arrange(arrangement);
}

void Commands::RunOnScreen(const QString &name, const QString &form)
{
    auto *target = dynamic_cast<CommandTarget *>(m_host.Find(form));
    if (!target || !target->RunCommand(name))
        PostNotBuilt();
}

void Commands::PrintScreen(QImage (*capture)(QMainWindow &))
{
    LetMenuGo(m_program);
    PrintPicture(m_program, capture(m_window));
}

void Commands::BackupOrRestore(const QString &mode)
{
    const QString form = QStringLiteral("frmBackupRestore");
    if (m_host.Has(form))
        m_program.run.BackupMode = mode;
    m_host.Show(form);
}

void Commands::Connect_Click()
{
    if (m_program.priceUpdate.PriceUpdateActive)
        SwitchPricesOff(m_program);
    else if (!m_host.Load(QStringLiteral("frmInternetTran")))
        PostNotBuilt();
}

void Commands::SplitScreen_Click()
{
    const Form *active = m_host.ActiveChild();
    const QString caption = active ? active->Caption() : QString();
    // "History" first, so that a caption with two of the words goes to the history list.
    if (caption.contains(QLatin1String("History")))
        RunOnScreen(QStringLiteral("popHLSplitMode"), QStringLiteral("frmHistoryList"));
    else if (caption.contains(QLatin1String("Historical")))
        RunOnScreen(QStringLiteral("popHPLSplitMode"), QStringLiteral("frmHistoricalPriceList"));
    else if (caption.contains(QLatin1String("Tracker")))
        RunOnScreen(QStringLiteral("popDTSplitMode"), QStringLiteral("frmDailyTracker"));
}

void Commands::UndoLast_Click()
{
    RunOnScreen(QStringLiteral("popDTUndoLast"), QStringLiteral("frmDailyTracker"));
}
