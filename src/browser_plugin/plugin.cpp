#include "browser_plugin/web_engine_view.h"

#include <QObject>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// Whether this user may make a sandbox. Where he may not, the engine would end the whole program.
bool CanMakeSandbox()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(unshare(CLONE_NEWUSER) == 0 ? 0 : 1);
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

/// Sees to it that the engine can start; false when it cannot.
bool PrepareSandbox()
{
    if (qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        return true; // the user's own choice
    if (geteuid() != 0)
        return CanMakeSandbox();
    // The sandbox does not work for root, and the engine does not start with it.
    return qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

} // namespace

class WebEnginePlugin : public QObject, public BrowserPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Quillon.BrowserPlugin/1")
    Q_INTERFACES(BrowserPlugin)

public:
    BrowserView *CreateView(QWidget *parent) override
    {
        return PrepareSandbox() ? new WebEngineView(parent) : nullptr;
    }
};

#include "plugin.moc"
