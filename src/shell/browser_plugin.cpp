#include "shell/browser_plugin.h"

#include "program/browser_view.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPluginLoader>

namespace
{

QString PluginFile(const QString &appPath)
{
    return appPath + QStringLiteral("/plugins/libquillon_browser.so");
}

} // namespace

void PrepareForBrowserPlugin()
{
    const QString folder = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
    if (!QFileInfo::exists(PluginFile(folder)))
        return;
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QCoreApplication::setAttribute(
        Qt::AA_DisableShaderDiskCache); // nothing of it in the home folder
}

BrowserView *CreatePluginView(const QString &appPath, QWidget *parent)
{
    if (!QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts))
        return nullptr;
    // The loader may go: what it has loaded stays until the end of the process.
    QPluginLoader loader(PluginFile(appPath));
    auto *plugin = qobject_cast<BrowserPlugin *>(loader.instance());
    return plugin ? plugin->CreateView(parent) : nullptr;
}
