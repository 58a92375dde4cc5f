/// quillon: the application on the user's desktop.

#include "platform/settings_store.h"
#include "platform/system_clock.h"
#include "platform/widgets/app_icon.h"
#include "platform/widgets/default_browser.h"
#include "platform/widgets/print_preview.h"
#include "platform/widgets/real_dialogs.h"
#include "shell/app_lifetime.h"
#include "shell/application.h"
#include "shell/browser_plugin.h"
#include "shell/command_line.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <cstdio>

namespace
{

QStringList Arguments(int count, char **values)
{
    QStringList arguments;
    for (int index = 0; index < count; ++index)
        arguments << QFile::decodeName(values[index]);
    return arguments;
}

/// A relative folder would be another one wherever the program is started: no desktop counts it.
void IgnoreRelativeFolders()
{
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        if (!QDir::isAbsolutePath(qEnvironmentVariable(name)))
            qunsetenv(name);
}

/// The folder this run works on, complete; nothing when it could not be made, which was told.
std::optional<ApplicationFolder> PrepareFolder(Dialogs &dialogs)
{
    const ApplicationFolder folder = ApplicationFolder::Find(
        QApplication::applicationDirPath(), QStringLiteral(QUILLON_SHARE_PATH),
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    try {
        folder.Complete();
        return folder;
    } catch (const RuntimeError &error) {
        dialogs.MsgBox(QStringLiteral("Quillon keeps its files in the folder\n%1\n"
                                      "and could not prepare it.\n%2")
                           .arg(folder.appPath, ErrorLines(error)),
                       Box::Stop, EditorTitle());
        return std::nullopt;
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const CommandLine commandLine =
        CommandLine::Read(Arguments(argc, argv), ProgramVersion().Dotted());
    if (commandLine.exitStatus) {
        std::fputs(qPrintable(commandLine.output), *commandLine.exitStatus == 0 ? stdout : stderr);
        return *commandLine.exitStatus;
    }

    IgnoreRelativeFolders();
    PrepareForBrowserPlugin();
    QApplication desktop(argc, argv);
    QApplication::setApplicationName(ApplicationTitle());
    QApplication::setApplicationVersion(ProgramVersion().Dotted());
    QApplication::setDesktopFileName(
        QStringLiteral("quillon")); // by which a desktop knows its icon
    // Between the splash and the main window no window is open; the exit sequence ends the program.
    QApplication::setQuitOnLastWindowClosed(false);

    SystemClock clock;
    RealDialogs dialogs;
    ProcessLifetime lifetime;
    const std::optional<ApplicationFolder> folder = PrepareFolder(dialogs);
    if (!folder)
        return EXIT_FAILURE;
    QApplication::setWindowIcon(AppIcon(folder->programPath, QStringLiteral("quillon")));
    Application application(clock, dialogs, lifetime, SettingsStore::DefaultFileName(), *folder,
                            QLocale());
    application.OnEnded = [] { QApplication::quit(); };
    application.State().run.AccountToOpen = commandLine.account;
    application.State().services.openInBrowser = OpenInDefaultBrowser;
    application.State().services.openDocument = OpenInDefaultProgram;
    application.State().services.printPicture = PreviewPicture;
    application.State().CreateBrowserView = [](QWidget *parent) {
        return CreatePluginView(QApplication::applicationDirPath(), parent);
    };
    if (!application.Launch())
        return 0;
    return QApplication::exec();
}
