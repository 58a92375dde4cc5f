#include "program/external_browser.h"

#include <QUrl>

namespace
{

/// Nothing else: an address is data, and must not start a program or open a file.
bool IsWebPage(const QString &address)
{
    const QUrl url(address);
    const QString scheme = url.scheme();
    return (scheme == QLatin1String("http") || scheme == QLatin1String("https")) &&
           !url.host().isEmpty();
}

} // namespace

bool TryInternetExplorer(Program &program, const QString &address)
{
    const Services &services = program.services;
    services.status.Post(QStringLiteral("Navigating to website..."));
    program.run.BrowserAlive =
        IsWebPage(address) && services.openInBrowser && services.openInBrowser(address);
    if (!program.run.BrowserAlive)
        services.status.Post(QString());
    return program.run.BrowserAlive;
}

void OpenInternetExplorer(Program &program, const QString &address)
{
    if (TryInternetExplorer(program, address))
        return;
    program.services.dialogs.MsgBox(
        QStringLiteral("This page could not be opened in your web browser:\n%1\n\n"
                       "You can type the address into the browser yourself.")
            .arg(address),
        Box::Ok + Box::Exclamation, EditorTitle());
}
