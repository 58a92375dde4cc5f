#include "shell/command_line.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace
{

const QString Usage = QStringLiteral(
    "Usage: quillon [options] [account]\n"
    "Keeps securities portfolios: trades, values and year-end figures.\n"
    "\n"
    "Options:\n"
    "  -h, --help     Displays this help.\n"
    "  -v, --version  Displays version information.\n"
    "\n"
    "Arguments:\n"
    "  account        An account file to open, in place of the one of the last run.\n");

/// The options that the application object takes for itself, before anybody else sees them.
void AddDesktopOptions(QCommandLineParser &parser)
{
    for (const char *name : {"platform", "platformpluginpath", "platformtheme", "plugin",
                             "qwindowgeometry", "geometry", "qwindowicon", "icon", "qwindowtitle",
                             "title", "session", "display", "style", "stylesheet"})
        parser.addOption({QString::fromLatin1(name), QString(), QStringLiteral("value")});
    for (const char *name : {"reverse", "widgetcount"})
        parser.addOption(QCommandLineOption(QString::fromLatin1(name)));
}

CommandLine Refused(const QString &reason)
{
    return {{}, 2, QStringLiteral("quillon: %1\nTry \"quillon --help\".\n").arg(reason)};
}

} // namespace

CommandLine CommandLine::Read(const QStringList &arguments, const QString &version)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(
        QCommandLineParser::ParseAsLongOptions); // "-style", not -s -t
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption versions(QStringList{QStringLiteral("v"), QStringLiteral("version")});
    parser.addOptions({help, versions});
    AddDesktopOptions(parser);

    if (!parser.parse(arguments)) {
        const QStringList unknown = parser.unknownOptionNames();
        if (unknown.isEmpty())
            return Refused(parser.errorText());
        return Refused(QStringLiteral("unknown option \"%1\"").arg(unknown.first()));
    }
    if (parser.isSet(help))
        return {{}, 0, Usage};
    if (parser.isSet(versions))
        return {{}, 0, QStringLiteral("Quillon %1\n").arg(version)};

    const QStringList accounts = parser.positionalArguments();
    if (accounts.size() > 1)
        return Refused(QStringLiteral("only one account can be open at a time"));
    if (accounts.isEmpty() || accounts.first().isEmpty())
        return {};
    return {QFileInfo(accounts.first()).absoluteFilePath(), {}, {}};
}
