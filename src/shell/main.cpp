/// quillon: the application on the user's desktop.

#include "platform/settings_store.h"
#include "platform/system_clock.h"
#include "platform/widgets/default_browser.h"
#include "platform/widgets/print_preview.h"
#include "platform/widgets/real_dialogs.h"
#include "shell/app_lifetime.h"
#include "shell/application.h"
#include "shell/browser_plugin.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char *argv[])
{
    PrepareForBrowserPlugin();
    QApplication desktop(argc, argv);
    QApplication::setApplicationName(ApplicationTitle());
    QApplication::setApplicationVersion(ProgramVersion().Dotted());
    // Between the splash and the main window no window is open; the exit sequence ends the program.
    QApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Keeps securities portfolios: trades, values and year-end figures."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(desktop);

    SystemClock clock;
    RealDialogs dialogs;
    ProcessLifetime lifetime;
    Application application(clock, dialogs, lifetime, SettingsStore::DefaultFileName(),
                            QApplication::applicationDirPath(), QLocale());
    application.OnEnded = [] { QApplication::quit(); };
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
